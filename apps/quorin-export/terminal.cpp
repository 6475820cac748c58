// SPDX-License-Identifier: MIT
#include "apps/quorin-export/terminal.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace exporter {

bool IsTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

TerminalSize SizeOfTerminal() {
    TerminalSize size;
    winsize window{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0 && window.ws_col > 0 && window.ws_row > 0)
        size = {window.ws_col, window.ws_row};
    --size.Rows;
    return size;
}

bool IsUtf8() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value == nullptr || *value == '\0')
            continue;
        std::string locale = value;
        std::transform(locale.begin(), locale.end(), locale.begin(), [](unsigned char each) {
            return static_cast<char>(each >= 'A' && each <= 'Z' ? each + 32 : each);
        });
        return locale.find("utf-8") != std::string::npos || locale.find("utf8") != std::string::npos;
    }
    return false;
}

} // namespace exporter
