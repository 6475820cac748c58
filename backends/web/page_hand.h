// SPDX-License-Identifier: MIT
// Does to the form what a person has done on the page. What was meant for a screen, a field or a box that is no longer
// there is dropped: the page shows everything a moment later than it happens.
#pragma once

#include "backends/web/page_events.h"
#include "backends/web/web_platform.h"

#include <map>
#include <vector>

namespace backends::web {

class PageHand {
public:
    explicit PageHand(WebPlatform& platform) : Form_(platform) {}

    void Do(const PageEvent& event);

private:
    using Routine = void (PageHand::*)(const PageEvent& event);
    enum class Aim { Anywhere, Form, Screen, Field, Box }; ///< what must still be there
    struct Row {
        const char* Kind;
        Aim MeantFor;
        Routine Does;
    };
    static const std::vector<Row>& Rows();

    bool IsThere(Aim aim, const PageEvent& event) const;

    void Press(const PageEvent& event);
    void Release(const PageEvent& event);
    void PressHeading(const PageEvent& event);
    void Scroll(const PageEvent& event);

    void KeyDown(const PageEvent& event);
    void KeyUp(const PageEvent& event);
    bool TakeTab(std::int32_t key);
    bool TakeHomeOrEnd(std::int32_t key);
    void Strike(FocusTarget& taker, std::int32_t code);
    void Tap(std::int32_t row, std::int32_t col);

    void Edit(const PageEvent& event);
    void SetDate(const PageEvent& event);
    void ChooseDate(const PageEvent& event);
    void ChooseFromList(const PageEvent& event);

    void ClickTitle(const PageEvent& event);
    void ClickItem(const PageEvent& event);
    void Answer(const PageEvent& event);
    void TakeUpSize(const PageEvent& event) { Form_.TakeUpSize({event.Width, event.Height}); }
    void ConfirmNotice(const PageEvent& event);
    void UsePort(const PageEvent& event);
    void LossesSeen(const PageEvent&) { Form_.onlooker.losses.Seen(); }
    void Close(const PageEvent& event);

    struct HeldKey {
        std::int32_t Code = 0;
        modQuorin::ScreenId Screen = 0; ///< on which it was pressed
    };

    WebPlatform& Form_;
    std::map<std::int32_t, HeldKey> Held_; ///< by the code that the page sends
};

} // namespace backends::web
