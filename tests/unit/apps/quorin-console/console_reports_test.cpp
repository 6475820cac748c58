// SPDX-License-Identifier: MIT
// The objects with which quorin-console reports the device's state.
#include "tests/unit/apps/quorin-console/console_run.h"

#include <sstream>

namespace console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

Words NamesOf(const Json& object) {
    Words names;
    for (const auto& member : object.items())
        names.push_back(member.key());
    return names;
}

class ScreenObject : public Console {
protected:
    Json After(const Words& commands, const Words& options = {}) {
        return Tell(Joined({commands, {"screen"}}), options).Last("screen");
    }
    std::string Shown(const Words& commands, const Words& options = {}) {
        return Tell(Joined({commands, {"show"}}), options).Last("show")["show"];
    }
};

TEST_F(ScreenObject, HasItsMembersInTheirOrder) {
    const Json screen = After({"choose Preferences...", "tick 100"});
    EXPECT_THAT(NamesOf(screen),
                ElementsAre("screen", "previous", "title", "grid", "menus", "input", "status", "focus", "form"));
    EXPECT_THAT(NamesOf(screen["title"]), ElementsAre("visible", "cells", "widths", "heights", "box"));
    EXPECT_THAT(NamesOf(screen["grid"]),
                ElementsAre("visible", "enabled", "row", "col", "top", "cells", "widths", "heights", "box", "font"));
    ASSERT_EQ(screen["menus"].size(), 2U);
    for (const Json& menu : screen["menus"])
        EXPECT_THAT(NamesOf(menu), ElementsAre("caption", "visible", "enabled", "items"));
}

TEST_F(ScreenObject, TellsOfARecord) {
    const Json screen = After(OpenTheDownload);
    EXPECT_EQ(screen["screen"], "ScrInfRecord");
    EXPECT_EQ(screen["previous"], "ScrDownloads");
    EXPECT_EQ(screen["title"]["visible"], true);
    EXPECT_EQ(screen["title"]["cells"][0][1], "1/1");
    EXPECT_EQ(screen["title"]["heights"], Json({17}));
    EXPECT_EQ(screen["title"]["box"], Json({0, 0, 640, 17}));
    const Json& grid = screen["grid"];
    EXPECT_EQ(grid["visible"], true);
    EXPECT_EQ(grid["enabled"], true);
    EXPECT_EQ(grid["row"], 0);
    EXPECT_EQ(grid["col"], 1);
    EXPECT_EQ(grid["top"], 0);
    EXPECT_EQ(grid["cells"], Json::parse(R"([["Moisture",""],["Day",""]])"));
    EXPECT_EQ(grid["widths"], Json({319, 319}));
    EXPECT_EQ(grid["heights"], Json({17, 17}));
    EXPECT_EQ(grid["box"], Json({0, 16, 640, 464}));
    EXPECT_EQ(grid["font"], Json({"Tahoma", 8}));
    EXPECT_EQ(screen["input"], nullptr);
    EXPECT_EQ(screen["status"], nullptr);
    EXPECT_EQ(screen["focus"], "grdMain");
    EXPECT_EQ(screen["form"], Json({0, 0, 640, 480}));
}

TEST_F(ScreenObject, NamesTheMenuItemsThatAreOnShow) {
    const Json main = After({})["menus"];
    EXPECT_EQ(main[0], Json::parse(R"({"caption":"Main","visible":true,"enabled":true,"items":["Start...","Exit"]})"));
    EXPECT_EQ(main[1]["items"], Json({"Preferences...", "inf editor...", "Bluetooth Debug..."}));
    const Json list = After({"choose Preferences..."}, {"--device", "7"})["menus"];
    EXPECT_EQ(list[0], Json::parse(R"({"caption":"Back","visible":true,"enabled":true,"items":[]})"));
    EXPECT_EQ(list[1]["visible"], false);
}

/// Returns how many terminal columns a line takes. Its characters are one column wide, or two from U+4E00 on.
std::size_t Columns(const std::string& line) {
    std::size_t columns = 0;
    for (const char each : line) {
        const auto byte = static_cast<unsigned char>(each);
        columns += (byte & 0xC0U) == 0x80U ? 0 : (byte >= 0xE4 && byte <= 0xE9) || byte >= 0xF0 ? 2 : 1;
    }
    return columns;
}

TEST_F(ScreenObject, IsDrawnOnEightyColumnsWhateverItsCharacters) {
    std::string wide;
    for (int i = 0; i < 50; ++i)
        wide += "\xE6\xB0\xB4"; // a Chinese character
    std::string emoji(75, 'x');
    for (int i = 0; i < 5; ++i)
        emoji += "\xF0\x9F\x98\x80";
    Root.Put("Quorin/drivers.txt", "NAME|INFFILE\n" + wide + "|a\n" + emoji + "|b\n\x01\xC2\x85z|c\n");
    const std::string shown = Shown({"choose Start...", "tick 100"});
    std::istringstream lines(shown);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(Columns(line), 80U) << line;
    EXPECT_THAT(shown, Not(HasSubstr("\xEF\xBF\xBD"))); // no character was cut
    EXPECT_THAT(shown, HasSubstr("    z\n"));           // control characters are shown as blanks
}

TEST_F(ScreenObject, ShowsTheCaretWhereItStands) {
    const Words typed = Joined({OpenTheDownload, {"tap 0 1", "type abcdef", "key 37", "key 37"}});
    EXPECT_THAT(Shown(typed), HasSubstr("[abcd_ef]"));
    EXPECT_THAT(Shown(Joined({typed, {"type X"}})), HasSubstr("[abcdX_ef]"));
    const std::string longText = "set " + std::string(200, 'a') + "END";
    EXPECT_THAT(Shown(Joined({OpenTheDownload, {"tap 0 1", longText}})), HasSubstr("aEND_]"));
    EXPECT_THAT(Shown({"choose Preferences...", "tick 100", "tap 4", longText, "key 37"}), HasSubstr("aEN_D]"));
}

