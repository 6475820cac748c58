// SPDX-License-Identifier: MIT
// A whole device without a window.
#pragma once

#include "backends/headless/font_server.h"
#include "backends/headless/headless_controls.h"
#include "backends/headless/poll_pump.h"
#include "backends/loop/back_end.h"

#include <array>

namespace backends::headless {

class HeadlessPlatform final : private PollPump, public BackEnd {
public:
    HeadlessPlatform(const DeviceOptions& options, CommandSource& commands, Watcher& watcher);

    HeadlessForm form;
    HeadlessGrid grdTitle{focus, "grdTitle"};
    HeadlessGrid grdMain{focus, "grdMain"};
    HeadlessTextBox txtInputField{focus, "txtInputField"};
    HeadlessComboBox cboInputField{focus, "cboInputField"};
    HeadlessTextBox cbotxtInputField{focus, "cbotxtInputField"};
    HeadlessDatePicker dteInputField{focus, "dteInputField"};
    HeadlessListBox lstHoldMenu{focus, "lstHoldMenu"};
    HeadlessLabel lblStatus{focus, "lblStatus"};
    HeadlessScrollBar scrollBar;
    std::array<HeadlessMenuItem, 2> menuTitles;
    std::array<std::array<HeadlessMenuItem, MenuItemCount>, 2> menuItems; ///< of each menu, item i is at index i - 1
    HeadlessFonts fonts;
    DeviceBoxes boxes;

    Controls controls;
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
