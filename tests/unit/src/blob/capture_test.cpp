// SPDX-License-Identifier: MIT
#include "src/blob/capture.h"

#include "src/view/prompt.h"
#include "tests/unit/src/blob/record_screen.h"

namespace modBLob {
namespace {

using platform::BoxAnswer;
using testing::ElementsAre;
using testing::IsEmpty;

class Capturing : public RecordScreen {};

TEST_F(Capturing, PutsTheResultIntoTheRowOfItsLastTypeThatHasOne) {
    ShowRecord({{u""}, {u""}, {u""}, {u"Alpha"}, {u""}, {u"x1"}});
    Capture({u"Alpha", u"x1", u"unknown"}, u"23.4");
    EXPECT_THAT(Values(), ElementsAre(u"", u"", u"", u"", u"", u"23.4 ms"));
    EXPECT_EQ(Tones(), TakenTone);
    EXPECT_TRUE(RecordDirty());
}

TEST_F(Capturing, PutsTheResultIntoTheFirstOfTwoRowsOfItsType) {
    ShowRecord({{u"Beta"}, {u"Alpha"}, {u"Alpha"}});
    Capture({u"Alpha"}, u"1");
    EXPECT_THAT(Values(), ElementsAre(u"", u"1 ms", u""));
}

TEST_F(Capturing, ComparesTypesInAnyCase) {
    ShowRecord({{u"x1"}, {u"alpha"}});
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Value(1), u"1 ms");
}

TEST_F(Capturing, DoesNotTakeTheTracePrefixForPartOfAType) {
    ShowRecord({{u"RT: Alpha"}});
    Capture({u"Alpha"}, u"1");
    EXPECT_THAT(Values(), ElementsAre(u""));
}

TEST_F(Capturing, PutsAResultWithoutATypeIntoTheFirstRowWithoutABlob) {
    ShowRecord({{u"Alpha"}, {u""}, {u"dv: Site"}, {u"other", u"enddate"}});
    Capture({u""}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"", u"1 ms", u"", u""));
    EXPECT_EQ(Tones(), RefusedTone);
    EXPECT_TRUE(RecordDirty());
}

TEST_F(Capturing, LetsAnEmptyLastTypeTakeTheResultFromAMatchedOne) {
    ShowRecord({{u"Alpha"}, {u""}});
    Capture({u"Alpha", u""}, u"1");
    EXPECT_THAT(Values(), ElementsAre(u"", u"1 ms"));
    EXPECT_EQ(Tones(), RefusedTone);
}

TEST_F(Capturing, ChangesNothingForAResultWithoutARow) {
    ShowRecord({{u"Alpha", u"enddate"}, {u"dv: Site"}});
    Capture({u"Beta"}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"", u""));
    EXPECT_EQ(Tones(), RefusedTone);
    EXPECT_FALSE(RecordDirty());
}

TEST_F(Capturing, SelectsTheRowOfTheResult) {
    ShowRecord({{u"x1"}, {u"x2"}, {u"Alpha"}});
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().TopRow(), 2);
}

TEST_F(Capturing, AsksBeforeItReplacesAValue) {
    ShowRecord({{u"Alpha"}});
    SetValue(0, u"old ms");
    WillAnswer(BoxAnswer::Yes);
    Capture({u"Alpha"}, u"23.4");
    EXPECT_THAT(Questions(), ElementsAre(u"Replace: \r\nold ms\r\nWith:\r\n23.4 ms?"));
    EXPECT_EQ(Value(0), u"23.4 ms");
    EXPECT_EQ(Tones(), TakenTone);
}

TEST_F(Capturing, AsksWithYesAndNoUnderTheNameOfTheApplication) {
    ShowRecord({{u"Alpha"}});
    SetValue(0, u"old");
    WillAnswer(BoxAnswer::No);
    Capture({u"Alpha"}, u"1");
    ASSERT_EQ(Device.Did.Boxes.size(), 1U);
    EXPECT_EQ(Device.Did.Boxes[0].Buttons, platform::BoxButtons::YesNo);
    EXPECT_EQ(Device.Did.Boxes[0].Icon, platform::BoxIcon::None);
    EXPECT_EQ(Device.Did.Boxes[0].Title, u"Quorin");
}

