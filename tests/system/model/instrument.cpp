// SPDX-License-Identifier: MIT
#include "tests/system/model/instrument.h"

#include "tests/system/model/letters.h"

#include <algorithm>

namespace shift {

const std::vector<Outfit>& Outfits() {
    static const std::vector<Outfit> outfits = {
        {"Soil Meter",
         "soil.txt",
         {"Site|1|1|dv: Site||||", "Remark|1|||||TEXT|", "Moisture|1||Moisture|65280|MOIST||", "Acid|1||pH||||",
          "Acid depth|1|1|dv: {pH}Depth||||", "Depth|1||dv: Depth||||", "Meter|0||dv: ORIGIN||||",
          "Begun on|1|||||DATE|startdate", "Begun at|1|||||TIME|starttime", "Ended on|1|||||date|enddate",
          "Ended at|0|||||TIME|endtime"},
         "A1",
         {"\"Moisture\"", "\"pH\"", "\"Acidity\" \"PH\"", "\"MOISTURE\" \"Unknown\"", "\"Salt\""},
         {"%", "", "\xC2\xB5S/cm", "mol"},
         {"Site", "Depth", "Crew"}},
        {"W\xC3\xA4rme Logger",
         "heat.txt",
         {"Note|1|||255|||", "Inside|1|1|T1||||", "Outside|1||T2||||", "Sum|1||T1 sum||||", "Room|1|1|dv: Room||||",
          "Door|1||dv: {T2}Door||||", "Seen|1|||||TIME|endtime", "Checked|1|||||TEXT|by hand",
          "Day|1|||||DATE|startdate"},
         "Logger 7/b",
         {"\"T1\"", "\"T2\"", "\"t1 SUM\"", "\"T1\" \"T2\""},
         {"\xC2\xB0"
          "C",
          "K"},
         {"Room", "Door"}}};
    return outfits;
}

std::string Instrument::Connect(const std::string& identity) {
    return "[BLob]\r\n[CONNECT \"" + identity + "\"]\r\n[/BLob]\r\n";
}

std::string Instrument::Noise() {
    static const char* const noises[] = {"battery 3.1 V\r\n", "[/BLob]\r\n", "\r\n",       "*** \xE2\x82\xAC ***\r\n",
                                         " [BLob]\r\n",       "BLob]\r\n",   "[END]\n\r\n"};
    return Chance_.Of(noises);
}

Harm Instrument::AnyHarm() {
    static const Harm some[] = {Harm::Cut,         Harm::Cut,          Harm::Cut,      Harm::LineFeeds,
                                Harm::OneLineFeed, Harm::GluedToNoise, Harm::OtherCase};
    return Chance_.OneIn(9) ? Chance_.Of(some) : Harm::None;
}

std::string Instrument::Variable(const Outfit& outfit) {
    static const char* const values[] = {"P12",
                                         "North field",
                                         "x",
                                         "40-60",
                                         "7",
                                         ("\xC3\x9C"
                                          "cker")};
    const std::string name = outfit.Variables[Chance_.Below(static_cast<std::uint32_t>(outfit.Variables.size()))];
    return "[DESCRIPTIVE_VAR \"" + name + "=" + Chance_.Of(values) + "\"]";
}

/// Adds a result. Its last line is the unit, which ends it. A line that is left out has the value of the result before.
void Instrument::AddResult(const Outfit& outfit, bool first) {
    std::vector<std::string> lines;
    for (std::uint32_t left = Chance_.Below(3); left > 0; --left)
        lines.push_back(Variable(outfit));
    if (Chance_.OneIn(6))
        lines.push_back("# temperature of the case 31");
    if (first ? !Chance_.OneIn(30) : !Chance_.OneIn(4))
        lines.push_back("[RESULT_TYPE " + outfit.Types[Chance_.Below(static_cast<std::uint32_t>(outfit.Types.size()))] +
                        "]");
    const std::string value = std::to_string(Results_.Send()) + "." + std::to_string(Chance_.Below(10));
    lines.insert(lines.begin() + Chance_.Below(static_cast<std::uint32_t>(lines.size()) + 1),
                 "[RESULT_VALUE \"" + value + "\"]");
    Lines_.insert(Lines_.end(), lines.begin(), lines.end());
    Lines_.push_back("[RESULT_UNIT \"" + outfit.Units[Chance_.Below(static_cast<std::uint32_t>(outfit.Units.size()))] +
                     "\"]");
}

std::string Instrument::Record(const Outfit& outfit, const std::string& origin, Harm harm, std::uint32_t most) {
    Lines_ = {"[BLob]"};
    if (!origin.empty())
        Lines_.push_back("[ORIGIN \"" + origin + "\"]");
    const std::uint32_t count = 1 + (Chance_.OneIn(2) ? Chance_.Below(most) : 0);
    for (std::uint32_t i = 0; i < count; ++i)
        AddResult(outfit, i == 0);
    Lines_.push_back("[/BLob]");
    ++Harmed[static_cast<std::size_t>(harm)];
    return Transmit(harm);
}

std::string Instrument::Transmit(Harm harm) {
    if (harm == Harm::OtherCase) { // a complete record, but its end tag does not start the decoding
        for (std::string* tag : {&Lines_.front(), &Lines_.back()})
            std::transform(tag->begin(), tag->end(), tag->begin(), Upper);
    }
    const std::size_t bare =
        harm == Harm::OneLineFeed ? Chance_.Below(static_cast<std::uint32_t>(Lines_.size()) - 1) : Lines_.size();
    std::string bytes = harm == Harm::GluedToNoise ? "~~" : "";
    for (std::size_t i = 0; i < Lines_.size(); ++i)
        bytes += Lines_[i] + (harm == Harm::LineFeeds || i == bare ? "\n" : "\r\n");
    return harm == Harm::Cut ? Cut(bytes) : bytes;
}

/// Cuts off the end of a record. The next record may follow in the same line.
std::string Instrument::Cut(const std::string& bytes) {
    std::size_t end = 1 + Chance_.Below(static_cast<std::uint32_t>(bytes.size() - 10));
    while ((static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U)
        ++end;
    const std::string left = bytes.substr(0, end);
    const std::vector<ResultId> through = IdsInRecords(left);
    for (const ResultId id : IdsInRecords(bytes)) {
        if (std::find(through.begin(), through.end(), id) == through.end())
            Results_.Note(id, Fate::CutOff);
    }
    return left + (Chance_.OneIn(2) ? "\r\n" : "");
}

} // namespace shift
