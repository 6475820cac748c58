// SPDX-License-Identifier: MIT
// A person's actions on a form: taps, keys and menus, and the order of the events.
#include "src/view/platform/keys.h"
#include "tests/conformance/form_suites.h"

namespace conformance {

using testing::ElementsAre;
using testing::IsEmpty;

// Taps.

TEST_P(PersonSuite, MovesTheCurrentCellByATapThenPressesAndReleases) {
    ShowRows(5);
    Device->Tap(2, 1);
    EXPECT_THAT(Heard(), ElementsAre("grdMain_RowColChange", "grdMain_Press", "grdMain_Release"));
    EXPECT_EQ(Form().grdMain.Row(), 2);
    EXPECT_EQ(Form().grdMain.Col(), 1);
    Device->Tap(2, 1);
    EXPECT_THAT(Heard(), ElementsAre("grdMain_Press", "grdMain_Release")) << "it is there";
}

TEST_P(PersonSuite, TakesTheFocusFromAFieldByATapBeforeTheCellMoves) {
    ShowRows(5);
    Open(Form().txtInputField);
    Form().txtInputField.SetBounds({0, 150, 100, 20});
    Device->Tap(3, 0);
    EXPECT_THAT(Heard(),
                ElementsAre("txtInputField_LostFocus", "grdMain_RowColChange", "grdMain_Press", "grdMain_Release"));
}

TEST_P(PersonSuite, TapsNothingOnAGridThatIsHiddenOrDisabled) {
    ShowRows(5);
    Form().grdMain.SetEnabled(false);
    Device->Tap(2, 0);
    Form().grdMain.SetEnabled(true);
    Form().grdMain.SetVisible(false);
    Device->Tap(2, 0);
    EXPECT_EQ(Form().grdMain.Row(), 0);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(PersonSuite, TapsNoRowWithoutAHeightAndNoCellOutside) {
    ShowRows(5);
    Form().grdMain.SetRowHeight(2, 0);
    Settle();
    for (const auto& [row, col] : {std::pair(2, 0), std::pair(5, 0), std::pair(0, 2), std::pair(-1, 0)})
        Device->Tap(row, col);
    EXPECT_THAT(Heard(), IsEmpty());
}

// Keys.

TEST_P(PersonSuite, MovesTheCurrentCellByTheArrows) {
    ShowRows(5);
    Device->PressKey(CodeOf(Key::Down));
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 40", "grdMain_RowColChange", "Form_KeyUp 40"));
    for (const Key key : {Key::Right, Key::Right, Key::Down, Key::Left, Key::Up})
        Device->PressKey(CodeOf(key));
    EXPECT_EQ(Form().grdMain.Row(), 1);
    EXPECT_EQ(Form().grdMain.Col(), 0);
    for (int i = 0; i < 10; ++i)
        Device->PressKey(CodeOf(Key::Down));
    EXPECT_EQ(Form().grdMain.Row(), 4) << "it stops at the edge";
}

TEST_P(PersonSuite, RaisesAKeyThenItsCharacterThenWhatComesOfIt) {
    Open(Form().txtInputField);
    Device->PressKey('A');
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 65", "Form_KeyPress 65", "txtInputField_Change", "Form_KeyUp 65"));
    EXPECT_EQ(Form().txtInputField.Contents(), u"A");
}

TEST_P(PersonSuite, LeavesAKeyToTheFormThatConsumesIt) {
    ShowRows(5);
    Raised.Consumes = {"Form_KeyDown"};
    Device->PressKey(CodeOf(Key::Down));
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 40", "Form_KeyUp 40"));
    Open(Form().txtInputField);
    Device->PressKey('A');
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 65", "Form_KeyUp 65"));
    EXPECT_EQ(Form().txtInputField.Contents(), u"");
}

TEST_P(PersonSuite, LeavesACharacterToTheFormThatConsumesIt) {
    Open(Form().txtInputField);
    Raised.Consumes = {"Form_KeyPress"};
    Device->PressKey('A');
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 65", "Form_KeyPress 65", "Form_KeyUp 65"));
    EXPECT_EQ(Form().txtInputField.Contents(), u"");
}

TEST_P(PersonSuite, MovesNothingByAKeyOnADisabledGrid) {
    ShowRows(5);
    Form().grdMain.SetEnabled(false);
    Device->PressKey(CodeOf(Key::Down));
    EXPECT_EQ(Form().grdMain.Row(), 0);
    EXPECT_THAT(Heard(), ElementsAre("Form_KeyDown 40", "Form_KeyUp 40"));
}

TEST_P(PersonSuite, GivesAKeyToNoFieldThatItsHandlerHasOpened) {
    ShowRows(5);
    Raised.When["Form_KeyDown"] = [this] {
        Form().txtInputField.SetVisible(true);
        Form().txtInputField.SetFocus();
    };
    Device->PressKey('A');
    EXPECT_EQ(Form().txtInputField.Contents(), u"");
    EXPECT_EQ(Form().grdMain.Row(), 0);
}

// Menus.

TEST_P(PersonSuite, ClicksTheItemOrTheCaptionOfAMenu) {
    for (MenuItem* title : {&Form().mnuButton1, &Form().mnuButton2}) {
        title->SetCaption(u"Menu");
        title->SetVisible(true);
    }
    for (MenuItem* item : {Form().mnuButtonO1[0], Form().mnuButtonO1[4], Form().mnuButtonO2[2]}) {
        item->SetCaption(u"Item");
        item->SetVisible(true);
    }
    Settle();
    Device->ClickItem(1, 1);
    Device->ClickItem(1, 5);
    Device->ClickItem(2, 3);
    Device->ClickTitle(1);
    Device->ClickTitle(2);
    EXPECT_THAT(Heard(), ElementsAre("mnuButtonO1_Click 1", "mnuButtonO1_Click 5", "mnuButtonO2_Click 3",
                                     "mnuButton1_Click", "mnuButton2_Click"));
}

TEST_P(PersonSuite, ClicksNothingOfAMenuThatIsHiddenOrDisabled) {
    Form().mnuButton1.SetVisible(true);
    Form().mnuButtonO1[0]->SetCaption(u"Item");
    Form().mnuButtonO1[0]->SetVisible(true);
    Form().mnuButtonO1[0]->SetEnabled(false);
    Settle();
    Device->ClickItem(1, 1);
    Device->ClickItem(1, 2);
    Form().mnuButtonO1[0]->SetEnabled(true);
    Form().mnuButton1.SetEnabled(false);
    Settle();
    Device->ClickItem(1, 1);
    Device->ClickTitle(1);
    Device->ClickTitle(2);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(PersonSuite, KeepsTheFocusWhereItIsByAClickInAMenu) {
    Open(Form().txtInputField);
    Form().mnuButton1.SetVisible(true);
    Form().mnuButtonO1[0]->SetCaption(u"Item");
    Form().mnuButtonO1[0]->SetVisible(true);
    Settle();
    Device->ClickTitle(1);
    Device->ClickItem(1, 1);
    EXPECT_THAT(Heard(), ElementsAre("mnuButton1_Click", "mnuButtonO1_Click 1"));
}

} // namespace conformance