TEST_F(Capturing, LeavesTheRecordAloneAfterANo) {
    ShowRecord({{u"x1"}, {u"Alpha"}, {u"dv: Site"}, {u"", u"enddate"}});
    SetValue(1, u"old");
    WillAnswer(BoxAnswer::No);
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"", u"old", u"", u""));
    EXPECT_EQ(Tones(), RefusedTone);
    EXPECT_EQ(Grid().Row(), 0);
    EXPECT_TRUE(RecordDirty()) << "the record counts as changed all the same";
}

TEST_F(Capturing, CountsTheTimeOfAQuestionAsNoSleep) {
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        frmQuorin::Form.lastTimerEvent = 1;
        ShowRecord({{u"Alpha"}});
        SetValue(0, u"old");
        WillAnswer(answer);
        Capture({u"Alpha"}, u"1");
        EXPECT_EQ(frmQuorin::Form.lastTimerEvent, Device.Platform.clock.SteadySeconds());
    }
}

TEST_F(Capturing, LeavesTheTimerAloneWithoutAQuestion) {
    frmQuorin::Form.lastTimerEvent = 1;
    ShowRecord({{u"Alpha"}});
    Capture({u"Alpha"}, u"1");
    EXPECT_THAT(Questions(), IsEmpty());
    EXPECT_EQ(frmQuorin::Form.lastTimerEvent, 1);
}

TEST_F(Capturing, WritesTheResultThatTheQuestionWasAbout) {
    ShowRecord({{u"Alpha"}, {u"Beta"}, {u"dv: Site"}});
    SetValue(0, u"old");
    WillAnswer(BoxAnswer::Yes);
    WhileAQuestionIsOpen([] { Capture({u"Beta"}, u"2", {u"Site=2"}); });
    Capture({u"Alpha"}, u"1", {u"Site=1"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"2 ms", u"1"));
}

class CapturingDuringAnEdit : public RecordScreen {
protected:
    CapturingDuringAnEdit() {
        ShowRecord({{u"x1"}, {u"Alpha"}, {u"dv: Site"}, {u"", u"enddate"}});
        SetValue(0, u"old x1");
        SetValue(1, u"old Alpha");
    }

    void Edit(platform::Control& field, std::int32_t row) {
        Grid().SetRow(row);
        modPDAUI::Input.EditRow = row;
        modPDAUI::Input.EditCol = 1;
        field.SetVisible(true);
    }

    void ExpectRecordUntouched() { EXPECT_THAT(Values(), ElementsAre(u"old x1", u"old Alpha", u"", u"")); }
};

TEST_F(CapturingDuringAnEdit, GivesTheResultToTheTextBoxOfItsOwnRow) {
    Edit(Device.Platform.txtInputField, 1);
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"1 ms");
    EXPECT_THAT(Values(), ElementsAre(u"old x1", u"1 ms", u"5", u"04/03/2021"));
    EXPECT_EQ(Grid().TopRow(), 0) << "the page has moved under the open text box";
    EXPECT_THAT(Questions(), IsEmpty());
    EXPECT_EQ(Tones(), TakenTone);
}

TEST_F(CapturingDuringAnEdit, GivesTheResultToTheTextBoxOfAnotherRow) {
    Edit(Device.Platform.txtInputField, 0);
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"1 ms");
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"old Alpha", u"", u"")); // the cell follows its text box
    EXPECT_EQ(Grid().Row(), 0);
    EXPECT_EQ(Tones(), RefusedTone);
    EXPECT_TRUE(RecordDirty());
}

