// SPDX-License-Identifier: MIT
// Which events the fields raise when the program or a person changes them, and what raises none.
#include "src/view/platform/keys.h"
#include "tests/conformance/form_suites.h"

namespace conformance {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// The program.

TEST_P(FieldEventsSuite, RaiseAChangeForEachTextThatTheProgramSets) {
    TextBox& box = Form().txtInputField;
    std::vector<Text> texts;
    Raised.When["txtInputField_Change"] = [&] { texts.push_back(box.Contents()); };
    box.SetContents(u"unseen");
    box.SetVisible(true);
    for (const char16_t* text : {u"a", u"a", u""})
        box.SetContents(text);
    EXPECT_THAT(texts, ElementsAre(u"unseen", u"a", u"a", u""));
    EXPECT_THAT(Heard(), Each("txtInputField_Change"));
}

TEST_P(FieldEventsSuite, RaiseNoChangeForAnythingElse) {
    TextBox& box = Form().txtInputField;
    box.SetContents(u"a\r\nb");
    Heard();
    box.SetMultiLine(true);
    box.SetBounds({1, 2, 100, 50});
    box.SetVisible(true);
    box.SetFontName(u"Tahoma");
    box.SetFontSize(12);
    box.Select(1, 2);
    box.Commit();
    box.SetEnabled(false);
    box.SetMultiLine(false);
    box.SetVisible(false);
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FieldEventsSuite, RaiseNothingInTheOtherControls) {
    Form().cbotxtInputField.SetContents(u"text");
    Form().cboInputField.AddItem(u"a");
    Form().cboInputField.SetContents(u"a");
    Form().cboInputField.Clear();
    Form().dteInputField.SetDate({2007, 3, 5});
    Form().lstHoldMenu.AddItem(u"one");
    Form().lstHoldMenu.SetListIndex(0);
    Form().lstHoldMenu.Clear();
    Form().lblStatus.SetCaption(u"Busy");
    Form().mnuButton1.SetCaption(u"Menu");
    Form().mnuButtonO1[0]->SetVisible(true);
    Form().mnuButtonO1[0]->SetEnabled(true);
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FieldEventsSuite, RaiseAChangeForATextThatAHandlerSets) {
    TextBox& box = Form().txtInputField;
    int depth = 0;
    Raised.When["txtInputField_Change"] = [&] {
        if (++depth == 1)
            box.SetContents(u"set by the handler");
    };
    box.SetContents(u"a");
    EXPECT_EQ(depth, 2);
    EXPECT_EQ(box.Contents(), u"set by the handler");
}

// A person.

TEST_P(FieldEventsSuite, RaiseAChangeForEachCharacterThatIsTyped) {
    TextBox& box = Form().txtInputField;
    Open(box);
    std::vector<Text> texts;
    Raised.When["txtInputField_Change"] = [&] { texts.push_back(box.Contents()); };
    for (const char16_t* typed : {u"a", u"ä", u"\xD83D\xDE00", u"\b", u"\b"})
        Device->Type(typed);
    EXPECT_THAT(texts, ElementsAre(u"a", u"aä", u"aä\xD83D\xDE00", u"aä", u"a"));
}

TEST_P(FieldEventsSuite, RaiseNoChangeForACharacterThatWritesNothing) {
    TextBox& box = Form().txtInputField;
    Open(box);
    Device->Type(u"\x1B");
    Device->Type(u"\r");
    Device->Type(u"\b");
    EXPECT_THAT(Heard(), IsEmpty());
    EXPECT_EQ(box.Contents(), u"");
}

TEST_P(FieldEventsSuite, TypeOverWhatIsSelected) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetContents(u"abcdef");
    box.Select(2, 3);
    Heard();
    Device->Type(u"x");
    EXPECT_EQ(box.Contents(), u"abxf");
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change"));
    Device->Type(u"y");
    EXPECT_EQ(box.Contents(), u"abxyf");
}

TEST_P(FieldEventsSuite, RaiseNoChangeForASelectionTypedOverWithItself) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetContents(u"a");
    box.Select(0, 1);
    Heard();
    Device->Type(u"a");
    EXPECT_THAT(Heard(), IsEmpty());
    EXPECT_EQ(box.Contents(), u"a");
}

TEST_P(FieldEventsSuite, TypeAtTheCaretThatTheProgramHasSet) {
    for (ComboBox* combo : {static_cast<ComboBox*>(nullptr), &Form().cboInputField}) {
        TextBox& box = Form().txtInputField;
        combo != nullptr ? Open(*combo) : Open(box);
        combo != nullptr ? combo->SetContents(u"abc") : box.SetContents(u"abc");
        for (const auto& [position, expected] :
             {std::pair(3, u"abcx"), std::pair(0, u"xabcx"), std::pair(99, u"xabcxx")}) {
            combo != nullptr ? combo->Select(position, 0) : box.Select(position, 0);
            Device->Type(u"x");
            EXPECT_EQ(combo != nullptr ? combo->Contents() : box.Contents(), expected);
        }
    }
}

TEST_P(FieldEventsSuite, KeepTheCaretInATextThatTheProgramSets) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetContents(u"abc");
    box.Select(1, 0);
    box.SetContents(u"xyz");
    Device->Type(u"-");
    EXPECT_EQ(box.Contents(), u"x-yz");
    box.SetContents(u"");
    box.SetContents(u"xyz");
    Device->Type(u"-");
    EXPECT_EQ(box.Contents(), u"-xyz");
}

