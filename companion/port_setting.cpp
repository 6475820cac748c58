// SPDX-License-Identifier: MIT
#include "companion/port_setting.h"

#include "src/storage/settings.h"

namespace companion {

Text NameOfPort(std::int32_t number) {
    return u"Com" + modStringTools::NumberText(number);
}

void ChoosePort(std::int32_t number) {
    modQuorin::SaveSetting(u"ComPort", NameOfPort(number));
}

} // namespace companion
