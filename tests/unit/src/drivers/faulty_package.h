// SPDX-License-Identifier: MIT
// A faulty package, on a device all of whose files are compared.
#pragma once

#include "src/drivers/installation.h"

#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "tests/support/program.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <ostream>

namespace modQuorin {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

inline const std::string Drivers = "NAME|INFFILE\nOld|old.txt\n";
inline const std::string InfHeaderLine = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
inline const std::string Inf = InfHeaderLine + "Place|1||||||\n";
inline const std::size_t Megabyte = 1U << 20U;

inline const Text Installed = u"Driver installed";
inline const Text NoInfFile = u"Error creating driver inf file";

/// Redirects temporary folders while it exists, so that everything around the device can be compared.
class OwnTemporary {
protected:
    OwnTemporary() {
        if (const char* old = std::getenv("TMPDIR"))
            Before_ = old;
        ::setenv("TMPDIR", Around.Path().c_str(), 1);
    }
    ~OwnTemporary() {
        if (Before_)
            ::setenv("TMPDIR", Before_->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
    }
    OwnTemporary(const OwnTemporary&) = delete;
    OwnTemporary& operator=(const OwnTemporary&) = delete;

    const support::TemporaryFolder Around;

private:
    std::optional<std::string> Before_;
};

/// The contents of each file below a folder, by name.
using Contents = std::map<std::string, std::string>;

inline std::string BytesOf(const fs::path& path) {
    if (fs::is_symlink(path))
        return "-> " + fs::read_symlink(path).string();
    if (fs::is_directory(path))
        return "a folder";
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Returns the names whose contents differ, or that only one of the two has. Long names and contents are cut.
inline std::vector<std::string> Differences(const Contents& expected, const Contents& found) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : expected) {
        const auto other = found.find(name);
        if (other == found.end())
            names.push_back("missing " + name.substr(0, 300));
        else if (other->second != bytes)
            names.push_back(name.substr(0, 300) + " holds " + other->second.substr(0, 300));
    }
    for (const auto& [name, bytes] : found) {
        if (expected.count(name) == 0)
            names.push_back("new " + name.substr(0, 300) + ": " + bytes.substr(0, 300));
    }
    return names;
}

class FaultyPackage : protected OwnTemporary, public support::Program {
protected:
    explicit FaultyPackage(const backends::DeviceOptions& options = {}) : Program(options) {}

    /// Fills the device as if it were in use, with files beside the data folder and beside the device.
    void FillDevice() {
        Around.Put("beside.txt", "mine\n");
        Around.Put("beside/rest.txt", "mine\n");
        Device.Folder.Put("outside.txt", "mine\n");
        Put("drivers.txt", Drivers);
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nOld|qrn0001.txt|20070301|\n");
        Put("old.txt", Inf);
        Put("qrn0001.txt", "Place\nHall\n");
        Put("sub/kept.txt", "mine\n");
    }

    /// Returns all files on the device and around it, by their paths from the device's root.
    Contents Everything() {
        Contents all;
        for (const auto& entry : fs::recursive_directory_iterator(Around.Path()))
            all[entry.path().lexically_relative(Device.Folder.Path()).string()] = BytesOf(entry.path());
        return all;
    }

    void Install(const std::string& content) {
        Put("new.qvd", content);
        MenuEvent(u"Add Driver...");
        Before = Everything();
        Choose(u"Install...");
    }

    std::vector<Text> Told() { return Device.Did.Messages(); }

    /// Expects these messages, an additional row in the drivers table and these written files, and no other change.
    void ExpectOutcome(const std::vector<Text>& told, const std::string& driverRow, const Contents& written = {}) {
        EXPECT_EQ(Told(), told);
        Contents expected = Before;
        expected["Quorin/drivers.txt"] += driverRow;
        for (const auto& [name, bytes] : written)
            expected[name] = bytes;
        EXPECT_THAT(Differences(expected, Everything()), IsEmpty());
        ExpectUsableAgain();
    }

    void ExpectUsableAgain() {
        EXPECT_THAT(Device.Did.Status, ElementsAre(u"Busy", u""));
        EXPECT_TRUE(Device.Main().Enabled());
        EXPECT_TRUE(Device.Title().Enabled());
        for (const auto& title : Device.Platform.menuTitles)
            EXPECT_TRUE(title.Enabled());
        EXPECT_THAT(modFileSystem::Slots.SlotState, Each(0)) << "a file was left open";
        EXPECT_EQ(Screen(), ScrAddDriver);
    }

    void ExpectDriverListOpens() {
        Choose(u"Back");
        MenuEvent(u"Start...");
        Repaint();
        EXPECT_EQ(Screen(), ScrDrivers);
        EXPECT_EQ(TitleCell(), u"Drivers");
    }

    Contents Before;
};

} // namespace modQuorin
