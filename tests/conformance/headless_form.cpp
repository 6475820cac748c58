// SPDX-License-Identifier: MIT
// Runs the suites of a form on the back-end without a window.
#include "backends/input/keyboard.h"
#include "tests/conformance/form_suites.h"
#include "tests/support/test_device.h"

namespace conformance {

namespace {

class HeadlessForm final : public FormUnderTest {
public:
    HeadlessForm() { Device_.Platform.StartProgram(); }

    Platform& Record() override { return Device_.Platform.record; }
    void Pass(std::int64_t milliseconds) override { Device_.Tick(milliseconds); }

    void Tap(std::int32_t row, std::int32_t col) override { backends::Tap(Device_.Hand, row, col); }
    void ClickItem(std::int32_t menu, std::int32_t item) override { backends::ClickItem(Device_.Hand, menu, item); }
    void ClickTitle(std::int32_t menu) override { backends::ClickTitle(Device_.Hand, menu); }
    void PressKey(std::int32_t keyCode) override { backends::PressKey(Device_.Hand, keyCode); }
    void Type(const Text& text) override { backends::TypeText(Device_.Hand, text); }
    void ReplaceText(const Text& text) override { backends::SetInput(Device_.Hand, text); }
    void ChooseDate(const CalendarDate& date) override { backends::PickDate(Device_.Hand, date); }

    void WhileABoxIsOpen(std::function<void()> step, BoxAnswer answer) override {
        Device_.WhileABoxStands([this, step = std::move(step), answer] {
            step();
            Device_.WillAnswer(answer);
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
    support::TestDevice Device_;
};

std::unique_ptr<FormUnderTest> MadeHeadless() {
    return std::make_unique<HeadlessForm>();
}

const FormFactory Headless = {"headless", MadeHeadless};

} // namespace

QUORIN_RUN_FORM_SUITES(OnHeadless, Headless);

} // namespace conformance
