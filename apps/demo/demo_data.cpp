// SPDX-License-Identifier: MIT
#include "apps/demo/demo_data.h"

#include "apps/arrivals/sample_driver.h"
#include "companion/file_lines.h"
#include "companion/port_setting.h"
#include "src/drivers/installation.h"
#include "src/drivers/registry.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

namespace apps {

void PrepareDemo() {
    if (modQuorin::GetSetting(u"ComPort", u"").empty())
        companion::ChoosePort(DemoPort);
    modQuorin::LoadDriverList();
    if (modQuorin::Registry.DriverNames.empty())
        modQuorin::InstallLines(companion::LinesOf(modStringTools::FromBytes(SampleDriver())));
}

Text EmptyDemo() {
    modFileSystem::CloseTable();
    modFileSystem::ListFiles(modFileSystem::GetDataPath(u""), modQuorin::DataType, modQuorin::DataCreator);
    const std::vector<Text> files = modFileSystem::Storage.FileList;
    Text why;
    for (const Text& file : files)
        if (const auto error = modFileSystem::RemoveFile(file); error != platform::NoError && why.empty())
            why = file + u" could not be deleted: " + platform::ErrorText(error);
    return why;
}

} // namespace apps
