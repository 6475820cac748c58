// SPDX-License-Identifier: MIT
// A whole device without a window.
#pragma once

#include "backends/headless/headless_control_set.h"
#include "backends/headless/poll_pump.h"
#include "backends/host/host_back_end.h"

namespace backends::headless {

class HeadlessPlatform final : private PollPump, public HostBackEnd, public HeadlessControls {
public:
    HeadlessPlatform(HostDevice& device, CommandSource& commands, Watcher& watcher);

    Platform record;

    const Controls& Seen() const override { return controls; }

    // User actions are calls of the form's handlers.
    void PressCell(std::int32_t row, std::int32_t col) override;
    void ReleaseCell() override;
    void ClickItem(std::int32_t menu, std::int32_t item) override;
    void ClickTitle(std::int32_t menu) override;
    void StrikeKey(std::int32_t keyCode) override;
    void TypeCharacter(TextView character) override;
    void TypeCharacters(TextView characters) override;
    void ReplaceText(const Text& text) override;
    void ChooseDate(const CalendarDate& date) override;
    void CloseWindow() override;
    void PressBoxButton(BoxAnswer answer) override;

protected:
    Platform& Record() override { return record; }
};

} // namespace backends::headless
