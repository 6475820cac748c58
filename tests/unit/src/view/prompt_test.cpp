// SPDX-License-Identifier: MIT
#include "src/view/prompt.h"

#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modPDAUI {
namespace {

using namespace modQuorin;
using platform::Box;
using platform::CalendarDate;
using support::PrintTo;
using testing::ElementsAre;
using testing::IsEmpty;

class Asking : public support::Program {
protected:
    explicit Asking(const backends::DeviceOptions& options = {}) : Program(options) {
        GotoScreen(ScrFileDebug);
        Repaint();
    }

    /// Opens a prompt and does not wait for its answer.
    void Ask(PromptKind kind, Text value = u"", const Text& list = u"") {
        InputPrompt(u"Title", kind, value, list, false, false);
    }
    /// Returns the answer of a prompt that waits while the technician types this.
    Text Accept(const Text& typed) {
        Device.WillDo([this, typed] { Type(typed); });
        Device.WillDo([] { MenuEvent(u"Ok"); });
        return Wait();
    }
    Text Cancel() {
        Device.WillDo([] { GoBack(); });
        return Wait();
    }
    Text Wait(Text value = u"old") {
        InputPrompt(u"Title", PromptKind::Line, value, u"", false, true);
        return value;
    }
    bool AnyField() { return AnyInputFieldVisible(); }

