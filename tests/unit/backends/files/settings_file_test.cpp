// SPDX-License-Identifier: MIT
#include "backends/files/settings_file.h"

#include "tests/support/ordinary_user.h"
#include "tests/support/printed_rows.h"
#include "tests/support/temporary_root.h"
#include "tests/unit/backends/files/full_disk.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace platform;
using backends::SettingsFile;

namespace {

using support::PrintTo;

class SettingsFileTest : public testing::Test {
protected:
    SettingsFile Store() const { return SettingsFile(Root.Path("settings.ini")); }
    void Put(std::string_view bytes) const { Root.Put("settings.ini", bytes); }
    std::string Bytes() const { return Root.Bytes("settings.ini"); }

    Text Get(const Text& key) const { return Store().Get(u"Quorin", u"Settings", key, u"default"); }
    ErrorNumber Save(const Text& key, const Text& value) const {
        return Store().Save(u"Quorin", u"Settings", key, value);
    }

    TemporaryRoot Root;
};

/// An administrator's script, or a person with an editor, may change the file while the program runs.
TEST_F(SettingsFileTest, LeavesWhatOthersHaveWrittenMeanwhile) {
    Put("[Settings]\nComPort=Com1\nCOLOUR=0\n");
    SettingsFile store = Store();
    Put("# mine\n[Settings]\nComPort=Com7\nCOLOUR=0\nFont=Tahoma\n");
    ASSERT_EQ(store.Save(u"Quorin", u"Settings", u"COLOUR", u"-1"), NoError);
    EXPECT_EQ(Bytes(), "# mine\n[Settings]\nComPort=Com7\nCOLOUR=-1\nFont=Tahoma\n");
    EXPECT_EQ(store.Get(u"Quorin", u"Settings", u"ComPort", u""), u"Com1") << "until the next start";
    EXPECT_EQ(store.Get(u"Quorin", u"Settings", u"COLOUR", u""), u"-1");
    EXPECT_EQ(Get(u"ComPort"), u"Com7");
}

struct Value {
    Text Set;
    std::string Written; ///< the text after `=` in the file
};

class WritesTheValue : public SettingsFileTest, public testing::WithParamInterface<Value> {};

TEST_P(WritesTheValue, AndReadsItBack) {
    ASSERT_EQ(Save(u"Key", GetParam().Set), NoError);
    EXPECT_EQ(Bytes(), "[Settings]\nKey=" + GetParam().Written + "\n");
    EXPECT_EQ(Get(u"Key"), GetParam().Set);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WritesTheValue,
    testing::Values(Value{u"", ""}, Value{u"OFF", "OFF"}, Value{u"-1", "-1"},
                    Value{u"\\Application Data\\Volatile\\RFCOMM\\", "\\Application Data\\Volatile\\RFCOMM\\"},
                    Value{u".\\", ".\\"}, Value{u"Card:\\", "Card:\\"}, Value{u"\\n\\t\\x41\\0", "\\n\\t\\x41\\0"},
                    Value{u"a;b", "a;b"}, Value{u";a", ";a"}, Value{u"#a", "#a"}, Value{u"1,2", "1,2"},
                    Value{u"\"q\"", "\"q\""}, Value{u"\"", "\""}, Value{u"'", "'"}, Value{u"a=b=c", "a=b=c"},
                    Value{u"=", "="}, Value{u"[x]", "[x]"}, Value{u"$HOME ${x} @Invalid()", "$HOME ${x} @Invalid()"},
                    Value{u"inner  blanks", "inner  blanks"}, Value{u" a", "%20a"}, Value{u"a ", "a%20"},
                    Value{u"\ta\t", "%09a%09"}, Value{u" ", "%20"}, Value{u" \t ", "%20%09%20"},
                    Value{u"a\r\nb", "a%0D%0Ab"}, Value{u"\r", "%0D"}, Value{u"\n", "%0A"},
                    Value{Text(u"a\0b", 3), "a%00b"}, Value{u"%41", "%2541"}, Value{u"%4", "%4"}, Value{u"%", "%"},
                    Value{u"%%41", "%%2541"}, Value{u"%fF", "%25fF"}, Value{u"%2541", "%252541"}, Value{u"%G1", "%G1"},
                    Value{u"%\r", "%%0D"}, Value{u"%4\n", "%4%0A"}, Value{u"%4 ", "%4%20"}, Value{u"100 %", "100 %"},
                    Value{u"größe €", "gr\xC3\xB6\xC3\x9F"
                                      "e \xE2\x82\xAC"},
                    Value{u"\xD83D\xDE00", "\xF0\x9F\x98\x80"}, Value{u"\x00A0x\x00A0", "\xC2\xA0x\xC2\xA0"},
                    Value{u"\xDCFF\xDC80", "\xFF\x80"}, Value{u"\xFEFF", "\xEF\xBB\xBF"}));

/// Some editors write a byte-order mark at the start, and some tools need it.
TEST_F(SettingsFileTest, LeavesAByteOrderMarkWhereItIs) {
    Put("\xEF\xBB\xBF[Settings]\nComPort=Com1\n");
    SettingsFile store = Store();
    ASSERT_EQ(store.Save(u"Quorin", u"Settings", u"ComPort", u"Com2"), NoError);
    EXPECT_EQ(Bytes(), "\xEF\xBB\xBF[Settings]\nComPort=Com2\n");
    Put("[Settings]\nComPort=Com2\n"); // the mark has been removed by another program
    ASSERT_EQ(store.Save(u"Quorin", u"Settings", u"ComPort", u"Com3"), NoError);
    EXPECT_EQ(Bytes(), "[Settings]\nComPort=Com3\n");
    Put("\xEF\xBB\xBF");
    ASSERT_EQ(store.Save(u"Quorin", u"Settings", u"ComPort", u"Com4"), NoError);
    EXPECT_EQ(Bytes(), "\xEF\xBB\xBF[Settings]\nComPort=Com4\n");
}

TEST_F(SettingsFileTest, ReadsAFileThatAPersonWrote) {
    Put("\xEF\xBB\xBF# mine\r\n[ Settings ]\r\n  ComPort =  Com3 \r\nRFCOMM_Path=\\a b\\\r\nPercent=50%\nLast=%41");
    EXPECT_EQ(Get(u"ComPort"), u"Com3");
    EXPECT_EQ(Get(u"RFCOMM_Path"), u"\\a b\\");
    EXPECT_EQ(Get(u"Percent"), u"50%");
    EXPECT_EQ(Get(u"Last"), u"A");
}

TEST_F(SettingsFileTest, ReadsNothingFromCommentsAndOtherSections) {
    Put("Font=before any section\n[Other]\nFont=other\n[Settings]\n;Font=off\n #Font=off\nFont\n[Font=x\n");
    EXPECT_EQ(Get(u"Font"), u"default");
}

TEST_F(SettingsFileTest, KeepsCommentsAndUnknownLinesWhereTheyAre) {
    Put("; head\n\n[Other]\nx = 1 ; y\n\n[Settings]\n# port\nComPort=Com1\nnonsense\n\n# fonts\n[Fonts]\nz=\n");
    ASSERT_EQ(Save(u"ComPort", u"Com2"), NoError);
    ASSERT_EQ(Save(u"COLOUR", u"0"), NoError);
    EXPECT_EQ(Bytes(), "; head\n\n[Other]\nx = 1 ; y\n\n[Settings]\n# port\nComPort=Com2\nCOLOUR=0\nnonsense\n\n"
                       "# fonts\n[Fonts]\nz=\n");
}

TEST_F(SettingsFileTest, PutsANewSectionAtTheEnd) {
    Put("[Other]\nx=1");
    ASSERT_EQ(Save(u"ComPort", u"Com2"), NoError);
    EXPECT_EQ(Bytes(), "[Other]\nx=1\n\n[Settings]\nComPort=Com2\n");
}

TEST_F(SettingsFileTest, TakesTheFirstOfTwoEqualKeys) {
    Put("[Settings]\nFont=first\nfont=second\n[Settings]\nFONT=third\n");
    EXPECT_EQ(Get(u"Font"), u"first");
    ASSERT_EQ(Save(u"FONT", u"new"), NoError);
    EXPECT_EQ(Bytes(), "[Settings]\nFont=new\nfont=second\n[Settings]\nFONT=third\n");
}

TEST_F(SettingsFileTest, FindsAKeyWhereItsSectionGoesOn) {
    Put("[Settings]\nA=1\n[Other]\nB=other\n[settings]\nB=2\n");
    EXPECT_EQ(Get(u"B"), u"2");
    ASSERT_EQ(Save(u"C", u"3"), NoError);
    EXPECT_EQ(Bytes(), "[Settings]\nA=1\nC=3\n[Other]\nB=other\n[settings]\nB=2\n");
}

TEST_F(SettingsFileTest, KeepsTheLineEndOfALineThatItReplaces) {
    Put("[Settings]\r\nA = 1\r\nB=2\r\n");
    ASSERT_EQ(Save(u"A", u"x"), NoError);
    EXPECT_EQ(Bytes(), "[Settings]\r\nA =x\r\nB=2\r\n");
}

TEST_F(SettingsFileTest, IsReadOnceAndKept) {
    Put("[Settings]\nA=1\n");
    const SettingsFile store = Store();
    Put("[Settings]\nA=2\n");
    EXPECT_EQ(store.Get(u"Quorin", u"Settings", u"A", u""), u"1");
}

TEST_F(SettingsFileTest, TakesAFileThatCannotBeReadForAnEmptyOne) {
    std::filesystem::create_directory(Root.Path("settings.ini"));
    EXPECT_EQ(Get(u"A"), u"default");
    EXPECT_NE(Save(u"A", u"1"), NoError);
}

TEST_F(SettingsFileTest, KeepsTheOldValueInMemoryAndOnDiskWhenTheDiskIsFull) {
    Put("[Settings]\nA=old\n");
    SettingsFile store = Store();
    {
        const FullDisk full(5);
        EXPECT_EQ(store.Save(u"Quorin", u"Settings", u"A", u"new"), DiskFull);
    }
    EXPECT_EQ(store.Get(u"Quorin", u"Settings", u"A", u""), u"old");
    EXPECT_EQ(Bytes(), "[Settings]\nA=old\n");
    EXPECT_EQ(Root.Entries(), 1) << "something was left beside it";
}

TEST_F(SettingsFileTest, KeepsThePermissionsOfTheFile) {
    Put("");
    chmod(Root.Path("settings.ini").c_str(), 0640);
    ASSERT_EQ(Save(u"A", u"1"), NoError);
    struct stat found {};
    ASSERT_EQ(stat(Root.Path("settings.ini").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0640U);
}

TEST_F(SettingsFileTest, WritesThroughALinkToIt) {
    Root.Put("elsewhere/real.ini", "");
    Root.Link("elsewhere/real.ini", "settings.ini");
    ASSERT_EQ(Save(u"A", u"1"), NoError);
    EXPECT_TRUE(std::filesystem::is_symlink(Root.Path("settings.ini")));
    EXPECT_EQ(Root.Bytes("elsewhere/real.ini"), "[Settings]\nA=1\n");
}

TEST_F(SettingsFileTest, ReadsThroughALinkToIt) {
    Root.Put("elsewhere/real.ini", "[Settings]\nA=1\n");
    Root.Link("elsewhere/real.ini", "settings.ini");
    EXPECT_EQ(Get(u"A"), u"1");
    ASSERT_EQ(Save(u"B", u"2"), NoError);
    EXPECT_EQ(Root.Bytes("elsewhere/real.ini"), "[Settings]\nA=1\nB=2\n");
}

TEST_F(SettingsFileTest, OfMoreThanAMegabyteIsOneThatCannotBeRead) {
    const std::string setting = "[Settings]\nComPort=Com3\n";
    Put(setting + std::string((1U << 20U) - setting.size(), '#'));
    EXPECT_EQ(Get(u"ComPort"), u"Com3");
    Put(setting + std::string((1U << 20U) - setting.size() + 1, '#'));
    EXPECT_EQ(Get(u"ComPort"), u"default");
    EXPECT_EQ(Save(u"ComPort", u"Com4"), TooLong);
    EXPECT_EQ(Bytes().substr(0, setting.size()), setting);
}

/// The file may be replaced, but not read: its other lines must not be lost.
TEST_F(SettingsFileTest, ThatCannotBeReadIsNotSaved) {
    Put("[Settings]\nA=1\n");
    chmod(Root.Path().c_str(), 0777);
    ASSERT_EQ(chmod(Root.Path("settings.ini").c_str(), 0222), 0);
    {
        const OrdinaryUser user;
        EXPECT_EQ(Get(u"A"), u"default");
        EXPECT_EQ(Save(u"B", u"2"), PermissionDenied);
    }
    EXPECT_EQ(Bytes(), "[Settings]\nA=1\n");
}

TEST_F(SettingsFileTest, IsMadeForItsOwnerAlone) {
    const mode_t old = umask(0);
    ASSERT_EQ(Save(u"A", u"1"), NoError);
    umask(old);
    struct stat found {};
    ASSERT_EQ(stat(Root.Path("settings.ini").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
}

TEST_F(SettingsFileTest, InTheRootFolderIsNotReachedOverALinkOutside) {
    const TemporaryRoot elsewhere;
    elsewhere.Put("secret.ini", "[Settings]\nA=secret\n");
    Root.Link(elsewhere.Path("secret.ini"), "settings.ini");
    SettingsFile store(backends::PathMap(Root.Path()), u".\\settings.ini");
    EXPECT_EQ(store.Get(u"Quorin", u"Settings", u"A", u"default"), u"default");
    EXPECT_EQ(store.Save(u"Quorin", u"Settings", u"A", u"1"), PermissionDenied);
    EXPECT_EQ(elsewhere.Bytes("secret.ini"), "[Settings]\nA=secret\n");
}

class RefusesTheKey : public SettingsFileTest, public testing::WithParamInterface<Text> {};

TEST_P(RefusesTheKey, ThatTheFileHasNoFormFor) {
    EXPECT_EQ(Save(GetParam(), u"value"), PathRefused);
    EXPECT_FALSE(Root.Has("settings.ini"));
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusesTheKey,
                         testing::Values(u"", u" ", u" a", u"a ", u"a=b", u"a\nb", u"a\r", Text(u"a\0", 2), u"[a",
                                         u";a", u"#a"));

TEST_F(SettingsFileTest, RefusesASectionThatTheFileHasNoFormFor) {
    for (const Text& section : {Text(), Text(u"a]"), Text(u" a"), Text(u"a\nb")})
        EXPECT_EQ(Store().Save(u"Quorin", section, u"Key", u"value"), PathRefused);
}

} // namespace
