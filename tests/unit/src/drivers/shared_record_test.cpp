// SPDX-License-Identifier: MIT
// A record on the screen whose download other tools replace, edit, empty or move: what the screen and the file contain
// and what is reported after each possible action.
#include "src/storage/settings.h"
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

#include <cstdlib>
#include <sstream>

namespace modQuorin {
namespace {

using support::PrintTo;

namespace files = std::filesystem;
using platform::BoxAnswer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

using Lines = std::vector<std::string>;

const std::string SharedHeader = "Place|Moisture|Remark";
const Lines Old = {"a|1|", "b|1 %|x", "c|3|"};
const Text TheFolderIsGone = u"its folder is gone";

std::string Joined(const Lines& rows) {
    std::string bytes = SharedHeader + "\n";
    for (const std::string& row : rows)
        bytes += row + "\n";
    return bytes;
}

/// Returns the fields that the record of this line shows.
std::vector<Text> Fields(const std::string& line) {
    std::vector<Text> fields;
    std::istringstream in(line + "|");
    for (std::string field; std::getline(in, field, '|');)
        fields.push_back(modStringTools::FromBytes(field));
    return fields;
}

/// How a value comes into the record before it is saved, and the command that saves it.
struct Act {
    enum How { Typed, Reading, AnsweredYes, AnsweredNo } Value;
    const char16_t* Command;
};

const Act Acts[] = {
    {Act::Typed, u"Next Record"},   {Act::Typed, u"Close"},
    {Act::Typed, u"Insert Record"}, {Act::Typed, u"New Record"},
    {Act::Typed, u"Delete Record"}, {Act::Reading, u"Next Record"},
    {Act::Reading, u"Close"},       {Act::AnsweredYes, u"Next Record"},
    {Act::AnsweredYes, u"Close"},   {Act::AnsweredNo, u"Next Record"},
    {Act::AnsweredNo, u"Close"},
};

std::string NameOf(const testing::TestParamInfo<Act>& info) {
    const char* const hows[] = {"Typed", "Reading", "AnsweredYes", "AnsweredNo"};
    const std::string command = modStringTools::ToBytes(info.param.Command);
    return std::string(hows[info.param.Value]) + "Then" + command.substr(0, command.find(' '));
}

/// The second of three records is on the screen.
class SharedRecord : public support::Program, public testing::WithParamInterface<Act> {
protected:
    SharedRecord() {
        SaveSetting(u"ComPort", u"Com1");
        InstallMeter();
        OpenDownload(Joined(Rows()));
        Choose(u"Next Record");
        Device.Tick(1100);
    }

    static bool Asks() { return GetParam().Value == Act::AnsweredYes || GetParam().Value == Act::AnsweredNo; }
    static bool Leaves() { return Is(u"Close"); }
    static bool Is(const char16_t* command) { return Text(GetParam().Command) == command; }
    /// The field of the reading is empty if no question is to be asked.
    static Lines Rows() {
        Lines rows = Old;
        if (GetParam().Value == Act::Reading)
            rows[1] = "b||x";
        return rows;
    }
    /// Returns the row that is to be saved.
    static std::string Ours() {
        switch (GetParam().Value) {
        case Act::Typed:
            return "b|1 %|typed";
        case Act::AnsweredNo:
            return Rows()[1];
        default:
            return "b|23.4 %|x";
        }
    }

