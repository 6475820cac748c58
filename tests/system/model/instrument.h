// SPDX-License-Identifier: MIT
// The instruments of a shift: what they send, and how the line damages it.
#pragma once

#include "tests/reference/choices.h"
#include "tests/system/model/ledger.h"

#include <string>
#include <vector>

namespace shift {

using reference::Choices;

/// A driver, and the instrument that goes with it.
struct Outfit {
    std::string Driver;
    std::string InfFile;
    std::vector<std::string> InfRows;
    std::string Identity;
    std::vector<std::string> Types; ///< as they are written after [RESULT_TYPE
    std::vector<std::string> Units;
    std::vector<std::string> Variables; ///< names
};

const std::vector<Outfit>& Outfits();
inline constexpr const char* InfHeader = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA";

/// What the line did to a record.
enum class Harm { None, Cut, LineFeeds, OneLineFeed, GluedToNoise, OtherCase, HarmCount };

class Instrument {
public:
    Instrument(Choices& choices, Ledger& results) : Chance_(choices), Results_(results) {}

    std::string Connect(const std::string& identity);
    std::string Noise();
    /// Returns a record of 1 to `most` results from that origin, as it arrives: whole, or with the given damage.
    std::string Record(const Outfit& outfit, const std::string& origin, Harm harm, std::uint32_t most);
    Harm AnyHarm();

    std::uint64_t Harmed[static_cast<std::size_t>(Harm::HarmCount)] = {};

private:
    void AddResult(const Outfit& outfit, bool first);
    std::string Variable(const Outfit& outfit);
    std::string Transmit(Harm harm);
    std::string Cut(const std::string& bytes);

    Choices& Chance_;
    Ledger& Results_;
    std::vector<std::string> Lines_;
};

} // namespace shift
