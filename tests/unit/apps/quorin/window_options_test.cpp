// SPDX-License-Identifier: MIT
// How the window program reads its command line.
#include "apps/quorin/window_options.h"

#include "tests/support/help_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <locale>
#include <sstream>

namespace quorin {
namespace {

using Words = std::vector<std::string>;

struct Answer {
    Reading Read = Reading::Run;
    Options Said;
    std::string Output;
    std::string Errors;
};

Answer AnswerTo(const Words& words, const std::string& keyHelp = "") {
    std::vector<const char*> all = {"quorin"};
    for (const std::string& word : words)
        all.push_back(word.c_str());
    Answer answer;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    answer.Read = ReadOptions(static_cast<int>(all.size()), all.data(), keyHelp, answer.Said);
    answer.Output = testing::internal::GetCapturedStdout();
    answer.Errors = testing::internal::GetCapturedStderr();
    return answer;
}

/// Returns all values of the options as text, one line each.
std::string Told(const Options& options) {
    const auto& device = options.Device;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "type " << device.DeviceType << "\n";
    if (device.Screen)
        text << "screen " << device.Screen->Width << "x" << device.Screen->Height << "\n";
    if (device.OsVersion)
        text << "version " << modStringTools::ToBytes(*device.OsVersion) << "\n";
    if (device.User != u"user")
        text << "user " << modStringTools::ToBytes(device.User) << "\n";
    for (const auto& volume : device.Volumes)
        text << "volume " << modStringTools::ToBytes(volume.Root) << " "
             << (volume.Kilobytes ? std::to_string(*volume.Kilobytes) : "fails") << "\n";
    for (const auto& [number, address] : device.Ports.Pinned)
        text << "port " << number << " " << backends::AddressText(address) << "\n";
    text << (device.Root.empty() ? "" : "root " + device.Root + "\n");
    text << (device.Settings.empty() ? "" : "settings " + device.Settings + "\n");
    text << (device.RealClock ? "" : "a clock that stands still\n");
    text << (options.ListPorts ? "ports\n" : "") << (options.Demo ? "demo\n" : "");
    for (const std::string& file : options.Files)
        text << "file " << file << "\n";
    text << "scale " << options.Scale.value_or(options.UsualScale) << "\n";
    return text.str();
}

struct Row {
    Words Said;
    std::string Meant;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << testing::PrintToString(row.Said);
}

class GoodOptions : public testing::TestWithParam<Row> {};

TEST_P(GoodOptions, AreUnderstood) {
    const Answer answer = AnswerTo(GetParam().Said);
    EXPECT_EQ(answer.Read, Reading::Run) << answer.Errors;
    EXPECT_EQ(answer.Output + answer.Errors, "");
    EXPECT_EQ(Told(answer.Said), GetParam().Meant);
}

const std::string Desktop = "type 0\nscreen 640x480\n";

INSTANTIATE_TEST_SUITE_P(
    Rows, GoodOptions,
    testing::Values(Row{{}, Desktop + "scale 1\n"}, Row{{"--device", "desktop"}, Desktop + "scale 1\n"},
                    Row{{"a.qvd", "--demo", "North wall"}, Desktop + "demo\nfile a.qvd\nfile North wall\nscale 1\n"},
                    Row{{"--", "-a.qvd"}, Desktop + "file -a.qvd\nscale 1\n"},
                    Row{{"--device", "palm"}, "type 1\nscreen 160x160\nscale 2\n"},
                    Row{{"--device", "palm-hires"}, "type 1\nscreen 320x320\nscale 1\n"},
                    Row{{"--device", "pocketpc"}, "type 3\nscreen 240x320\nscale 1\n"},
                    Row{{"--device", "smartphone"}, "type 7\nscreen 240x320\nscale 1\n"},
                    Row{{"--device", "s60"}, "type 9\nscreen 240x320\nscale 1\n"},
                    Row{{"--device", "uiq"}, "type 6\nscreen 240x320\nscale 1\n"},
                    Row{{"--device", "1"}, "type 1\nscale 2\n"}, Row{{"--device", "32767"}, "type 32767\nscale 1\n"},
                    Row{{"--screen", "176x208", "--device", "s60"}, "type 9\nscreen 176x208\nscale 1\n"},
                    Row{{"--screen", "160x240", "--device", "s60"}, "type 9\nscreen 160x240\nscale 2\n"},
                    Row{{"--screen", "320x160", "--device", "palm"}, "type 1\nscreen 320x160\nscale 1\n"},
                    Row{{"--os-version", "4.21"}, Desktop + "version 4.21\nscale 1\n"},
                    Row{{"--os-version", ""}, Desktop + "version \nscale 1\n"},
                    Row{{"--user", "J\xC3\xB8rgen"}, Desktop + "user J\xC3\xB8rgen\nscale 1\n"},
                    Row{{"--volume", "Card:\\=20", "--volume", "A:\\=fail"},
                        Desktop + "volume Card:\\ 20\nvolume A:\\ fails\nscale 1\n"},
                    Row{{"--root", "/a b/c"}, Desktop + "root /a b/c\nscale 1\n"},
                    Row{{"--settings", "mine.ini"}, Desktop + "settings mine.ini\nscale 1\n"},
                    Row{{"--port", "3=/dev/x"}, Desktop + "port 3 /dev/x\nscale 1\n"},
                    Row{{"--port", "Com3=/dev/x"}, Desktop + "port 3 /dev/x\nscale 1\n"},
                    Row{{"--port", "COM12=a=b", "--port", "com1=/dev/y"},
                        Desktop + "port 1 /dev/y\nport 12 a=b\nscale 1\n"},
                    Row{{"--port", "3=/dev/x", "--port", "Com3=/dev/z"}, Desktop + "port 3 /dev/z\nscale 1\n"},
                    Row{{"--port", "1=tcp:meter:5025", "--port", "2=exec:a b=c"},
                        Desktop + "port 1 tcp:meter:5025\nport 2 exec:a b=c\nscale 1\n"},
                    Row{{"--ports"}, Desktop + "ports\nscale 1\n"}, Row{{"--demo"}, Desktop + "demo\nscale 1\n"},
                    Row{{"--scale", "0.5"}, Desktop + "scale 0.5\n"}, Row{{"--scale", "4"}, Desktop + "scale 4\n"},
                    Row{{"--scale=1.5", "--device=palm"}, "type 1\nscreen 160x160\nscale 1.5\n"}));

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(WindowOptions, NumbersHaveAFullStopWhateverTheLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    const Answer answer = AnswerTo({"--scale", "1.5"});
    std::locale::global(before);
    EXPECT_EQ(answer.Said.Scale, 1.5) << answer.Errors;
}

TEST(WindowOptions, ShowAFileFirstInTheirHelp) {
    const std::string help = AnswerTo({"--help"}).Output;
    EXPECT_LT(help.find("quorin climate.qvd"), help.find("Usage:"));
    EXPECT_LT(help.find("quorin qrn0001.txt"), help.find("Usage:"));
    EXPECT_THAT(help, testing::HasSubstr("FILE"));
}

class BadOptions : public testing::TestWithParam<Row> {};

TEST_P(BadOptions, AreRefusedWithALineThatSaysWhy) {
    const Answer answer = AnswerTo(GetParam().Said);
    EXPECT_EQ(answer.Read, Reading::Wrong);
    EXPECT_EQ(answer.Output, "");
    EXPECT_EQ(answer.Errors, "quorin: " + GetParam().Meant + "\nRun with --help for more information.\n");
}

const std::string NoDevice = " is neither a device type, from 0 on, nor the name of a device";
const std::string NoScreen = " is not of the form WxH, such as 240x320";
const std::string NoVolume = " is not of the form ROOT=KB or ROOT=fail, such as Card:\\=65536";
const std::string NoPort = " is not of the form N=ADDRESS, such as 1=/dev/rfcomm0";
const std::string NoScale = " is no number from 0.5 to 4, such as 1.5";

INSTANTIATE_TEST_SUITE_P(
    Rows, BadOptions,
    testing::Values(
        Row{{"--device", "toaster"}, "--device toaster:" + NoDevice},
        Row{{"--device", "-1"}, "--device -1:" + NoDevice}, Row{{"--device", "32768"}, "--device 32768:" + NoDevice},
        Row{{"--device", "Palm"}, "--device Palm:" + NoDevice},
        Row{{"--device"}, "--device: 1 required DEVICE missing"}, Row{{"--screen", "640"}, "--screen 640:" + NoScreen},
        Row{{"--screen", "0x480"}, "--screen 0x480:" + NoScreen},
        Row{{"--screen", "10001x1"}, "--screen 10001x1:" + NoScreen},
        Row{{"--volume", "Card"}, "--volume Card:" + NoVolume}, Row{{"--volume", "A:=1"}, "--volume A:=1:" + NoVolume},
        Row{{"--volume", "A:\\=-1"}, "--volume A:\\=-1:" + NoVolume}, Row{{"--port", "1"}, "--port 1:" + NoPort},
        Row{{"--port", "1="}, "--port 1=:" + NoPort}, Row{{"--port", "=/dev/x"}, "--port =/dev/x:" + NoPort},
        Row{{"--port", "Com=/dev/x"}, "--port Com=/dev/x:" + NoPort},
        Row{{"--port", "Com-1=/dev/x"}, "--port Com-1=/dev/x:" + NoPort},
        Row{{"--port", "ComCom1=/dev/x"}, "--port ComCom1=/dev/x:" + NoPort},
        Row{{"--port", "Com 1=/dev/x"}, "--port Com 1=/dev/x:" + NoPort},
        Row{{"--port", "LPT1=/dev/x"}, "--port LPT1=/dev/x:" + NoPort},
        Row{{"--port", "1=tcp:x"},
            "--port 1=tcp:x: is not of the form tcp:HOST:PORT, such as tcp:192.168.1.5:5025 or "
            "tcp:[::1]:5025"},
        Row{{"--port", "1=bt:00:11:22:33:44:55"},
            "--port 1=bt:00:11:22:33:44:55: bt: is not built yet; bind the device by rfcomm and give /dev/rfcomm0"},
        Row{{"--port", "1=meter@/dev/x"},
            "--port 1=meter@/dev/x: a profile (meter@) is not built yet; give the address alone"},
        Row{{"--scale", "0.4"}, "--scale 0.4:" + NoScale}, Row{{"--scale", "4.1"}, "--scale 4.1:" + NoScale},
        Row{{"--scale", "1,5"}, "--scale 1,5:" + NoScale}, Row{{"--scale", "2x"}, "--scale 2x:" + NoScale},
        Row{{"--scale", ""}, "--scale :" + NoScale}, Row{{"--scale", "nan"}, "--scale nan:" + NoScale},
        Row{{"--scale", "-1"}, "--scale -1:" + NoScale}, Row{{"--root"}, "--root: 1 required DIR missing"},

        Row{{"--clock", "real"}, "The following argument was not expected: --clock"}));

TEST(WindowOptions, VersionNamesTheProgram) {
    const Answer answer = AnswerTo({"--version"});
    EXPECT_EQ(answer.Read, Reading::Shown);
    EXPECT_EQ(answer.Output, "quorin V 0.27\n");
}

class Help : public testing::TestWithParam<const char*> {};

TEST_P(Help, Tells) {
    const Answer answer = AnswerTo({"--help"}, "  F1   the first menu\n");
    EXPECT_EQ(answer.Read, Reading::Shown);
    EXPECT_THAT(answer.Output, testing::HasSubstr(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Options, Help,
                         testing::Values("--device", "--os-version", "--user", "--screen", "--root", "--volume",
                                         "--settings", "--port ", "--ports", "--demo", "--scale", "--help",
                                         "--version"));
INSTANTIATE_TEST_SUITE_P(Devices, Help,
                         testing::Values("  palm  ", "  palm-hires ", "  pocketpc ", "  smartphone ", "  s60  ",
                                         "  uiq ", "  desktop "));
INSTANTIATE_TEST_SUITE_P(Places, Help,
                         testing::Values("/dev/rfcomm(N-1)", "/dev/ttyUSB*", "/dev/ttyACM*", "/dev/ttyS*",
                                         "/dev/serial/by-id/", "quorin-demo", "$XDG_DATA_HOME/quorin",
                                         "~/.local/share/quorin", "$XDG_STATE_HOME/quorin/drafts",
                                         "$XDG_CONFIG_HOME/quorin/settings.ini", "~/.config/quorin/settings.ini"));
INSTANTIATE_TEST_SUITE_P(Keys, Help, testing::Values("\nKeys:\n  F1   the first menu\n"));

TEST(WindowOptions, HelpIsALineForEachOptionAndStatus) {
    support::ExpectPlainHelp(AnswerTo({"--help"}).Output);
}

TEST(WindowOptions, HelpHasNoKeysWhereNoneAreGiven) {
    EXPECT_THAT(AnswerTo({"--help"}).Output, testing::Not(testing::HasSubstr("Keys")));
}

TEST(FullPathOfTheData, BeginsWhereTheProgramWasStarted) {
    const std::string here = std::filesystem::canonical(".").string();
    EXPECT_EQ(FullPath("."), here);
    EXPECT_EQ(FullPath("missing/../data"), here + "/data");
    EXPECT_EQ(FullPath(here), here);
}

} // namespace
} // namespace quorin