/// A formula has put a date into the cell, but not into the text box.
TEST_F(CapturingDuringAnEdit, WritesARepeatedResultToTextBoxAndCellEachTime) {
    ShowRecord({{u"Alpha", u"enddate"}});
    Edit(Device.Platform.txtInputField, 0);
    Capture({u"Alpha"}, u"1");
    ASSERT_THAT(Values(), ElementsAre(u"04/03/2021"));
    Capture({u"unknown"}, u"1");
    EXPECT_THAT(Values(), ElementsAre(u"1 ms"));
}

TEST_F(CapturingDuringAnEdit, GivesEvenAResultWithoutARowToTheTextBox) {
    Edit(Device.Platform.txtInputField, 2);
    Capture({u"unknown"}, u"1");
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"1 ms");
    EXPECT_EQ(Tones(), RefusedTone);
    EXPECT_TRUE(RecordDirty());
}

/// The calendar has a screen of its own. A result that comes while it is open is dropped, as on any other screen.
TEST_F(CapturingDuringAnEdit, DropsTheResultInSilenceWhileADateIsChosen) {
    modQuorin::AddScreen(modQuorin::ScrInput, {.GridRows = 1, .GridCols = 1, .Menu = 1});
    modFileSystem::Table.RecordDirty = false;
    Text value;
    modPDAUI::InputPrompt(u"Day", modPDAUI::PromptKind::Date, value, u"", false, false);
    ASSERT_TRUE(Device.Platform.dteInputField.Visible());
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    modPDAUI::EndInput(true);
    ExpectRecordUntouched();
    EXPECT_THAT(Questions(), IsEmpty());
    EXPECT_EQ(Device.Platform.txtInputField.Contents(), u"");
    EXPECT_THAT(Tones(), IsEmpty());
    EXPECT_FALSE(RecordDirty());
}

TEST_F(CapturingDuringAnEdit, LosesAResultToAListOnItsRowButNotItsVariables) {
    Edit(Device.Platform.cboInputField, 1);
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_EQ(Device.Platform.cboInputField.Contents(), u"");
    EXPECT_THAT(Values(), ElementsAre(u"old x1", u"old Alpha", u"5", u"04/03/2021"));
    EXPECT_EQ(Tones(), TakenTone);
}

TEST_F(CapturingDuringAnEdit, PutsTheMenusOnAgain) {
    Device.Platform.menuTitles[0].SetCaption(u"something else");
    Edit(Device.Platform.dteInputField, 0);
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Device.Platform.menuTitles[0].Caption(), u"Record");
}

class SpreadingVariables : public RecordScreen {};

TEST_F(SpreadingVariables, WritesEachIntoItsRow) {
    ShowRecord({{u"Alpha"}, {u"dv: Site"}, {u"dv: ORIGIN"}, {u"dv: Other"}});
    Capture({u"Alpha"}, u"1", {u"ORIGIN=A1", u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"5", u"A1", u""));
}

TEST_F(SpreadingVariables, ReplacesAValueWithoutAQuestion) {
    ShowRecord({{u"Alpha"}, {u"dv: Site"}});
    SetValue(1, u"old");
    Capture({u"Alpha"}, u"1", {u"Site="});
    EXPECT_EQ(Value(1), u"");
    EXPECT_THAT(Questions(), IsEmpty());
}

TEST_F(SpreadingVariables, ComparesNamesInAnyCase) {
    ShowRecord({{u"Alpha"}, {u"DV: site"}, {u"Dv: {ALPHA}Room"}});
    Capture({u"Alpha"}, u"1", {u"SITE=5", u"room=6"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"5", u"6"));
}

TEST_F(SpreadingVariables, PrefersTheRowTiedToTheTypeToAPlainRowInFrontOfIt) {
    ShowRecord({{u"Alpha"}, {u"Beta"}, {u"dv: Site"}, {u""}, {u"dv: {Alpha}Site"}});
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"", u"", u"", u"5"));
    Capture({u"Beta"}, u"2", {u"Site=6"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"2 ms", u"6", u"", u"5"));
}

