// SPDX-License-Identifier: MIT
#include "apps/quorin/data_folder.h"

#include "backends/files/host_files.h"
#include "backends/files/path_map.h"
#include "companion/words.h"
#include "src/storage/settings.h"

#include <QDesktopServices>
#include <QUrl>

#include <utility>

namespace quorin {

using modStringTools::FromBytes;

DataFolder::DataFolder(backends::qt::QtPlatform& device, std::string root)
    : Opener([](const std::string& folder) {
          return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(folder)));
      }),
      Device_(device), Root_(std::move(root)), Path_(Root_), Box_(device.boxes, device.window) {
    device.loop.Listen(*this);
}

/// The form computes the paths of its tables at its start, and when the preferences are left.
bool DataFolder::RaiseWhatIsPending() {
    const Text& table = modQuorin::Paths.DriversFile;
    const Text folder = table.substr(0, table.rfind(u'\\') + 1);
    if (folder.empty() || folder == Shown_)
        return false;
    Shown_ = folder;
    std::string beneath;
    const bool isPath = backends::RelativePath(folder, beneath) == platform::NoError;
    Path_ = isPath && !beneath.empty() ? Root_ + "/" + beneath : Root_;
    Device_.onlooker.notices.Raise(companion::DataFolder(FromBytes(Path_)));
    return false;
}

void DataFolder::Open() {
    if (Box_.IsOpen())
        return;
    std::string why;
    if (!backends::IsFolder(Path_))
        why = "The data folder is not there: ";
    else if (!Opener(Path_))
        why = "No program of this desktop opens folders. The data is in ";
    if (!why.empty())
        Box_.Open(QString::fromStdString(why + Path_), {}, [](QMessageBox::StandardButton) {});
}

} // namespace quorin
