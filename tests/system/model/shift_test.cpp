// SPDX-License-Identifier: MIT
// Long shifts on three kinds of devices, which store and receive results in different ways. In the environment
// QUORIN_SEED chooses the shift, and QUORIN_RESULTS the number of its results.
#include "tests/reference/agreement.h"
#include "tests/system/model/shift.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <utility>

namespace shift {

namespace {

constexpr Kind Desktop = {"a desktop", 0, LinkKind::Serial, "Com1", "Quorin"};
constexpr Kind Palm = {"a Palm", 1, LinkKind::Serial, "1919312750", nullptr};
constexpr Kind Smartphone = {"a smartphone", 7, LinkKind::Server, "SERVER", "My Documents/Quorin"};

constexpr std::uint32_t ResultsByDefault = 10000;

void Print(const Shift& shift, const Kind& kind, std::uint64_t seed, double seconds) {
    const Tally& n = shift.Counts;
    std::cout << kind.Name << ", QUORIN_SEED=" << seed << ": " << shift.Results.Sent() << " results in " << n.Steps
              << " steps, " << seconds << " s\n  " << shift.Kept << " kept; lost by a rule:";
    for (std::size_t fate = 0; fate < static_cast<std::size_t>(Fate::FateCount); ++fate) {
        if (shift.LostBy[fate] != 0)
            std::cout << " " << NameOf(static_cast<Fate>(fate)) << " " << shift.LostBy[fate] << ",";
    }
    std::cout << " without one " << shift.LostWithoutARule.size() << "\n  questions " << n.Questions << " (yes "
              << n.Yes << ", no " << n.No << "), inside one another " << n.Nested << ", prompts " << n.Prompts
              << ", notices " << n.Notices << "\n  restarts " << n.Restarts << ", kills " << n.Kills << ", real kills "
              << n.RealKills << " (inside a save " << n.InsideASave << ", new state " << n.NewState << ")\n  drops "
              << n.Drops << ", failed openings " << n.FailedOpenings << ", sleeps " << n.Sleeps << ", midnights "
              << n.Midnights << ", waits for tomorrow " << n.Tomorrows << ", locks " << n.Locks << "\n  new records "
              << n.NewRecords << ", inserted " << n.Inserted << ", deleted " << n.DeletedRecords << ", downloads made "
              << n.NewDownloads << ", deleted " << n.DeletedDownloads << ", renamed " << n.Renamed << ", edits "
              << n.Edits << ", dates " << n.Dates << ", columns " << n.ColumnChanges << "\n  high tones " << n.HighTones
              << ", hours beside questions " << n.Hours << ", low tones " << n.LowTones << ", files compared "
              << n.FilesCompared << std::endl;
}

/// How often an event must have happened in ten thousand results: about a third of the usual number. The test fails if
/// a kind of event no longer happens.
struct Floor {
    const char* What;
    std::uint64_t Times;
    std::uint64_t PerTenThousand;
};

void ExpectFloors(const std::vector<Floor>& floors, std::uint32_t results, std::uint64_t seed) {
    for (const Floor& floor : floors) {
        EXPECT_GE(floor.Times, floor.PerTenThousand * results / 10000)
            << floor.What << " in " << results << " results, QUORIN_SEED=" << seed;
    }
}

std::vector<Floor> FloorsOf(const Shift& shift) {
    const Tally& n = shift.Counts;
    return {{"steps", n.Steps, 30000},
            {"questions answered yes", n.Yes, 1000},
            {"questions answered no", n.No, 500},
            {"questions inside one another", n.Nested, 100},
            {"prompts", n.Prompts, 40},
            {"restarts", n.Restarts, 40},
            {"kills", n.Kills, 20},
            {"real kills", n.RealKills, 20},
            {"real kills inside a save", n.InsideASave, 6},
            {"sleeps", n.Sleeps, 300},
            {"midnights", n.Midnights, 4},
            {"new records", n.NewRecords, 1500},
            {"inserted records", n.Inserted, 150},
            {"deleted records", n.DeletedRecords, 20},
            {"new downloads", n.NewDownloads, 60},
            {"deleted downloads", n.DeletedDownloads, 50},
            {"names", n.Renamed, 20},
            {"edits", n.Edits, 300},
            {"dates", n.Dates, 30},
            {"columns", n.ColumnChanges, 20},
            {"high tones", n.HighTones, 1500},
            {"low tones", n.LowTones, 800},
            {"files compared", n.FilesCompared, 30000},
            {"kept", shift.Kept, 900}};
}

std::vector<Floor> SerialFloorsOf(const Shift& shift) {
    const Tally& n = shift.Counts;
    return {{"drops", n.Drops, 100}, {"failed openings", n.FailedOpenings, 40}, {"waits for tomorrow", n.Tomorrows, 2}};
}

std::vector<Floor> ServerFloorsOf(const Shift& shift) {
    return {{"notices", shift.Counts.Notices, 15}, {"locks", shift.Counts.Locks, 300}};
}

/// Each rule by which a result is lost must have been applied.
std::vector<Floor> LossFloorsOf(const Shift& shift) {
    static const std::pair<Fate, std::uint64_t> floors[] = {
        {Fate::PortClosed, 100},  {Fate::CutOff, 60},    {Fate::NoConnect, 15},     {Fate::WrongOrigin, 80},
        {Fate::Unreadable, 60},   {Fate::Emptied, 50},   {Fate::LeftInBuffers, 60}, {Fate::Traced, 15},
        {Fate::OtherScreen, 40},  {Fate::NoRow, 150},    {Fate::Refused, 300},      {Fate::Replaced, 500},
        {Fate::FieldTaken, 150},  {Fate::TypedOver, 50}, {Fate::WrittenOver, 2},    {Fate::Unsaved, 8},
        {Fate::DeletedRecord, 25}};
    std::vector<Floor> all;
    for (const auto& [fate, times] : floors)
        all.push_back({NameOf(fate), shift.LostBy[static_cast<std::size_t>(fate)], times});
    for (std::size_t harm = 1; harm < static_cast<std::size_t>(Harm::HarmCount); ++harm)
        all.push_back({"records of each harm", shift.Sender().Harmed[harm], 50});
    return all;
}

/// Each result that was sent must be in the files or lost by a rule.
void ExpectAllAccountedFor(const Shift& shift, std::uint64_t seed) {
    std::uint64_t sum = shift.Kept;
    for (const std::uint32_t lost : shift.LostBy)
        sum += lost;
    EXPECT_EQ(sum, shift.Results.Sent()) << "without a rule: " << testing::PrintToString(shift.LostWithoutARule)
                                         << "\nQUORIN_SEED=" << seed;
}

void Work(const Kind& kind, std::uint32_t results) {
    const std::uint64_t seed = reference::Setting("QUORIN_SEED", 1);
    const auto start = std::chrono::steady_clock::now();
    Shift shift(kind, seed, results);
    const std::string difference = shift.Run();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    Print(shift, kind, seed, seconds.count());
    if (!difference.empty())
        FAIL() << difference << "QUORIN_SEED=" << seed;
    ExpectAllAccountedFor(shift, seed);
    const std::uint32_t sent = shift.Results.Sent();
    ExpectFloors(FloorsOf(shift), sent, seed);
    EXPECT_EQ(shift.Counts.Hours, 1U);
    ExpectFloors(kind.KindOfLink == LinkKind::Serial ? SerialFloorsOf(shift) : ServerFloorsOf(shift), sent, seed);
    if (kind.DeviceType == Desktop.DeviceType)
        ExpectFloors(LossFloorsOf(shift), sent, seed);
}

std::uint32_t Results() {
    return static_cast<std::uint32_t>(reference::Setting("QUORIN_RESULTS", ResultsByDefault));
}

} // namespace

TEST(LongShift, OnADesktop) {
    Work(Desktop, Results() / 10 * 7);
}

TEST(LongShift, OnAPalmWithLineDatabases) {
    Work(Palm, Results() / 20 * 3);
}

TEST(LongShift, OnASmartphoneWithAMailbox) {
    Work(Smartphone, Results() / 20 * 3);
}

} // namespace shift
