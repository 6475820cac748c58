// SPDX-License-Identifier: MIT
#include "apps/quorin-driver/commands.h"
#include "apps/quorin-driver/input.h"
#include "companion/driver_check.h"
#include "companion/recording_check.h"
#include "src/blob/blob_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>

namespace driver {

using companion::FilledKind;
using companion::Finding;
using companion::Grade;
using modStringTools::ToBytes;
using nlohmann::ordered_json;
using start::ExitStatus;

namespace {

void Write(const ordered_json& object) {
    std::cout << object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) << "\n";
}

ordered_json NumberOrNull(std::size_t number) {
    return number == 0 ? ordered_json() : ordered_json(number);
}

ordered_json ObjectOf(const Finding& finding) {
    return {{"line", NumberOrNull(finding.Line)},
            {"column", NumberOrNull(finding.Column)},
            {"severity", ToBytes(NameOf(finding.Grade))},
            {"text", ToBytes(finding.Words)}};
}

ordered_json ObjectOf(const FilledKind& kind) {
    const platform::Reading& example = kind.Kind.Example;
    ordered_json types = ordered_json::array();
    for (const Text& type : example.Types)
        types.push_back(ToBytes(type));
    ordered_json variables = ordered_json::object();
    for (const companion::FilledVariable& variable : kind.Variables)
        variables[ToBytes(variable.Name)] = ToBytes(variable.To.Field);
    const bool isFilled = kind.To.Line > 0;
    return {{"types", types},
            {"results", kind.Kind.Count},
            {"example", ToBytes(modBLob::ValueAndUnitOf(example))},
            {"field", isFilled ? ordered_json(ToBytes(kind.To.Field)) : ordered_json()},
            {"line", NumberOrNull(kind.To.Line)},
            {"why", isFilled ? ordered_json() : ordered_json(ToBytes(WhyNowhere(kind)))},
            {"variables", variables}};
}

std::string LineOf(const std::string& file, const Finding& finding) {
    std::string place = file + ":";
    if (finding.Line > 0)
        place += std::to_string(finding.Line) + ":" + std::to_string(finding.Column) + ":";
    return place + " " + ToBytes(NameOf(finding.Grade) + u": " + finding.Words);
}

bool IsWrong(const Finding& finding) {
    return finding.Grade != Grade::Note;
}

void CheckFileName(const std::string& path, std::vector<Finding>& found) {
    if (!modQuorin::IsPackageName(modStringTools::FromBytes(path)))
        found.push_back({0, 0, Grade::Warning,
                         u"the name of the file does not end in .qvd: it is not offered for "
                         u"installation"});
}

} // namespace

ExitStatus CheckDriver(const Options& options) {
    const auto lines = ReadLines(options.Package);
    const auto drivers = options.Drivers.empty() ? std::vector<Text>() : ReadLines(options.Drivers);
    std::optional<std::vector<companion::RecordedResult>> results;
    if (!options.Recording.empty())
        results = ReadResults(options.Recording);
    if (!lines || !drivers || (!options.Recording.empty() && !results))
        return ExitStatus::NotStarted;

    std::vector<Finding> found = companion::CheckPackage(*lines, companion::InstalledDrivers(*drivers));
    CheckFileName(options.Package, found);
    const companion::DriverPackage package = companion::ReadPackage(*lines);
    std::vector<FilledKind> kinds;
    if (results && !package.Rows.empty() && package.Rows.size() <= companion::MostCheckedRows) {
        kinds = companion::DestinationsOf(package, *results);
        const std::vector<Finding> more = companion::CheckRecording(package, *results);
        found.insert(found.end(), more.begin(), more.end());
        companion::SortByPlace(found);
    }
    for (const Finding& finding : found) {
        if (options.Json)
            Write(ObjectOf(finding));
        else
            std::cout << LineOf(options.Package, finding) << "\n";
    }
    for (const FilledKind& kind : kinds) {
        if (options.Json)
            Write(ObjectOf(kind));
        else
            std::cout << ToBytes(WordsOf(kind)) << "\n";
    }
    const bool isOdd = std::any_of(found.begin(), found.end(), IsWrong);
    if (!isOdd && !options.Json)
        std::cout << options.Package << ": nothing is wrong\n";
    return isOdd ? ExitStatus::Odd : ExitStatus::Ended;
}

} // namespace driver
