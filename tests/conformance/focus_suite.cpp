// SPDX-License-Identifier: MIT
// Which control has the focus, and the events of a change. grdMain and cbotxtInputField raise none.
#include "src/view/platform/keys.h"
#include "tests/conformance/form_suites.h"

namespace conformance {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(FocusSuite, IsLostByTheOneBeforeTheOtherGetsIt) {
    Form().txtInputField.SetVisible(true);
    Form().cboInputField.SetVisible(true);
    Form().txtInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_GotFocus"));
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "cboInputField_GotFocus"));
    Form().txtInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("cboInputField_LostFocus", "txtInputField_GotFocus"));
}

struct FocusRow {
    Control& Target;
    std::vector<std::string> Got, Lost; ///< the get-focus and lose-focus events of a control
};

TEST_P(FocusSuite, ReachesEachKindOfControl) {
    Open(Form().txtInputField);
    const FocusRow rows[] = {{Form().cboInputField, {"cboInputField_GotFocus"}, {"cboInputField_LostFocus"}},
                             {Form().grdTitle, {"grdTitle_GotFocus"}, {}},
                             {Form().lstHoldMenu, {}, {"lstHoldMenu_LostFocus"}},
                             {Form().cbotxtInputField, {}, {}},
                             {Form().dteInputField, {}, {}},
                             {Form().grdMain, {}, {}}};
    std::vector<std::string> expected;
    for (const FocusRow& row : rows) {
        row.Target.SetVisible(true);
        row.Target.SetFocus();
        expected.emplace_back("txtInputField_LostFocus");
        expected.insert(expected.end(), row.Got.begin(), row.Got.end());
        Form().txtInputField.SetFocus();
        expected.insert(expected.end(), row.Lost.begin(), row.Lost.end());
        expected.emplace_back("txtInputField_GotFocus");
        EXPECT_EQ(Heard(), std::exchange(expected, {}));
    }
}

// For a control without events, the effect of keys shows that it has the focus.

TEST_P(FocusSuite, BringsATextToTheBoxThatHasIt) {
    Open(Form().txtInputField);
    Open(Form().cbotxtInputField);
    Device->Type(u"x");
    EXPECT_EQ(Form().cbotxtInputField.Contents(), u"x");
    EXPECT_EQ(Form().txtInputField.Contents(), u"");
}

TEST_P(FocusSuite, BringsTheArrowsToTheControlThatHasIt) {
    ShowRows(5);
    Form().dteInputField.SetDate({2007, 3, 5});
    Open(Form().dteInputField);
    Device->PressKey(CodeOf(Key::Right));
    EXPECT_EQ(Form().dteInputField.Date(), (CalendarDate{2007, 3, 6}));
    EXPECT_EQ(Form().grdMain.Row(), 0);
    Form().grdMain.SetFocus();
    Device->PressKey(CodeOf(Key::Down));
    EXPECT_EQ(Form().grdMain.Row(), 1);
}

TEST_P(FocusSuite, IsKeptWithoutAnEvent) {
    Open(Form().txtInputField);
    Form().txtInputField.SetFocus();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FocusSuite, IsNotTakenByAHiddenOrDisabledControl) {
    Open(Form().txtInputField);
    Form().cboInputField.SetVisible(false);
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), IsEmpty());
    Form().cboInputField.SetVisible(true);
    Form().cboInputField.SetEnabled(false);
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), IsEmpty());
    Form().grdMain.SetEnabled(false);
    Form().grdMain.SetFocus();
    EXPECT_THAT(Heard(), IsEmpty());
    Form().cboInputField.SetEnabled(true);
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "cboInputField_GotFocus"));
}

TEST_P(FocusSuite, IsLostByAControlThatIsHidden) {
    Open(Form().txtInputField);
    Form().cboInputField.SetVisible(false);
    EXPECT_THAT(Heard(), IsEmpty()) << "another one";
    Form().txtInputField.SetVisible(false);
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus"));
    Form().txtInputField.SetVisible(false);
    EXPECT_THAT(Heard(), IsEmpty());
    Form().txtInputField.SetVisible(true);
    EXPECT_THAT(Heard(), IsEmpty()) << "it does not come back by itself";
    Form().txtInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_GotFocus"));
}

TEST_P(FocusSuite, IsLostByAGridThatIsHidden) {
    Form().grdTitle.SetVisible(true);
    Form().grdTitle.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("grdTitle_GotFocus"));
    Form().grdTitle.SetVisible(false);
    Form().grdTitle.SetVisible(true);
    Form().grdTitle.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("grdTitle_GotFocus"));
}

TEST_P(FocusSuite, IsLostByAListThatIsHidden) {
    Open(Form().lstHoldMenu);
    Form().lstHoldMenu.SetVisible(false);
    EXPECT_THAT(Heard(), ElementsAre("lstHoldMenu_LostFocus"));
}

TEST_P(FocusSuite, StaysWithAControlThatIsDisabled) {
    Open(Form().txtInputField);
    Form().txtInputField.SetEnabled(false);
    Form().txtInputField.SetEnabled(true);
    Form().txtInputField.SetFocus();
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FocusSuite, StaysWhileItsControlIsMovedAndFilled) {
    Open(Form().cboInputField);
    Form().cboInputField.SetBounds({50, 60, 70, 30});
    Form().cboInputField.SetFontSize(14);
    Form().cboInputField.AddItem(u"a");
    Form().cboInputField.SetContents(u"a");
    Form().cboInputField.Clear();
    Form().grdMain.SetVisible(false);
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FocusSuite, StaysWhereTheTextBoxGetsOrLosesItsLines) {
    Open(Form().txtInputField);
    Form().txtInputField.SetMultiLine(true);
    Form().txtInputField.SetMultiLine(false);
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FocusSuite, HasMovedAlreadyWhenTheLossIsRaised) {
    Open(Form().txtInputField);
    Form().cboInputField.SetVisible(true);
    Raised.When["txtInputField_LostFocus"] = [this] { Form().cboInputField.SetFocus(); };
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "cboInputField_GotFocus")) << "it has it by then";
}

TEST_P(FocusSuite, IsNotGotByAControlFromWhichTheLossMovedItOn) {
    Open(Form().txtInputField);
    Form().cboInputField.SetVisible(true);
    Form().grdTitle.SetVisible(true);
    Raised.When["txtInputField_LostFocus"] = [this] { Form().grdTitle.SetFocus(); };
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "cboInputField_LostFocus", "grdTitle_GotFocus"));
}

TEST_P(FocusSuite, MayBeGivenOnByTheOneThatGetsIt) {
    Open(Form().txtInputField);
    Form().cboInputField.SetVisible(true);
    Form().grdTitle.SetVisible(true);
    Raised.When["cboInputField_GotFocus"] = [this] { Form().grdTitle.SetFocus(); };
    Form().cboInputField.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "cboInputField_GotFocus", "cboInputField_LostFocus",
                                     "grdTitle_GotFocus"));
}

/// As in the application, the handler of the lose-focus event hides and empties the field.
TEST_P(FocusSuite, IsLostOnceByAFieldThatItsHandlerHides) {
    Open(Form().txtInputField);
    Raised.When["txtInputField_LostFocus"] = [this] {
        Form().txtInputField.SetVisible(false);
        Form().txtInputField.SetContents(u"");
    };
    Form().grdMain.SetVisible(true);
    Form().grdMain.SetFocus();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_LostFocus", "txtInputField_Change"));
    EXPECT_FALSE(Form().txtInputField.Visible());
}

} // namespace conformance
