// SPDX-License-Identifier: MIT
// The controls of a back-end's form, with what tests and scripts need beyond the application's view: where a caret is,
// what a list offers, what was painted.
#pragma once

#include "backends/grid/drawn_grid.h"
#include "backends/loop/services.h"
#include "src/view/platform/canvas.h"
#include "src/view/platform/platform.h"

#include <array>
#include <vector>

namespace backends {

using namespace platform;

template <class Field>
class WithCaret : public Field {
public:
    virtual std::int32_t Caret() const = 0; ///< number of characters before it
};

using EditBox = WithCaret<TextBox>;

class EditCombo : public WithCaret<ComboBox> {
public:
    virtual std::vector<Text> Items() const = 0;
};

using MenuItems = std::array<MenuItem*, MenuItemCount>; ///< item i is at index i - 1

/// Returns pointers to a back-end's own items.
template <class Item>
MenuItems Pointers(std::array<Item, MenuItemCount>& items) {
    MenuItems pointers{};
    for (std::size_t i = 0; i < items.size(); ++i)
        pointers[i] = &items[i];
    return pointers;
}

struct Controls {
    Form& form;
    DrawnGrid& grdTitle;
    DrawnGrid& grdMain;
    EditBox& txtInputField;
    EditCombo& cboInputField;
    EditBox& cbotxtInputField;
    DatePicker& dteInputField;
    ListBox& lstHoldMenu;
    Label& lblStatus;
    ScrollBar& scrollBar;
    std::array<MenuItem*, 2> menuTitles;
    std::array<MenuItems, 2> menuItems;
    FontServer& fonts;
    DeviceBoxes& boxes;
};

/// Returns the form's box in pixels.
Box PixelsOf(const Form& form);

} // namespace backends
