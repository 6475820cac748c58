// SPDX-License-Identifier: MIT
#include "src/storage/settings.h"

#include "src/storage/volumes.h"
#include "src/view/platform/platform.h"

namespace modQuorin {

namespace {

const Text Section = u"Settings";

} // namespace

void SetFilePaths() {
    Paths.ApplicationName = u"Quorin";
    Paths.DriversFile = modFileSystem::GetDataPath(Paths.ApplicationName) + u"drivers.txt";
    Paths.ControlFile = modFileSystem::GetDataPath(u"") + u"qrnctrl.txt";
}

Text GetSetting(const Text& key, const Text& byDefault) {
    return platform::Device().settings.Get(Paths.ApplicationName, Section, key, byDefault);
}

void SaveSetting(const Text& key, const Text& value) {
    platform::Device().settings.Save(Paths.ApplicationName, Section, key, value);
}

} // namespace modQuorin
