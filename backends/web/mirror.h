// SPDX-License-Identifier: MIT
// What a person sees of the form, as one JSON text that a page draws. Texts are broken into lines here, by the measures
// that the form uses, and colours are those of a style sheet.
#pragma once

#include "backends/headless/headless_control_set.h"
#include "backends/web/page_fonts.h"
#include "companion/notices.h"
#include "src/view/screen_table.h"

#include <functional>
#include <string>

namespace backends::web {

/// What the controls do not know.
struct Beside {
    std::int32_t DeviceType = 0;
    std::vector<DeviceKey> Keys = {}; ///< of the device, shown as buttons
    std::int32_t BoxesOpened = 0;     ///< number of message boxes since the start
    std::int64_t Heard = 0;           ///< the number of the page's last event that was handled
    const companion::Notices& Notices;
};

/// Numbers what is on the screen, so that an event that was meant for something else can be told. Look finds what has
/// changed since it was last called.
class Stage {
public:
    explicit Stage(const headless::HeadlessControlSet& seen) : Seen_(seen) {}

    void Look();
    std::int32_t Screen() const { return Screens_; }
    /// The number of the open input control; 0 if none is open.
    std::int32_t Field() const { return FieldKind_ == 0 ? 0 : Fields_; }
    /// The number of the open message box; 0 if none is open.
    std::int32_t Box(std::int32_t opened) const;

private:
    const headless::HeadlessControlSet& Seen_;
    modQuorin::ScreenId ScreenShown_ = 0;
    std::int32_t Screens_ = 0;
    int FieldKind_ = 0;
    std::int32_t EditRow_ = 0, EditCol_ = 0;
    std::int32_t Fields_ = 0;
};

/// Returns the text of what is seen.
std::string MirrorText(const headless::HeadlessControlSet& seen, PageFonts& fonts, const Stage& stage,
                       const Beside& beside);

} // namespace backends::web
