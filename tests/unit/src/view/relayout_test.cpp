// SPDX-License-Identifier: MIT
// A new layout of the form while fields and prompts are shown on it.
#include "tests/unit/src/view/layout_fixture.h"

namespace modPDAUI {

static void PrintTo(PromptKind kind, std::ostream* out) {
    *out << (kind == PromptKind::Line ? "a line" : kind == PromptKind::Text ? "a text" : "a list");
}

namespace {

class Relayout : public Layout {
protected:
    void Again() { Keyboard(true, 240, 80); }
};

TEST_F(Relayout, PutsSelectionAndPageBack) {
    ShowRows(60);
    Device.Main().SetRow(40);
    Device.Main().SetTopRow(35);
    Again();
    EXPECT_EQ(Device.Main().Row(), 40);
    EXPECT_EQ(Device.Main().TopRow(), 35);
}

TEST_F(Relayout, KeepsTextsAndHeightsThatANewShowingResets) {
    ShowRows(3);
    Device.Main().SetRowHeight(1, 64);
    Device.Title().SetRowHeight(0, 30);
    Again();
    EXPECT_EQ(Device.Main().RowHeight(1), 64);
    EXPECT_EQ(Device.Title().Bounds(), (Box{0, 0, 240, 30}));
    EXPECT_EQ(Device.Main().Bounds().Top, 29);
    EXPECT_EQ(Cell(2), u"x");
    GotoScreen(ScrTextFile);
    Device.Main().SetRows(3);
    for (const std::int32_t row : {0, 1, 2})
        EXPECT_EQ(Device.Main().RowHeight(row), 17);
    EXPECT_EQ(Cell(2), u"");
}

TEST_F(Relayout, GivesTheGridTheFocusUnlessAFieldIsOpen) {
    ShowRows(3);
    Device.Platform.focus.TakeFrom(Device.Platform.grdMain);
    Again();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
    BeginCellEdit(0, 0);
    Again();
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.txtInputField);
}

TEST_F(Relayout, LaysTheOpenFieldOverItsRowAtTheHeadOfThePage) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(60);
    Device.Platform.grdMain.SetCurrentCell(50, 1);
    BeginCellEdit(50, 1);
    Again();
    EXPECT_EQ(Device.Main().TopRow(), 50);
    const Box field = Device.Platform.txtInputField.Bounds();
    EXPECT_EQ(field.Left, 119 - 13); // a scroll bar is shown
    EXPECT_EQ(field.Width, 119);
    EXPECT_EQ(field.Top, Device.Main().Bounds().Top);
}

/// Five fields need no scroll bar until the page is scrolled. Then column 0 is narrower.
TEST_F(Relayout, LaysTheOpenFieldBesideTheColumnAsThatIsPainted) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(5);
    Settle();
    for (const std::int32_t row : {3, 0}) {
        Tap(row, 1);
        ASSERT_TRUE(Device.Platform.txtInputField.Visible());
        EXPECT_EQ(Device.Platform.txtInputField.Bounds().Left, 119);
        Again();
        EXPECT_EQ(Device.Main().TopRow(), row);
        EXPECT_EQ(Device.Platform.txtInputField.Bounds().Left, row == 0 ? 119 : 119 - 13);
        Settle();
        EXPECT_EQ(Device.Platform.txtInputField.Bounds().Left, Device.Main().ColWidth(0));
        EXPECT_EQ(Device.Platform.txtInputField.Bounds().Top, Device.Main().Bounds().Top);
        Device.Main().SetCell(row, 0, u"renamed");
        Settle();
        EXPECT_EQ(Device.Platform.txtInputField.Bounds().Width, Device.Main().ColWidth(1));
        Device.Main().SetFocus();
        Settle();
    }
}

