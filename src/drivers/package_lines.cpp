// SPDX-License-Identifier: MIT
#include "src/drivers/package_lines.h"

namespace modQuorin {

bool IsPackageName(TextView name) {
    constexpr TextView Ending = u"qvd"; // without a full stop, which the name of a database can't contain
    return name.size() >= Ending.size() &&
           modStringTools::LowerCase(name.substr(name.size() - Ending.size())) == Ending;
}

bool LineCounts(PackageLines& lines, TextView line) {
    if (line.empty()) {
        lines.EmptyLines += lines.CountedLines > 0 ? 1 : 0;
        return false;
    }
    return line.front() != u'#';
}

std::optional<DriverRow> DriverRowOf(TextView line) {
    const std::size_t bar = line.find(u'|');
    if (bar == TextView::npos)
        return std::nullopt;
    return DriverRow{Text(line.substr(0, bar)), Text(line.substr(bar + 1))};
}

} // namespace modQuorin
