// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-console/console_run.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string BytesOf(const fs::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

/// A root folder with the sample driver, its limits, and its longer download.
class Plots : public Console {
protected:
    Plots() {
        const std::string package = BytesOf(fs::path(QUORIN_SAMPLES) / "climate.qvd");
        const std::size_t driver = package.find("\nClimate Meter|");
        Root.Put("Quorin/climate.txt", package.substr(package.find('\n', driver + 1) + 1));
        Root.Put("Quorin/drivers.txt", "NAME|INFFILE\nClimate Meter|climate.txt\n");
        Root.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nClimate Meter|qrn0001.txt|20070305|Two walls\n");
        Root.Put("Quorin/qrn0001.txt", BytesOf(fs::path(QUORIN_SAMPLES) / "two-walls.txt"));
        Root.Put("Climate Meter.limits", BytesOf(fs::path(QUORIN_SAMPLES) / "Climate Meter.limits"));
    }
    std::string Command(const std::string& words) const {
        return std::string(QUORIN_EXPORT) + " --root '" + Root.Path().string() + "' " + words;
    }
    Outcome Plot(const std::string& words, const std::string& environment = "") {
        return Shell(environment + " " + Command(words) + " > output 2> errors", "");
    }
    std::string Out(const std::string& name) { return (Place.Path() / name).string(); }

    support::TemporaryFolder Place;
};

TEST_F(Plots, AreDrawnAsTheDocumentsShow) {
    const Outcome done = Plot("qrn0001.txt --format svg --plot moisture --by site --against time");
    EXPECT_EQ(done.Status, 0);
    EXPECT_EQ(done.Errors, "quorin-export: Two walls, moisture: 1 value is no number: a gap\n"
                           "quorin-export: Two walls, moisture: 1 record has no value: a gap\n");
    if (std::getenv("UPDATE_GOLDEN") != nullptr)
        std::ofstream(QUORIN_PLOT, std::ios::binary) << done.Output;
    EXPECT_EQ(done.Output, BytesOf(QUORIN_PLOT)) << "UPDATE_GOLDEN=1 writes the picture of docs/plots.md again";
    EXPECT_THAT(done.Output, HasSubstr("fail 20"));
}

TEST_F(Plots, AreWellFormedXmlOfTextsThatXmlForbids) {
    Root.Put("Quorin/qrn0001.txt", "Site|Moisture\n<&]]>\"'|1 %\n\x01\x1b\xff|2 <%>\n\xef\xbf\xbe|3 %\n");
    const Outcome done = Plot("qrn0001.txt --format svg --by site -o '" + Out("nasty.svg") + "'");
    EXPECT_EQ(done.Status, 0);
    const Outcome parsed = Shell("python3 -c 'import sys, xml.dom.minidom as d; print(d.parse(sys.argv[1])."
                                 "documentElement.tagName)' '" +
                                     Out("nasty.svg") + "' > output 2> errors",
                                 "");
    if (parsed.Status == 127)
        GTEST_SKIP() << "python3 is not installed";
    EXPECT_EQ(parsed.Output, "svg\n") << parsed.Errors;
}

TEST_F(Plots, BecomePngAndPdfByAnotherProgram) {
    if (std::system("command -v rsvg-convert > /dev/null") != 0)
        GTEST_SKIP() << "librsvg2-bin is not installed";
    EXPECT_EQ(Plot("qrn0001.txt --format png -o '" + Out("a.png") + "'").Status, 0);
    EXPECT_THAT(Place.Bytes("a.png"), StartsWith("\x89PNG"));
    const Outcome pdf = Plot("qrn0001.txt --format pdf");
    EXPECT_THAT(pdf.Output, StartsWith("%PDF"));
    EXPECT_EQ(pdf.Status, 0);
}

TEST_F(Plots, SayWhatIsToBeInstalledForPng) {
    const Outcome without = Plot("qrn0001.txt --plot humidity --format png -o '" + Out("a.png") + "'", "PATH=/nowhere");
    EXPECT_EQ(without.Status, 2);
    EXPECT_EQ(without.Errors, "quorin-export: png is made by the program rsvg-convert, which is not installed: install "
                              "the package librsvg2-bin, or choose --format svg.\n");
    EXPECT_FALSE(fs::exists(Out("a.png")));
}

