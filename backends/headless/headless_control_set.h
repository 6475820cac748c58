// SPDX-License-Identifier: MIT
// All controls of a form without a window.
#pragma once

#include "backends/headless/font_server.h"
#include "backends/headless/headless_controls.h"

#include <array>

namespace backends::headless {

/// A back-end inherits them beside BackEnd, so that each has its name in the form.
struct HeadlessControls {
    HeadlessControls(Focus& focus, EventLoop& loop, Watcher& watcher);
    HeadlessControls(const HeadlessControls&) = delete;
    HeadlessControls& operator=(const HeadlessControls&) = delete;

    HeadlessForm form;
    HeadlessGrid grdTitle;
    HeadlessGrid grdMain;
    HeadlessTextBox txtInputField;
    HeadlessComboBox cboInputField;
    HeadlessTextBox cbotxtInputField;
    HeadlessDatePicker dteInputField;
    HeadlessListBox lstHoldMenu;
    HeadlessLabel lblStatus;
    HeadlessScrollBar scrollBar;
    std::array<HeadlessMenuItem, 2> menuTitles;
    std::array<std::array<HeadlessMenuItem, MenuItemCount>, 2> menuItems; ///< of each menu, item i is at index i - 1
    HeadlessFonts fonts;
    DeviceBoxes boxes;

    Controls controls;

protected:
    ~HeadlessControls() = default;
};

} // namespace backends::headless
