// SPDX-License-Identifier: MIT
// Timers, message boxes, loops that wait, and the end of the program.
#include "tests/conformance/form_suites.h"

namespace conformance {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Runs a step while a box is open, then answers it.
BoxAnswer Ask(FormUnderTest& device, BoxButtons buttons, std::function<void()> step, BoxAnswer answer) {
    device.WhileABoxIsOpen(std::move(step), answer);
    return device.Record().messageBox.Show(u"Really?", buttons, BoxIcon::Question, u"Title");
}

void DoNothing() {
}

} // namespace

// Timers.

TEST_P(TimerSuite, TicksAtTheEndOfEachInterval) {
    for (auto& [timer, tick] :
         {std::pair(&Form().tmrBlue, "tmrBlue_Tick"), std::pair(&Form().tmrHoldEvent, "tmrHoldEvent_Tick"),
          std::pair(&Form().tmrMenus, "tmrMenus_Tick")}) {
        timer->SetInterval(200);
        timer->SetEnabled(true);
        EXPECT_TRUE(timer->Enabled());
        Device->Pass(199);
        EXPECT_THAT(Heard(), IsEmpty()) << tick;
        Device->Pass(1);
        EXPECT_THAT(Heard(), ElementsAre(tick));
        Device->Pass(400);
        EXPECT_THAT(Heard(), ElementsAre(tick, tick));
        timer->SetEnabled(false);
        EXPECT_FALSE(timer->Enabled());
        Device->Pass(1000);
        EXPECT_THAT(Heard(), IsEmpty()) << tick;
    }
}

TEST_P(TimerSuite, TicksInTheOrderOfTime) {
    Form().tmrBlue.SetInterval(300);
    Form().tmrMenus.SetInterval(200);
    Form().tmrBlue.SetEnabled(true);
    Form().tmrMenus.SetEnabled(true);
    Device->Pass(500);
    EXPECT_THAT(Heard(), ElementsAre("tmrMenus_Tick", "tmrBlue_Tick", "tmrMenus_Tick"));
}

TEST_P(TimerSuite, BeginsAWholeIntervalWhenAStoppedOneIsEnabled) {
    Timer& timer = Form().tmrHoldEvent;
    timer.SetInterval(1000);
    timer.SetEnabled(true);
    Device->Pass(900);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    Device->Pass(999);
    EXPECT_THAT(Heard(), IsEmpty());
    Device->Pass(1);
    EXPECT_THAT(Heard(), ElementsAre("tmrHoldEvent_Tick"));
}

TEST_P(TimerSuite, GoesOnWhenARunningOneIsEnabledAgain) {
    Timer& timer = Form().tmrHoldEvent;
    timer.SetInterval(1000);
    timer.SetEnabled(true);
    Device->Pass(600);
    timer.SetEnabled(true);
    Device->Pass(400);
    EXPECT_THAT(Heard(), ElementsAre("tmrHoldEvent_Tick"));
}

TEST_P(TimerSuite, MayBeStoppedByItsOwnTickOrByAnotherOnes) {
    Raised.When["tmrMenus_Tick"] = [this] {
        Form().tmrMenus.SetEnabled(false);
        Form().tmrBlue.SetEnabled(false);
    };
    Form().tmrMenus.SetInterval(100);
    Form().tmrBlue.SetInterval(150);
    Form().tmrMenus.SetEnabled(true);
    Form().tmrBlue.SetEnabled(true);
    Device->Pass(1000);
    EXPECT_THAT(Heard(), ElementsAre("tmrMenus_Tick"));
}

TEST_P(TimerSuite, GoesWithTheClock) {
    const DateTime before = Form().clock.Now();
    const std::int64_t steady = Form().clock.SteadySeconds();
    const float ofDay = Form().clock.TimeOfDay();
    Device->Pass(90500);
    EXPECT_EQ(Form().clock.Now().WholeSeconds, before.WholeSeconds + 90);
    EXPECT_EQ(Form().clock.SteadySeconds(), steady + 90);
    EXPECT_FLOAT_EQ(Form().clock.TimeOfDay(), ofDay + 90.5F);
}

// Message boxes.

TEST_P(RunTimeSuite, GivesTheAnswerOfAPerson) {
    EXPECT_EQ(Ask(*Device, BoxButtons::YesNo, DoNothing, BoxAnswer::Yes), BoxAnswer::Yes);
    EXPECT_EQ(Ask(*Device, BoxButtons::YesNo, DoNothing, BoxAnswer::No), BoxAnswer::No);
    EXPECT_EQ(Ask(*Device, BoxButtons::Ok, DoNothing, BoxAnswer::Ok), BoxAnswer::Ok);
}

TEST_P(RunTimeSuite, LetsTimersAndTheFormGoOnUnderABox) {
    Form().tmrMenus.SetInterval(100);
    Form().tmrMenus.SetEnabled(true);
    Open(Form().txtInputField);
    const auto meanwhile = [this] {
        Device->Pass(250);
        Form().txtInputField.SetContents(u"new");
        Form().grdMain.SetFocus();
    };
    EXPECT_EQ(Ask(*Device, BoxButtons::YesNo, meanwhile, BoxAnswer::Yes), BoxAnswer::Yes);
    EXPECT_THAT(Heard(),
                ElementsAre("tmrMenus_Tick", "tmrMenus_Tick", "txtInputField_Change", "txtInputField_LostFocus"));
}

