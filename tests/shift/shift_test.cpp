// SPDX-License-Identifier: MIT
// Long shifts on the kinds of devices that keep and receive results in their own ways. QUORIN_SEED chooses the shift,
// QUORIN_RESULTS how many results it has.
#include "tests/reference/agreement.h"
#include "tests/shift/shift.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

namespace shift {

namespace {

constexpr Kind Desktop = {"a desktop", 0, Road::Serial, "Com1", "Quorin"};
constexpr Kind Palm = {"a Palm", 1, Road::Serial, "1919312750", nullptr};
constexpr Kind Smartphone = {"a smartphone", 7, Road::Server, "SERVER", "My Documents/Quorin"};

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
              << n.RealKills << " (inside a save " << n.InsideASave << ", new state " << n.TornToNew << ")\n  drops "
              << n.Drops << ", failed openings " << n.FailedOpenings << ", sleeps " << n.Sleeps << ", midnights "
              << n.Midnights << ", waits for tomorrow " << n.Tomorrows << ", locks " << n.Locks << "\n  new records "
              << n.NewRecords << ", inserted " << n.Inserted << ", deleted " << n.DeletedRecords << ", downloads made "
              << n.NewDownloads << ", deleted " << n.DeletedDownloads << ", renamed " << n.Renamed << ", edits "
              << n.Edits << ", dates " << n.Dates << ", columns " << n.ColumnChanges << "\n  high tones " << n.HighTones
              << ", low tones " << n.LowTones << ", files compared " << n.FilesCompared << std::endl;
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
    EXPECT_EQ(shift.LostWithoutARule, std::vector<ResultId>()) << "QUORIN_SEED=" << seed;
}

std::uint32_t Results() {
    return static_cast<std::uint32_t>(reference::Setting("QUORIN_RESULTS", ResultsByDefault));
}

} // namespace

TEST(LongShift, OnADesktop) {
    Work(Desktop, Results() * 8 / 10);
}

TEST(LongShift, OnAPalmWithLineDatabases) {
    Work(Palm, Results() / 10);
}

TEST(LongShift, OnASmartphoneWithAMailbox) {
    Work(Smartphone, Results() / 10);
}

} // namespace shift