TEST_F(Relayout, PaintsThePageOnceItsFirstRowIsBack) {
    ShowRows(12);
    Device.Main().SetCell(4, 0, Text(40, u'x'));
    Repaint();
    Device.Main().SetRow(7);
    Settle();
    static std::vector<std::int32_t> tops;
    tops.clear();
    Device.Platform.grdMain.DrawCell = [](platform::CellCanvas&, const platform::PaintedCell&) {
        tops.push_back(platform::Device().grdMain.Row());
    };
    Again();
    EXPECT_EQ(tops, std::vector<std::int32_t>(12, 7)) << "each row once, and none before the current row is back";
}

TEST_F(Layout, TapOnARowAboveThePageOpensItsFieldOverTheCell) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(5);
    Settle();
    Device.Main().SetTopRow(2);
    Device.Main().PaintNow();
    ASSERT_EQ(Device.Main().ColWidth(0), 119 - 13);
    EXPECT_EQ(backends::Tap(Device.Hand, 0, 1), "");
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{119, 16, 120, 18}));
}

/// A record of 40 fields, of which a page shows 17. The field is open over the last but one of these.
class FieldOnALongPage : public Layout {
protected:
    FieldOnALongPage() {
        GotoScreen(ScrDriverProperties);
        Device.Main().SetRows(40);
        Settle();
        Tap(15, 1);
    }
    void PageKey(std::int32_t key) {
        frmQuorin::Form_KeyUp(key, 0);
        Settle();
    }
    backends::headless::HeadlessTextBox& Field() { return Device.Platform.txtInputField; }
    float TopOfRow(std::int32_t row) {
        return Device.Main().Bounds().Top + static_cast<float>((row - Device.Main().TopRow()) * 17);
    }
};

TEST_F(FieldOnALongPage, StaysOverItsOwnCellWhenAPageKeyMovesThePage) {
    Type(u"typed");
    for (int times = 0; times < 5; ++times) {
        PageKey(34);
        EXPECT_EQ(Field().Bounds().Top, TopOfRow(15)) << times;
    }
    EXPECT_EQ(Device.Main().Row(), 20);
    EXPECT_EQ(Device.Main().TopRow(), 4);
    Type(u"more");
    EXPECT_EQ(Cell(15, 1), u"more");
    EXPECT_EQ(Cell(20, 1), u"");
}

TEST_F(FieldOnALongPage, ClosesWithItsValueWhenItsRowHasLeftThePage) {
    Type(u"typed");
    for (int times = 0; times < 20; ++times)
        PageKey(34);
    EXPECT_GT(Device.Main().TopRow(), 15);
    EXPECT_FALSE(Field().Visible());
    EXPECT_EQ(Cell(15, 1), u"typed");
    EXPECT_EQ(Device.Platform.focus.Holder(), &Device.Platform.grdMain);
}

TEST_F(FieldOnALongPage, ClosesAlsoWhereItsRowIsBelowThePage) {
    Device.Main().SetTopRow(14);
    Settle();
    for (int times = 0; times < 15; ++times)
        PageKey(33);
    EXPECT_EQ(Device.Main().TopRow(), 0);
    EXPECT_TRUE(Field().Visible());
    Device.Main().SetRowHeight(3, 300);
    Settle();
    EXPECT_FALSE(Field().Visible());
}

TEST_F(FieldOnALongPage, GrowsWithItsRow) {
    Type(Text(60, u'x'));
    Settle();
    ASSERT_GT(Device.Main().RowHeight(15), 17);
    EXPECT_EQ(Field().Bounds().Height, static_cast<float>(Device.Main().RowHeight(15) + 1));
    EXPECT_EQ(Field().Bounds().Top, TopOfRow(15));
    EXPECT_TRUE(Field().Visible());
}

TEST_F(FieldOnALongPage, MovesDownWithARowAboveThatGrows) {
    Device.Main().SetCell(2, 1, Text(60, u'x'));
    Settle();
    EXPECT_EQ(Field().Bounds().Top, TopOfRow(15) + static_cast<float>(Device.Main().RowHeight(2) - 17));
}

TEST_F(FieldOnALongPage, IsLaidOverItsOwnRowByARelayoutToo) {
    PageKey(34);
    Keyboard(true, 240, 80);
    EXPECT_EQ(Device.Main().Row(), 16);
    EXPECT_EQ(Device.Main().TopRow(), 15);
    EXPECT_EQ(Field().Bounds().Top, TopOfRow(15));
}

