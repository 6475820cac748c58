// SPDX-License-Identifier: MIT
// What every store returns while it is empty. The application starts on such a device and must continue.
#include "tests/conformance/storage_suites.h"

namespace conformance {

using testing::IsEmpty;

TEST_P(EmptyStorageSuite, HasNoFileAndMovesAndDeletesNone) {
    EXPECT_TRUE(IsMissing(ErrorOfOpening(u".\\none.txt")));
    EXPECT_TRUE(IsMissing(Files().MoveFile(u".\\none.txt", u".\\other.txt")));
    EXPECT_TRUE(IsMissing(Files().DeleteFile(u".\\none.txt")));
}

TEST_P(EmptyStorageSuite, HasNoFolderOnAVolumeThatIsOut) {
    EXPECT_TRUE(IsMissing(ErrorOfOpeningFolder(u"Card:\\", false)));
    EXPECT_TRUE(IsMissing(ErrorOfOpeningFolder(u"Card:\\Quorin\\", true)));
}

TEST_P(EmptyStorageSuite, HasNoDatabaseAndDeletesNone) {
    for (const DatabaseMode mode : {DatabaseMode::Read, DatabaseMode::ReadWrite}) {
        const OpenedDatabase opened = Databases().Open(u"none", mode);
        EXPECT_EQ(opened.Id, 0);
        EXPECT_EQ(opened.Error, FileNotFound);
    }
    EXPECT_EQ(Databases().Delete(u"none"), FileNotFound);
    EXPECT_THAT(Names(0, 0), IsEmpty());
    EXPECT_THAT(Databases().UnreadDatabases(), IsEmpty());
}

/// The application may close a database that was never open, and ask for its number of records.
TEST_P(EmptyStorageSuite, TakesTheNumberZeroForNoDatabase) {
    Databases().Close(0);
    EXPECT_EQ(Databases().RecordCount(0), 0);
    EXPECT_EQ(Databases().Position(0), -1);
    EXPECT_NE(Databases().AddRecord(0), NoError);
    EXPECT_NE(Databases().FindRecord(0, 1), NoError);
    LineRecord record;
    EXPECT_FALSE(Databases().ReadRecord(0, record));
}

TEST_P(EmptyStorageSuite, GivesTheDefaultOfASettingThatWasNeverSaved) {
    EXPECT_EQ(Store->SettingsStore().Get(u"Quorin", u"Settings", u"ComPort", u"OFF"), u"OFF");
}

} // namespace conformance
