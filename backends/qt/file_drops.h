// SPDX-License-Identifier: MIT
// Files that are dropped on a window, whatever part of it they are dropped on.
#pragma once

#include <QObject>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

namespace backends::qt {

class FileDrops final : public QObject {
public:
    /// `dropped` is called with the full paths of the files, as bytes.
    FileDrops(QWidget& window, std::function<void(const std::vector<std::string>& files)> dropped);

protected:
    /// A field takes text that is dropped on it, but no files: it would show their addresses.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QWidget& Window_;
    std::function<void(const std::vector<std::string>&)> Dropped_;
};

} // namespace backends::qt