    /// Enters the value, runs the other tool, and saves the record by the command.
    void Do(const std::function<void()>& tool) {
        if (GetParam().Value == Act::Typed) {
            Tap(2, 1);
            Type(u"typed");
            tool();
        } else {
            Device.Platform.serial.Arrive(u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n"
                                          u"[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
            if (Asks()) {
                Device.WhileABoxIsOpen(tool);
                Device.WillAnswer(GetParam().Value == Act::AnsweredYes ? BoxAnswer::Yes : BoxAnswer::No);
            } else {
                tool();
            }
            Device.Tick(1100);
        }
        EXPECT_THAT(Device.Did.Unsaved, IsEmpty()) << "nothing was to be saved yet";
        const std::size_t asked = Device.Did.Boxes.size();
        if (Is(u"Delete Record")) {
            Device.WillAnswer(BoxAnswer::Yes);
            Device.WillAnswer(BoxAnswer::Yes);
        }
        Choose(GetParam().Command);
        Questions = Device.Did.Boxes.size() - asked;
    }
    void DoBeside(const std::string& theirs) {
        Do([this, theirs] {
            Put("new", theirs);
            files::rename(Path("Quorin/new"), Path("Quorin/qrn0001.txt"));
        });
    }
    files::path Path(const std::string& name) const { return Device.Folder.Path() / name; }
    std::string Download() { return File("qrn0001.txt"); }
    /// Returns the names of all files in the data folder except the device's tables.
    Lines OtherFiles() {
        Lines names;
        for (const auto& entry : files::directory_iterator(Path("Quorin"))) {
            const std::string name = entry.path().filename().string();
            if (name != "drivers.txt" && name != "qrnctrl.txt" && name != "meter.txt" && name != "qrn0001.txt")
                names.push_back(name);
        }
        return names;
    }

    /// Expects that the row was saved into the other tool's file, and that the command did its work.
    void ExpectSavedInto(Lines rows) {
        rows[1] = Ours();
        std::size_t shown = 2;
        if (Is(u"Insert Record"))
            rows.insert(rows.begin() + 1, "||");
        if (Is(u"New Record"))
            rows.emplace_back("||");
        if (Is(u"Delete Record"))
            rows.erase(rows.begin() + 1);
        if (Is(u"Insert Record") || Is(u"Delete Record"))
            shown = 1;
        if (Is(u"New Record"))
            shown = rows.size() - 1;
        EXPECT_EQ(Download(), Joined(rows));
        EXPECT_THAT(Device.Did.Unsaved, IsEmpty());
        EXPECT_THAT(OtherFiles(), IsEmpty());
        EXPECT_EQ(Questions, Is(u"Delete Record") ? 2U : 0U);
        ExpectShown(rows[shown], shown + 1, rows.size());
    }
    /// Expects that the other tool's file is unchanged, and that the row is in a file beside it whose name is reported.
    void ExpectKeptBeside(const std::string& theirs) {
        EXPECT_EQ(Download(), theirs);
        const Lines kept = OtherFiles();
        ASSERT_EQ(kept.size(), 1U);
        EXPECT_EQ(File(kept[0]), Ours() + "\n");
        const Text why = u"another program has changed it; the row is kept in " + modStringTools::FromBytes(kept[0]);
        EXPECT_THAT(Device.Did.Unsaved, ElementsAre(Pair(u"qrn0001.txt", why)));
        const auto standing = Device.Platform.onlooker.notices.Sorted();
        ASSERT_FALSE(standing.empty());
        EXPECT_THAT(modStringTools::ToBytes(standing.front().Words), HasSubstr(kept[0])) << "in red";
        EXPECT_EQ(Questions, 0U) << "nothing is asked about a record that nobody has seen";
    }
    void ExpectShown(const std::string& row, std::size_t number, std::size_t of) {
        if (Leaves()) {
            EXPECT_EQ(Screen(), ScrDownloads);
            return;
        }
        EXPECT_EQ(Screen(), ScrInfRecord);
        EXPECT_EQ(Column(1), Fields(row));
        EXPECT_EQ(modStringTools::ToBytes(TitleCell(1)), std::to_string(number) + "/" + std::to_string(of));
    }

    std::size_t Questions = 0; ///< of the command
};

TEST_P(SharedRecord, ReplacedByAFileWithMoreRowsIsSavedIntoThat) {
    Lines theirs = Rows();
    theirs.emplace_back("more|4|");
    DoBeside(Joined(theirs));
    ExpectSavedInto(theirs);
}

TEST_P(SharedRecord, OfAFileThatSedHasEditedIsSavedIntoThat) {
    Do([this] {
        EXPECT_EQ(std::system(("sed -i 's/^a|/changed|/' '" + Path("Quorin/qrn0001.txt").string() + "'").c_str()), 0);
    });
    Lines theirs = Rows();
    theirs[0] = "changed|1|";
    ExpectSavedInto(theirs);
}

TEST_P(SharedRecord, InWhosePlaceAnotherRowStandsIsKeptBeside) {
    const Lines theirs = {"a|1|", "theirs|9|", "c|3|"};
    DoBeside(Joined(theirs));
    ExpectKeptBeside(Joined(theirs));
    ExpectShown(theirs[1], 2, 3);
}

TEST_P(SharedRecord, OfATableThatHasGotOtherColumnsIsKeptBeside) {
    const std::string theirs = "Place|Depth\na|1\nb|2\nc|3\n";
    DoBeside(theirs);
    ExpectKeptBeside(theirs);
    ExpectShown("b|2", 2, 3);
}

TEST_P(SharedRecord, OfAFileThatWasEmptiedIsKeptBeside) {
    Do([this] { Put("qrn0001.txt", ""); });
    ExpectKeptBeside("");
    if (!Leaves()) {
        EXPECT_EQ(Screen(), ScrInfRecord);
        EXPECT_THAT(Column(1), IsEmpty());
        Choose(u"Next Record");
        EXPECT_EQ(Download(), "") << "what another program may be just writing is left to it";
    }
}

TEST_P(SharedRecord, OfAFileThatWasCutToItsHeaderIsKeptBeside) {
    Do([this] { Put("qrn0001.txt", SharedHeader + "\n"); });
    // A record is always on the screen: if none is left, a blank one is added.
    ExpectKeptBeside(Leaves() ? SharedHeader + "\n" : Joined({"||"}));
    ExpectShown("||", 1, 1);
}

TEST_P(SharedRecord, OfARootThatWasMovedAwayIsToldAndNothingIsMade) {
    const files::path away = Device.Folder.Path().string() + ".away";
    Do([&] { files::rename(Device.Folder.Path(), away); });
    EXPECT_FALSE(files::exists(Device.Folder.Path()));
    ASSERT_THAT(Device.Did.Unsaved, testing::Not(IsEmpty()));
    EXPECT_EQ(Device.Did.Unsaved[0], std::pair(Text(u"qrn0001.txt"), TheFolderIsGone));
    const bool changesRows = !Is(u"Next Record") && !Leaves();
    EXPECT_EQ(Device.Did.Unsaved.size(), changesRows ? 2U : 1U) << "the row, and what the command could not do either";
    if (!Leaves()) {
        // "New Record" goes to the last record for the fields to copy, and stays on it.
        const std::size_t shown = Is(u"Next Record") || Is(u"New Record") ? 2 : 1;
        ExpectShown(Rows()[shown], shown + 1, 3);
    }
    files::rename(away, Device.Folder.Path());
    EXPECT_EQ(Download(), Joined(Rows()));
    EXPECT_THAT(OtherFiles(), IsEmpty());
    if (Leaves())
        return;
    // The original folder is back.
    Tap(0, 1);
    Type(u"again");
    Choose(u"First Record");
    EXPECT_THAT(Download(), HasSubstr("again|"));
}

INSTANTIATE_TEST_SUITE_P(Acts, SharedRecord, testing::ValuesIn(Acts), NameOf);

} // namespace
} // namespace modQuorin
