// SPDX-License-Identifier: MIT
#include "src/app/preferences.h"

#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;
using testing::ElementsAre;

class Preferences : public support::Program {
protected:
    explicit Preferences(const backends::DeviceOptions& options = {}) : Program(options) {
        MenuEvent(u"Preferences...");
    }
    Text Setting(const char16_t* key) { return GetSetting(key, u"(none)"); }
};

TEST_F(Preferences, AreAListOfCommands) {
    EXPECT_EQ(TitleCell(), u"Preferences");
    EXPECT_THAT(Column(0), ElementsAre(u"Zoom", u"Select Storage Volume...", u"Bluetooth Serial Setup...",
                                       u"Toggle Colour: On", u"Enter Custom Serial ID...", u"Debug"));
}

class FinePalmPreferences : public Preferences {
protected:
    static backends::DeviceOptions FinePalm() {
        backends::DeviceOptions options = support::OfType(1);
        options.Screen = {320, 320};
        return options;
    }
    FinePalmPreferences() : Preferences(FinePalm()) {}
};

TEST_F(FinePalmPreferences, HaveNoZoomAndCountTheirRowsWithoutIt) {
    EXPECT_THAT(Column(0), ElementsAre(u"Select Storage Volume...", u"Bluetooth Serial Setup...", u"Toggle Colour: On",
                                       u"Enter Custom Serial ID...", u"Debug"));
    Tap(1);
    EXPECT_EQ(Screens.ListKind, u"COMMPORT");
    GoBack();
    EXPECT_EQ(Device.Main().Row(), 1);
}

class PalmPreferences : public Preferences {
protected:
    PalmPreferences() : Preferences(support::OfType(1)) {}
};

TEST_F(PalmPreferences, HaveZoomOnACoarseScreen) {
    EXPECT_EQ(Cell(0), u"Zoom");
}

TEST_F(Preferences, HighlightTheLastRowAsWell) {
    Device.Main().SetRow(5);
    GoBack();
    MenuEvent(u"Preferences...");
    EXPECT_EQ(Device.Main().Row(), 5);
}

TEST_F(Preferences, HighlightTheRowThatWasLeft) {
    Device.Main().SetRow(4);
    GoBack();
    MenuEvent(u"inf editor...");
    GoBack();
    MenuEvent(u"Preferences...");
    EXPECT_EQ(Device.Main().Row(), 4);
}

struct ZoomStep {
    std::int32_t From, To;
};

class ZoomOf : public Preferences, public testing::WithParamInterface<ZoomStep> {};

TEST_P(ZoomOf, GoesUpBySixAtLeastAndThenBeginsAtFive) {
    Device.Main().SetFontSize(GetParam().From);
    MenuEvent(u"Zoom");
    EXPECT_EQ(Device.Main().FontSize(), GetParam().To);
    EXPECT_EQ(Device.Title().FontSize(), GetParam().To);
    EXPECT_EQ(Setting(u"FONTSIZE"), modStringTools::NumberText(GetParam().To));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ZoomOf,
                         testing::Values(ZoomStep{8, 14}, ZoomStep{14, 20}, ZoomStep{20, 26}, ZoomStep{26, 30},
                                         ZoomStep{30, 5}, ZoomStep{5, 11}, ZoomStep{24, 30}, ZoomStep{25, 30},
                                         ZoomStep{29, 30}, ZoomStep{40, 5}));

/// A font that has only a few sizes.
struct FewSizes {
    std::vector<std::int32_t> Sizes;
    std::int32_t From, To;
};

class ZoomOfAFontWith : public Preferences, public testing::WithParamInterface<FewSizes> {};

TEST_P(ZoomOfAFontWith, FewSizesTakesTheNextThatIsFarEnough) {
    Device.Main().SetFontSize(GetParam().From);
    Device.Platform.grdMain.OfferFontSizes(GetParam().Sizes);
    MenuEvent(u"Zoom");
    EXPECT_EQ(Device.Main().FontSize(), GetParam().To);
    EXPECT_EQ(Setting(u"FONTSIZE"), modStringTools::NumberText(GetParam().To));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ZoomOfAFontWith,
                         testing::Values(FewSizes{{8, 9, 12, 18, 24}, 8, 18}, // 12 is less than six sizes away
                                         FewSizes{{8, 9}, 8, 9},              // the largest there is
                                         FewSizes{{5, 8, 9}, 9, 5},           // nothing larger: round to the smallest
                                         FewSizes{{8, 12, 18}, 18, 18},       // which is refused as well
                                         FewSizes{{8, 14, 31}, 14, 14}));     // 31 is never tried

struct PreferenceRowOf {
    const char16_t* Row;
    const ScreenId* Leads; ///< the screen after a tap
    const char16_t* Kind;  ///< of the list on it
    const char16_t* Title;
};

class RowOfPreferences : public Preferences, public testing::WithParamInterface<PreferenceRowOf> {};

