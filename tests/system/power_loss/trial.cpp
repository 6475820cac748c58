// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/trial.h"

#include "src/drivers/downloads.h"
#include "src/drivers/installation.h"
#include "src/drivers/registry.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "tests/system/power_loss/lost_writes.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>

namespace disk {

namespace {

std::string Shown(const State& state) {
    std::string shown;
    for (const auto& [name, content] : state)
        shown += "--- " + name + (content ? ":\n" + *content : " is missing\n");
    return shown;
}

bool IsScratchFile(const std::string& path) {
    constexpr std::size_t digits = 8;
    const std::string name = path.substr(path.rfind('/') + 1);
    return name.size() == digits + 4 && name.find_first_not_of("0123456789") == digits && name.substr(digits) == ".txt";
}

bool IsLeftover(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::string journal = "-journal";
    return IsScratchFile(path) || name.front() == '.' ||
           (name.size() > journal.size() && name.substr(name.size() - journal.size()) == journal);
}

/// Returns true if there are leftovers of an interrupted write. Any other unexpected file is a failure.
bool HasLeftovers(const Operation& operation, const Tree& tree) {
    bool has = false;
    const Tree& before = TreeBefore(operation);
    for (const auto& each : tree.Files) {
        const std::string& path = each.first;
        const bool known = before.Files.count(path) != 0 ||
                           std::any_of(operation.Before.begin(), operation.Before.end(),
                                       [&](const auto& file) { return HostName(file.first, operation.Kept) == path; });
        EXPECT_TRUE(known || IsLeftover(path)) << path;
        has = has || !known;
    }
    return has;
}

/// Expects that the program's lists show nothing of what an interrupted operation has left.
void ExpectNothingIsMistaken(const Operation& operation) {
    modQuorin::LoadDriverList();
    if (operation.Name != "FirstStart") {
        ASSERT_FALSE(modQuorin::Registry.DriverNames.empty());
        EXPECT_EQ(modQuorin::Registry.DriverNames.front(), u"Meter");
        EXPECT_LE(modQuorin::Registry.DriverNames.size(), 3U);
        modQuorin::LoadDownloadList(u"Meter");
        EXPECT_THAT(modQuorin::Downloads.DownloadFiles, testing::ElementsAre(u"qrn0001.txt"));
    }
    modQuorin::EnumAddDrivers();
    EXPECT_THAT(modQuorin::Registry.DriverNames, testing::ElementsAre(FullName("meterqvd")));
}

void ReadAllRows(const State& state) {
    using namespace modFileSystem;
    for (const auto& [name, content] : state) {
        if (!content || content->empty() || name == "settings.ini")
            continue;
        OpenTable(FullName(name), u"r", modQuorin::DataType, modQuorin::DataCreator);
        ASSERT_TRUE(Table.TableFile.valid) << name;
        EXPECT_EQ(TableRowCount() + 1, static_cast<std::int32_t>(LinesOf(*content).size())) << name;
        FirstRow();
        for (std::int32_t row = 1; row <= TableRowCount(); ++row, NextRow())
            EXPECT_EQ(Table.TableRowIndex, row);
        CloseTable();
    }
}

void ExpectGoesOn(const Operation& operation, const std::string& root, const State& found, bool hasLeftovers) {
    const std::optional<State> after = operation.After(found);
    try {
        Machine again(root, operation.Kept);
        if (operation.Name != "FirstStart") // which itself completes its tables
            ReadAllRows(found);
        EXPECT_EQ(operation.Do(again), after.has_value());
        EXPECT_THAT(again.Did.Unsaved, testing::IsEmpty());
        if (hasLeftovers)
            ExpectNothingIsMistaken(operation);
    } catch (const support::ProgramOver& over) {
        ADD_FAILURE() << "started again, the program says " << modStringTools::ToBytes(over.Failure);
    }
    const State now = Look(root, operation.Before, operation.Kept);
    // A database file without tables is empty here, but missing for the program, which then makes both tables.
    if (operation.Name != "FirstStart" || now != operation.Done()) {
        EXPECT_EQ(now, after.value_or(found)) << Shown(now);
    }
}

/// The numbers of points, printed at the end in the order of their names.
class Tally : public testing::Environment {
public:
    void TearDown() override {
        for (const auto& [what, points] : Points)
            std::cout << what << " " << points << std::endl;
    }
    std::map<std::string, int> Points;
};
auto* const Tallied = static_cast<Tally*>(testing::AddGlobalTestEnvironment(new Tally));

} // namespace

Outcome Try(const Operation& operation, const std::string& root, const Plan& plan) {
    Outcome outcome;
    std::optional<Machine> machine(std::in_place, root, operation.Kept);
    const Watch watch(root, plan);
    try {
        outcome.Done = operation.Do(*machine);
    } catch (const support::ProgramOver& over) {
        outcome.Stopped = true;
        EXPECT_EQ(over.Why, support::ProgramOver::Reason::Failed);
        EXPECT_NE(over.Failure, u"");
    }
    outcome.Told = !machine->Did.Unsaved.empty() || !machine->Did.Warnings.empty();
    machine.reset();
    outcome.Struck = Watch::Struck();
    outcome.StruckPath = Watch::StruckPath();
    outcome.Reads = Watch::Reads();
    outcome.Looks = Watch::Looks();
    outcome.Names = Watch::Names();
    outcome.Kinds = Watch::Kinds();
    outcome.Steps = Watch::StepsTaken();
    outcome.Began = Watch::Began();
    return outcome;
}

bool IsWhole(const Operation& operation, const State& found, Ending ending) {
    std::vector<State> whole = {operation.Done()};
    if (ending != Ending::Completed) {
        whole.push_back(operation.Before);
        whole.insert(whole.end(), operation.Between.begin(), operation.Between.end());
    }
    return std::any_of(whole.begin(), whole.end(), [&](const State& state) { return found == state; });
}

std::optional<State> ExpectWhole(const Operation& operation, const std::string& root, Ending ending) {
    const State found = Look(root, operation.Before, operation.Kept);
    if (IsWhole(operation, found, ending))
        return found;
    ADD_FAILURE() << Shown(found);
    return std::nullopt;
}

void Judge(const Operation& operation, const std::string& root, Ending ending) {
    const Tree left = ReadTree(root);
    static std::map<std::string, std::set<Tree>> judged; // most failures leave the same tree
    if (!judged[NameOf(operation) + std::to_string(static_cast<int>(ending))].insert(left).second)
        return;
    const bool hasLeftovers = HasLeftovers(operation, left);
    const std::optional<State> found = ExpectWhole(operation, root, ending);
    if (!found)
        return;
    WriteTree(root, left); // the check has let SQLite roll back, which the program itself must do
    ExpectGoesOn(operation, root, *found, hasLeftovers);
}

int LosePower(const Operation& operation, const Outcome& run, std::size_t count, int damages, Ending ending) {
    constexpr std::size_t startedAgain = 4; // trees on which the program is started, which is slow
    const LostWrites model(run.Began, run.Steps, count);
    const FreshFolder folder;
    std::set<Tree> seen;
    for (int seed = 0; seed < damages && !testing::Test::HasFailure(); ++seed) {
        const Tree tree = model.Damaged(static_cast<std::uint32_t>(seed));
        if (!seen.insert(tree).second)
            continue;
        SCOPED_TRACE("damage " + std::to_string(seed));
        WriteTree(folder.Path(), tree);
        if (seen.size() <= startedAgain)
            Judge(operation, folder.Path(), ending);
        else
            ExpectWhole(operation, folder.Path(), ending);
    }
    return static_cast<int>(seen.size());
}

Tree LastsAfter(const Outcome& run) {
    constexpr std::uint32_t nothingLost = 1;
    return LostWrites(run.Began, run.Steps, run.Steps.size()).Damaged(nothingLost);
}

void CountPoints(const std::string& what, int points) {
    Tallied->Points[what] += points;
}

} // namespace disk