    backends::headless::HeadlessPlatform& Form = Device.Platform;
};

TEST_F(Asking, ShowsTheTitleOverAFieldInTheGridsPlace) {
    Ask(PromptKind::Line, u"value");
    EXPECT_EQ(Screen(), ScrInput);
    EXPECT_EQ(Screens.PreviousScreen, ScrFileDebug);
    EXPECT_EQ(TitleCell(), u"Title");
    EXPECT_FALSE(Device.Main().Visible());
    EXPECT_TRUE(Screens.GridEditMode);
    EXPECT_TRUE(Prompt.PromptOpen);
}

TEST_F(Asking, ForALineShowsABoxOfOneLine) {
    Ask(PromptKind::Line, u"value");
    EXPECT_TRUE(Form.txtInputField.Visible());
    EXPECT_FALSE(Form.txtInputField.MultiLine());
    EXPECT_EQ(Form.txtInputField.Contents(), u"value");
    EXPECT_EQ(Form.txtInputField.FontName(), u"Tahoma");
    EXPECT_EQ(Form.txtInputField.FontSize(), 8);
    EXPECT_EQ(Form.txtInputField.Bounds(), (Box{0, 16, 640, 19}));
    EXPECT_EQ(Form.focus.Holder(), &Form.txtInputField);
}

/// The control that the form shows for each kind of input on each kind of device.
struct KindRow {
    std::int32_t DeviceType, Kind;
    const char* Shown; ///< the control, its height, and whether it has several lines
};

class KindOfInput : public Asking, public testing::WithParamInterface<KindRow> {
protected:
    KindOfInput() : Asking(support::OfType(GetParam().DeviceType)) {}
    std::string Shown() {
        std::string shown;
        const auto tell = [&shown](const char* name, const platform::Control& control) {
            if (control.Visible())
                shown += std::string(name) + " " + std::to_string(static_cast<int>(control.Bounds().Height));
        };
        tell("text", Form.txtInputField);
        tell("combo", Form.cboInputField);
        tell("combotext", Form.cbotxtInputField);
        tell("date", Form.dteInputField);
        return shown + (Form.txtInputField.MultiLine() ? " lines" : "");
    }
};

TEST_P(KindOfInput, ShowsItsControl) {
    Form.cboInputField.SetBounds({0, 0, 100, 21}); // a combo box keeps the height that it has
    Ask(PromptKind{GetParam().Kind}, u"", u"a,b");
    EXPECT_EQ(Shown(), GetParam().Shown);
}

INSTANTIATE_TEST_SUITE_P(Table, KindOfInput,
                         testing::Values(KindRow{0, 0, "text 19"}, KindRow{0, 1, "combo 21"}, KindRow{0, 2, "date 464"},
                                         KindRow{0, 3, "text 464 lines"}, KindRow{0, 4, "text 19"},
                                         KindRow{0, -1, "text 19"}, KindRow{9, 0, "text 19"}, KindRow{9, 1, ""},
                                         KindRow{9, 2, "date 304"}, KindRow{9, 3, "text 304 lines"},
                                         KindRow{1, 1, "combo 21"}, KindRow{7, 1, "combo 21"}));

TEST_F(Asking, ForATextShowsABoxAsTallAsTheGrid) {
    Ask(PromptKind::Text);
    EXPECT_TRUE(Form.txtInputField.MultiLine());
    EXPECT_EQ(Form.txtInputField.Bounds(), (Box{0, 16, 640, 464}));
}

TEST_F(Asking, OfAnUnknownKindIsForALine) {
    Ask(PromptKind{17});
    EXPECT_TRUE(Form.txtInputField.Visible());
    EXPECT_FALSE(Form.txtInputField.MultiLine());
}

TEST_F(Asking, ForADateShowsTheDateOfTheText) {
    Ask(PromptKind::Date, u"29/02/2008");
    EXPECT_TRUE(Form.dteInputField.Visible());
    EXPECT_EQ(Form.dteInputField.Date(), (CalendarDate{2008, 2, 29}));
    EXPECT_EQ(Form.dteInputField.Bounds(), (Box{0, 16, 640, 464}));
    EXPECT_EQ(Form.focus.Holder(), &Form.dteInputField);
}

TEST_F(Asking, ForADateWithoutOneShowsToday) {
    Ask(PromptKind::Date);
    EXPECT_EQ(Form.dteInputField.Date(), (CalendarDate{2007, 3, 5}));
}

class NoDate : public Asking, public testing::WithParamInterface<const char16_t*> {};

TEST_P(NoDate, StopsTheProgram) {
    const Text failure = support::FailureOf([this] { Ask(PromptKind::Date, GetParam()); });
    EXPECT_NE(failure.find(GetParam()), Text::npos);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoDate,
                         testing::Values(u"soon", u"05/03", u"30/02/2007", u"29/02/2007", u"00/01/2007", u"01/13/2007",
                                         u"1/2/2007/4", u"+5/03/2007", u"5/+3/2007", u"05/03/+2007", u"05/03/+7",
                                         u"05/03/-7", u"-5/03/2007", u"05/03/0 7", u"05/03/"));

/// A text that a person or another tool may have written, and the date that it is read as.
struct WrittenDate {
    const char16_t* Written;
    CalendarDate Date;
};

class DateOfACell : public Asking, public testing::WithParamInterface<WrittenDate> {
protected:
    Text AnswerAfter(const std::function<void()>& choice) {
        Device.WillDo(choice);
        Text value = GetParam().Written;
        InputPrompt(u"Day", PromptKind::Date, value, u"", false, true);
        return value;
    }
};

TEST_P(DateOfACell, IsReadAsThatDate) {
    Ask(PromptKind::Date, GetParam().Written);
    EXPECT_EQ(Form.dteInputField.Date(), GetParam().Date);
}

TEST_P(DateOfACell, IsWrittenBackAsItWasWhereNothingWasChanged) {
    EXPECT_EQ(AnswerAfter([] { MenuEvent(u"Ok"); }), GetParam().Written);
}

TEST_P(DateOfACell, IsWrittenInFullWhereItWasChanged) {
    EXPECT_EQ(AnswerAfter([this] {
                  Form.dteInputField.SetDate({2031, 2, 1});
                  frmQuorin::dteInputField_Closed();
              }),
              u"01/02/2031");
}

INSTANTIATE_TEST_SUITE_P(Dates, DateOfACell,
                         testing::Values(WrittenDate{u"05/03/2007", {2007, 3, 5}},
                                         WrittenDate{u"05/03/07", {2007, 3, 5}}, WrittenDate{u"1/1/30", {1930, 1, 1}},
                                         WrittenDate{u"31/12/29", {2029, 12, 31}}, WrittenDate{u"1/2/00", {2000, 2, 1}},
                                         WrittenDate{u"1/2/99", {1999, 2, 1}}, WrittenDate{u"29/2/04", {2004, 2, 29}},
                                         WrittenDate{u"5/3/7", {7, 3, 5}}, WrittenDate{u" 5 / 3 / 07 ", {2007, 3, 5}},
                                         WrittenDate{u"5/3/0007", {7, 3, 5}}));

/// An empty field has no text that could be kept.
TEST_F(Asking, ForADateWithoutOneGivesTodayToo) {
    Ask(PromptKind::Date, u"1/2/03");
    EndInput(false);
    Device.WillDo([] { MenuEvent(u"Ok"); });
    Text value;
    InputPrompt(u"Day", PromptKind::Date, value, u"", false, true);
    EXPECT_EQ(value, u"05/03/2007");
}

struct Items {
    const char16_t* List;
    std::vector<Text> Shown;
};

class AskingForAChoice : public Asking, public testing::WithParamInterface<Items> {};

TEST_P(AskingForAChoice, OffersTheItemsUpToTheFirstEmptyOne) {
    Ask(PromptKind::List, u"value", GetParam().List);
    EXPECT_EQ(Form.cboInputField.Items(), GetParam().Shown);
    EXPECT_EQ(Form.cboInputField.Contents(), u"value");
    EXPECT_EQ(Form.focus.Holder(), &Form.cboInputField);
}

INSTANTIATE_TEST_SUITE_P(Lists, AskingForAChoice,
                         testing::Values(Items{u"a,b,c", {u"a", u"b", u"c"}}, Items{u"a,,c", {u"a"}}, Items{u"", {}},
                                         Items{u",b", {}}, Items{u"a|b", {u"a|b"}}, Items{u"a,", {u"a"}}));

TEST_F(Asking, ForAChoiceForgetsTheItemsOfTheLastOne) {
    Ask(PromptKind::List, u"", u"a,b");
    EndInput(true);
    Ask(PromptKind::List, u"", u"c");
    EXPECT_THAT(Form.cboInputField.Items(), ElementsAre(u"c"));
}

class AskingOnTypeNine : public Asking {
protected:
    AskingOnTypeNine() : Asking(support::OfType(9)) {}
};

TEST_F(AskingOnTypeNine, ForAChoicePreparesNothing) {
    Ask(PromptKind::List, u"value", u"a,b");
    EXPECT_FALSE(AnyField());
    EXPECT_TRUE(Prompt.PromptOpen);
}

TEST_F(AskingOnTypeNine, ReadsTheTextBoxThatStandsForTheComboField) {
    Device.WillDo([this] {
        Form.cbotxtInputField.SetVisible(true);
        Form.cbotxtInputField.SetContents(u"typed");
    });
    Device.WillDo([] { MenuEvent(u"Ok"); });
    Text value;
    InputPrompt(u"Title", PromptKind::List, value, u"a,b", false, true);
    EXPECT_EQ(value, u"typed");
    EXPECT_FALSE(AnyField());
}

TEST_F(Asking, AndWaitingGivesTheAnswer) {
    EXPECT_EQ(Accept(u"abc"), u"abc");
    EXPECT_EQ(Screen(), ScrFileDebug);
    EXPECT_FALSE(AnyField());
    EXPECT_FALSE(Prompt.PromptOpen);
}

TEST_F(Asking, AndCancelledGivesAnEmptyTextAtFirst) {
    EXPECT_EQ(Cancel(), u"");
}

TEST_F(Asking, AndCancelledGivesTheLastAcceptedAnswer) {
    Accept(u"abc");
    EXPECT_EQ(Cancel(), u"abc");
    Accept(u"");
    EXPECT_EQ(Cancel(), u"");
}

TEST_F(Asking, LetsTheTimersGoOn) {
    const std::int64_t before = frmQuorin::Form.lastTimerEvent;
    Device.WillDo([this] { Device.Tick(5000); });
    Cancel();
    EXPECT_GE(frmQuorin::Form.lastTimerEvent, before + 5);
}

TEST_F(Asking, EndsWhenSomethingElseLeavesTheScreen) {
    Device.WillDo([] { GotoScreen(ScrMain); });
    EXPECT_EQ(Wait(), u"");
    EXPECT_EQ(Screen(), ScrMain);
}

TEST_F(Asking, StaysModalAfterACancelUntilTheNextPrompt) {
    Cancel();
    EXPECT_TRUE(Prompt.PromptModal);
    Ask(PromptKind::Line);
    EXPECT_FALSE(Prompt.PromptModal);
}

struct DateText {
    CalendarDate Date;
    const char16_t* Written;
};

class DateAnswer : public Asking, public testing::WithParamInterface<DateText> {};

TEST_P(DateAnswer, IsDayMonthYear) {
    Device.WillDo([this] {
        Form.dteInputField.SetDate(GetParam().Date);
        frmQuorin::dteInputField_Closed();
    });
    Text value;
    InputPrompt(u"Day", PromptKind::Date, value, u"", false, true);
    EXPECT_EQ(value, GetParam().Written);
}

INSTANTIATE_TEST_SUITE_P(Dates, DateAnswer,
                         testing::Values(DateText{{2007, 3, 5}, u"05/03/2007"}, DateText{{2007, 12, 31}, u"31/12/2007"},
                                         DateText{{987, 10, 9}, u"09/10/987"}));

/// If more than one control is shown, the later one is used.
TEST_F(Asking, ReadsTheAnswerFromTheLastFieldOnShow) {
    Prompt.PromptModal = true;
    Ask(PromptKind::Date);
    Prompt.PromptModal = true;
    Form.txtInputField.SetVisible(true);
    Form.txtInputField.SetContents(u"text");
    Form.cboInputField.SetVisible(true);
    Form.cboInputField.SetContents(u"combo");
    EndInput(false);
    EXPECT_EQ(Prompt.PromptResult, u"combo");
}

TEST_F(Asking, GivesTheGridTheFocusBackAndForgetsTheLines) {
    Ask(PromptKind::Text);
    EndInput(true);
    EXPECT_EQ(Form.focus.Holder(), &Form.grdMain);
    EXPECT_FALSE(Form.txtInputField.MultiLine());
}

/// A record of three fields. The second is the current one.
class AskingOverARecord : public support::Program {
protected:
    AskingOverARecord() {
        InstallMeter();
        OpenDownload("Place|Moisture|Remark\na|b|c\n");
        Repaint();
        Device.Platform.grdMain.SetCurrentCell(1, 1);
    }
    void Ask(bool keepGrids = false) {
        Text value;
        InputPrompt(u"Title", PromptKind::Line, value, u"", keepGrids, false);
    }
};

TEST_F(AskingOverARecord, PutsTheAnswerIntoTheRowThatWasInHand) {
    Ask();
    Type(u"new");
    EndInput(false);
    EXPECT_THAT(Column(1), ElementsAre(u"a", u"new", u"c"));
}

TEST_F(AskingOverARecord, PutsTheAnswerThereThoughTheRowHasMoved) {
    Ask();
    Type(u"new");
    Prompt.SavedMain.Row = 2; // the restored selection is a different one
    EndInput(false);
    EXPECT_EQ(Device.Main().Row(), 2);
    EXPECT_THAT(Column(1), ElementsAre(u"a", u"new", u"c"));
}

TEST_F(AskingOverARecord, CancelledPutsNothing) {
    Ask();
    Type(u"new");
    GoBack();
    EXPECT_EQ(Screen(), ScrInfRecord);
    EXPECT_THAT(Column(1), ElementsAre(u"a", u"b", u"c"));
}

TEST_F(AskingOverARecord, BringsBackWhatWasInTheGrids) {
    Device.Main().SetCell(2, 1, u"unsaved");
    Device.Main().SetRowHeight(2, 55);
    Device.Main().SetColWidth(0, 123);
    Device.Main().SetTopRow(1);
    Ask();
    GoBack();
    EXPECT_THAT(Column(1), ElementsAre(u"a", u"b", u"unsaved"));
    EXPECT_EQ(Device.Main().RowHeight(2), 55);
    EXPECT_EQ(Device.Main().Row(), 1);
    EXPECT_EQ(Device.Main().Col(), 1);
    EXPECT_EQ(Device.Main().TopRow(), 1);
    EXPECT_EQ(TitleCell(0), u"Download");
    EXPECT_EQ(TitleCell(1), u"1/1");
    EXPECT_TRUE(Device.Main().Visible());
    EXPECT_TRUE(Device.Title().Visible());
}

TEST_F(AskingOverARecord, BringsBackTheCurrentColumn) {
    Device.Main().SetCol(0);
    Ask();
    GoBack();
    EXPECT_EQ(Device.Main().Col(), 0);
}

TEST_F(AskingOverARecord, KeepsAnEarlierCopyWhenToldTo) {
    SaveGrids();
    Prompt.PromptRow = 2;
    Device.Main().SetCell(0, 1, u"later");
    Ask(true);
    EXPECT_EQ(Prompt.PromptRow, 2);
    GoBack();
    EXPECT_EQ(Cell(0, 1), u"a");
}

TEST_F(AskingOverARecord, ChosenDateReachesTheFile) {
    InstallMeter("Day|1|||||date|\n");
    GotoScreen(ScrMain);
    OpenDownload("Day\n05/03/2007\n");
    Tap(0, 1);
    Device.Platform.dteInputField.SetDate({2008, 2, 29});
    frmQuorin::dteInputField_Closed();
    EXPECT_EQ(Cell(0, 1), u"29/02/2008");
    GoBack();
    EXPECT_EQ(File("qrn0001.txt"), "Day\n29/02/2008\n");
}

TEST(SavedGridCopy, HoldsTwoWidthsAndThreeCellsARow) {
    support::TestDevice device;
    device.Platform.StartProgram();
    device.Main().SetCols(5);
    device.Main().SetRows(2);
    for (std::int32_t col = 0; col < 5; ++col)
        device.Main().SetCell(1, col, u"x");
    SaveGrids();
    EXPECT_EQ(Prompt.SavedMain.Cols, 5);
    EXPECT_EQ(Prompt.SavedMain.Widths.size(), 2U);
    EXPECT_EQ(Prompt.SavedMain.Rows.at(1).Cells.size(), 3U);
}

struct ItemRow {
    const char16_t* List;
    std::int32_t Index;
    const char16_t* Delimiter;
    const char16_t* Item;
};

class ItemOfAList : public testing::TestWithParam<ItemRow> {};

TEST_P(ItemOfAList, StandsBetweenDelimiters) {
    EXPECT_EQ(ListItem(GetParam().List, GetParam().Index, GetParam().Delimiter), Text(GetParam().Item));
}

INSTANTIATE_TEST_SUITE_P(Rows, ItemOfAList,
                         testing::Values(ItemRow{u"a,b", 1, u",", u"a"}, ItemRow{u"a,b", 2, u",", u"b"},
                                         ItemRow{u"a,b", 3, u",", u""}, ItemRow{u"a|b", 2, u"", u"b"},
                                         ItemRow{u"a,b", 1, u"", u"a,b"}, ItemRow{u",b", 1, u",", u""},
                                         ItemRow{u",b", 2, u",", u"b"}, ItemRow{u"a,,c", 3, u",", u"c"},
                                         ItemRow{u"", 1, u",", u""}, ItemRow{u"", 2, u",", u""},
                                         ItemRow{u"one", 1, u",", u"one"}));

} // namespace
} // namespace modPDAUI
