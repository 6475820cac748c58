// SPDX-License-Identifier: MIT
#include "backends/qt/file_drops.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>

#include <utility>

namespace backends::qt {

namespace {

std::vector<std::string> FilesOf(const QMimeData& data) {
    std::vector<std::string> files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            files.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    }
    return files;
}

} // namespace

FileDrops::FileDrops(QWidget& window, std::function<void(const std::vector<std::string>&)> dropped)
    : Window_(window), Dropped_(std::move(dropped)) {
    window.setAcceptDrops(true);
    qApp->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* object, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return false;
    if (!object->isWidgetType() || static_cast<QWidget*>(object)->window() != &Window_)
        return false;
    auto& drop = *static_cast<QDropEvent*>(event);
    const std::vector<std::string> files = FilesOf(*drop.mimeData());
    if (files.empty())
        return false;
    drop.setDropAction(Qt::CopyAction); // a file manager would delete what was moved
    drop.accept();
    if (type == QEvent::Drop)
        Dropped_(files);
    return true;
}

} // namespace backends::qt
