// SPDX-License-Identifier: MIT
#include "companion/recorded_results.h"

#include "companion/file_lines.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/blob/targets.h"

#include <map>
#include <tuple>

namespace companion {

namespace {

constexpr TextView OriginName = u"ORIGIN";

std::vector<Text> NamesOfVariables(const platform::Reading& reading) {
    std::vector<Text> names;
    for (const Text& variable : reading.Variables) {
        Text name = modBLob::SplitVariable(variable).Name;
        if (!modStringTools::SameIgnoringCase(name, OriginName))
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

std::vector<RecordedResult> ResultsOf(TextView recording) {
    modBLob::FramingState framing;
    modBLob::DecoderState decoder;
    std::vector<RecordedResult> results;
    for (const Text& line : LinesOf(recording)) {
        const bool delivers = modBLob::ExtractBlobs(framing, decoder, line + u"\r\n");
        for (const modBLob::LostBlob& blob : framing.Lost)
            modBLob::VisitResults(blob, [&](const platform::Reading& reading) {
                results.push_back({reading, blob.Why});
            });
        while (delivers && modBLob::NextResult(decoder))
            results.push_back({modBLob::CurrentResult(decoder), std::nullopt});
    }
    return results;
}

std::vector<ResultKind> KindsOf(const std::vector<RecordedResult>& results) {
    std::vector<ResultKind> kinds;
    std::map<std::tuple<std::vector<Text>, std::vector<Text>, std::optional<platform::Fate>>, std::size_t> places;
    for (const RecordedResult& result : results) {
        const std::vector<Text> variables = NamesOfVariables(result.Reading);
        const auto [place, isNew] = places.try_emplace({result.Reading.Types, variables, result.Lost}, kinds.size());
        if (isNew)
            kinds.push_back({.Example = result.Reading, .Lost = result.Lost, .Variables = variables, .Count = 0});
        ++kinds[place->second].Count;
    }
    return kinds;
}

Text NamesOf(const platform::Reading& reading) {
    Text names;
    for (const Text& type : reading.Types)
        names += (names.empty() ? u"" : u", ") + type;
    return names;
}

} // namespace companion
