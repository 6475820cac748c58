// SPDX-License-Identifier: MIT
#include "backends/loop/form_keys.h"

#include "backends/loop/acts.h"
#include "companion/form_state.h"
#include "src/app/form.h"
#include "src/view/input_fields.h"
#include "src/view/platform/keys.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <iterator>

namespace backends {

using platform::CodeOf;
using platform::Key;

namespace {

constexpr std::int32_t NoShift = 0;

/// True if the key changes the text of the field that has the focus, or moves in it. What is typed is reported when the
/// field closes.
bool IsTyping(std::int32_t keyCode) {
    constexpr std::int32_t End = 35;
    constexpr std::int32_t Home = 36;
    constexpr Key Acts[] = {Key::Tab, Key::Enter, Key::Escape};
    if (!modPDAUI::Input.InputFocused && !platform::Device().cbotxtInputField.Visible())
        return false;
    if (std::find(std::begin(Acts), std::end(Acts), Key{keyCode}) != std::end(Acts))
        return false;
    return IsCharacter(keyCode) || keyCode == End || keyCode == Home || Key{keyCode} == Key::Left ||
           Key{keyCode} == Key::Right;
}

} // namespace

bool IsCharacter(std::int32_t keyCode) {
    constexpr Key Written[] = {Key::Backspace, Key::Tab, Key::Enter, Key::Escape, Key::Space};
    return std::find(std::begin(Written), std::end(Written), Key{keyCode}) != std::end(Written) ||
           (keyCode > CodeOf(Key::Down) && keyCode < 127);
}

bool IsPageKey(std::int32_t keyCode) {
    return Key{keyCode} == Key::PageUp || Key{keyCode} == Key::PageDown;
}

bool KeyDownPasses(std::int32_t keyCode) {
    if (!IsTyping(keyCode))
        ReportAct({.Word = "key", .Arguments = ArgumentsOf({keyCode})});
    std::int32_t key = keyCode;
    frmQuorin::Form_KeyDown(key, NoShift);
    if (key == 0 || !IsCharacter(keyCode))
        return key != 0;
    std::int32_t character = keyCode;
    frmQuorin::Form_KeyPress(character);
    return character != 0;
}

void RaiseKeyUp(std::int32_t keyCode) {
    std::int32_t key = keyCode;
    frmQuorin::Form_KeyUp(key, NoShift);
}

bool HasEndsToSelect(const DrawnGrid& grid) {
    return companion::ListStoresNothing() && grid.Rows() > 0;
}

void SelectEnd(DrawnGrid& grid, bool isFirst) {
    const std::int32_t row = isFirst ? 0 : grid.Rows() - 1;
    ReportAct({.Word = "select", .Arguments = ArgumentsOf({row}), .About = grid.Cell(row, 0)});
    grid.SetRow(row);
}

} // namespace backends
