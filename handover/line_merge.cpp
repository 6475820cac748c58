// SPDX-License-Identifier: MIT
#include "handover/line_merge.h"

#include "handover/keyed_rows.h"

#include <algorithm>

namespace handover {

Merged Merge(const std::string& file, std::string_view here, std::string_view inZip, Growth growth) {
    const std::vector<std::string_view> ours = RawLines(here);
    const std::vector<std::string_view> others = RawLines(inZip);
    Merged merged;
    for (std::size_t i = 0; i < std::min(ours.size(), others.size()); ++i)
        if (ours[i] != others[i])
            merged.Differences.push_back({file, i, std::string(ours[i]), std::string(others[i])});
    if (others.size() <= ours.size())
        return merged;
    const bool isBehind = ours.empty() || (growth == Growth::Allowed && ours.back() == others[ours.size() - 1]);
    if (!isBehind) {
        for (std::size_t i = ours.size(); i < others.size(); ++i)
            merged.Differences.push_back({file, i, std::nullopt, std::string(others[i])});
        return merged;
    }
    merged.New = others.size() - ours.size();
    merged.Bytes = here;
    if (!here.empty() && here.back() != '\n')
        merged.Bytes += '\n';
    merged.Bytes += inZip.substr(static_cast<std::size_t>(others[ours.size()].data() - inZip.data()));
    return merged;
}

bool Continues(std::string_view here, std::string_view inZip) {
    const std::vector<std::string_view> ours = RawLines(here);
    const std::vector<std::string_view> others = RawLines(inZip);
    return ours.size() <= others.size() && std::equal(ours.begin(), ours.end(), others.begin());
}

} // namespace handover
