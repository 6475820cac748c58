// SPDX-License-Identifier: MIT
// Each allocation of SQLite fails in each operation on line databases. Afterwards the files have the old state or the
// new one, and the program has reported the lack of memory or stopped.
#include "src/drivers/registry.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "tests/reference/agreement.h"
#include "tests/support/other_tool.h"
#include "tests/system/power_loss/scarce_memory.h"
#include "tests/system/power_loss/trial.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

namespace disk {
namespace {

using namespace modFileSystem;

std::optional<State> Unchanged(const State& state) {
    return state;
}

bool CountAndRead(Machine&) {
    FileHandle file;
    OpenFile(file, FullName("list.txt"), u"r", modQuorin::DataType, modQuorin::DataCreator);
    std::int32_t second = 2;
    const bool right =
        FileLineCount(file) == 3 && ReadFileLine(file, second) == u"second" && SeekFileLine(file, 3) == 3;
    CloseFile(file);
    return right;
}

bool ListAll(Machine&) {
    ListFiles(u"Device:\\", modQuorin::DataType, modQuorin::DataCreator);
    return Storage.FileList.size() == 5 && Storage.FileList.front() == u"Device:\\drivers";
}

std::vector<Operation> DatabaseOperations() {
    const State list = {{"list.txt", "first\nsecond\nthird\n"}};
    std::vector<Operation> rows = {{"CountAndRead", Keeping::LineDatabases, list, CountAndRead, Unchanged, {}},
                                   {"ListFiles", Keeping::LineDatabases, list, ListAll, Unchanged, {}}};
    for (const Operation& operation : Operations()) {
        if (operation.Kept == Keeping::LineDatabases)
            rows.push_back(operation);
    }
    return rows;
}

/// How a program that performed an operation has ended.
enum class End {
    Done = 0,
    Refused,  ///< its result was false, or a failure was reported
    Stopped,  ///< the program has stopped with a message
    NoMemory, ///< the handler of `new` has ended the program
    Other,
};
constexpr int NotStruck = 0x40; ///< added if the operation ended before the allocation

End EndOf(const Operation& operation, Machine& machine) {
    try {
        const bool done = operation.Do(machine);
        return done && machine.Did.Unsaved.empty() ? End::Done : End::Refused;
    } catch (const support::ProgramOver& over) {
        return over.Failure.empty() ? End::Other : End::Stopped;
    }
}

class WithoutMemory : public testing::TestWithParam<Operation> {
protected:
    /// Runs the operation in a child process. Returns its End.
    int StatusWithout(int allocation, Scarce how) const {
        const pid_t child = ::fork();
        if (child == 0) {
            std::set_new_handler([] { ::_exit(static_cast<int>(End::NoMemory)); });
            Machine machine(Folder.Path(), GetParam().Kept);
            const ScarceMemory memory(allocation, how);
            const int end = static_cast<int>(EndOf(GetParam(), machine));
            ::_exit(ScarceMemory::Struck() ? end : end | NotStruck);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : static_cast<int>(End::Other);
    }
    /// Returns false if the operation ended before the allocation.
    bool TryWithout(int allocation, Scarce how) {
        SCOPED_TRACE("allocation " + std::to_string(allocation));
        const Operation& operation = GetParam();
        const Tree& before = TreeBefore(operation);
        if (Left != before)
            WriteTree(Folder.Path(), before);
        const int status = StatusWithout(allocation, how);
        const auto end = static_cast<End>(status & ~NotStruck);
        EXPECT_NE(end, End::Other);
        Left = ReadTree(Folder.Path());
        if (end == End::Done || Left != before) {
            Judge(operation, Folder.Path(), end == End::Done ? Ending::Completed : Ending::BetweenSteps);
            Left = {}; // Judge has changed the folder
        }
        const bool struck = (status & NotStruck) == 0;
        EXPECT_TRUE(struck || end == End::Done);
        Stopped += end == End::NoMemory ? 1 : 0;
        return struck;
    }
    void TryAll(Scarce how, int step) {
        ASSERT_GE(step, 1);
        int points = 0;
        for (int allocation = 1; TryWithout(allocation, how) && !HasFailure(); allocation += step)
            ++points;
        EXPECT_GT(Stopped, 0) << "of " << points;
        CountPoints("allocations that failed:", points);
    }

    const FreshFolder Folder;
    Tree Left; ///< what the last try has left
    int Stopped = 0;
};

/// A process for each allocation would take minutes in all, so a run tests every tenth (with sanitizers every 40th).
/// QUORIN_CASES=10 in the environment tests ten times as many.
int Step() {
    const auto cases = static_cast<int>(reference::Setting("QUORIN_CASES", 1));
    return std::max(1, (reference::Sanitized ? 40 : 10) / std::max(1, cases));
}

TEST_P(WithoutMemory, NothingIsLostWhereOneAllocationFails) {
    TryAll(Scarce::Once, Step());
}

TEST_P(WithoutMemory, NothingIsLostWhereAllFailFromThereOn) {
    TryAll(Scarce::FromThereOn, 4 * Step());
}

/// Another tool may make a database whose texts are in UTF-16. A line is then converted in allocated memory when it is
/// written; if the allocation fails, it becomes NULL.
class WithoutMemoryInUtf16 : public testing::Test {
protected:
    std::filesystem::path File() const { return std::filesystem::path(Folder.Path()) / "Databases" / "list.sqlite"; }
    void MakeFile() const {
        std::filesystem::create_directories(File().parent_path());
        std::filesystem::remove(File());
        support::OtherTool(File()).Do(
            R"(PRAGMA encoding = 'UTF-16'; CREATE TABLE "DATABASE"(TypeCode INTEGER, CreatorCode INTEGER);
               INSERT INTO "DATABASE" VALUES(0x54455854, 0x5156524E);
               CREATE TABLE "TEXT"(Position INTEGER PRIMARY KEY, LineNumber INTEGER, LineData TEXT);
               INSERT INTO "TEXT" VALUES(0, 1, 'first'), (1, 2, 'second'))");
    }
    /// Changes a line in a child process. Returns false if that ended before the allocation.
    bool ChangeSecondWithout(int allocation) const {
        const pid_t child = ::fork();
        if (child == 0) {
            std::set_new_handler([] { ::_exit(static_cast<int>(End::NoMemory)); });
            Machine machine(Folder.Path(), Keeping::LineDatabases);
            FileHandle file;
            OpenFile(file, FullName("list.txt"), u"a", modQuorin::DataType, modQuorin::DataCreator);
            const ScarceMemory memory(allocation, Scarce::Once);
            const bool changed = ChangeFileLine(file, 2, Text(2000, u'x'));
            const int end = static_cast<int>(changed ? End::Done : End::Other);
            ::_exit(ScarceMemory::Struck() ? end : end | NotStruck);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        const int end = WIFEXITED(status) ? WEXITSTATUS(status) : static_cast<int>(End::Other);
        EXPECT_NE(end & ~NotStruck, static_cast<int>(End::Other));
        return (end & NotStruck) == 0;
    }

    const FreshFolder Folder;
};

TEST_F(WithoutMemoryInUtf16, ALineIsTheOldOneOrTheNewOne) {
    bool struck = true;
    int allocation = 0;
    while (struck && !HasFailure()) {
        MakeFile();
        struck = ChangeSecondWithout(++allocation);
        const auto lines = support::OtherTool(File()).Do(R"(SELECT LineData FROM "TEXT" ORDER BY Position)");
        EXPECT_THAT(lines, testing::ElementsAre("first", testing::AnyOf("second", std::string(2000, 'x'))))
            << "allocation " << allocation;
    }
    EXPECT_GT(allocation, 10);
}

INSTANTIATE_TEST_SUITE_P(Operations, WithoutMemory, testing::ValuesIn(DatabaseOperations()),
                         [](const auto& row) { return NameOf(row.param); });

} // namespace
} // namespace disk
