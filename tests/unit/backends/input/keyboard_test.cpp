// SPDX-License-Identifier: MIT
#include "backends/input/keyboard.h"

#include "src/view/prompt.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace backends {
namespace {

using headless::HeadlessGrid;
using headless::HeadlessTextBox;
using support::PrintTo;

using modQuorin::MenuEvent;
using testing::ElementsAre;

std::vector<std::string> Told; ///< the keys that were reported to the screen, each with the current row at that moment

class Keyboard : public support::Program {
protected:
    explicit Keyboard(const DeviceOptions& options = {}) : Program(options) {}

    Refusal Press(std::int32_t key) { return PressKey(Device.Hand, key); }
    HeadlessGrid& Main() { return Device.Platform.grdMain; }
    HeadlessTextBox& Field() { return Device.Platform.txtInputField; }

    /// Opens a prompt over the list of file operations and does not wait for its answer.
    void Ask(modPDAUI::PromptKind kind, Text value, const Text& list = u"") {
        MenuEvent(u"File Debug...");
        modPDAUI::InputPrompt(u"Title", kind, value, list, false, false);
    }
    void OpenRecord() {
        InstallMeter();
        OpenDownload("Place|Moisture|Remark\na|b|c\n");
        Repaint();
    }
};

// The order of what a key does.

TEST_F(Keyboard, KeyReachesFormThenControlAndTheFormAgainGoingUp) {
    Told.clear();
    OpenRecord();
    modQuorin::ScreenRow(modQuorin::ScrInfRecord).Behaviour.ArrowKey = [](std::int32_t key) {
        Told.push_back(std::to_string(key) + " on row " + std::to_string(platform::Device().grdMain.Row()));
    };
    Press(40);
    EXPECT_THAT(Told, ElementsAre("40 on row 0", "40 on row 1"));
    Press(38);
    EXPECT_THAT(Told, ElementsAre("40 on row 0", "40 on row 1", "38 on row 1", "38 on row 0"));
}

TEST_F(Keyboard, KeyThatTheFormConsumesDoesNotReachTheControl) {
    OpenRecord();
    Tap(0, 1);
    ASSERT_TRUE(Field().Visible());
    Field().SetMultiLine(true);
    Press(13);
    EXPECT_EQ(Cell(0, 1), u"a");
    EXPECT_EQ(Device.Platform.focus.Holder(), &Main());
}

TEST_F(Keyboard, KeyReachesTheGridWhileNothingHasTheFocus) {
    MenuEvent(u"Preferences...");
    Settle();
    ASSERT_EQ(Device.Platform.focus.Holder(), nullptr);
    Press(40);
    EXPECT_EQ(Main().Row(), 1);
}

struct EnterRow {
    std::int32_t DeviceType;
    const char16_t* Contents;
};

class EnterInAText : public Keyboard, public testing::WithParamInterface<EnterRow> {
protected:
    EnterInAText() : Keyboard(support::OfType(GetParam().DeviceType)) {}
};

TEST_P(EnterInAText, IsSwallowedAsACharacterButOnTypeSeven) {
    Ask(modPDAUI::PromptKind::Text, u"a");
    modQuorin::Screens.GridEditMode = false; // so that Enter does not close a field
    Press(13);
    EXPECT_EQ(Field().Contents(), GetParam().Contents);
}

INSTANTIATE_TEST_SUITE_P(Types, EnterInAText,
                         testing::Values(EnterRow{0, u"a"}, EnterRow{1, u"a"}, EnterRow{3, u"a"}, EnterRow{5, u"a"},
                                         EnterRow{6, u"a"}, EnterRow{7, u"a\r\n"}, EnterRow{9, u"a"}));

TEST_F(Keyboard, KeyActsOnNeitherControlWhenTheFormMovesTheFocus) {
    OpenRecord();
    modQuorin::ScreenRow(modQuorin::ScrInfRecord).Behaviour.ArrowKey = [](std::int32_t) {
        auto& field = platform::Device().txtInputField;
        field.SetContents(u"ab");
        field.Select(1, 0);
        field.SetVisible(true);
        field.SetFocus();
    };
    ASSERT_EQ(Main().Col(), 1);
    Press(37);
    EXPECT_EQ(Main().Col(), 1);
    TypeText(Device.Hand, u"x");
    EXPECT_EQ(Field().Contents(), u"axb");
}

struct Written {
    std::int32_t Code;
    const char16_t* Contents; ///< after typing into a field with the text "ab"
};

class CharacterOfAKey : public Keyboard, public testing::WithParamInterface<Written> {};

TEST_P(CharacterOfAKey, ReachesTheTextWhereTheCodeHasOne) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    EXPECT_EQ(Press(GetParam().Code), "");
    EXPECT_EQ(Field().Contents(), GetParam().Contents);
}

