// SPDX-License-Identifier: MIT
#include "bench/storage_bench.h"

#include "bench/bench_device.h"
#include "bench/inputs.h"
#include "bench/processes.h"
#include "src/drivers/downloads.h"
#include "src/storage/keyed_tables.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace bench {

namespace {

using namespace modFileSystem;

constexpr std::int32_t Million = 1000000;
constexpr std::size_t ScanBlock = 65536;

const Text TypeCode = u"TEXT";
const Text CreatorCode = u"QVRN";

std::shared_ptr<BenchDevice> DeviceOver(const std::string& root) {
    return std::make_shared<BenchDevice>(root);
}

std::string CountOf(std::int32_t count) {
    return std::to_string(count);
}

// --- Counting lines

double CountLines(const std::string& name, std::int32_t expected) {
    FileHandle handle;
    OpenFile(handle, modStringTools::FromBytes(".\\" + name), u"r", TypeCode, CreatorCode);
    std::int32_t count = 0;
    const double taken = Seconds([&] { count = FileLineCount(handle); });
    CloseFile(handle);
    MustAgree("lines", count, expected);
    return taken;
}

Sides Counting(const std::string& folder) {
    const std::string file = folder + "/lines.txt";
    MakeLines(file, Million);
    MakeLines(folder + "/tenth-lines.txt", Million / 10);
    MustAgree("wc -l", Million, std::stoll(OutputOf({"wc", "-l", file})));
    return {[device = DeviceOver(folder)] { return CountLines("lines.txt", Million); },
            [file] {
                return SecondsOf({"wc", "-l", file});
            },
            [] { return CountLines("tenth-lines.txt", Million / 10); },
            [folder] {
                return SecondsOf({"wc", "-l", folder + "/tenth-lines.txt"});
            }};
}

// --- Walking over all rows

std::string RowsFile(const std::string& folder, std::int32_t count) {
    const std::string file = folder + "/rows" + CountOf(count) + ".txt";
    MakeRows(file, count);
    return file;
}

Text TableOf(std::int32_t count) {
    return modStringTools::FromBytes(".\\rows" + CountOf(count) + ".txt");
}

/// The characters in all of the third fields.
std::int64_t WalkTable() {
    const Text column = u"C3";
    std::int64_t characters = 0;
    FirstRow();
    for (std::int32_t row = TableRowCount(); row > 0; --row) {
        characters += static_cast<std::int64_t>(GetField(column).size());
        NextRow();
    }
    return characters;
}

std::int64_t WalkByGetline(const std::string& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    std::int64_t characters = 0;
    while (std::getline(in, line)) {
        const std::size_t start = line.find('|', line.find('|') + 1) + 1;
        characters += static_cast<std::int64_t>(line.find('|', start) - start);
    }
    return characters;
}

double TimedWalk(std::int32_t count, std::int64_t expected) {
    OpenTable(TableOf(count), u"r", TypeCode, CreatorCode);
    std::int64_t characters = 0;
    const double taken = Seconds([&] { characters = WalkTable(); });
    CloseTable();
    MustAgree("characters of the third fields", characters, expected);
    return taken;
}

/// The loop over the lines alone: only the product's side also reads fields.
double TimedGetline(const std::string& file, std::int64_t rows) {
    std::int64_t lines = 0;
    const double taken = Seconds([&] {
        std::ifstream in(file);
        std::string line;
        while (std::getline(in, line))
            ++lines;
    });
    MustAgree("rows", rows, lines - 1);
    return taken;
}

Sides WalkAgainstGetline(const std::string& folder) {
    const std::string file = RowsFile(folder, Million);
    const std::string tenthFile = RowsFile(folder, Million / 10);
    const std::int64_t expected = WalkByGetline(file);
    const std::int64_t tenth = WalkByGetline(tenthFile);
    return {[device = DeviceOver(folder), expected] { return TimedWalk(Million, expected); },
            [file] { return TimedGetline(file, Million); }, [tenth] { return TimedWalk(Million / 10, tenth); },
            [tenthFile] { return TimedGetline(tenthFile, Million / 10); }};
}

Sides WalkAgainstGawk(const std::string& folder) {
    const std::string file = RowsFile(folder, Million);
    const std::int64_t expected = WalkByGetline(file);
    const std::string total = OutputOf({"gawk", "-F|", "NR>1{n+=length($3)} END{print n}", file});
    MustAgree("characters by gawk", expected, std::stoll(total));
    return {[device = DeviceOver(folder), expected] { return TimedWalk(Million, expected); },
            [file] {
                return SecondsOf({"gawk", "-F|", "{n+=length($3)}", file});
            }};
}

// --- To the middle and back some rows

/// To the middle row, and back from there one by one.
double StepBack(std::int32_t count, std::int32_t steps) {
    OpenTable(TableOf(count), u"r", TypeCode, CreatorCode);
    const double taken = Seconds([count, steps] {
        GotoRow(count / 2);
        for (std::int32_t i = 0; i < steps; ++i)
            PreviousRow();
    });
    MustAgree("row number", std::stoll(modStringTools::ToBytes(GetField(u"C1"))), count / 2 - steps);
    CloseTable();
    return taken;
}

/// One walk over the first `lines` lines of a file: large reads, and a search for each line end.
void ScanLines(const std::string& file, std::int64_t lines) {
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::vector<char> block(ScanBlock);
    std::int64_t passed = 0;
    while (passed < lines) {
        const ssize_t count = ::read(opened, block.data(), block.size());
        if (count <= 0)
            Fail("can't read " + file);
        const char* const end = block.data() + count;
        const char* place = block.data();
        while (passed < lines) {
            const void* const found = std::memchr(place, '\n', static_cast<std::size_t>(end - place));
            if (found == nullptr)
                break;
            place = static_cast<const char*>(found) + 1;
            ++passed;
        }
    }
    ::close(opened);
}

double ScanForEachStep(const std::string& file, std::int32_t rows, std::int32_t steps) {
    return Seconds([&] {
        for (std::int32_t i = 0; i <= steps; ++i)
            ScanLines(file, rows / 2 - i);
    });
}

Sides SteppingBack(const std::string& folder) {
    const std::string file = RowsFile(folder, Million);
    return {[device = DeviceOver(folder)] { return StepBack(Million, 100); },
            [file] { return ScanForEachStep(file, Million, 100); }};
}

/// Of 10^5 rows, 4 MB are read a step, which fit into a processor's last cache; of 10^6 rows 40 MB, which do not. The
/// time grows 17 to 36 times between these two sizes for product and plain scan alike, while the instructions grow 9.9
/// and 9.3 times (callgrind): what grows is the time that the system needs to copy from memory in place of the cache.
/// So the growth is measured between two sizes that are both larger than the cache.
Sides SteppingBackBeyondTheCache(const std::string& folder) {
    const std::string file = RowsFile(folder, 10 * Million);
    const std::string tenthFile = RowsFile(folder, Million);
    return {[device = DeviceOver(folder)] { return StepBack(10 * Million, 10); },
            [file] { return ScanForEachStep(file, 10 * Million, 10); }, [] { return StepBack(Million, 10); },
            [tenthFile] { return ScanForEachStep(tenthFile, Million, 10); }};
}

// --- The register of downloads

double LoadRegister(std::int64_t expected) {
    const double taken = Seconds([] { modQuorin::LoadDownloadList(u"Meter 3"); });
    MustAgree("downloads", static_cast<std::int64_t>(modQuorin::Downloads.DownloadFiles.size()), expected);
    return taken;
}

Sides Registering(const std::string& folder) {
    constexpr std::int32_t Downloads = 100000;
    const std::string root = folder + "/register";
    const std::string file = root + "/Quorin/qrnctrl.txt";
    const std::string tenthFile = folder + "/tenth-register/Quorin/qrnctrl.txt";
    MakeRegister(file, Downloads);
    MakeRegister(tenthFile, Downloads / 10);
    const std::string filter = "$1==\"Meter 3\"{print $2 \"|\" $4}";
    const auto linesOf = [&filter](const std::string& register_) {
        const std::string text = OutputOf({"awk", "-F|", filter, register_});
        return std::count(text.begin(), text.end(), '\n');
    };
    const std::int64_t expected = linesOf(file);
    const std::int64_t tenth = linesOf(tenthFile);
    // A process can run one program at a time, so both sizes use one device, and the register's file is exchanged.
    const auto swap = [file, tenthFile] {
        const std::string aside = tenthFile + ".aside";
        std::rename(file.c_str(), aside.c_str());
        std::rename(tenthFile.c_str(), file.c_str());
        std::rename(aside.c_str(), tenthFile.c_str());
    };
    return {[device = DeviceOver(root), expected] { return LoadRegister(expected); },
            [file, filter] {
                return SecondsOf({"awk", "-F|", filter, file});
            },
            [swap, tenth] {
                swap();
                const double taken = LoadRegister(tenth);
                swap();
                return taken;
            }};
}

} // namespace

std::vector<Row> WalkRows() {
    return {
        {"FileLineCount, 10^6 lines of about 80 bytes", "wc -l", {2}, Counting},
        {"walk of all rows by FirstRow and NextRow, one GetField each, 10^6 rows of 12 fields",
         "std::getline loop over the file",
         {10},
         WalkAgainstGetline},
        {"the same walk of 10^6 rows", "gawk -F'|' '{n+=length($3)}'", {1}, WalkAgainstGawk},
        {"GotoRow to the middle of 10^6 rows, then PreviousRow 100 times",
         "101 memchr scans of half the file",
         {2},
         SteppingBack},
        {"GotoRow to the middle of 10^7 rows, then PreviousRow 10 times",
         "11 memchr scans of half the file",
         {2},
         SteppingBackBeyondTheCache},
        {"LoadDownloadList out of 10^5 control rows", "awk filter", {1}, Registering},
    };
}

} // namespace bench