TEST_F(Relayout, LaysTheComboFieldLikewise) {
    GotoScreen(ScrDriverProperties);
    Device.Main().SetRows(5);
    Device.Main().SetRow(3);
    Input.EditRow = 1;
    Device.Platform.cboInputField.SetVisible(true);
    Again();
    EXPECT_EQ(Device.Main().TopRow(), 1);
    EXPECT_EQ(Device.Platform.cboInputField.Bounds().Left, 119 - 13);
    EXPECT_EQ(Device.Platform.cboInputField.Bounds().Top, 16); // over its own cell, not over the current row
}

TEST_F(Relayout, PutsTheFileNameUnderTheGrid) {
    GotoScreen(ScrFileSelect);
    Device.Platform.txtInputField.SetBounds({1, 2, 3, 20});
    Device.Platform.txtInputField.SetVisible(true);
    Again();
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 33, 240, 187}));
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 220, 240, 20}));
}

TEST_F(Relayout, LeavesAHiddenFileNameAlone) {
    GotoScreen(ScrFileSelect);
    Again();
    EXPECT_EQ(Device.Main().Bounds(), (Box{0, 33, 240, 207}));
}

class RelayoutOfAPrompt : public Relayout {
protected:
    void Ask(PromptKind kind) {
        Text value = u"a";
        InputPrompt(u"Title", kind, value, u"a,b", false, false);
        Again();
    }
};

TEST_F(RelayoutOfAPrompt, KeepsTheHeightOfOneLine) {
    Ask(PromptKind::Line);
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 16, 240, 19}));
}

TEST_F(RelayoutOfAPrompt, FitsALongTextToTheGrid) {
    Ask(PromptKind::Text);
    EXPECT_EQ(Device.Platform.txtInputField.Bounds(), (Box{0, 16, 240, 224}));
}

TEST_F(RelayoutOfAPrompt, FitsTheComboFieldToTheWidth) {
    Ask(PromptKind::List);
    const Box box = Device.Platform.cboInputField.Bounds();
    EXPECT_EQ(Box({box.Left, box.Top, box.Width, 0}), (Box{0, 16, 240, 0}));
}

TEST_F(RelayoutOfAPrompt, FitsTheCalendarToTheGrid) {
    Text value;
    InputPrompt(u"Title", PromptKind::Date, value, u"", false, false);
    Again();
    EXPECT_EQ(Device.Platform.dteInputField.Bounds(), (Box{0, 16, 240, 224}));
    Keyboard(false, 0, 0);
    EXPECT_EQ(Device.Platform.dteInputField.Bounds(), (Box{0, 16, 240, 304}));
}

class FieldOfAPrompt : public RelayoutOfAPrompt, public testing::WithParamInterface<PromptKind> {
protected:
    void ExpectField(const Text& text) {
        EXPECT_FALSE(Device.Main().Visible());
        EXPECT_TRUE(AnyInputFieldVisible());
        EXPECT_EQ(Device.Platform.txtInputField.Visible() ? Device.Platform.txtInputField.Contents()
                                                          : Device.Platform.cboInputField.Contents(),
                  text);
    }
};

TEST_P(FieldOfAPrompt, StaysThroughARelayoutAndARefresh) {
    GotoScreen(ScrFileDebug); // this asks for a refresh
    Ask(GetParam());
    ExpectField(u"a");
    Type(u"typed");
    Repaint();
    ExpectField(u"typed");
    Keyboard(false, 0, 0);
    ExpectField(u"typed");
    Device.Platform.grdTitle.SetFocus();
    ExpectField(u"typed");
    RepaintGrids(true);
    ExpectField(u"typed");
}

TEST_P(FieldOfAPrompt, HasTheFocusAgainAfterABox) {
    Ask(GetParam());
    Device.WhileABoxIsOpen([this] { Device.Platform.grdTitle.SetFocus(); });
    MenuEvent(u"nonsense");
    ASSERT_EQ(Device.Did.Boxes.size(), 1U);
    Type(u"typed");
    ExpectField(u"typed");
}

