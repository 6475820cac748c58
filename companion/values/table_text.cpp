// SPDX-License-Identifier: MIT
#include "companion/values/table_text.h"

#include <algorithm>

namespace values {

void Split(std::string_view line, std::vector<std::string_view>& fields) {
    fields.clear();
    for (;;) {
        const std::size_t bar = line.find('|');
        fields.push_back(line.substr(0, bar));
        if (bar == std::string_view::npos)
            return;
        line.remove_prefix(bar + 1);
    }
}

LineWalk::LineWalk(std::string_view bytes) : Rest_(bytes) {
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (Rest_.starts_with(ByteOrderMark))
        Rest_.remove_prefix(ByteOrderMark.size());
}

bool LineWalk::Next() {
    if (Rest_.empty())
        return false;
    const std::size_t end = std::min(Rest_.find('\n'), Rest_.size());
    Line_ = Rest_.substr(0, end);
    Rest_.remove_prefix(std::min(end + 1, Rest_.size()));
    if (Line_.ends_with('\r'))
        Line_.remove_suffix(1);
    ++Number_;
    return true;
}

std::size_t RecordsOf(std::string_view table) {
    LineWalk walk(table);
    std::size_t count = 0;
    for (walk.Next(); walk.Next();)
        ++count;
    return count;
}

} // namespace values
