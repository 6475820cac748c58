// SPDX-License-Identifier: MIT
#include "apps/quorin/window_settings.h"

#include "src/text/text.h"

namespace quorin {

using modStringTools::FromBytes;
using modStringTools::ToBytes;

namespace {

const Text Application = u"Quorin";
const Text Section = u"Window";

std::string FileBeside(const std::string& formSettings) {
    return formSettings.substr(0, formSettings.rfind('/') + 1) + "window.ini";
}

} // namespace

WindowSettings::WindowSettings(const std::string& formSettings) : Path_(FileBeside(formSettings)), File_(Path_) {
}

std::string WindowSettings::Get(const std::string& name) const {
    return ToBytes(File_.Get(Application, Section, FromBytes(name), u""));
}

void WindowSettings::Save(const std::string& name, const std::string& value) {
    if (Get(name) == value)
        return;
    const auto error = File_.Save(Application, Section, FromBytes(name), FromBytes(value));
    if (error != platform::NoError && !HasFailed_ && Failed)
        Failed(Path_, ToBytes(platform::ErrorText(error)));
    HasFailed_ = HasFailed_ || error != platform::NoError;
}

} // namespace quorin