TEST_F(Plots, AreTextOfTheLocale) {
    const std::string words = "qrn0001.txt --format text --plot temperature --size 60x20";
    EXPECT_THAT(Plot(words, "LC_ALL=C.UTF-8").Output, HasSubstr("temperature [°C]"));
    EXPECT_THAT(Plot(words, "LC_ALL=C").Output, HasSubstr("temperature [?C]"));
    EXPECT_THAT(Plot(words, "LC_ALL=C").Output, Not(HasSubstr("\xE2")));
}

TEST_F(Plots, HaveAllSourcesInOnePicture) {
    std::ofstream(Out("other.txt")) << "Site|Moisture\nShed|1 %\nShed|2 %\n";
    const Outcome both = Plot("qrn0001.txt '" + Out("other.txt") + "' --format svg --plot moisture");
    EXPECT_EQ(both.Status, 0) << both.Errors;
    EXPECT_THAT(both.Output, HasSubstr("2 downloads"));
    EXPECT_THAT(both.Output, HasSubstr(">other.txt</text>"));
}

TEST_F(Plots, TakeColumnsByTheirNumber) {
    Root.Put("Quorin/qrn0001.txt", "Caf\xE9|W\xFC|x\na|1|10\nb|2|20\n");
    const Outcome done = Plot("qrn0001.txt --format svg --plot '|2' --by '|1' --against '|3'");
    EXPECT_EQ(done.Errors, "");
    EXPECT_THAT(done.Output, HasSubstr(">b</text>"));
    EXPECT_EQ(Plot("qrn0001.txt --column '|2'").Output, "W\xFC\r\n1\r\n2\r\n");
}

TEST_F(Plots, HaveTheRangeAndTheLinesThatAreAskedFor) {
    Root.Put("Quorin/qrn0001.txt", "Site|Moisture\na|-3 %\nb|\nc|3 %\nd|90 %\n");
    const Outcome done = Plot("qrn0001.txt --format svg --join --range -5:5");
    EXPECT_EQ(done.Errors, "quorin-export: Two walls, moisture: 1 record has no value: left out of the line\n"
                           "quorin-export: Two walls, 1 value lies beyond the range -5:5: not shown\n");
    EXPECT_EQ(done.Status, 0);
    EXPECT_THAT(done.Output, HasSubstr(">−4</text>"));
    EXPECT_EQ(Plot("qrn0001.txt --format svg --range=:50,5").Status, 0);
    EXPECT_THAT(Plot("qrn0001.txt --format svg --range 100:").Errors,
                HasSubstr("No value lies in the range \"100:\": choose another --range."));
    for (const char* range : {"5", ":", "5:5", "6:5", "a:5", "1:2:3", "1e999:"})
        EXPECT_EQ(Plot(std::string("qrn0001.txt --format svg --range ") + range).Status, 2) << range;
    EXPECT_THAT(Plot("qrn0001.txt --range 1:2").Errors, HasSubstr("--range goes with --format svg, png, pdf or text"));
}

TEST_F(Plots, TellWhatIsWrongWithTheCommandLine) {
    EXPECT_THAT(Plot("qrn0001.txt --format svg --plot dew").Errors,
                HasSubstr("Two walls has no column dew; it has site, operator, moisture, temperature, humidity"));
    EXPECT_THAT(Plot("qrn0001.txt --format svg --plot site").Errors,
                HasSubstr("Two walls: site has no number; columns with numbers: moisture, temperature, humidity."));
    EXPECT_THAT(Plot("qrn0001.txt --plot moisture").Errors,
                HasSubstr("--plot goes with --format svg, png, pdf or text"));
    EXPECT_THAT(Plot("qrn0001.txt --format svg --kind pie").Errors, HasSubstr("is none of line, points, histogram"));
    for (const char* size : {"9x99", "960", "960x540x1", "-5x50", "20001x50"})
        EXPECT_THAT(Plot(std::string("qrn0001.txt --format svg --size ") + size).Errors, HasSubstr("960x540"));
    EXPECT_THAT(Plot("qrn0001.txt --format svg --watch").Errors, HasSubstr("needs -o FILE"));
    EXPECT_THAT(Plot("qrn0001.txt --format png --watch -o a.png").Errors, HasSubstr("svg and text are"));
    EXPECT_EQ(Plot("nix --format svg").Errors, "quorin-export: There is no download nix.\n");
    EXPECT_EQ(Plot("qrn0001.txt --format svg --plot dew").Status, 2);
}

