// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/machine.h"

#include "src/app/start_up.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

#include <fstream>

namespace disk {

namespace {

backends::DeviceOptions OptionsOf(const std::string& root, Keeping keeping, const std::string& settings) {
    backends::DeviceOptions options;
    options.DeviceType = keeping == Keeping::LineDatabases ? 1 : 0;
    options.Root = root;
    options.Settings = settings;
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    return options;
}

void PutLines(const std::string& name, const std::string& content) {
    modFileSystem::FileHandle file;
    modFileSystem::OpenFile(file, FullName(name), u"w", modQuorin::DataType, modQuorin::DataCreator);
    for (const std::string& line : LinesOf(content))
        modFileSystem::WriteFileLine(file, modStringTools::FromBytes(line));
    modFileSystem::CloseFile(file);
}

} // namespace

Machine::Machine(const std::string& root, Keeping keeping, const std::string& settings)
    : Host(OptionsOf(root, keeping, settings)), Platform(Host, *this, Did) {
    platform::Install(&Platform.record);
    modQuorin::ResetModules();
    Platform.runTime.Rest = [](std::int32_t) {}; // there is nothing to wait for
    Platform.StartProgram();
}

Machine::~Machine() {
    modQuorin::ResetModules();
}

void Machine::RunCommand() {
    auto& box = *Platform.boxes.Current();
    box.Answered = true;
    box.Answer = box.Buttons == platform::BoxButtons::YesNo ? platform::BoxAnswer::Yes : platform::BoxAnswer::Ok;
}

Text FullName(const std::string& name) {
    return modFileSystem::GetDataPath(u"") + modStringTools::FromBytes(name);
}

Tree Furnished(const State& files, Keeping keeping) {
    const FreshFolder folder;
    const bool databases = keeping == Keeping::LineDatabases;
    std::ofstream(folder.Path() + "/settings.ini")
        << "[Settings]\nStorageVolume=" << (databases ? "Device:\\" : ".\\") << "\nComPort=OFF\n";
    const Machine machine(folder.Path(), keeping);
    for (const auto& [name, content] : files) {
        if (content && name != "settings.ini")
            PutLines(name, *content);
    }
    return ReadTree(folder.Path());
}

} // namespace disk
