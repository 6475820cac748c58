// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/stream.h"

#include <array>
#include <memory>

namespace instrument {

namespace {

constexpr std::array<std::string_view, 5> Sites = {"North wall", "South wall", "Cellar", "Loft", "Stairwell"};
constexpr std::array<std::string_view, 3> Operators = {"Ada", "Ben", "Cleo"};

constexpr const char* DegreesCelsius = "\xC2\xB0"
                                       "C"; // UTF-8

std::string Tag(std::string_view keyword, std::string_view quoted) {
    return "[" + std::string(keyword) + " \"" + std::string(quoted) + "\"]\r\n";
}

std::string Tenths(int value) {
    return std::to_string(value / 10) + "." + std::to_string(value % 10);
}

std::string ConnectRecord(const std::string& identity) {
    return "[BLob]\r\n" + Tag("CONNECT", identity) + "[/BLob]\r\n";
}

/// The state of a made-up stream between records. The engine's numbers are used directly: the standard fixes them, but
/// not the results of its distributions.
struct Maker {
    MadeUpStream Stream;
    std::mt19937 Engine;
    bool Introduced = false;
    std::int64_t Made = 0;
    std::string_view Site;
    std::string_view Operator;

    explicit Maker(MadeUpStream stream) : Stream(std::move(stream)), Engine(Stream.Seed) {}

    std::size_t Below(std::size_t bound) { return Engine() % bound; }

    std::string NextResult() {
        const auto turn = static_cast<std::size_t>(Made) % Stream.Kinds.size();
        const ResultKind& kind = Stream.Kinds[turn];
        // One round of kinds is measured at one place by one person.
        if (turn == 0) {
            Site = Sites[Below(Sites.size())];
            Operator = Operators[Below(Operators.size())];
        }
        const int span = kind.Highest - kind.Lowest;
        const int value = kind.Lowest + static_cast<int>(Below(static_cast<std::size_t>(span) + 1));
        std::string record = "[BLob]\r\n" + Tag("ORIGIN", Stream.Identity);
        record += Tag("DESCRIPTIVE_VAR", "Site=" + std::string(Site));
        record += Tag("DESCRIPTIVE_VAR", "Operator=" + std::string(Operator));
        if (!kind.Probe.empty()) {
            record += Tag("DESCRIPTIVE_VAR", "Probe=" + kind.Probe);
        }
        record += Tag("RESULT_TYPE", kind.OtherName.empty() ? kind.Name : kind.Name + "\" \"" + kind.OtherName);
        record += Tag("RESULT_VALUE", Tenths(value));
        record += Tag("RESULT_UNIT", kind.Unit);
        record += "[/BLob]\r\n";
        ++Made;
        return record;
    }
};

std::string_view FirstLine(std::string_view text) {
    const auto lineFeed = text.find('\n');
    return lineFeed == std::string_view::npos ? text : text.substr(0, lineFeed + 1);
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualInAnyCase(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (Lower(left[i]) != Lower(right[i])) {
            return false;
        }
    }
    return true;
}

/// Reads one "NAME" or "NAME=UNIT".
bool ReadKind(std::string_view text, ResultKind& kind) {
    const auto equals = text.find('=');
    const std::string_view name = text.substr(0, equals);
    if (name.empty() || !FitsInATag(text)) {
        return false;
    }
    for (const ResultKind& known : ClimateKinds()) {
        if (known.Name == name) {
            kind = known;
        }
    }
    kind.Name = name;
    if (equals != std::string_view::npos) {
        kind.Unit = text.substr(equals + 1);
    }
    return true;
}

} // namespace

std::vector<ResultKind> ClimateKinds() {
    return {{"Moisture", "M1", "%", "Pin", 60, 280},
            {"Temperature", "T1", DegreesCelsius, "Air", 120, 310},
            {"Humidity", "H1", "%RH", "Air", 300, 850}};
}

bool ReadKinds(std::string_view text, std::vector<ResultKind>& kinds) {
    kinds.clear();
    while (true) {
        const auto comma = text.find(',');
        ResultKind kind;
        if (!ReadKind(text.substr(0, comma), kind)) {
            return false;
        }
        kinds.push_back(kind);
        if (comma == std::string_view::npos) {
            return true;
        }
        text.remove_prefix(comma + 1);
    }
}

bool FitsInATag(std::string_view text) {
    return text.find_first_of("\"[]|\r\n") == std::string_view::npos;
}

RecordSource MakeUp(MadeUpStream stream) {
    auto maker = std::make_shared<Maker>(std::move(stream));
    return [maker](std::string& record) {
        if (!maker->Introduced) {
            maker->Introduced = true;
            record = ConnectRecord(maker->Stream.Identity);
            return true;
        }
        if (maker->Stream.Count != 0 && maker->Made == maker->Stream.Count) {
            return false;
        }
        record = maker->NextResult();
        return true;
    };
}

RecordSource Recording(std::string_view bytes) {
    auto rest = std::make_shared<std::string>(bytes);
    return [rest, at = std::size_t{0}](std::string& record) mutable {
        if (at == rest->size()) {
            return false;
        }
        const std::string_view unread = std::string_view(*rest).substr(at);
        std::size_t length = 0;
        for (bool closed = false; !closed && length < unread.size();) {
            const std::string_view line = FirstLine(unread.substr(length));
            closed = BeginsWithTag(line, "[/BLob");
            length += line.size();
        }
        record = unread.substr(0, length);
        at += length;
        return true;
    };
}

std::vector<std::string_view> LinesOf(std::string_view record) {
    std::vector<std::string_view> lines;
    while (!record.empty()) {
        lines.push_back(FirstLine(record));
        record.remove_prefix(lines.back().size());
    }
    return lines;
}

bool BeginsWithTag(std::string_view line, std::string_view tag) {
    return EqualInAnyCase(line.substr(0, tag.size()), tag);
}

bool IsConnectRecord(std::string_view record) {
    for (const std::string_view line : LinesOf(record)) {
        if (BeginsWithTag(line, "[CONNECT")) {
            return true;
        }
    }
    return false;
}

} // namespace instrument
