// SPDX-License-Identifier: MIT
// The reader of the journal as a whole process: how long a search through a million readings takes.
#include "bench/inputs.h"
#include "bench/processes.h"
#include "bench/ratio.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iomanip>

namespace bench {

namespace {

constexpr std::int64_t Million = 1000000;
constexpr const char* File = "/2026-11-22-89abcdef01234567.jsonl";
constexpr const char* Refused =
    R"(select(.event=="reading" and .verdict!="taken" and .verdict!="replaced" and .verdict!="notype"))";

/// A line as the programs write it, of about 260 bytes. One reading in ten is refused.
void WriteReading(std::ostream& out, Generator& generator, std::int64_t number) {
    constexpr std::array<const char*, 3> Types = {R"(["Moisture","M1"])", R"(["Temperature","T1"])",
                                                  R"(["Humidity","H1"])"};
    const bool isRefused = Draw(generator, 0, 9) == 0;
    const std::int64_t second = number / 12;
    out << R"({"time":"2026-11-22T)" << std::setw(2) << second / 3600 % 24 << ':' << std::setw(2) << second / 60 % 60
        << ':' << std::setw(2) << second % 60 << R"(","ms":)" << number * 83 << R"(,"event":"reading","verdict":")"
        << (isRefused ? "norow" : "taken") << R"(","types":)" << Types[static_cast<std::size_t>(number % 3)]
        << R"(,"value":")" << Draw(generator, 60, 280) << '.' << Draw(generator, 0, 9)
        << R"(","unit":"%","variables":["Site=North wall","Operator=Ada"],"origin":"QI-0001","row":)"
        << (isRefused ? R"(null,"field":null)" : R"(1,"field":"Moisture")") << R"(,"file":"qrn0001.txt","old":""})"
        << '\n';
}

/// Returns a folder with a journal of so many readings, made once.
std::string JournalOf(const std::string& folder, std::int64_t readings) {
    const std::string place = folder + "/journal" + std::to_string(readings);
    if (std::filesystem::exists(place + File))
        return place;
    std::filesystem::create_directories(place);
    Generator generator(Seed);
    std::ofstream out(place + File, std::ios::binary);
    out << std::setfill('0');
    for (std::int64_t i = 0; i < readings; ++i)
        WriteReading(out, generator, i);
    return place;
}

Run Reading(const std::string& place) {
    return [place] {
        return SecondsOf({Beside("quorin-journal"), "readings", "--refused", "--json", "--journal", place});
    };
}

Run Filtering(const std::string& place) {
    return [place] { return SecondsOf({"jq", "-c", Refused, place + File}); };
}

Sides Searching(const std::string& folder) {
    const std::string whole = JournalOf(folder, Million);
    const std::string tenth = JournalOf(folder, Million / 10);
    if (OutputOf({Beside("quorin-journal"), "readings", "--refused", "--json", "--journal", tenth}) !=
        OutputOf({"jq", "-c", Refused, tenth + File}))
        Fail("quorin-journal and jq find other readings");
    return {Reading(whole), Filtering(whole), Reading(tenth)};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    return Main(count, words,
                {{"the refused readings among 10^6 of the journal", "jq -c with the same filter", {1.5}, Searching}});
}
