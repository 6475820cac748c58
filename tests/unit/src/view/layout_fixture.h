// SPDX-License-Identifier: MIT
// A form whose layout is tested.
#pragma once

#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/input_fields.h"
#include "src/view/layout.h"
#include "src/view/prompt.h"
#include "tests/support/program.h"

#include <ostream>

namespace platform {
/// For the messages of failed tests.
inline void PrintTo(const Box& box, std::ostream* out) {
    *out << box.Left << ", " << box.Top << ", " << box.Width << ", " << box.Height;
}
} // namespace platform

namespace modPDAUI {

using namespace modQuorin;
using platform::Box;

/// A device of 240 by 320 pixels.
class Layout : public support::Program {
protected:
    explicit Layout(const backends::DeviceOptions& options = support::OfType(7)) : Program(options) {}
    void Keyboard(bool shown, std::int32_t top, std::int32_t height) {
        frmQuorin::mykb_statechanged(shown ? -1 : 0, 0, top, 240, height);
    }
    Box FormBox() { return Device.Platform.form.Bounds(); }
    std::vector<std::int32_t> Widths(platform::OwnerDrawGrid& grid) {
        std::vector<std::int32_t> widths;
        for (std::int32_t col = 0; col < grid.Cols(); ++col)
            widths.push_back(grid.ColWidth(col));
        return widths;
    }
    void ShowRows(std::int32_t count) {
        GotoScreen(ScrTextFile);
        ShowList(std::vector<Text>(static_cast<std::size_t>(count), u"x"));
    }
};

} // namespace modPDAUI
