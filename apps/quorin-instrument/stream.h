// SPDX-License-Identifier: MIT
// What a simulated instrument has to say, as records: a record is the bytes from "[BLob]" to "[/BLob]" with their line
// ends. The tags are told in docs/formats.md.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace instrument {

/// Puts the next record into its argument; false when there is none left.
using RecordSource = std::function<bool(std::string&)>;

/// A kind of result that a made-up stream holds.
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
    std::int64_t Count = 0; ///< results; 0 goes on without end
};

/// Moisture, temperature and humidity: what samples/climate.qvd has fields for.
std::vector<ResultKind> ClimateKinds();

/// Reads "Moisture,Alpha=ms": names parted by commas, each with its unit or without. A name of ClimateKinds brings what
/// belongs to it. False for an empty name, or for a character that would end a value early.
bool ReadKinds(std::string_view text, std::vector<ResultKind>& kinds);

/// Whether a text can stand between the quotes of a tag and in a field of a download.
bool FitsInATag(std::string_view text);

/// The connect record, then the results. Equal arguments give equal bytes on every machine.
RecordSource MakeUp(MadeUpStream stream);

/// A recorded stream cut behind each closing line. Put together again the records are the recording, to the byte: what
/// stands before a record goes with it, and what follows the last closing line is a record of its own.
RecordSource Recording(std::string_view bytes);

/// The lines of a record with their line ends; the last one may lack its own.
std::vector<std::string_view> LinesOf(std::string_view record);

/// Whether a line begins with a tag, in any case.
bool BeginsWithTag(std::string_view line, std::string_view tag);

/// Whether the record introduces the instrument, and so carries no result.
bool IsConnectRecord(std::string_view record);

} // namespace instrument
