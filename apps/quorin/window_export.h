// SPDX-License-Identifier: MIT
// "Export…" of the window's menu: quorin-export does it.
#pragma once

#include "apps/quorin/own_process.h"
#include "apps/quorin/window_settings.h"
#include "backends/qt/export_dialog.h"
#include "backends/qt/qt_platform.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <optional>
#include <string>

namespace quorin {

class WindowExport {
public:
    /// `options`: the device of this run.
    WindowExport(backends::qt::QtPlatform& device, WindowSettings& settings, const backends::DeviceOptions& options);

    void Open();

    /// What the dialog is made of.
    backends::qt::ExportSource Source();

    /// Asks the desktop to open a file. Returns false if nothing opens such files.
    std::function<bool(const std::string& path)> Opener;
    OwnProcess Exporter; ///< quorin-export

private:
    QStringList Words(const backends::qt::ExportChoice& choice) const;
    void Export(const QStringList& words, const backends::qt::ExportSource::Done& done,
                const std::function<std::string(const QByteArray& output)>& finish);
    void Preview(const std::function<void(const backends::qt::ExportPreview&)>& show);
    std::string FileOfNow() const;

    backends::qt::QtPlatform& Device_;
    WindowSettings& Settings_;
    std::string File_;                    ///< the download that the dialog shows, whatever the form does meanwhile
    std::optional<QTemporaryDir> Opened_; ///< copies that other programs have been given
    std::optional<backends::qt::ExportDialog> Dialog_; ///< none until a person opens it
};

} // namespace quorin
