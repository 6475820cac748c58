// SPDX-License-Identifier: MIT
// The pause of the link, which a person is offered whom an instrument asks one question after the other.
#pragma once

#include "backends/qt/qt_platform.h"
#include "companion/question_rush.h"

namespace quorin {

class WindowPause final : public backends::EventSource {
public:
    explicit WindowPause(backends::qt::QtPlatform& device);

    void Pause();
    void GoOn();

    /// Ends the pause with its record.
    bool RaiseWhatIsPending() override;

private:
    void RecordLeft();

    backends::qt::QtPlatform& Device_;
    companion::QuestionRush Rush_;
};

} // namespace quorin