TEST_P(RunTimeSuite, LeavesTheFocusWhereItIsUnderABox) {
    Open(Form().txtInputField);
    Ask(*Device, BoxButtons::Ok, DoNothing, BoxAnswer::Ok);
    Settle();
    Form().txtInputField.SetFocus();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(RunTimeSuite, GivesTheReleaseOfATapToTheBoxThatItOpened) {
    ShowRows(5);
    Raised.When["grdMain_Press"] = [this] {
        Form().tmrHoldEvent.SetEnabled(true);
        Ask(*Device, BoxButtons::Ok, DoNothing, BoxAnswer::Ok);
    };
    Device->Tap(2, 0);
    EXPECT_THAT(Heard(), ElementsAre("grdMain_RowColChange", "grdMain_Press"));
    EXPECT_FALSE(Form().tmrHoldEvent.Enabled()) << "nothing is held down";
}

TEST_P(RunTimeSuite, AnswersTheInnerOneOfTwoBoxesFirst) {
    std::vector<BoxAnswer> answers;
    const auto inner = [&] { answers.push_back(Ask(*Device, BoxButtons::YesNo, DoNothing, BoxAnswer::Yes)); };
    answers.push_back(Ask(*Device, BoxButtons::YesNo, inner, BoxAnswer::No));
    EXPECT_THAT(answers, ElementsAre(BoxAnswer::Yes, BoxAnswer::No));
}

TEST_P(RunTimeSuite, AnswersABoxOnItsSafeSideWhenTheProgramIsToEnd) {
    Open(Form().txtInputField);
    Raised.When["txtInputField_Change"] = [this] { Device->BeginEnding(); };
    Form().hardwareKeys.SendCharacter('x'); // is handled while the box waits
    MessageBox& box = Form().messageBox;
    EXPECT_EQ(box.Show(u"Delete?", BoxButtons::YesNo, BoxIcon::Question, u""), BoxAnswer::No);
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change"));
    EXPECT_EQ(box.Show(u"Are you sure?", BoxButtons::YesNo, BoxIcon::Question, u""), BoxAnswer::No);
    EXPECT_EQ(box.Show(u"Done", BoxButtons::Ok, BoxIcon::None, u""), BoxAnswer::Ok);
}

TEST_P(RunTimeSuite, RaisesNothingOnceTheProgramIsToEnd) {
    Open(Form().txtInputField);
    Form().tmrMenus.SetInterval(100);
    Form().tmrMenus.SetEnabled(true);
    Device->BeginEnding();
    Form().hardwareKeys.SendCharacter('x');
    Device->Pass(500);
    Settle();
    EXPECT_THAT(Heard(), IsEmpty());
}

// Loops that wait.

/// A loop as of a prompt: a field is open, and the loop ends once an event has set a flag.
TEST_P(RunTimeSuite, LetsAPersonAnswerALoopThatWaits) {
    Open(Form().txtInputField);
    Form().mnuButton2.SetVisible(true);
    Form().mnuButtonO2[0]->SetCaption(u"Ok");
    Form().mnuButtonO2[0]->SetVisible(true);
    Form().tmrMenus.SetInterval(100);
    Form().tmrMenus.SetEnabled(true);
    bool waits = true;
    Raised.When["mnuButtonO2_Click"] = [&] { waits = false; };
    Device->WhileItWaits([this] { Device->Type(u"x"); });
    Device->WhileItWaits([this] { Device->Pass(100); });
    Device->WhileItWaits([this] { Device->ClickItem(2, 1); });
    for (int i = 0; waits && i < 100; ++i)
        Form().runTime.WaitEvents();
    EXPECT_FALSE(waits);
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change", "tmrMenus_Tick", "mnuButtonO2_Click 1"));
}

TEST_P(RunTimeSuite, HandlesWhatIsPendingAndReturns) {
    Open(Form().txtInputField);
    Form().hardwareKeys.SendCharacter('x');
    Form().hardwareKeys.SendCharacter('y');
    EXPECT_THAT(Heard(), IsEmpty());
    Form().runTime.DoEvents();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change", "txtInputField_Change"));
    Form().runTime.DoEvents();
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(RunTimeSuite, RaisesNothingWhileItPauses) {
    Open(Form().txtInputField);
    Form().hardwareKeys.SendCharacter('x');
    Form().runTime.Pause(30);
    EXPECT_THAT(Heard(), IsEmpty());
    Settle();
    EXPECT_THAT(Heard(), ElementsAre("txtInputField_Change"));
}

// The end of the program.

TEST_P(RunTimeSuite, EndsTheProgramAtOnce) {
    Form().hardwareKeys.SendCharacter('x');
    bool goesOn = false;
    const auto end = Device->EndOf([&] {
        Form().runTime.EndProgram();
        goesOn = true;
    });
    ASSERT_TRUE(end);
    EXPECT_FALSE(end->Failed);
    EXPECT_FALSE(goesOn);
    EXPECT_THAT(Heard(), IsEmpty());
}

TEST_P(RunTimeSuite, EndsTheProgramWithTheMessageOfAFailure) {
    const auto end = Device->EndOf([this] { Form().runTime.RuntimeFailure(u"no such row"); });
    ASSERT_TRUE(end);
    EXPECT_TRUE(end->Failed);
    EXPECT_EQ(end->Message, u"no such row");
}

TEST_P(RunTimeSuite, EndsTheProgramFromTheMiddleOfABox) {
    const auto end = Device->EndOf([this] {
        Ask(
            *Device, BoxButtons::Ok, [this] { Form().runTime.EndProgram(); }, BoxAnswer::Ok);
    });
    ASSERT_TRUE(end);
    EXPECT_FALSE(end->Failed);
}

} // namespace conformance
