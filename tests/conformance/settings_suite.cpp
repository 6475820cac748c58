// SPDX-License-Identifier: MIT
// What every settings store must do.
#include "tests/conformance/storage_suites.h"

namespace conformance {

TEST_P(SettingsSuite, GivesTheDefaultOfASettingThatWasNeverSaved) {
    EXPECT_EQ(Get(u"ComPort", u"OFF"), u"OFF");
}

TEST_P(SettingsSuite, GivesWhatWasSavedLast) {
    EXPECT_EQ(Save(u"ComPort", u"Com1"), NoError);
    EXPECT_EQ(Save(u"ComPort", u"Com2"), NoError);
    EXPECT_EQ(Get(u"ComPort"), u"Com2");
}

TEST_P(SettingsSuite, KeepsAnEmptyValueApartFromNone) {
    EXPECT_EQ(Save(u"StorageVolume", u""), NoError);
    EXPECT_EQ(Get(u"StorageVolume"), u"");
}

TEST_P(SettingsSuite, KeepsSectionsApart) {
    EXPECT_EQ(Save(u"Font", u"Tahoma"), NoError);
    EXPECT_EQ(Store->SettingsStore().Save(u"Quorin", u"Other", u"Font", u"Arial"), NoError);
    EXPECT_EQ(Get(u"Font"), u"Tahoma");
    EXPECT_EQ(Store->SettingsStore().Get(u"Quorin", u"Other", u"Font", u""), u"Arial");
}

TEST_P(SettingsSuite, MatchesNamesWithoutRegardToCase) {
    EXPECT_EQ(Save(u"COLOUR", u"0"), NoError);
    EXPECT_EQ(Store->SettingsStore().Get(u"Quorin", u"SETTINGS", u"Colour", u"-1"), u"0");
}

} // namespace conformance
