// SPDX-License-Identifier: MIT
// Runs the suites of a form on the back-end without a window.
#include "tests/conformance/form_in_hand.h"

namespace conformance {

namespace {

class HeadlessForm final : public FormInHand<support::TestDevice> {
public:
    void WhileABoxIsOpen(std::function<void()> step, BoxAnswer answer) override {
        Of.WhileABoxIsOpen([this, step = std::move(step), answer] {
            step();
            Of.WillAnswer(answer);
        });
    }
};

std::unique_ptr<FormUnderTest> MadeHeadless() {
    return std::make_unique<HeadlessForm>();
}

const FormFactory Headless = {"headless", MadeHeadless};

} // namespace

QUORIN_RUN_FORM_SUITES(OnHeadless, Headless);

} // namespace conformance
