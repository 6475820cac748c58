// SPDX-License-Identifier: MIT
// The controls of a form without a window, on a back-end that a test puts together itself.
#pragma once

#include "backends/headless/headless_control_set.h"

#include <utility>

namespace support {

/// `Base` is BackEnd or one made from it; `parts` and `pumpOfBase` are what its constructor takes.
template <class Base>
class HeadlessShell final : public Base, public backends::headless::HeadlessControlSet {
public:
    template <class Parts, class PumpOfBase>
    HeadlessShell(Parts&& parts, PumpOfBase& pumpOfBase, backends::CommandSource& commands, backends::Watcher& watcher)
        : Base(std::forward<Parts>(parts), pumpOfBase, commands, watcher),
          HeadlessControlSet(Base::focus, Base::loop, watcher), Record_(Base::RecordOf(controls)) {
        Base::DesignControls(controls);
    }
    const backends::Controls& Seen() const override { return controls; }

protected:
    platform::Platform& Record() override { return Record_; }

private:
    platform::Platform Record_;
};

} // namespace support
