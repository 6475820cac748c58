// SPDX-License-Identifier: MIT
#include "backends/headless/headless_controls.h"

#include "src/view/platform/keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends::headless {
namespace {

using testing::ElementsAre;

// The combo box.

class ComboBoxOfTheForm : public testing::Test {
protected:
    ComboBoxOfTheForm() {
        for (const char16_t* item : {u"a", u"b", u"c"})
            Box.AddItem(item);
    }
    Text After(std::int32_t key) {
        Box.ActOnKey(key);
        return Box.Contents();
    }
    Focus Keeper;
    HeadlessComboBox Box{Keeper, "box"};
};

TEST_F(ComboBoxOfTheForm, PutsTheCaretBehindTheChosenItem) {
    Box.ActOnKey(CodeOf(Key::Down));
    Box.EnterCharacter(u"x");
    EXPECT_EQ(Box.Contents(), u"ax");
    Box.ActOnKey(CodeOf(Key::Left));
    Box.EnterCharacter(u"y");
    EXPECT_EQ(Box.Contents(), u"ayx");
}

// The date picker.

struct DateStep {
    CalendarDate From;
    std::int32_t Key;
    CalendarDate To;
};

void PrintTo(const DateStep& step, std::ostream* out) {
    *out << step.From.Year << "-" << step.From.Month << "-" << step.From.Day << " key " << step.Key;
}

class DatePickerOfTheForm : public testing::TestWithParam<DateStep> {};

TEST_P(DatePickerOfTheForm, GoesADayOrAWeekOn) {
    Focus keeper;
    HeadlessDatePicker picker(keeper, "picker");
    picker.SetDate(GetParam().From);
    picker.ActOnKey(GetParam().Key);
    EXPECT_EQ(picker.Date(), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Steps, DatePickerOfTheForm,
                         testing::Values(DateStep{{2007, 3, 5}, CodeOf(Key::Right), {2007, 3, 6}},
                                         DateStep{{2007, 3, 5}, CodeOf(Key::Left), {2007, 3, 4}},
                                         DateStep{{2007, 3, 5}, CodeOf(Key::Down), {2007, 3, 12}},
                                         DateStep{{2007, 3, 5}, CodeOf(Key::Up), {2007, 2, 26}},
                                         DateStep{{2007, 3, 31}, CodeOf(Key::Right), {2007, 4, 1}},
                                         DateStep{{2007, 3, 1}, CodeOf(Key::Left), {2007, 2, 28}},
                                         DateStep{{2008, 2, 28}, CodeOf(Key::Right), {2008, 2, 29}},
                                         DateStep{{2008, 3, 1}, CodeOf(Key::Left), {2008, 2, 29}},
                                         DateStep{{1900, 2, 28}, CodeOf(Key::Right), {1900, 3, 1}},
                                         DateStep{{2000, 2, 28}, CodeOf(Key::Right), {2000, 2, 29}},
                                         DateStep{{2007, 12, 31}, CodeOf(Key::Right), {2008, 1, 1}},
                                         DateStep{{2007, 1, 1}, CodeOf(Key::Left), {2006, 12, 31}},
                                         DateStep{{2007, 12, 28}, CodeOf(Key::Down), {2008, 1, 4}},
                                         DateStep{{2007, 1, 4}, CodeOf(Key::Up), {2006, 12, 28}},
                                         DateStep{{9999, 12, 31}, CodeOf(Key::Right), {9999, 12, 31}},
                                         DateStep{{1, 1, 1}, CodeOf(Key::Left), {1, 1, 1}},
                                         DateStep{{2007, 3, 5}, CodeOf(Key::PageDown), {2007, 3, 5}}));

// The label.

TEST(LabelOfTheForm, IsPaintedOnlyWhileItIsShown) {
    Focus keeper;
    HeadlessLabel label(keeper, "label");
    std::vector<Text> heard;
    label.Painted = [&] { heard.push_back(label.Caption()); };
    label.Hidden = [&] { heard.emplace_back(u"hidden"); };
    label.SetCaption(u"Busy");
    label.Refresh();
    label.SetVisible(false);
    EXPECT_THAT(heard, testing::IsEmpty());
    label.SetVisible(true);
    label.Refresh();
    label.SetVisible(false);
    label.SetVisible(false);
    EXPECT_THAT(heard, ElementsAre(u"Busy", u"hidden"));
}

// The grid.

class GridOfTheForm : public testing::Test {
protected:
    GridOfTheForm() {
        Grid.SetBounds({0, 0, 200, 100});
        Grid.SetDefaultRowHeight(20);
        Grid.SetRows(23);
        Grid.SetCols(2);
    }
    std::pair<std::int32_t, std::int32_t> After(std::int32_t key) {
        Grid.ActOnKey(key);
        return {Grid.Row(), Grid.Col()};
    }
    std::int32_t TopAfter(std::int32_t key) {
        Grid.ActOnKey(key);
        return Grid.TopRow();
    }
    Focus Keeper;
    HeadlessGrid Grid{Keeper, "grid"};
};

TEST_F(GridOfTheForm, MovesItsCellWithTheArrowsAndStopsAtTheEdges) {
    EXPECT_EQ(After(CodeOf(Key::Up)), std::pair(0, 0));
    EXPECT_EQ(After(CodeOf(Key::Left)), std::pair(0, 0));
    EXPECT_EQ(After(CodeOf(Key::Down)), std::pair(1, 0));
    EXPECT_EQ(After(CodeOf(Key::Right)), std::pair(1, 1));
    EXPECT_EQ(After(CodeOf(Key::Right)), std::pair(1, 1));
    Grid.SetRow(22);
    EXPECT_EQ(After(CodeOf(Key::Down)), std::pair(22, 1));
    EXPECT_EQ(After(CodeOf(Key::Up)), std::pair(21, 1));
    EXPECT_EQ(After(CodeOf(Key::Left)), std::pair(21, 0));
}

TEST_F(GridOfTheForm, TakesNoKeyWhileItIsDisabled) {
    Grid.TurnsPages = true;
    Grid.SetEnabled(false);
    for (const std::int32_t key : {CodeOf(Key::Down), CodeOf(Key::Right), CodeOf(Key::PageDown)})
        EXPECT_EQ(After(key), std::pair(0, 0));
    EXPECT_EQ(Grid.TopRow(), 0);
}

TEST_F(GridOfTheForm, TurnsNoPageWhereTheDeviceDoesNot) {
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 0);
    Grid.SetTopRow(9);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageUp)), 9);
}

TEST_F(GridOfTheForm, TurnsByTheRowsThatStandOnThePage) {
    Grid.TurnsPages = true;
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 5);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 10);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 15);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 18);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 18);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageUp)), 13);
    Grid.SetTopRow(22); // only the last row is on the page
    EXPECT_EQ(TopAfter(CodeOf(Key::PageUp)), 17);
    Grid.SetTopRow(3);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageUp)), 0);
    EXPECT_EQ(Grid.Row(), 0);
}

TEST_F(GridOfTheForm, TurnsByOneRowThatIsHigherThanThePage) {
    Grid.TurnsPages = true;
    Grid.SetRowHeight(0, 300);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 1);
}

TEST_F(GridOfTheForm, TurnsNoPageOfAListThatFits) {
    Grid.TurnsPages = true;
    Grid.SetRows(3);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageDown)), 0);
    EXPECT_EQ(TopAfter(CodeOf(Key::PageUp)), 0);
}

} // namespace
} // namespace backends::headless
