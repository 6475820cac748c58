// SPDX-License-Identifier: MIT
#include "backends/host/limits_file.h"

#include "backends/host/host_device.h"
#include "tests/support/test_device.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace backends {
namespace {

class FileOfLimits : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return (Folder.Path() / name).string(); }

    support::TemporaryFolder Folder;
    const LimitsFile File{Folder.Path().string()};
};

TEST_F(FileOfLimits, HasTheNameOfItsDriver) {
    Folder.Put("Climate Meter.limits", "\xEF\xBB\xBF"
                                       "COLUMN|WARNLOW\nT \xC2\xB0|1\n");
    const LimitsFile::Content content = File.Read(u"Climate Meter");
    EXPECT_EQ(content.Table, u"COLUMN|WARNLOW\nT °|1\n");
    EXPECT_EQ(content.Why, u"");
}

TEST_F(FileOfLimits, MayBeMissing) {
    for (const Text& name : {Text(u"Meter"), Text(300, u'x')}) {
        const LimitsFile::Content content = File.Read(name);
        EXPECT_EQ(content.Table, std::nullopt);
        EXPECT_EQ(content.Why, u"");
    }
}

TEST_F(FileOfLimits, IsInNoOtherFolder) {
    Folder.Put("sub/a.limits", "x");
    const LimitsFile below(Path("sub"));
    EXPECT_TRUE(below.Read(u"a").Table);
    for (const char16_t* name : {u"sub/a", u"../sub/a", u"..\\a", u"", u"a\n", u"/etc/passwd"}) {
        for (const LimitsFile& file : {File, below}) {
            EXPECT_EQ(file.Read(name).Table, std::nullopt) << modStringTools::ToBytes(name);
            EXPECT_EQ(file.Read(name).Why, u"");
        }
    }
}

TEST_F(FileOfLimits, IsReportedIfItIsNoPlainFile) {
    Folder.Put("target", "x");
    std::filesystem::create_symlink(Path("target"), Path("link.limits"));
    std::filesystem::create_directory(Path("folder.limits"));
    ASSERT_EQ(::mkfifo(Path("pipe.limits").c_str(), 0600), 0);
    Folder.Put("large.limits", std::string(1'000'001, 'x'));
    EXPECT_EQ(File.Read(u"link").Why, u"it is a link");
    EXPECT_EQ(File.Read(u"folder").Why, u"it is a folder");
    EXPECT_EQ(File.Read(u"pipe").Why, u"it is no plain file");
    EXPECT_EQ(File.Read(u"large").Why, u"it is larger than 1 MB");
    for (const char16_t* name : {u"link", u"folder", u"pipe", u"large"})
        EXPECT_EQ(File.Read(name).Table, std::nullopt);
}

TEST_F(FileOfLimits, IsBesideTheSettings) {
    Folder.Put("root/Meter.limits", "in root");
    Folder.Put("config/Meter.limits", "in config");
    DeviceOptions options;
    options.Root = Path("root");
    EXPECT_EQ(HostDevice(options).limits.Read(u"Meter").Table, u"in root");
    options.Settings = Path("config/settings.ini");
    EXPECT_EQ(HostDevice(options).limits.Read(u"Meter").Table, u"in config");
}

} // namespace
} // namespace backends
