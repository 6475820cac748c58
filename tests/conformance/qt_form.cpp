// SPDX-License-Identifier: MIT
// Runs the suites of a form on the back-end in a window, on a screen that nobody sees and in the window's own fonts.
#include "backends/input/keyboard.h"
#include "tests/conformance/form_suites.h"
#include "tests/support/in_a_window.h"

namespace conformance {

namespace {

class QtForm final : public FormUnderTest {
public:
    QtForm() {
        Device_.Platform.StartProgram();
        Device_.Platform.window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Device_.Platform.window));
        Device_.Platform.loop.HandleDue();
    }

    Platform& Record() override { return Device_.Platform.record; }
    void Pass(std::int64_t milliseconds) override { Device_.Platform.loop.PassTime(milliseconds); }

    void Tap(std::int32_t row, std::int32_t col) override { Handled(backends::Tap(Device_.Hand, row, col)); }
    void ClickItem(std::int32_t menu, std::int32_t item) override {
        Handled(backends::ClickItem(Device_.Hand, menu, item));
    }
    void ClickTitle(std::int32_t menu) override { Handled(backends::ClickTitle(Device_.Hand, menu)); }
    void PressKey(std::int32_t keyCode) override { Handled(backends::PressKey(Device_.Hand, keyCode)); }
    void Type(const Text& text) override { Handled(backends::TypeText(Device_.Hand, text)); }
    void ReplaceText(const Text& text) override { Handled(backends::SetInput(Device_.Hand, text)); }
    void ChooseDate(const CalendarDate& date) override { Handled(backends::PickDate(Device_.Hand, date)); }

    void WhileABoxIsOpen(std::function<void()> step, BoxAnswer answer) override {
        Device_.WillDo([this, step = std::move(step), answer] {
            step();
            backends::Answer(Device_.Hand, answer);
        });
    }
    void WhileItWaits(std::function<void()> step) override { Device_.WillDo(std::move(step)); }
    void BeginEnding() override { Device_.Platform.loop.BeginEnding(); }
    std::optional<ProgramEnd> EndOf(const std::function<void()>& action) override {
        try {
            action();
        } catch (const support::ProgramOver& over) {
            return ProgramEnd{over.Why == support::ProgramOver::Reason::Failed, over.Failure};
        }
        return {};
    }
    std::optional<std::vector<std::pair<std::int32_t, std::int32_t>>> TonesPlayed() override {
        return Device_.Did.Tones;
    }

private:
    void Handled(const backends::Refusal&) { Device_.Platform.loop.HandleDue(); }

    windowtest::WindowDevice Device_{windowtest::OfType(0), {.RealFonts = true}};
};

std::unique_ptr<FormUnderTest> MadeInAWindow() {
    return std::make_unique<QtForm>();
}

const FormFactory InAWindow = {"Qt", MadeInAWindow};

} // namespace

QUORIN_RUN_FORM_SUITES(InAWindow, InAWindow);

} // namespace conformance