TEST_F(Plots, ReplaceNeitherWhatTheyReadNorAFileOfTheRoot) {
    const std::string before = Root.Bytes("Quorin/qrn0001.txt");
    EXPECT_EQ(Plot("qrn0001.txt --format svg -o '" + (Root.Path() / "Quorin/qrn0001.txt").string() + "'").Status, 2);
    EXPECT_EQ(Plot("qrn0001.txt --format svg -o '" + (Root.Path() / "Quorin/new.svg").string() + "'").Status, 2);
    EXPECT_EQ(Root.Bytes("Quorin/qrn0001.txt"), before);
    EXPECT_FALSE(fs::exists(Root.Path() / "Quorin/new.svg"));
}

TEST_F(Plots, OfATableWithOddRowsAreDrawnAndSayWhichTheyAre) {
    Root.Put("Quorin/qrn0001.txt", "Site|Moisture\na|1 %\nb\nc|3 %\n");
    const Outcome odd = Plot("qrn0001.txt --format svg");
    EXPECT_EQ(odd.Status, 5);
    EXPECT_THAT(odd.Output, HasSubstr("</svg>"));
    EXPECT_THAT(odd.Errors, HasSubstr("Two walls, line 3: 1 fields under 2 columns"));
}

TEST_F(Plots, TellWhatIsWrongWithTheLimits) {
    Root.Put("Climate Meter.limits", "COLUMN|WARNHIGH\nMoisture|much\n");
    EXPECT_THAT(Plot("qrn0001.txt --format svg").Errors,
                HasSubstr("Climate Meter.limits: line 2: \"much\" is no number"));
}

/// Waits until a command of the shell succeeds, at most 20 seconds.
std::string Until(const std::string& command) {
    return "i=0; until " + command + " || [ $((i+=1)) -gt 400 ]; do sleep 0.05; done; ";
}

TEST_F(Plots, AreDrawnAgainWhenTheTableIsReplacedUntilCtrlC) {
    const std::string svg = "'" + Out("watched.svg") + "'",
                      table = "'" + (Root.Path() / "Quorin/qrn0001.txt").string() + "'";
    Root.Put("Quorin/next.txt", "Moisture\n777 %\n778 %\n");
    std::ofstream(Out("run")) << "set -m; " << Command("qrn0001.txt --format svg --plot moisture --watch -o " + svg)
                              << " & " << Until("grep -qs '</svg>' " + svg) << "grep -c 777.0 " << svg << "; mv '"
                              << (Root.Path() / "Quorin/next.txt").string() << "' " << table << "; "
                              << Until("grep -q 777.0 " + svg) << "grep -c 777.0 " << svg << "; printf '779 %%\\n' >> "
                              << table << "; " << Until("grep -q 779.0 " + svg) << "rm " << table
                              << "; sleep 0.5; kill -INT $!; wait $!; echo status $?";
    const Outcome watched = Shell("bash '" + Out("run") + "' > output 2> errors", "");
    ASSERT_GE(watched.Lines.size(), 3U) << watched.Errors;
    EXPECT_EQ(watched.Lines.front(), "0");
    EXPECT_NE(watched.Lines[1], "0");
    EXPECT_EQ(watched.Lines.back(), "status 0");
    EXPECT_THAT(watched.Errors, HasSubstr("can't be read"));
}

} // namespace
} // namespace console
