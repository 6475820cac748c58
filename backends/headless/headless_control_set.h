// SPDX-License-Identifier: MIT
// All controls of a form without a window.
#pragma once

#include "backends/headless/font_server.h"
#include "backends/headless/headless_controls.h"

#include <array>

namespace backends::headless {

/// A back-end inherits them beside BackEnd, so that each has its name in the form.
struct HeadlessControlSet {
    /// `otherFonts` are used in place of the fixed ones, if they are given, and `barWidth` is that of a scroll bar, in
    /// pixels.
    HeadlessControlSet(Focus& focus, EventLoop& loop, Watcher& watcher, FontServer* otherFonts = nullptr,
                       float barWidth = UsualBarWidth);
    HeadlessControlSet(const HeadlessControlSet&) = delete;
    HeadlessControlSet& operator=(const HeadlessControlSet&) = delete;

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
    ~HeadlessControlSet() = default;
};

} // namespace backends::headless
