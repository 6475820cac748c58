// SPDX-License-Identifier: MIT
// Runs the suites of a form on the back-end in a window, on an invisible screen and with the window's own fonts.
#include "tests/conformance/form_in_hand.h"
#include "tests/support/in_a_window.h"

namespace conformance {

namespace {

class QtForm final : public FormInHand<windowtest::WindowDevice> {
public:
    QtForm() : FormInHand(windowtest::OfType(0), windowtest::Looks{.RealFonts = true}) {
        Of.Platform.window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Of.Platform.window));
        Of.Platform.loop.HandleDue();
    }

    void WhileABoxIsOpen(std::function<void()> step, BoxAnswer answer) override {
        Of.WillDo([this, step = std::move(step), answer] {
            step();
            backends::Answer(Of.Hand, answer);
        });
    }

private:
    void Acted(const backends::Refusal&) override { Of.Platform.loop.HandleDue(); }
};

std::unique_ptr<FormUnderTest> MadeInAWindow() {
    return std::make_unique<QtForm>();
}

const FormFactory InAWindow = {"Qt", MadeInAWindow};

} // namespace

QUORIN_RUN_FORM_SUITES(InAWindow, InAWindow);

} // namespace conformance
