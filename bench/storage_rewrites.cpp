// SPDX-License-Identifier: MIT
#include "bench/storage_bench.h"

#include "bench/bench_device.h"
#include "bench/inputs.h"
#include "bench/processes.h"
#include "bench/syncs.h"
#include "src/storage/keyed_tables.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace bench {

namespace {

using namespace modFileSystem;
namespace files = std::filesystem;

constexpr std::int32_t Large = 1000000;
constexpr std::int32_t Small = 100000;

/// The tables that the benchmarks change, and the device that they are changed on.
struct ChangingTables {
    std::string Root;
    std::int32_t Turn = 0;
    long Syncs = 0; ///< of the last SaveRow
    std::unique_ptr<BenchDevice> Device;

    std::string File(std::int32_t rows) const { return Root + "/rows" + std::to_string(rows) + ".txt"; }
};

void PutTable(const ChangingTables& tables, const std::string& folder, std::int32_t rows) {
    const std::string original = folder + "/rows" + std::to_string(rows) + ".txt";
    MakeRows(original, rows);
    files::copy_file(original, tables.File(rows), files::copy_options::overwrite_existing);
}

/// A table of so many rows, and one of a tenth of them.
std::shared_ptr<ChangingTables> TablesOver(const std::string& folder, std::int32_t rows) {
    auto tables = std::make_shared<ChangingTables>();
    tables->Root = folder + "/changing";
    files::create_directories(tables->Root);
    PutTable(*tables, folder, rows);
    PutTable(*tables, folder, rows / 10);
    tables->Device = std::make_unique<BenchDevice>(tables->Root);
    return tables;
}

/// Returns the next value of the middle row's second field: another text of the same length each time.
std::string NextValue(std::int32_t& turn) {
    return "saved " + std::to_string(100 + ++turn % 900);
}

std::string MiddleLine(const std::string& file, std::int32_t rows) {
    std::ifstream in(file);
    std::string line;
    for (std::int32_t i = 0; i <= rows / 2; ++i)
        std::getline(in, line);
    return line;
}

double SaveMiddleRow(ChangingTables& tables, std::int32_t rows) {
    const std::string value = NextValue(tables.Turn);
    OpenTable(modStringTools::FromBytes(".\\rows" + std::to_string(rows) + ".txt"), u"r", u"TEXT", u"QVRN");
    GotoRow(rows / 2);
    SetField(u"C2", modStringTools::FromBytes(value));
    const long before = SyncsSoFar();
    const double taken = Seconds([] { SaveRow(); });
    tables.Syncs = SyncsSoFar() - before;
    CloseTable();
    if (MiddleLine(tables.File(rows), rows).find("|" + value + "|") == std::string::npos)
        Fail("SaveRow has not saved the row");
    return taken;
}

void SyncPath(const std::string& path) {
    const int opened = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0 || ::fsync(opened) != 0)
        Fail("can't sync " + path);
    ::close(opened);
}

/// Syncs a file and its folder in turn, `times` syncs in all.
void SyncInTurn(const std::string& file, long times) {
    for (long i = 0; i < times; ++i)
        SyncPath(i % 2 == 0 ? file : files::path(file).parent_path().string());
}

/// A separate file for the floor, with the same rows.
std::string OwnFile(const ChangingTables& tables, std::int32_t rows, const std::string& name) {
    const std::string file = tables.Root + "/" + name + ".txt";
    files::copy_file(tables.File(rows), file, files::copy_options::overwrite_existing);
    return file;
}

/// The same by system tools: a copy beside the file, then a copy over the file, each synced.
double CopyTwice(const std::string& file, long syncs) {
    const std::string scratch = file + ".scratch";
    files::remove(scratch);
    return Seconds([&] {
        SecondsOf({"cp", file, scratch});
        SyncInTurn(scratch, syncs / 2);
        SecondsOf({"cp", scratch, file});
        SyncInTurn(file, syncs - syncs / 2);
    });
}

double EditByLine(const std::string& file, std::int32_t rows, std::int32_t& turn) {
    const std::string value = NextValue(turn);
    const std::string line = std::to_string(rows / 2 + 1);
    const double taken = Seconds([&] {
        SecondsOf({"sed", "-i", line + "s/|[^|]*/|" + value + "/", file});
        SyncPath(file);
    });
    if (MiddleLine(file, rows).find("|" + value + "|") == std::string::npos)
        Fail("sed has not changed the row");
    return taken;
}

Sides Copying(const std::string& folder, std::int32_t rows) {
    const auto tables = TablesOver(folder, rows);
    const std::string file = OwnFile(*tables, rows, "by-hand");
    return {[tables, rows] { return SaveMiddleRow(*tables, rows); },
            [tables, file] { return CopyTwice(file, tables->Syncs); },
            [tables, rows] { return SaveMiddleRow(*tables, rows / 10); },
            {},
            [tables] { return std::to_string(tables->Syncs) + " syncs on each side"; }};
}

Sides Editing(const std::string& folder, std::int32_t rows) {
    const auto tables = TablesOver(folder, rows);
    const std::string file = OwnFile(*tables, rows, "by-sed");
    const auto turn = std::make_shared<std::int32_t>(0);
    return {[tables, rows] { return SaveMiddleRow(*tables, rows); },
            [file, rows, turn] { return EditByLine(file, rows, *turn); }};
}

Sides CopyingLarge(const std::string& folder) {
    return Copying(folder, Large);
}

Sides CopyingSmall(const std::string& folder) {
    return Copying(folder, Small);
}

Sides EditingLarge(const std::string& folder) {
    return Editing(folder, Large);
}

Sides EditingSmall(const std::string& folder) {
    return Editing(folder, Small);
}

} // namespace

std::vector<Row> RewriteRows() {
    return {
        {"SaveRow in the middle of 10^5 rows", "cp of the file, twice, and as many fsyncs", {1.5}, CopyingSmall},
        {"SaveRow in the middle of 10^6 rows", "cp of the file, twice, and as many fsyncs", {1.5}, CopyingLarge},
        {"SaveRow in the middle of 10^5 rows", "sed -i of that line and a sync of the file", {1, true}, EditingSmall},
        {"SaveRow in the middle of 10^6 rows", "sed -i of that line and a sync of the file", {1, true}, EditingLarge},
    };
}

} // namespace bench