INSTANTIATE_TEST_SUITE_P(Codes, CharacterOfAKey,
                         testing::Values(Written{65, u"abA"}, Written{97, u"aba"}, Written{48, u"ab0"},
                                         Written{32, u"ab "}, Written{41, u"ab)"}, Written{126, u"ab~"},
                                         Written{8, u"a"}, Written{9, u"ab"}, Written{13, u"ab"}, Written{127, u"ab"},
                                         Written{255, u"ab"}, Written{33, u"ab"}, Written{34, u"ab"},
                                         Written{35, u"ab"}, Written{37, u"ab"}, Written{40, u"ab"},
                                         Written{310, u"ab"}, Written{321, u"ab"}, Written{65601, u"ab"}));

TEST_F(Keyboard, ArrowsMoveTheCaretOfAField) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(37);
    Press('x');
    Press(39);
    Press('y');
    EXPECT_EQ(Field().Contents(), u"axby");
}

TEST_F(Keyboard, ArrowsChooseAnItemOfAList) {
    Ask(modPDAUI::PromptKind::List, u"", u"one,two");
    Press(40);
    Press(40);
    EXPECT_EQ(Device.Platform.cboInputField.Contents(), u"two");
    Press(38);
    EXPECT_EQ(Device.Platform.cboInputField.Contents(), u"one");
}

TEST_F(Keyboard, ArrowsMoveADateAndEnterTakesIt) {
    Ask(modPDAUI::PromptKind::Date, u"28/02/2007");
    Device.Main().SetCols(2);
    Press(39);
    Press(40);
    EXPECT_EQ(Device.Platform.dteInputField.Date(), (CalendarDate{2007, 3, 8}));
    Press(13);
    EXPECT_FALSE(Device.Platform.dteInputField.Visible());
}

TEST_F(Keyboard, TypedTextReachesTheCellThatIsEdited) {
    OpenRecord();
    Tap(1, 1);
    EXPECT_EQ(TypeText(Device.Hand, u"x\U0001F600y"), "");
    EXPECT_EQ(Cell(1, 1), u"bx\U0001F600y");
    Press(8);
    Press(8);
    EXPECT_EQ(Cell(1, 1), u"bx");
}

// Page keys.

class PageKeyOnAPalm : public Keyboard {
protected:
    PageKeyOnAPalm() : Keyboard(support::OfType(1)) {}
};

TEST_F(PageKeyOnAPalm, TurnsThePageAndTakesItsFirstRow) {
    MenuEvent(u"Fonts...");
    Main().SetRows(40);
    Press(34);
    const std::int32_t onPage = 8; // 145 pixels hold eight rows of 17
    EXPECT_EQ(Main().TopRow(), onPage);
    EXPECT_EQ(Main().Row(), onPage);
    Press(33);
    EXPECT_EQ(Main().TopRow(), 0);
    EXPECT_EQ(Main().Row(), 0);
}

class PageKeyElsewhere : public Keyboard, public testing::WithParamInterface<std::int32_t> {
protected:
    PageKeyElsewhere() : Keyboard(support::OfType(GetParam())) {}
};

TEST_P(PageKeyElsewhere, MovesOneRow) {
    MenuEvent(u"Fonts...");
    Main().SetRows(60);
    Press(34);
    Press(34);
    EXPECT_EQ(Main().Row(), 2);
    EXPECT_EQ(Main().TopRow(), 0);
    Press(33);
    EXPECT_EQ(Main().Row(), 1);
}

INSTANTIATE_TEST_SUITE_P(Types, PageKeyElsewhere, testing::Values(0, 2, 3, 5, 6, 7, 9));

// What is refused.