TEST_F(ScreenObject, TellsOfATextField) {
    const Json screen = After(Joined({OpenTheDownload, {"tap 0 1", "set 12"}}));
    EXPECT_THAT(NamesOf(screen["input"]), ElementsAre("kind", "text", "box", "multiline"));
    EXPECT_EQ(screen["input"], Json::parse(R"({"kind":"text","text":"12","box":[319,16,320,18],"multiline":false})"));
    EXPECT_EQ(screen["focus"], "txtInputField");
}

TEST_F(ScreenObject, TellsOfADate) {
    const Json screen = After(Joined({OpenTheDownload, {"tap 1 1"}}));
    EXPECT_EQ(screen["screen"], "ScrInput");
    EXPECT_EQ(screen["grid"]["visible"], false);
    EXPECT_EQ(screen["input"]["kind"], "date");
    EXPECT_EQ(screen["input"]["date"], "2007-03-05");
    EXPECT_EQ(screen["input"]["box"], Json({0, 16, 640, 464}));
    EXPECT_EQ(screen["focus"], "dteInputField");
}

TEST_F(ScreenObject, TellsOfAllCellsOfALongListAndWhereThePageBegins) {
    const Json screen = After({"choose Preferences...", "tap 2", "tick 100", "key 34", "key 34"});
    EXPECT_EQ(screen["grid"]["cells"].size(), 129U);
    EXPECT_EQ(screen["grid"]["cells"][0], Json({"OFF"}));
    EXPECT_EQ(screen["grid"]["heights"].size(), 129U);
    EXPECT_EQ(screen["grid"]["top"], 0);
    EXPECT_EQ(screen["grid"]["widths"], Json({625})) << "a scroll bar is 13 wide";
}

TEST_F(ScreenObject, IsWrittenWhileABoxStands) {
    EXPECT_EQ(After({"choose inf editor...", "choose Delete"})["screen"], "ScrInstalledDrivers");
}

TEST_F(ScreenObject, HasTextsAsUtf8) {
    const Json screen = After(Joined({OpenTheDownload, {"tap 0 1", R"(set "\u00b0\ud83d\ude00")"}}));
    EXPECT_EQ(screen["grid"]["cells"][0][1], "\xC2\xB0\xF0\x9F\x98\x80");
}

// The state object.

TEST_F(ScreenObject, HasAStateBesideIt) {
    const Json state = Tell(Joined({OpenTheDownload, {"tap 0 1", "set 12", "state"}})).Last("SelectedDriver");
    const Json expected = Json::parse(R"({"SelectedDriver":"Meter","SelectedDownload":".\\Quorin\\qrn0001.txt",
        "SelectedPackage":"","ListKind":"","LinkWanted":true,"LinkOpen":true,"LinkState":2,"ServerMode":false,
        "BlobBuffer":"","ConnectedID":"","RecordDirty":true,"TableRowIndex":1,"TableRowTotal":1,"ColourOn":true,
        "UiScale":1,"SoftKeyMenus":false,"GridEditMode":true,"GridLocked":false,"PreferenceRow":0})");
    for (const auto& member : expected.items())
        EXPECT_EQ(state.at(member.key()), member.value()) << member.key();
}

// The picture for a person.

TEST_F(ScreenObject, IsDrawnWithTitleRowsAndMenus) {
    const std::string picture = Shown({"choose Preferences...", "tick 100"});
    for (const char* text : {"Preferences", "Zoom", "Debug", "Back"})
        EXPECT_THAT(picture, HasSubstr(text));
    EXPECT_THAT(picture, Not(HasSubstr("Start...")));
}

std::string LineWith(const std::string& picture, const std::string& words) {
    std::istringstream lines(picture);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(words) != std::string::npos)
            return line;
    }
    return "no line with " + words;
}

TEST_F(ScreenObject, IsDrawnWithOneRowMarked) {
    const std::string first = Shown({"choose Preferences...", "tick 100"});
    const std::string third = Shown({"choose Preferences...", "tick 100", "key 40", "key 40"});
    for (const char* row : {"Zoom", "Bluetooth Serial Setup..."})
        EXPECT_NE(LineWith(first, row), LineWith(third, row)) << row;
    for (const char* row : {"Select Storage Volume...", "Toggle Colour", "Enter Custom Serial ID...", "Debug"})
        EXPECT_EQ(LineWith(first, row), LineWith(third, row)) << row;
}

TEST_F(ScreenObject, IsDrawnWithWhatLiesOverIt) {
    EXPECT_THAT(Shown({"choose inf editor...", "choose Delete"}),
                testing::AllOf(HasSubstr("Delete Driver?"), HasSubstr("Yes"), HasSubstr("No")));
    EXPECT_THAT(Shown(Joined({OpenTheDownload, {"tap 0 1", "set typed"}})), HasSubstr("typed"));
    EXPECT_THAT(Shown(Joined({OpenTheDownload, {"tap 1 1"}})), HasSubstr("2007"));
}

TEST_F(ScreenObject, IsDrawnWithNameAndVersionAtTheStart) {
    EXPECT_THAT(Shown({}), testing::AllOf(HasSubstr("Tallybook"), HasSubstr("V 0.27"), HasSubstr("Start..."),
                                          HasSubstr("Options")));
}

} // namespace
} // namespace console