TEST_F(SpreadingVariables, PrefersTheRowTiedToTheTypeToAPlainRowBehindIt) {
    ShowRecord({{u"Alpha"}, {u"dv: {Alpha}Site"}, {u"dv: Site"}});
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"5", u""));
}

TEST_F(SpreadingVariables, TakesTheLastOfTwoPlainRows) {
    ShowRecord({{u"Alpha"}, {u"dv: Site"}, {u"dv: Site"}});
    Capture({u"Alpha"}, u"1", {u"Site=5"});
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"", u"5"));
}

TEST_F(SpreadingVariables, SplitsAVariableAtItsFirstEqualsSign) {
    ShowRecord({{u"Alpha"}, {u"dv: Site"}});
    Capture({u"Alpha"}, u"1", {u"Site=5=6"});
    EXPECT_EQ(Value(1), u"5=6");
}

TEST_F(SpreadingVariables, SurvivesAVariableWithoutAnEqualsSign) {
    ShowRecord({{u"Alpha"}, {u"dv: Site"}});
    SetValue(1, u"old");
    Capture({u"Alpha"}, u"1", {u"", u"Site"});
    EXPECT_EQ(Value(1), u"");
}

class Formulas : public RecordScreen {};

TEST_F(Formulas, StampTheStartOnceAndTheEndAtEachCapture) {
    ShowRecord({{u"Alpha"},
                {u"Beta"},
                {u"", u"StartDate"},
                {u"", u"STARTTIME"},
                {u"", u"enddate"},
                {u"", u"endtime"},
                {u"x1"}});
    SetTime("2003-02-01T09:05:00");
    Capture({u"Alpha"}, u"1");
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"", u"01/02/2003", u"09:05", u"01/02/2003", u"09:05", u""));
    SetTime("2003-12-14T23:45:00");
    Capture({u"Beta"}, u"2");
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"2 ms", u"01/02/2003", u"09:05", u"14/12/2003", u"23:45", u""));
}

TEST_F(Formulas, WipeTheCellWhenTheyAreUnknown) {
    ShowRecord({{u"Alpha"}, {u"", u"total"}});
    SetValue(1, u"12");
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Value(1), u"");
}

TEST_F(Formulas, LeaveTheStatusStripHidden) {
    ShowRecord({{u"Alpha", u""}, {u"", u"enddate"}});
    FillFormulaFields();
    EXPECT_EQ(Device.Platform.lblStatus.Caption(), u"Busy");
    EXPECT_FALSE(Device.Platform.lblStatus.Visible());
    EXPECT_TRUE(Grid().Enabled());
}

struct FormulaRow {
    Text Formula;
    Text Current;
    Text Expected;
};

void PrintTo(const FormulaRow& row, std::ostream* out) {
    *out << modStringTools::ToBytes(row.Formula) << " of " << testing::PrintToString(row.Current);
}

class FormulaOf : public RecordScreen, public testing::WithParamInterface<FormulaRow> {};

