// SPDX-License-Identifier: MIT
#include "backends/headless/edited_text.h"

#include <gtest/gtest.h>

namespace backends::headless {
namespace {

constexpr const char16_t* Backspace = u"\b";

/// A step of the person or of the program.
struct Step {
    enum What { Type, Enter, Left, Right, Set, Select } Does;
    Text Words = u"";
    std::int32_t Position = 0, Length = 0;
};

class Editing {
public:
    explicit Editing(bool multiLine) : Lines_(multiLine) {}
    void Do(const Step& step) {
        switch (step.Does) {
        case Step::Type:
            Edited.Enter(step.Words, Lines_);
            break;
        case Step::Enter:
            Edited.Enter(u"\r", Lines_);
            break;
        case Step::Left:
            Edited.MoveCaret(-1);
            break;
        case Step::Right:
            Edited.MoveCaret(1);
            break;
        case Step::Set:
            Edited.Set(step.Words);
            break;
        case Step::Select:
            Edited.Select(step.Position, step.Length);
            break;
        }
    }
    EditedText Edited;

private:
    bool Lines_;
};

struct Edit {
    const char* Name;
    std::vector<Step> Steps; ///< what is done after the text "abc" was set, with the caret at its end
    Text Contents;
    std::int32_t Caret;
    bool MultiLine = false;
};

void PrintTo(const Edit& edit, std::ostream* out) {
    *out << edit.Name;
}

class EditOfAText : public testing::TestWithParam<Edit> {};

TEST_P(EditOfAText, GivesTextAndCaret) {
    Editing editing(GetParam().MultiLine);
    editing.Do({Step::Set, u"abc"});
    editing.Do({Step::Select, u"", 3, 0});
    for (const Step& step : GetParam().Steps)
        editing.Do(step);
    EXPECT_EQ(editing.Edited.Contents(), GetParam().Contents);
    EXPECT_EQ(editing.Edited.Caret(), GetParam().Caret);
}

const Step Back = {Step::Type, Backspace};
const Step Smile = {Step::Type, u"\U0001F600"};

// clang-format off: a row an edit
INSTANTIATE_TEST_SUITE_P(
    Of, EditOfAText,
    testing::Values(
        Edit{"BackspaceOfALineEnd", {{Step::Enter}, Back}, u"abc", 3, true},
        Edit{"LeftPastALineEnd", {{Step::Enter}, {Step::Left}, {Step::Type, u"x"}}, u"abcx\r\n", 4, true},
        Edit{"RightPastALineEnd",
             {{Step::Enter}, {Step::Left}, {Step::Right}, {Step::Type, u"x"}},
             u"abc\r\nx",
             6,
             true},
        Edit{"SetWithTheCaretInsideAPair",
             {{Step::Select, u"", 1, 0}, {Step::Set, u"\U0001F600"}, {Step::Type, u"x"}},
             u"x\U0001F600",
             1},
        Edit{"TypedAtTheEnd", {{Step::Type, u"d"}}, u"abcd", 4},
        Edit{"TypedInside", {{Step::Left}, {Step::Type, u"x"}, {Step::Type, u"y"}}, u"abxyc", 4},
        Edit{"TypedAtTheHead", {{Step::Select, u"", 0, 0}, {Step::Type, u"x"}}, u"xabc", 1},
        Edit{"TypedOverASelection", {{Step::Select, u"", 1, 2}, {Step::Type, u"x"}}, u"ax", 2},
        Edit{"TypedOverEverything", {{Step::Select, u"", 0, 3}, {Step::Type, u"x"}, {Step::Type, u"y"}}, u"xy", 2},
        Edit{"NothingTyped", {{Step::Type, u""}}, u"abc", 3},
        Edit{"ControlCharacters", {{Step::Type, u"\t"}, {Step::Type, u"\x1B"}, {Step::Type, u"\x01"}}, u"abc", 3},
        Edit{"Blank", {{Step::Type, u" "}}, u"abc ", 4}, Edit{"BackspaceAtTheEnd", {Back}, u"ab", 2},
        Edit{"BackspaceInside", {{Step::Left}, Back}, u"ac", 1},
        Edit{"BackspaceAtTheHead", {{Step::Select, u"", 0, 0}, Back}, u"abc", 0},
        Edit{"BackspaceOfASelection", {{Step::Select, u"", 0, 2}, Back}, u"c", 0},
        Edit{"BackspaceOfASelectionTwice", {{Step::Select, u"", 1, 1}, Back, Back}, u"c", 0},
        Edit{"BackspaceOfEverythingAndOneMore", {Back, Back, Back, Back}, u"", 0},
        Edit{"BackspaceOfAPair", {Smile, {Step::Type, u"d"}, Back, Back}, u"abc", 3},
        Edit{"LeftPastAPair", {Smile, {Step::Left}, {Step::Type, u"x"}}, u"abcx\U0001F600", 4},
        Edit{"RightPastAPair", {Smile, {Step::Left}, {Step::Right}, {Step::Type, u"x"}}, u"abc\U0001F600x", 6},
        Edit{"BackspaceOfHalfAPairThatStandsAlone",
             {{Step::Set, u"ab\xDE00"}, {Step::Select, u"", 3, 0}, Back},
             u"ab",
             2},
        Edit{"LeftAtTheHead", {{Step::Left}, {Step::Left}, {Step::Left}, {Step::Left}}, u"abc", 0},
        Edit{"RightAtTheEnd", {{Step::Right}}, u"abc", 3},
        Edit{"EnterInALine", {{Step::Enter}, {Step::Type, u"\n"}}, u"abc", 3},
        Edit{"EnterInLines", {{Step::Enter}, {Step::Type, u"d"}}, u"abc\r\nd", 6, true},
        Edit{"LineFeedInLines", {{Step::Type, u"\n"}, {Step::Type, u"d"}}, u"abc\r\nd", 6, true},
        Edit{"EnterOverASelection", {{Step::Select, u"", 1, 1}, {Step::Enter}}, u"a\r\nc", 3, true},
        Edit{"SetToALongerText", {{Step::Set, u"abcdef"}, {Step::Type, u"x"}}, u"abcxdef", 4},
        Edit{"SetToAShorterText", {{Step::Set, u"a"}, {Step::Type, u"x"}}, u"ax", 2},
        Edit{
            "SetForgetsTheSelection", {{Step::Select, u"", 0, 3}, {Step::Set, u"def"}, {Step::Type, u"x"}}, u"xdef", 1},
        Edit{"SelectionBeyondTheEnd", {{Step::Select, u"", 2, 9}, {Step::Type, u"x"}}, u"abx", 3},
        Edit{"PlaceBeyondTheEnd", {{Step::Select, u"", 9, 9}, {Step::Type, u"x"}}, u"abcx", 4},
        Edit{"PlaceBeforeTheHead", {{Step::Select, u"", -1, -1}, {Step::Type, u"x"}}, u"xabc", 1}),
    [](const auto& each) { return each.param.Name; });
// clang-format on

} // namespace
} // namespace backends::headless
