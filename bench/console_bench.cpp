// SPDX-License-Identifier: MIT
// The console as a whole process: how soon it answers, and how much memory a large download takes.
#include "bench/inputs.h"
#include "bench/processes.h"
#include "bench/ratio.h"

#include <filesystem>
#include <fstream>

namespace bench {

namespace {

constexpr std::int64_t Million = 1000000;
constexpr int Starts = 20; ///< in one run, whose figure is their median: a single start depends on the scheduler

void Write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// --- Start

/// The seconds from a program's start to its first line of output.
double ToFirstLine(const std::vector<std::string>& words) {
    const double start = Now();
    Child child = Start(words);
    const std::string line = ReadLine(child);
    const double taken = Now() - start;
    if (line.empty())
        Fail(words[0] + " says nothing");
    Finish(child);
    return taken;
}

/// Returns the seconds to the answer of a command that is in the input from the start. The console first announces that
/// it is ready, then answers with a screen.
double ToFirstAnswer(const std::string& root) {
    const double start = Now();
    Child child = Start({Beside("quorin-console"), "--root", root});
    Tell(child, "screen\n");
    std::string line = ReadLine(child);
    while (line.rfind("{\"ready\"", 0) == 0)
        line = ReadLine(child);
    const double taken = Now() - start;
    if (line.rfind("{\"screen\"", 0) != 0)
        Fail("the console has answered " + line);
    Finish(child);
    return taken;
}

double MedianOfStarts(const Run& start) {
    std::vector<double> taken;
    for (int i = 0; i < Starts; ++i)
        taken.push_back(start());
    return Median(taken);
}

Sides Starting(const std::string& folder) {
    const std::string root = folder + "/start";
    std::filesystem::create_directories(root);
    return {[root] { return MedianOfStarts([&root] { return ToFirstAnswer(root); }); },
            [] { return MedianOfStarts([] {
                     return ToFirstLine({"sqlite3", ":memory:", "select 1"});
                 }); }};
}

// --- Memory

/// The data folder of a device whose one driver has one download of so many rows.
std::string RootWithDownload(const std::string& folder, std::int64_t rows) {
    const std::string root = folder + "/download" + std::to_string(rows);
    std::filesystem::create_directories(root + "/Quorin");
    Write(root + "/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Write(root + "/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070305|\n");
    std::string fields = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
    for (int column = 1; column <= RowColumns; ++column)
        fields += "C" + std::to_string(column) + "|1||||||\n";
    Write(root + "/Quorin/meter.txt", fields);
    const std::string shared = folder + "/rows" + std::to_string(rows) + ".txt";
    MakeRows(shared, rows);
    const std::string download = root + "/Quorin/qrn0001.txt";
    std::filesystem::remove(download);
    std::filesystem::create_hard_link(shared, download); // nothing is written to it
    return root;
}

/// Sends a command and reads until the console is ready for the next one. Returns all its output.
std::string Command(const Child& console, const std::string& command) {
    if (!command.empty())
        Tell(console, command + "\n");
    std::string said;
    for (;;) {
        const std::string line = ReadLine(console);
        if (line.empty() || line.find("\"error\":") != std::string::npos)
            Fail("the console has answered \"" + command + "\" with " + line);
        if (line.rfind("{\"ready\"", 0) == 0)
            return said;
        said += line;
    }
}

double PeakMegabytes(const Child& console) {
    std::ifstream status("/proc/" + std::to_string(console.Process) + "/status");
    std::string word;
    while (status >> word) {
        double kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    Fail("no peak of memory");
}

/// Returns the peak memory of a console after these commands, the last of which leads to the screen.
double PeakAfter(const std::string& root, const std::vector<std::string>& commands, const std::string& screen) {
    Child console = Start({Beside("quorin-console"), "--root", root});
    Command(console, "");
    for (const std::string& command : commands)
        Command(console, command);
    if (Command(console, "screen").find("\"screen\":\"" + screen + "\"") == std::string::npos)
        Fail("the console is not on " + screen);
    const double peak = PeakMegabytes(console);
    Finish(console);
    return peak;
}

Sides Remembering(const std::string& folder) {
    const std::string large = RootWithDownload(folder, Million);
    const std::vector<std::string> toList = {"choose Start...", "choose Ok"};
    const std::vector<std::string> toRecord = {"choose Start...", "choose Ok", "choose Open"};
    return {[large, toRecord] { return PeakAfter(large, toRecord, "ScrInfRecord"); },
            [large, toList] { return PeakAfter(large, toList, "ScrDownloads"); }};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    return Main(count, words,
                {{"quorin-console from its start to its first answer", "sqlite3 :memory: 'select 1'", {3}, Starting},
                 {"peak memory of a console with a 10^6-row download open",
                  "a console with none open",
                  {8, false, Figure::Difference, "MB"},
                  Remembering}});
}
