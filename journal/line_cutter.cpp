// SPDX-License-Identifier: MIT
#include "journal/line_cutter.h"

namespace journal {

void LineCutter::Add(std::string_view bytes) {
    Waiting_.erase(0, Start_);
    Searched_ -= Start_;
    Start_ = 0;
    Waiting_ += bytes;
}

std::optional<std::string_view> LineCutter::Next() {
    const std::size_t end = Waiting_.find('\n', Searched_);
    if (end == std::string::npos) {
        Searched_ = Waiting_.size();
        return std::nullopt;
    }
    const std::string_view line = std::string_view(Waiting_).substr(Start_, end - Start_);
    Start_ = Searched_ = end + 1;
    return line;
}

} // namespace journal
