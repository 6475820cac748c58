// SPDX-License-Identifier: MIT
// "Export…" of the window's menu: quorin-export does it, as a process of its own, because the window's form has the
// storage layer's one open table.
#pragma once

#include "apps/quorin/window_settings.h"
#include "backends/host/host_device.h"
#include "backends/qt/export_dialog.h"
#include "backends/qt/qt_platform.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <optional>
#include <string>

namespace quorin {

/// The first word of a command line that makes this program be quorin-export: the packages of the window and of the
/// console are complete without each other.
inline constexpr const char* AsExporter = "--as-quorin-export";

class WindowExport {
public:
    /// `options`: the device of this run.
    WindowExport(backends::qt::QtPlatform& device, WindowSettings& settings, const backends::DeviceOptions& options);

    void Open();

    /// What the dialog is made of.
    backends::qt::ExportSource Source();

    /// Asks the desktop to open a file. Returns false if nothing opens such files.
    std::function<bool(const std::string& path)> Opener;
    /// The program that exports, and its first words.
    QString Program;
    QStringList FirstWords = {QString::fromLatin1(AsExporter)};

private:
    /// What a process has written: its status, standard output and standard error.
    using Ended = std::function<void(int status, const QByteArray& output, const QByteArray& errors)>;

    QStringList Words(const backends::qt::ExportChoice& choice) const;
    void Start(const QStringList& words, std::size_t mostOutput, const Ended& ended);
    void Export(const QStringList& words, const backends::qt::ExportSource::Done& done,
                const std::function<std::string(const QByteArray& output)>& finish);
    void Preview(const std::function<void(const backends::qt::ExportPreview&)>& show);
    std::string File() const;

    backends::qt::QtPlatform& Device_;
    WindowSettings& Settings_;
    QStringList OfDevice_;                             ///< the options of the command line that describe the device
    std::optional<QTemporaryDir> Opened_;              ///< copies that other programs have been given
    std::optional<backends::qt::ExportDialog> Dialog_; ///< none until a person opens it
};

} // namespace quorin
