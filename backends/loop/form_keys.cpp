// SPDX-License-Identifier: MIT
#include "backends/loop/form_keys.h"

#include "backends/grid/key_codes.h"
#include "src/app/form.h"

#include <algorithm>
#include <iterator>

namespace backends {

namespace {

constexpr std::int32_t NoShift = 0;

} // namespace

bool IsCharacter(std::int32_t keyCode) {
    constexpr std::int32_t Written[] = {8, 9, 13, 27, 32};
    return std::find(std::begin(Written), std::end(Written), keyCode) != std::end(Written) ||
           (keyCode > 40 && keyCode < 127);
}

bool IsPageKey(std::int32_t keyCode) {
    return keyCode == KeyPageUp || keyCode == KeyPageDown;
}

bool KeyDownPasses(std::int32_t keyCode) {
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

} // namespace backends
