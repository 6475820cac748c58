// SPDX-License-Identifier: MIT
#include "tests/support/locale.h"

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string>

namespace support {

bool TakeLocale() {
    const char* const taken = std::setlocale(LC_ALL, "");
    if (taken != nullptr)
        std::locale::global(std::locale(""));
    const char* const wanted = std::getenv("QUORIN_LOCALE");
    if (wanted == nullptr || (taken != nullptr && std::string(taken) == wanted))
        return true;
    std::cerr << "The tests are to run under the locale " << wanted << ", and do so under "
              << (taken != nullptr ? taken : "none: it is missing") << "\n";
    return false;
}

} // namespace support