TEST_P(FormulaOf, GivesTheCellsNewValue) {
    SetTime("2021-03-04T09:05:00");
    EXPECT_EQ(FormulaValue(GetParam().Formula, GetParam().Current), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(Cells, FormulaOf,
                         testing::Values(FormulaRow{u"startdate", u"01/02/2003", u"01/02/2003"},
                                         FormulaRow{u"startdate", u"", u"04/03/2021"},
                                         FormulaRow{u"starttime", u"1", u"1"}, FormulaRow{u"starttime", u"", u"09:05"},
                                         FormulaRow{u"enddate", u"01/02/2003", u"04/03/2021"},
                                         FormulaRow{u"EndTime", u"1", u"09:05"}, FormulaRow{u"end date", u"1", u""},
                                         FormulaRow{u"", u"1", u""}));

TEST(PaddingWithZeros, LeavesALongerTextAsItIs) {
    EXPECT_EQ(PadZeros(u"7", 2), u"07");
    EXPECT_EQ(PadZeros(u"", 2), u"00");
    EXPECT_EQ(PadZeros(u"12", 2), u"12");
    EXPECT_EQ(PadZeros(u"2021", 2), u"2021");
    EXPECT_EQ(PadZeros(u"7", -1), u"7");
}

TEST_F(RecordScreen, IsNotTouchedByAResultWhileAnotherScreenIsOn) {
    ShowEmptyList(modQuorin::ScrMain);
    Capture({u"Alpha"}, u"1");
    EXPECT_THAT(Column(0), ElementsAre(u""));
    EXPECT_THAT(Tones(), IsEmpty());
    EXPECT_FALSE(RecordDirty());
}

class LinkTrace : public RecordScreen {
protected:
    LinkTrace() { ShowEmptyList(modQuorin::ScrBluetoothDebug); }
};

TEST_F(LinkTrace, ListsTheResult) {
    Capture({u"Alpha", u"x1"}, u"23.4", {u"ORIGIN=A1", u"Site=1"});
    EXPECT_THAT(Column(0), ElementsAre(u"RT: Alpha", u"RT: x1", u"DV: ORIGIN=A1", u"DV: Site=1", u"23.4 ms", u"---"));
    EXPECT_EQ(Tones(), TakenTone);
    EXPECT_FALSE(RecordDirty());
}

TEST_F(LinkTrace, ShowsTheLastLineOfTheLastResult) {
    Capture({u"Alpha"}, u"1");
    Capture({u"Alpha"}, u"2");
    EXPECT_EQ(Grid().Rows(), 6);
    EXPECT_EQ(Grid().Row(), 5);
    EXPECT_EQ(Grid().TopRow(), 5);
}

TEST_F(LinkTrace, PutsTheMenusOnAgain) {
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Device.Platform.menuTitles[0].Caption(), u"Record");
    EXPECT_EQ(Device.Platform.menuTitles[1].Caption(), u"Back");
}

class ReceivedText : public RecordScreen {
protected:
    static Text BlobOf(const Text& type, const Text& value) {
        return u"[BLob]\r\n[RESULT_TYPE \"" + type + u"\"]\r\n[RESULT_VALUE \"" + value +
               u"\"]\r\n[RESULT_UNIT \"ms\"]\r\n[/BLob]\r\n";
    }
};

TEST_F(ReceivedText, PutsEachResultOfABatchIntoTheRecord) {
    ShowRecord({{u"Alpha"}, {u"Beta"}});
    ProcessReceivedText(BlobOf(u"Beta", u"2") + BlobOf(u"Alpha", u"1"));
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"2 ms"));
    EXPECT_EQ(Tones().size(), 2U);
}

TEST_F(ReceivedText, CapturesNothingOfABatchInWhichABlobFailed) {
    ShowRecord({{u"Alpha"}, {u"Beta"}});
    ProcessReceivedText(BlobOf(u"Alpha", u"1") + u"[BLob]\r\n[ORIGIN \"A1\"]\r\n[/BLob]\r\n");
    EXPECT_THAT(Values(), ElementsAre(u"", u""));
    ProcessReceivedText(BlobOf(u"Beta", u"2"));
    EXPECT_THAT(Values(), ElementsAre(u"1 ms", u"2 ms"));
}

TEST_F(ReceivedText, ShowsTheStatusStripWhileItIsDecoded) {
    ShowRecord({{u"Alpha"}});
    SetValue(0, u"old");
    WillAnswer(BoxAnswer::No);
    WhileAQuestionIsOpen([this] {
        EXPECT_TRUE(Device.Platform.lblStatus.Visible());
        EXPECT_EQ(Device.Platform.lblStatus.Caption(), u"Decoding Result");
        EXPECT_FALSE(Grid().Enabled());
    });
    ProcessReceivedText(BlobOf(u"Alpha", u"1"));
    EXPECT_EQ(Questions().size(), 1U);
    EXPECT_FALSE(Device.Platform.lblStatus.Visible());
    EXPECT_TRUE(Grid().Enabled());
}

} // namespace
} // namespace modBLob