TEST_P(RowOfPreferences, IsACommand) {
    const std::vector<Text> rows = Column(0);
    const auto row = std::find(rows.begin(), rows.end(), GetParam().Row);
    ASSERT_NE(row, rows.end());
    Device.WillAnswer(platform::BoxAnswer::Ok);
    Device.WillAnswer(platform::BoxAnswer::Ok);
    Text promptTitle;
    Device.WillDo([&promptTitle, this] {
        promptTitle = TitleCell();
        GoBack();
    });
    Tap(static_cast<std::int32_t>(row - rows.begin()));
    EXPECT_EQ(Screen(), *GetParam().Leads);
    EXPECT_EQ(Screens.ListKind, GetParam().Kind);
    EXPECT_EQ(promptTitle.empty() ? TitleCell() : promptTitle, GetParam().Title);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RowOfPreferences,
    testing::Values(PreferenceRowOf{u"Zoom", &ScrPreferences, u"", u"Preferences"},
                    PreferenceRowOf{u"Select Storage Volume...", &ScrList, u"STORAGEVOLUME", u"Select Volume"},
                    PreferenceRowOf{u"Bluetooth Serial Setup...", &ScrList, u"COMMPORT", u"Com Port"},
                    PreferenceRowOf{u"Toggle Colour: On", &ScrPreferences, u"", u"Preferences"},
                    PreferenceRowOf{u"Enter Custom Serial ID...", &ScrPreferences, u"", u"Serial ID"},
                    PreferenceRowOf{u"Debug", &ScrPreferences, u"", u"Preferences"}));

TEST_F(Preferences, ZoomLaysTheScreenOutAfresh) {
    MenuEvent(u"Zoom");
    EXPECT_EQ(Screen(), ScrPreferences);
    EXPECT_EQ(Device.Main().RowHeight(0), 28); // a line of size 14 is 26 pixels high
    EXPECT_EQ(Device.Title().RowHeight(0), 28);
}

TEST_F(Preferences, ToggledColourShowsAtOnceAndIsKept) {
    Tap(3);
    EXPECT_EQ(Cell(3), u"Toggle Colour: Off");
    EXPECT_EQ(Device.Main().Rows(), 6);
    EXPECT_EQ(Device.Main().Row(), 3);
    EXPECT_EQ(Setting(u"COLOUR"), u"0");
    Tap(3);
    EXPECT_EQ(Cell(3), u"Toggle Colour: On");
    EXPECT_EQ(Setting(u"COLOUR"), u"-1");
}

TEST_F(Preferences, ToggledColourIsFoundByTheNextStart) {
    Tap(3);
    Device.Platform.StartProgram();
    EXPECT_FALSE(modPDAUI::Display.ColourOn);
}

/// The technician's answer when asked for a port.
class SerialId : public Preferences {
protected:
    void Enter(const Text& text) {
        Device.WillDo([this, text] {
            EXPECT_EQ(TitleCell(), u"Serial ID");
            EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"");
            Type(text);
        });
        Device.WillDo([] { MenuEvent(u"Ok"); });
        Tap(4);
    }
    void Cancel() {
        Device.WillDo([] { GoBack(); });
        Tap(4);
    }
};

TEST_F(SerialId, IsStoredAsItStands) {
    Enter(u" my port 7 ");
    EXPECT_EQ(Setting(u"ComPort"), u" my port 7 ");
    EXPECT_EQ(Screen(), ScrPreferences);
}

TEST_F(SerialId, LeftEmptyStoresNothing) {
    Enter(u"");
    EXPECT_EQ(Setting(u"ComPort"), u"(none)");
}

TEST_F(SerialId, CancelledAtFirstStoresNothing) {
    Cancel();
    EXPECT_EQ(Setting(u"ComPort"), u"(none)");
}

TEST_F(SerialId, CancelledLaterStoresTheLastAnswerAgain) {
    Enter(u"first");
    SaveSetting(u"ComPort", u"OFF");
    Cancel();
    EXPECT_EQ(Setting(u"ComPort"), u"first"); // a cancelled prompt returns its last accepted answer
}

struct InfoRow {
    std::int32_t Type;
    bool Written;
};

class LeavingPreferences : public testing::TestWithParam<InfoRow> {};

TEST_P(LeavingPreferences, TellsTheDataPathToOthersOnWindowsMobileAlone) {
    support::TestDevice device(support::OfType(GetParam().Type));
    device.Platform.StartProgram();
    device.Folder.Put("QVRN.info", "one\ntwo\nthree\n");
    GotoScreen(ScrPreferences);
    GoBack();
    EXPECT_EQ(device.Folder.Bytes("QVRN.info") != "one\ntwo\nthree\n", GetParam().Written);
    EXPECT_EQ(Screens.CurrentScreen, ScrMain);
}

INSTANTIATE_TEST_SUITE_P(Types, LeavingPreferences,
                         testing::Values(InfoRow{0, false}, InfoRow{3, true}, InfoRow{7, true}, InfoRow{6, false}));

} // namespace
} // namespace modQuorin
