// SPDX-License-Identifier: MIT
#include "backends/loop/focus.h"

#include "backends/headless/headless_controls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends {
namespace {

using headless::HeadlessGrid;
using headless::HeadlessTextBox;

using testing::ElementsAre;
using testing::IsEmpty;

class FocusOfTheForm : public testing::Test {
protected:
    FocusOfTheForm() {
        for (HeadlessTextBox* box : {&First, &Second, &Third}) {
            box->SetVisible(true);
            box->GotFocus = [this, box] { Heard.push_back(std::string(box->Name) + " got"); };
            box->LostFocus = [this, box] { Heard.push_back(std::string(box->Name) + " lost"); };
        }
    }
    std::vector<std::string> HeardSince() {
        std::vector<std::string> heard;
        heard.swap(Heard);
        return heard;
    }

    Focus Keeper;
    HeadlessTextBox First{Keeper, "first"}, Second{Keeper, "second"}, Third{Keeper, "third"};
    std::vector<std::string> Heard;
};

TEST_F(FocusOfTheForm, IsLostByTheOneBeforeTheOtherGetsIt) {
    First.SetFocus();
    EXPECT_THAT(HeardSince(), ElementsAre("first got"));
    Second.SetFocus();
    EXPECT_THAT(HeardSince(), ElementsAre("first lost", "second got"));
    EXPECT_EQ(Keeper.Holder(), &Second);
}

TEST_F(FocusOfTheForm, HasMovedAlreadyWhenTheLossIsTold) {
    First.SetFocus();
    const FocusTarget* holder = nullptr;
    First.LostFocus = [&] { holder = Keeper.Holder(); };
    Second.SetFocus();
    EXPECT_EQ(holder, &Second);
}

TEST_F(FocusOfTheForm, IsKeptWithoutAnEvent) {
    First.SetFocus();
    HeardSince();
    First.SetFocus();
    EXPECT_THAT(HeardSince(), IsEmpty());
}

TEST_F(FocusOfTheForm, IsNotTakenByAHiddenOrDisabledControl) {
    First.SetFocus();
    HeardSince();
    Second.SetVisible(false);
    Second.SetFocus();
    Third.SetEnabled(false);
    Third.SetFocus();
    EXPECT_EQ(Keeper.Holder(), &First);
    EXPECT_THAT(HeardSince(), IsEmpty());
}

TEST_F(FocusOfTheForm, IsLostByAControlThatIsHidden) {
    First.SetFocus();
    HeardSince();
    Second.SetVisible(false);
    EXPECT_EQ(Keeper.Holder(), &First);
    First.SetVisible(false);
    EXPECT_EQ(Keeper.Holder(), nullptr);
    EXPECT_THAT(HeardSince(), ElementsAre("first lost"));
    First.SetVisible(false);
    EXPECT_THAT(HeardSince(), IsEmpty());
}

TEST_F(FocusOfTheForm, IsToldToNobodyWhoseHandlerOfTheLossMovedItOn) {
    First.SetFocus();
    HeardSince();
    First.LostFocus = [this] { Third.SetFocus(); };
    Second.SetFocus();
    EXPECT_EQ(Keeper.Holder(), &Third);
    EXPECT_THAT(HeardSince(), ElementsAre("second lost", "third got"));
}

TEST_F(FocusOfTheForm, MayBeGivenOnByTheOneThatGetsIt) {
    First.GotFocus = [this] { Second.SetFocus(); };
    First.SetFocus();
    EXPECT_EQ(Keeper.Holder(), &Second);
    EXPECT_THAT(HeardSince(), ElementsAre("first lost", "second got"));
}

TEST_F(FocusOfTheForm, ReachesAGridThatIsShownAndEnabled) {
    HeadlessGrid grid(Keeper, "grid");
    grid.SetEnabled(false);
    grid.SetFocus();
    EXPECT_EQ(Keeper.Holder(), nullptr);
    grid.SetEnabled(true);
    grid.SetFocus();
    EXPECT_EQ(Keeper.Holder(), &grid);
    grid.SetVisible(false);
    EXPECT_EQ(Keeper.Holder(), nullptr);
    grid.SetFocus();
    EXPECT_EQ(Keeper.Holder(), nullptr);
}

} // namespace
} // namespace backends
