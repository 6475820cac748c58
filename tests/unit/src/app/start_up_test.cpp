// SPDX-License-Identifier: MIT
#include "src/app/start_up.h"

#include "src/view/display_state.h"
#include "src/view/inf_fields.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using modPDAUI::Display;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

struct DeviceRow {
    std::int32_t Type;
    const char16_t* Version;
    bool SoftKeys;
    std::vector<std::int32_t> Keys;
    const char16_t* Font;
};

const std::vector<std::int32_t> PalmKeys = {308, 309, 516, 517, 518, 519, 33, 34, 276, 520, 264, 266, 267, 1280, 261};

class DeviceAtStart : public testing::TestWithParam<DeviceRow> {};

TEST_P(DeviceAtStart, IsSetUpByItsType) {
    backends::DeviceOptions options = support::OfType(GetParam().Type);
    options.OsVersion = GetParam().Version;
    support::TestDevice device(options);
    device.Platform.StartProgram();
    EXPECT_EQ(Display.SoftKeyMenus, GetParam().SoftKeys);
    EXPECT_EQ(device.Did.Grabbed, GetParam().Keys);
    EXPECT_EQ(device.Main().FontName(), GetParam().Font);
    EXPECT_EQ(device.Title().FontName(), GetParam().Font);
    EXPECT_EQ(Display.DefaultFontName, GetParam().Font);
    EXPECT_EQ(Display.UiScale, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Types, DeviceAtStart,
    testing::Values(DeviceRow{0, u"5.2", false, {}, u"Tahoma"}, DeviceRow{1, u"5.2", true, PalmKeys, u"AFPalm"},
                    DeviceRow{2, u"5.2", false, {}, u"AFPalm"}, DeviceRow{3, u"5.2", true, {}, u"Tahoma"},
                    DeviceRow{3, u"4.9", false, {}, u"Tahoma"}, DeviceRow{4, u"5.2", false, {}, u"AFPalm"},
                    DeviceRow{5, u"5.2", true, {}, u"Nokia Sans S60"},
                    DeviceRow{6, u"5.2", false, {}, u"AFSE UIQ Standard"},
                    DeviceRow{7, u"5.2", true, {2}, u"Microsoft Sans Serif CMF"},
                    DeviceRow{7, u"4", false, {2}, u"Microsoft Sans Serif CMF"},
                    DeviceRow{8, u"5.2", false, {}, u"AFPalm"}, DeviceRow{9, u"5.2", true, {}, u"Nokia Sans S60"},
                    DeviceRow{11, u"5.2", false, {}, u"AFPalm"}));

struct ScreenOfAPalm {
    backends::ScreenSize Size;
    const char16_t* Font;
    std::int16_t Scale;
};

class PalmScreen : public testing::TestWithParam<ScreenOfAPalm> {};

TEST_P(PalmScreen, DecidesFontAndScale) {
    backends::DeviceOptions options = support::OfType(1);
    options.Screen = GetParam().Size;
    support::TestDevice device(options);
    device.Platform.StartProgram();
    EXPECT_EQ(device.Main().FontName(), GetParam().Font);
    EXPECT_EQ(Display.UiScale, GetParam().Scale);
}

INSTANTIATE_TEST_SUITE_P(Sizes, PalmScreen,
                         testing::Values(ScreenOfAPalm{{160, 160}, u"AFPalm", 1},
                                         ScreenOfAPalm{{161, 161}, u"AFPalmHR", 2},
                                         ScreenOfAPalm{{320, 320}, u"AFPalmHR", 2}));

/// A window has one size on any screen; on all other devices the form has the whole screen.
TEST(FormAtStart, IsTheWholeScreenButOnADesktop) {
    for (const std::int32_t type : {0, 3}) {
        backends::DeviceOptions options = support::OfType(type);
        options.Screen = {800, 700};
        support::TestDevice device(options);
        device.Platform.StartProgram();
        const platform::Box form = platform::Device().form.ClientArea();
        EXPECT_EQ(form.Width, type == 0 ? 640.0F : 800.0F) << type;
        EXPECT_EQ(form.Height, type == 0 ? 480.0F : 700.0F) << type;
    }
}

struct VersionRow {
    std::int32_t Type;
    const char16_t* Version;
    bool SoftKeys;
};

class VersionOfADevice : public testing::TestWithParam<VersionRow> {};

TEST_P(VersionOfADevice, TellsWhetherItsMenusAreKeys) {
    backends::DeviceOptions options = support::OfType(GetParam().Type);
    options.OsVersion = GetParam().Version;
    support::TestDevice device(options);
    EXPECT_EQ(IsSoftKeyPlatform(), GetParam().SoftKeys);
}

INSTANTIATE_TEST_SUITE_P(Versions, VersionOfADevice,
                         testing::Values(VersionRow{7, u"5.0", true}, VersionRow{3, u"5", true},
                                         VersionRow{7, u"10.1", true}, VersionRow{7, u"4.21", false},
                                         VersionRow{3, u"", false}, VersionRow{3, u"new.5", false},
                                         VersionRow{0, u"5.2", false}, VersionRow{5, u"5.2", false}));

class AtStart : public support::Program {};

TEST_F(AtStart, MainScreenIsOnShowAndNothingWasOpened) {
    EXPECT_EQ(Screen(), ScrMain);
    EXPECT_EQ(Screens.PreviousScreen, 0);
    EXPECT_THAT(Inf.InfFields, IsEmpty());
    EXPECT_FALSE(Device.Folder.Has("Quorin/drivers.txt"));
    EXPECT_FALSE(Device.Platform.serial.PortOpen());
}

TEST_F(AtStart, SecondActivationChangesNothing) {
    MenuEvent(u"Start...");
    frmQuorin::Form_Activate();
    EXPECT_EQ(Screen(), ScrDrivers);
}

TEST_F(AtStart, CanBeRunAnyNumberOfTimes) {
    MenuEvent(u"Start...");
    Device.Platform.StartProgram();
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(AtStart, EveryRowOfATableHasItsVariable) {
    for (std::size_t row = 0; row < Screens.Table.size(); ++row) {
        ASSERT_NE(Screens.Table[row].Id, nullptr) << Screens.Table[row].Name;
        EXPECT_EQ(*Screens.Table[row].Id, static_cast<ScreenId>(row + 1));
    }
    for (std::size_t row = 0; row < Menus.Table.size(); ++row) {
        ASSERT_NE(Menus.Table[row].Id, nullptr) << "menu " << row + 1;
        EXPECT_EQ(*Menus.Table[row].Id, static_cast<MenuId>(row + 1));
    }
}

TEST_F(AtStart, ResetForgetsEveryNumberOfTheTables) {
    std::vector<const std::int32_t*> ids;
    for (const ScreenDef& row : Screens.Table)
        ids.push_back(row.Id);
    for (const MenuDef& row : Menus.Table)
        ids.push_back(row.Id);
    ResetModules();
    for (const std::int32_t* id : ids)
        EXPECT_EQ(*id, 0);
    EXPECT_EQ(ScrMain, 0);
    EXPECT_EQ(MenuMain, 0);
}

TEST_F(AtStart, ResetForgetsAFailureThatDidNotComeBack) {
    const Text failure = u"the first program's";
    platform::Stop.Failure = &failure;
    ResetModules();
    EXPECT_EQ(platform::Stop.Failure, nullptr);
    EXPECT_EQ(platform::Stop.BeforeFailure, nullptr);
}

struct ColourRow {
    const char* Stored;
    bool On;
};

class ColourSetting : public testing::TestWithParam<ColourRow> {};

TEST_P(ColourSetting, IsOnForMinusOneAlone) {
    backends::DeviceOptions options;
    const support::TemporaryFolder folder;
    if (GetParam().Stored != nullptr)
        folder.Put("settings.ini", std::string("[Settings]\nCOLOUR=") + GetParam().Stored + "\n");
    options.Settings = (folder.Path() / "settings.ini").string();
    support::TestDevice device(options);
    device.Platform.StartProgram();
    EXPECT_EQ(Display.ColourOn, GetParam().On);
}

INSTANTIATE_TEST_SUITE_P(Values, ColourSetting,
                         testing::Values(ColourRow{nullptr, true}, ColourRow{"-1", true}, ColourRow{"0", false},
                                         ColourRow{"1", false}, ColourRow{"true", false}, ColourRow{"", false}));

struct FontSizeRow {
    const char* Stored;
    std::int32_t Size;
};

class FontSizeSetting : public testing::TestWithParam<FontSizeRow> {};

TEST_P(FontSizeSetting, IsTakenByBothGrids) {
    backends::DeviceOptions options;
    const support::TemporaryFolder folder;
    folder.Put("settings.ini", std::string("[Settings]\nFONTSIZE=") + GetParam().Stored + "\n");
    options.Settings = (folder.Path() / "settings.ini").string();
    support::TestDevice device(options);
    device.Platform.StartProgram();
    EXPECT_EQ(device.Main().FontSize(), GetParam().Size);
    EXPECT_EQ(device.Title().FontSize(), GetParam().Size);
    EXPECT_EQ(Display.DefaultFontSize, 8);
}

INSTANTIATE_TEST_SUITE_P(Values, FontSizeSetting,
                         testing::Values(FontSizeRow{"14", 14}, FontSizeRow{"", 8}, FontSizeRow{"big", 8},
                                         FontSizeRow{"-3", 8}, FontSizeRow{"99999999", 8}));

TEST(KeysAtTheEnd, OfAPalmAreGivenBackWithOneThatWasNeverTaken) {
    support::TestDevice device(support::OfType(1));
    device.Platform.StartProgram();
    frmQuorin::Form_Unload();
    std::vector<std::int32_t> expected = {310};
    expected.insert(expected.end(), PalmKeys.begin(), PalmKeys.end());
    EXPECT_EQ(device.Did.Released, expected);
}

TEST(KeysAtTheEnd, OfAWindowsMobileDeviceAreGivenBack) {
    support::TestDevice device(support::OfType(7));
    device.Platform.StartProgram();
    frmQuorin::Form_Unload();
    EXPECT_THAT(device.Did.Released, ElementsAre(2));
}

TEST(KeysAtTheEnd, OfAnyOtherDeviceAreNone) {
    support::TestDevice device(support::OfType(3));
    device.Platform.StartProgram();
    frmQuorin::Form_Unload();
    EXPECT_THAT(device.Did.Released, IsEmpty());
}

} // namespace
} // namespace modQuorin
