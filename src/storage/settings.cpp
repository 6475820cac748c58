// SPDX-License-Identifier: MIT
#include "src/storage/settings.h"

#include "src/storage/volumes.h"
#include "src/view/platform/application.h"
#include "src/view/platform/platform.h"

namespace modQuorin {

void SetFilePaths() {
    ApplicationName = u"Quorin";
    Paths.DriversFile = modFileSystem::GetDataPath(ApplicationName) + u"drivers.txt";
    Paths.ControlFile = modFileSystem::GetDataPath(u"") + u"qrnctrl.txt";
}

Text GetSetting(const Text& key, const Text& byDefault) {
    return platform::Device().settings.Get(ApplicationName, SettingsSection, key, byDefault);
}

void SaveSetting(const Text& key, const Text& value) {
    platform::Device().settings.Save(ApplicationName, SettingsSection, key, value);
}

} // namespace modQuorin
