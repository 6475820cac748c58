// SPDX-License-Identifier: MIT
// What a simulated instrument sends, as records: a record is the bytes from "[BLob]" to "[/BLob]" with their line ends.
// docs/formats.md describes the tags.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace instrument {

/// Puts the next record into its argument. Returns false if there is none left.
using RecordSource = std::function<bool(std::string&)>;

/// A kind of result in a made-up stream.
struct ResultKind {
    std::string Name;
    std::string OtherName; ///< a second name for the same; empty for none
    std::string Unit;
    std::string Probe; ///< value of the variable "Probe"; empty for no such variable
    int Lowest = 0;    ///< in tenths of the unit
    int Highest = 1000;
};

struct MadeUpStream {
    std::string Identity = "QI-0001";
    std::vector<ResultKind> Kinds; ///< sent in turn; at least one
    std::uint32_t Seed = 1;
    std::int64_t Count = 0; ///< number of results; 0: without end
};

/// Returns moisture, temperature and humidity, the kinds for which samples/climate.qvd has fields.
std::vector<ResultKind> ClimateKinds();

/// Reads "Moisture,Alpha=ms": names separated by commas, each with or without a unit. A name of ClimateKinds has the
/// other properties of that kind. Returns false for an empty name, or for a character that can't be sent in a tag.
bool ReadKinds(std::string_view text, std::vector<ResultKind>& kinds);

/// True if a text is allowed between the quotes of a tag and in a field of a download.
bool FitsInATag(std::string_view text);

/// Returns the connect record, then the results. Equal arguments yield equal bytes on every machine.
RecordSource MakeUp(MadeUpStream stream);

/// Returns a recorded stream, cut after each closing line. Joined again, the records are the recording, byte for byte:
/// what is before a record belongs to it, and what follows the last closing line is a record of its own.
RecordSource Recording(std::string_view bytes);

/// Returns the lines of a record with their line ends; the last one may have none.
std::vector<std::string_view> LinesOf(std::string_view record);

/// True if a line begins with a tag, in any case.
bool BeginsWithTag(std::string_view line, std::string_view tag);

/// True if the record introduces the instrument; such a record carries no result.
bool IsConnectRecord(std::string_view record);

} // namespace instrument