TEST_P(FieldEventsSuite, TakeABlankForEachLineEndWhereThereIsOneLine) {
    Open(Form().txtInputField);
    Device->ReplaceText(u"a\r\nb\nc");
    EXPECT_EQ(Form().txtInputField.Contents(), u"a  b c") << "two characters, two blanks";
    Open(Form().cboInputField);
    Device->ReplaceText(u"a\r\nb\nc");
    EXPECT_EQ(Form().cboInputField.Contents(), u"a  b c");
    Form().txtInputField.SetMultiLine(true);
    Form().txtInputField.SetFocus();
    Device->ReplaceText(u"a\r\nb");
    EXPECT_EQ(Form().txtInputField.Contents(), u"a\r\nb");
}

TEST_P(FieldEventsSuite, RaiseOneChangeForATextReplacedInOneStep) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetContents(u"abc");
    Heard();
    Device->ReplaceText(u"defg");
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change"));
    Device->Type(u"h");
    EXPECT_EQ(box.Contents(), u"defgh");
}

TEST_P(FieldEventsSuite, BeginALineAtEnterWhereThereAreLines) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetMultiLine(true);
    Device->Type(u"a");
    Device->Type(u"\r");
    Device->Type(u"b");
    EXPECT_EQ(box.Contents(), u"a\r\nb");
    Device->Type(u"\b");
    Device->Type(u"\b");
    EXPECT_EQ(box.Contents(), u"a") << "a line end is one character";
}

TEST_P(FieldEventsSuite, MoveTheCaretByTheArrows) {
    TextBox& box = Form().txtInputField;
    Open(box);
    Device->ReplaceText(u"abc");
    for (const Key key : {Key::Left, Key::Left})
        Device->PressKey(CodeOf(key));
    Device->Type(u"x");
    Device->PressKey(CodeOf(Key::Right));
    Device->Type(u"y");
    EXPECT_EQ(box.Contents(), u"axbyc");
    Device->PressKey(CodeOf(Key::Up));
    Device->Type(u"1");
    Device->PressKey(CodeOf(Key::Down));
    Device->Type(u"2");
    EXPECT_EQ(box.Contents(), u"axby12c") << "there is one line";
}

TEST_P(FieldEventsSuite, TypeIntoTheListWithoutAnEvent) {
    ComboBox& box = Form().cboInputField;
    Open(box);
    box.AddItem(u"apple");
    Device->Type(u"a");
    Device->Type(u"p");
    EXPECT_EQ(box.Contents(), u"ap") << "nothing is completed";
    Device->Type(u"\r");
    EXPECT_EQ(box.Contents(), u"ap");
    EXPECT_EQ(box.ItemCount(), 1);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(FieldEventsSuite, WalkTheItemsByUpAndDownAndStopAtTheEnds) {
    ComboBox& box = Form().cboInputField;
    Open(box);
    for (const char16_t* item : {u"a", u"b", u"c"})
        box.AddItem(item);
    const auto after = [&](Key key) {
        Device->PressKey(CodeOf(key));
        return box.Contents();
    };
    EXPECT_EQ(after(Key::Up), u"");
    for (const char16_t* item : {u"a", u"b", u"c", u"c"})
        EXPECT_EQ(after(Key::Down), item);
    for (const char16_t* item : {u"b", u"a", u"a"})
        EXPECT_EQ(after(Key::Up), item);
    Device->Type(u"x");
    EXPECT_EQ(box.Contents(), u"ax") << "the caret is after the item";
    EXPECT_EQ(after(Key::Up), u"ax");
    EXPECT_EQ(after(Key::Down), u"a") << "the first one, from a text that is no item";
    box.Clear();
    EXPECT_EQ(after(Key::Down), u"") << "of no items";
}

TEST_P(FieldEventsSuite, CloseTheCalendarOnceADateIsChosen) {
    DatePicker& picker = Form().dteInputField;
    Open(picker);
    picker.SetDate({2007, 2, 28});
    CalendarDate found;
    Raised.When["dteInputField_Closed"] = [&] { found = picker.Date(); };
    Device->ChooseDate({2008, 2, 29});
    EXPECT_EQ(found, (CalendarDate{2008, 2, 29}));
    EXPECT_THAT(Heard(), ElementsAre("dteInputField_Closed"));
    Device->ChooseDate({2008, 2, 29});
    EXPECT_THAT(Heard(), ElementsAre("dteInputField_Closed")) << "also the same date";
}

TEST_P(FieldEventsSuite, KeepThePageOfTheGridWhileOneIsOpen) {
    ShowRows(20);
    Open(Form().cboInputField);
    Form().grdMain.SetTopRow(19);
    Settle();
    EXPECT_EQ(Form().grdMain.TopRow(), 19);
    Form().cboInputField.SetVisible(false);
    Settle();
    EXPECT_EQ(Form().grdMain.TopRow(), 15) << "no empty part below the last row";
}

// The key queue.

TEST_P(FieldEventsSuite, GetTheCharactersThatWereSentOnceEventsAreHandled) {
    TextBox& box = Form().txtInputField;
    Open(box);
    box.SetContents(u"abc");
    box.Select(3, 0);
    for (const std::int32_t character : {int{'x'}, int{'y'}, 8})
        Form().hardwareKeys.SendCharacter(character);
    EXPECT_EQ(box.Contents(), u"abc");
    Settle();
    EXPECT_EQ(box.Contents(), u"abcx");
}

TEST_P(FieldEventsSuite, GetNoCharacterThatWasSentToNobody) {
    Form().txtInputField.SetVisible(true);
    Form().hardwareKeys.SendCharacter('x');
    Settle();
    Open(Form().txtInputField);
    Settle();
    EXPECT_EQ(Form().txtInputField.Contents(), u"");
}

} // namespace conformance
