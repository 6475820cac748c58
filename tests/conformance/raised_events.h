// SPDX-License-Identifier: MIT
// The events that a form has raised. The suites of a form are linked with these handlers of src/app/form.h in place of
// the application's. They record each call of a back-end, and act on it only if a test sets an action.
#pragma once

#include "src/view/platform/canvas.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace conformance {

/// A draw-cell event.
struct DrawnCell {
    std::int32_t Row = 0, Col = 0;
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0;
    bool Current = false;
    bool OfTitle = false;
};

struct RaisedEvents {
    std::vector<std::string> Heard; ///< names of the handlers in order, with their numbers; no draw-cell event
    std::map<std::string, std::function<void()>> When; ///< what the handler of that name does
    std::set<std::string> Consumes;                    ///< the key handlers that consume the key, by name

    std::vector<DrawnCell> Drawn;
    std::function<void(platform::CellCanvas& canvas, const DrawnCell& cell)> Draw; ///< paints the cell
};
inline RaisedEvents Raised;

} // namespace conformance
