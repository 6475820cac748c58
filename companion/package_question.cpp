// SPDX-License-Identifier: MIT
#include "companion/package_question.h"

#include "companion/driver_check.h"

#include <algorithm>

namespace companion {

using modQuorin::DriverRow;
using modStringTools::NumberText;

namespace {

constexpr std::size_t MostNamed = 10;

bool IsAmong(const Package& package, const std::vector<DriverRow>& installed) {
    const auto driver = ReadPackage(package.Lines).Driver;
    return driver && std::any_of(installed.begin(), installed.end(), [&](const DriverRow& each) {
               return modStringTools::SameIgnoringCase(each.Name, driver->Name);
           });
}

Text Number(std::size_t number) {
    return NumberText(static_cast<std::int64_t>(number));
}

Text LineOf(const Finding& finding) {
    if (finding.Line == 0)
        return finding.Words;
    return u"line " + Number(finding.Line) + u", column " + Number(finding.Column) + u": " + finding.Words;
}

} // namespace

bool IsInstalled(const Package& package) {
    return IsAmong(package, DriversOfDevice());
}

Text InstallQuestion(const Package& package) {
    const std::vector<DriverRow> installed = DriversOfDevice();
    if (IsAmong(package, installed))
        return {};
    std::vector<Finding> found = CheckPackage(package.Lines, installed);
    std::erase_if(found, [](const Finding& finding) { return finding.Grade == Grade::Note; });
    if (found.empty())
        return {};
    Text words = u"Something is wrong with " + package.Name + u":\n";
    for (std::size_t i = 0; i < std::min(found.size(), MostNamed); ++i)
        words += u"\n" + LineOf(found[i]);
    if (found.size() > MostNamed)
        words += u"\nand " + Number(found.size() - MostNamed) + u" more";
    return words + u"\n\nInstall it all the same?";
}

} // namespace companion
