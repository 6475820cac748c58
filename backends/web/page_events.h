// SPDX-License-Identifier: MIT
// What a person does on the page, as events of the loop: a line of JSON each, from a descriptor.
#pragma once

#include "backends/descriptor/waitable.h"
#include "backends/loop/event_loop.h"
#include "src/view/platform/controls.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace backends::web {

using namespace platform;

/// An event. What its kind has no use for is left as it is here.
struct PageEvent {
    std::string Kind = {};
    std::int64_t Serial = 0;                          ///< a number that grows with each event
    std::int32_t Stage = 0;                           ///< the mirror's, when the person did it: what it was meant for
    std::int32_t Field = 0;                           ///< the same of an input control
    std::int32_t Box = 0;                             ///< the same of a message box
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0; ///< pixels of the form
    std::int32_t Key = 0;
    bool Repeated = false; ///< the key is held
    std::int32_t Menu = 0, Item = 0;
    std::int32_t Row = 0;
    std::int32_t Caret = 0, Selected = 0;
    Text Words = {};
    std::string Data = {};  ///< bytes of a file, in base64, or another text that no control has
    std::int64_t Bytes = 0; ///< size of a file
    bool Yes = false;
    std::vector<std::string> Names = {};
};

/// Returns the event of a line; nothing for a line that is none.
std::optional<PageEvent> ReadPageEvent(const std::string& line);

class PageEvents final : public EventSource, public Waitable {
public:
    explicit PageEvents(int descriptor) : Descriptor_(descriptor) {}

    int Descriptor() const override { return Descriptor_; }
    /// Raises one event.
    bool RaiseWhatIsPending() override;

    std::function<void(const PageEvent&)> Raised;

private:
    void Read();

    int Descriptor_;
    std::string Begun_; ///< a line whose end has not come yet
    std::deque<PageEvent> Waiting_;
};

} // namespace backends::web
