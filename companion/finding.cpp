// SPDX-License-Identifier: MIT
#include "companion/finding.h"

#include <algorithm>

namespace companion {

Text NameOf(Grade grade) {
    switch (grade) {
    case Grade::Note:
        return u"note";
    case Grade::Warning:
        return u"warning";
    case Grade::Error:
        break;
    }
    return u"error";
}

void SortByPlace(std::vector<Finding>& findings) {
    const auto place = [](const Finding& finding) {
        return std::pair(finding.Line == 0 ? static_cast<std::size_t>(-1) : finding.Line, finding.Column);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& one, const Finding& other) { return place(one) < place(other); });
}

Text Shown(TextView text) {
    constexpr std::size_t Longest = 60;
    constexpr char16_t Delete = 0x7F;
    constexpr char16_t LastControl = 0x9F;
    Text shown(text.substr(0, Longest));
    for (char16_t& character : shown) {
        if (character < u' ' || (character >= Delete && character <= LastControl))
            character = u' ';
    }
    return text.size() > Longest ? shown + u"…" : shown;
}

Text Quoted(TextView text) {
    return u"\"" + Shown(text) + u"\"";
}

} // namespace companion
