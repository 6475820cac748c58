// SPDX-License-Identifier: MIT
// The common part of all forms on which a Hand performs a person's actions: each device of the tests has a Platform, a
// Hand, a record of what it Did, and steps that it WillDo. A device for another back-end is made as WindowDevice of
// tests/support is: it is the back-end's CommandSource, whose commands are these steps.
#pragma once

#include "backends/input/keyboard.h"
#include "tests/conformance/form_suites.h"
#include "tests/support/test_device.h"

#include <utility>

namespace conformance {

template <class Device>
class FormInHand : public FormUnderTest {
public:
    Platform& Record() override { return Of.Platform.record; }
    void Pass(std::int64_t milliseconds) override { Of.Platform.loop.PassTime(milliseconds); }

    void Tap(std::int32_t row, std::int32_t col) override { Acted(backends::Tap(Of.Hand, row, col)); }
    void ClickItem(std::int32_t menu, std::int32_t item) override { Acted(backends::ClickItem(Of.Hand, menu, item)); }
    void ClickTitle(std::int32_t menu) override { Acted(backends::ClickTitle(Of.Hand, menu)); }
    void PressKey(std::int32_t keyCode) override { Acted(backends::PressKey(Of.Hand, keyCode)); }
    void Type(const Text& text) override { Acted(backends::TypeText(Of.Hand, text)); }
    void ReplaceText(const Text& text) override { Acted(backends::SetInput(Of.Hand, text)); }
    void ChooseDate(const CalendarDate& date) override { Acted(backends::PickDate(Of.Hand, date)); }

    void WhileItWaits(std::function<void()> step) override { Of.WillDo(std::move(step)); }
    void BeginEnding() override { Of.Platform.loop.BeginEnding(); }
    std::optional<ProgramEnd> EndOf(const std::function<void()>& action) override {
        try {
            action();
        } catch (const support::ProgramOver& over) {
            return ProgramEnd{over.Why == support::ProgramOver::Reason::Failed, over.Failure};
        }
        return {};
    }
    std::optional<std::vector<std::pair<std::int32_t, std::int32_t>>> TonesPlayed() override { return Of.Did.Tones; }

protected:
    template <class... Parts>
    explicit FormInHand(Parts&&... parts) : Of(std::forward<Parts>(parts)...) {
        Of.Platform.StartProgram();
    }
    /// Called after each action. It may have been refused.
    virtual void Acted(const backends::Refusal&) {}

    Device Of;
};

} // namespace conformance