TEST_P(FieldOfAPrompt, StaysAtEnterAfterARelayoutAndGivesItsText) {
    if (GetParam() == PromptKind::List)
        return; // a list passes its text in another way
    GotoScreen(ScrFileDebug);
    Repaint();
    Text value;
    Device.WillDo([this] {
        Again();
        Type(u"typed");
        std::int32_t key = 13;
        frmQuorin::Form_KeyDown(key, 0);
        key = 13;
        frmQuorin::Form_KeyUp(key, 0);
        Settle();
    });
    Device.WillDo([] { MenuEvent(u"Ok"); });
    InputPrompt(u"Title", GetParam(), value, u"", false, true);
    EXPECT_EQ(value, u"typed");
}

INSTANTIATE_TEST_SUITE_P(Kinds, FieldOfAPrompt, testing::Values(PromptKind::Line, PromptKind::Text, PromptKind::List));

class RelayoutOfADesktop : public Layout {
protected:
    RelayoutOfADesktop() : Layout(support::OfType(0)) { Resize(240, 320); }
    void Resize(std::int32_t width, std::int32_t height) {
        Device.Platform.system.SetScreen({width, height});
        Keyboard(false, 0, 0);
    }
};

/// A prompt over a record. The form has another width when the prompt ends.
TEST_F(RelayoutOfADesktop, GridsAfterAPromptHaveTheSizeThatTheFormHasThen) {
    InstallMeter("a|1||||||\nb|0||||||\nc|1|||||DATE|\nd|1||||||\n");
    OpenDownload("a|b|c|d\n" + std::string(30, 'x') + "|hidden|01/02/2007|d\n");
    Repaint();
    ASSERT_EQ(Device.Main().ColWidth(0), 119);
    ASSERT_GT(Device.Main().RowHeight(0), 17);
    Tap(2, 1);
    Resize(640, 480);
    EXPECT_EQ(Device.Platform.dteInputField.Bounds(), (Box{0, 16, 640, 464}));
    frmQuorin::dteInputField_Closed();
    EXPECT_EQ(Widths(Device.Main()), (std::vector{319, 319}));
    EXPECT_EQ(Widths(Device.Title()), (std::vector{319, 319}));
    Repaint();
    EXPECT_EQ(Widths(Device.Main()), (std::vector{319, 319}));
    EXPECT_EQ(Device.Main().RowHeight(0), 17) << "it has room on one line";
    EXPECT_EQ(Device.Main().RowHeight(1), 0);
    EXPECT_EQ(Cell(0, 1), Text(30, u'x'));
    EXPECT_EQ(Device.Main().Row(), 2);
}

TEST_F(RelayoutOfADesktop, HiddenRowStaysHiddenAfterAPromptInAnotherSize) {
    ShowRows(6);
    Device.Main().SetRowHeight(4, 0);
    Text value;
    InputPrompt(u"Title", PromptKind::Line, value, u"", false, false);
    Resize(640, 480);
    EndInput(true);
    Repaint();
    EXPECT_EQ(Device.Main().RowHeight(3), 17);
    EXPECT_EQ(Device.Main().RowHeight(4), 0);
}

TEST_F(Layout, RowThatAPromptWasForIsOnTheSmallerPageAfterIt) {
    GotoScreen(ScrTextFile);
    ShowList(std::vector<Text>(17, u"x"));
    Repaint();
    Device.Main().SetRow(16);
    Settle();
    ASSERT_EQ(Device.Main().TopRow(), 0);
    Text value;
    InputPrompt(u"Title", PromptKind::Line, value, u"", false, false);
    Screens.PreviousScreen = ScrTextFile;
    Keyboard(true, 240, 80);
    EndInput(true);
    Settle();
    EXPECT_EQ(Device.Main().Row(), 16);
    EXPECT_TRUE(Device.Main().RowOnScreen(16));
}

} // namespace
} // namespace modPDAUI
