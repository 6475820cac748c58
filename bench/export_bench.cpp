// SPDX-License-Identifier: MIT
// The export as a whole process: how long a million records take.
#include "bench/inputs.h"
#include "bench/processes.h"
#include "bench/ratio.h"

#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

constexpr std::int64_t Million = 1000000;

/// Returns a table of so many records of the sample driver, about 90 bytes each, made once.
std::string TableOf(const std::string& folder, std::int64_t records) {
    const std::string table = folder + "/export" + std::to_string(records) + ".txt";
    if (std::filesystem::exists(table))
        return table;
    Generator generator(Seed);
    std::ofstream out(table, std::ios::binary);
    out << "Site|Operator|Moisture|Temperature|Humidity|Probe|Wall Probe|Remark|Start Date|Start Time|End Date|End "
           "Time|Meter\n";
    for (std::int64_t i = 0; i < records; ++i) {
        const auto value = [&](int most) {
            return std::to_string(Draw(generator, 5, most)) + "." + std::to_string(Draw(generator, 0, 9));
        };
        out << "North wall " << i << "|Ada|" << value(30) << " %|" << value(40) << " °C|" << value(90)
            << " %RH|Air|Pin||05/03/2007|09:30|05/03/2007|09:31|QI-0001\n";
    }
    return table;
}

/// Writes the output of a shell command to a file, as a person does.
Run Shell(const std::string& command, const std::string& folder) {
    return [command, folder] { return SecondsOf({"sh", "-c", command + " > '" + folder + "/exported'"}); };
}

std::string Export(const std::string& table) {
    return Beside("quorin-export") + " '" + table + "' --line-end lf --units keep --dates keep";
}

std::string Gawk(const std::string& table) {
    return R"(gawk 'BEGIN { FS = "|"; OFS = "," } { $1 = $1; print }' ')" + table + "'";
}

Sides BesideGawk(const std::string& folder) {
    const std::string whole = TableOf(folder, Million);
    const std::string tenth = TableOf(folder, Million / 10);
    if (OutputOf({"sh", "-c", Export(tenth)}) != OutputOf({"sh", "-c", Gawk(tenth)}))
        Fail("quorin-export and gawk write other rows");
    return {Shell(Export(whole), folder), Shell(Gawk(whole), folder), Shell(Export(tenth), folder)};
}

Sides BesideCat(const std::string& folder) {
    const std::string whole = TableOf(folder, Million);
    return {Shell(Export(whole), folder), Shell("cat '" + whole + "'", folder)};
}

/// Returns the most memory that a shell command took, in megabytes.
Run Peak(const std::string& command, const std::string& folder) {
    return [line = "exec " + command + " > '" + folder + "/exported'"] {
        const pid_t child = ::fork();
        if (child == 0) {
            ::execlp("sh", "sh", "-c", line.c_str(), nullptr);
            ::_exit(127);
        }
        int status = 0;
        rusage used{};
        if (child < 0 || ::wait4(child, &status, 0, &used) != child || status != 0)
            Fail(line + " failed");
        constexpr double KilobytesOfAMegabyte = 1024;
        return static_cast<double>(used.ru_maxrss) / KilobytesOfAMegabyte;
    };
}

/// Both have the table in memory; a workbook adds no row of it.
Sides WorkbookMemory(const std::string& folder) {
    const std::string whole = TableOf(folder, Million);
    return {Peak(Export(whole) + " --format xlsx", folder), Peak(Export(whole), folder)};
}

/// A tenth of the rows, because a workbook takes long.
Sides WorkbookBesideCsv(const std::string& folder) {
    const std::string tenth = TableOf(folder, Million / 10);
    return {Shell(Export(tenth) + " --format xlsx", folder), Shell(Export(tenth), folder)};
}

Sides DatabaseBesideCsv(const std::string& folder) {
    const std::string tenth = TableOf(folder, Million / 10);
    return {Shell(Export(tenth) + " --format sqlite", folder), Shell(Export(tenth), folder)};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    return Main(
        count, words,
        {{"10^6 records to CSV", "gawk with the same split", {0.5}, BesideGawk},
         {"10^6 records to CSV, beside a copy", "cat", {3}, BesideCat},
         {"10^5 records to XLSX", "the same to CSV", {10}, WorkbookBesideCsv},
         {"10^5 records to SQLite", "the same to CSV", {6}, DatabaseBesideCsv},
         {"memory of 10^6 records to XLSX", "the same to CSV", {1.2, false, Figure::Ratio, "MB"}, WorkbookMemory}});
}
