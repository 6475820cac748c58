// SPDX-License-Identifier: MIT
#include "journal/reading_words.h"

#include "companion/readings.h"
#include "companion/verdict_words.h"
#include "journal/glance.h"
#include "src/blob/blob_text.h"
#include "src/text/text.h"
#include "src/view/platform/reading_log.h"

#include <algorithm>
#include <map>

namespace journal {

namespace {

using modStringTools::FromBytes;
using modStringTools::ToBytes;
using platform::Fate;

struct Named {
    platform::Fate Fate;
    companion::Outcome Outcome;
};

const std::map<std::string, Named, std::less<>>& Verdicts() {
    static const auto verdicts = [] {
        std::map<std::string, Named, std::less<>> made;
        for (int number = 0; number <= static_cast<int>(Fate::Emptied); ++number) {
            const auto fate = static_cast<Fate>(number);
            made[ToBytes(companion::NameOf(fate))] = {fate,
                                                      companion::WordsOf(platform::Verdict{.Fate = fate}, u"").Outcome};
        }
        return made;
    }();
    return verdicts;
}

Text TextOf(const Line& line, const char* name) {
    return FromBytes(TextIn(line, name));
}

platform::Reading ReadingOf(const Line& line) {
    platform::Reading reading;
    reading.Value = TextOf(line, "value");
    reading.Unit = TextOf(line, "unit");
    reading.Origin = TextOf(line, "origin");
    const auto types = line.find("types");
    if (types == line.end() || !types->is_array())
        return reading;
    for (const Line& type : *types)
        reading.Types.push_back(type.is_string() ? FromBytes(type.get<std::string>()) : Text());
    return reading;
}

} // namespace

bool IsStored(const std::string& verdict) {
    const auto found = Verdicts().find(verdict);
    return found != Verdicts().end() && found->second.Outcome == companion::Outcome::Taken;
}

std::string StoredVerdicts() {
    std::string names;
    for (const auto& [name, row] : Verdicts()) {
        if (row.Outcome == companion::Outcome::Taken)
            names += (names.empty() ? "" : ", ") + name;
    }
    return names;
}

std::string ResultOf(const Line& reading) {
    const platform::Reading result = ReadingOf(reading);
    const Text type = result.Types.empty() ? Text() : result.Types.front();
    const Text text = (type.empty() ? type : type + u" ") + modBLob::ValueAndUnitOf(result);
    return OneLine(ToBytes(text));
}

std::string FieldTextOf(const Line& reading) {
    return ToBytes(modBLob::ValueAndUnitOf(ReadingOf(reading)));
}

std::string VerdictOf(const Line& reading) {
    const std::string name = TextIn(reading, "verdict");
    const auto found = Verdicts().find(name);
    if (found == Verdicts().end())
        return name;
    const Text file = TextOf(reading, "file");
    const platform::Verdict verdict{.Fate = found->second.Fate,
                                    .Reading = ReadingOf(reading),
                                    .Field = TextOf(reading, "field"),
                                    .Old = TextOf(reading, "old"),
                                    .File = file,
                                    .Expected = TextOf(reading, "expected")};
    // The journal names the download. Its driver may be another one by now.
    const std::string limit = TextIn(reading, "limit");
    return ToBytes(companion::WordsOf(verdict, file).Line) + (limit.empty() ? "" : "; outside of its limit " + limit);
}

std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7f'; },
        ' ');
    return text;
}

std::string InARow(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char character) { return character == '\n' || character == '\0'; }, ' ');
    return text;
}

std::string TimeText(std::string time) {
    std::replace(time.begin(), time.end(), 'T', ' ');
    return time;
}

} // namespace journal