TEST_F(Keyboard, IsTheMessageBoxesWhileOneIsOpen) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Device.WhileABoxIsOpen([this] {
        EXPECT_EQ(Press('x'), "a message box is open");
        EXPECT_EQ(Press(27), "a message box is open");
        EXPECT_EQ(TypeText(Device.Hand, u"x"), "a message box is open");
        EXPECT_EQ(PickDate(Device.Hand, {2007, 3, 6}), "a message box is open");
    });
    MenuEvent(u"nonsense");
    EXPECT_EQ(Field().Contents(), u"ab");
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
    EXPECT_EQ(Press('x'), "");
}

TEST_F(Keyboard, TypesIntoNothingButAnInputControl) {
    Repaint();
    MenuEvent(u"Start...");
    Repaint();
    ASSERT_EQ(Device.Platform.focus.Holder(), &Main());
    EXPECT_EQ(TypeText(Device.Hand, u"x"), "no input control has the focus");
    Main().SetVisible(false);
    EXPECT_EQ(TypeText(Device.Hand, u"x"), "no input control has the focus");
    Ask(modPDAUI::PromptKind::Date, u"");
    EXPECT_EQ(TypeText(Device.Hand, u"x"), "no input control has the focus");
}

TEST_F(Keyboard, PicksNoDateWithoutAPicker) {
    EXPECT_EQ(PickDate(Device.Hand, {2007, 3, 6}), "no date picker is open");
    Ask(modPDAUI::PromptKind::Line, u"ab");
    EXPECT_EQ(PickDate(Device.Hand, {2007, 3, 6}), "no date picker is open");
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
}

TEST_F(Keyboard, KeyIsTakenAlsoWhenNothingHasTheFocus) {
    MenuEvent(u"Start...");
    Device.Main().SetVisible(false);
    ASSERT_EQ(Device.Platform.focus.Holder(), nullptr);
    EXPECT_EQ(Press('x'), "");
    EXPECT_EQ(Press(27), "");
    EXPECT_EQ(Screen(), modQuorin::ScrMain);
}

// Characters that the program sends.

class KeyboardOfTypeSeven : public Keyboard {
protected:
    KeyboardOfTypeSeven() : Keyboard(support::OfType(7)) {}
};

TEST_F(KeyboardOfTypeSeven, EscapeDeletesTheLastCharacterOfTheField) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(27);
    Settle();
    EXPECT_EQ(Field().Contents(), u"a");
    EXPECT_THAT(Device.Did.Sent, ElementsAre(8));
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
}

class KeyboardOfAPalm : public Keyboard {
protected:
    KeyboardOfAPalm() : Keyboard(support::OfType(1)) {}
};

TEST_F(KeyboardOfAPalm, KeyThatIsHandedOnWritesNothing) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    for (const std::int32_t key : {276, 520, 264, 516, 1280})
        Press(key);
    Settle();
    EXPECT_EQ(Field().Contents(), u"ab");
    EXPECT_THAT(Device.Did.Sent, ElementsAre(276, 520, 264, 516, 1280));
}

TEST_F(Keyboard, WritesABlankForANul) {
    OpenRecord();
    Tap(0, 1);
    EXPECT_EQ(TypeText(Device.Hand, Text(u"b\0c", 3)), "");
    EXPECT_EQ(Field().Contents(), u"ab c");
    EXPECT_EQ(SetInput(Device.Hand, Text(u"d\0e", 3)), "");
    EXPECT_EQ(Field().Contents(), u"d e");
    EXPECT_EQ(Cell(0, 1), u"d e");
}

// If each character were a change, a text of 100,000 characters would be copied 100,000 times.
TEST_F(Keyboard, TypesALongTextAsOneChangeUpToEachOtherKey) {
    OpenRecord();
    Tap(0, 1);
    ASSERT_TRUE(Field().Visible());
    std::size_t changes = 0;
    const auto raise = Field().Change;
    Field().Change = [&] {
        ++changes;
        raise();
    };
    EXPECT_EQ(TypeText(Device.Hand, Text(100000, u'x') + u"yz\b" + u"w"), "");
    EXPECT_EQ(Field().Contents(), u"a" + Text(100000, u'x') + u"yw");
    EXPECT_EQ(Cell(0, 1), Field().Contents());
    EXPECT_EQ(changes, 3U);
}

} // namespace
} // namespace backends
