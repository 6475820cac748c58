// SPDX-License-Identifier: MIT
// The program with --hand-over, as a person calls it.
#include "backends/files/root_lock.h"
#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

namespace {

using testing::HasSubstr;

class HandOverCommand : public testing::Test {
protected:
    HandOverCommand() {
        Place.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Place.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261123|\n");
        Place.Put("root/Quorin/qrn0001.txt", "Place|Moisture\nNorth|12\nSouth|13\n");
        Place.Put("stick/notes.txt", "of a person\n");
    }

    /// Returns the exit status. What was written is in the files "out" and "told".
    int Run(const std::string& target, const std::string& more = "") {
        const std::string command = "XDG_STATE_HOME='" + Place.Path("state") + "' '" QUORIN_CONSOLE "' --root '" +
                                    Place.Path("root") + "' --name shed --hand-over '" + target + "' " + more + " > '" +
                                    Place.Path("out") + "' 2> '" + Place.Path("told") + "' < /dev/null";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Returns the path of the one file beneath the stick with this name.
    std::string Find(const std::string& name) const {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Place.Path("stick")))
            if (entry.path().filename() == name)
                return entry.path().string().substr(Place.Path().size() + 1);
        return "not found";
    }

    TemporaryRoot Place{support::PlaceInMemory()};
};

TEST_F(HandOverCommand, TellsEachFileAndTheSum) {
    EXPECT_EQ(Run(Place.Path("stick")), 0);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"file\":\"qrn0001.txt\",\"as\":\""));
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"handed_over\":3,\"there_already\":0,\"failed\":0,\"records\":2,"));
    EXPECT_EQ(Place.Bytes(Find("qrn0001.txt")), "Place|Moisture\nNorth|12\nSouth|13\n");
    EXPECT_EQ(Place.Bytes("told"), "");
    EXPECT_EQ(Run(Place.Path("stick"), "--text"), 0);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("0 files copied to "));
}

TEST_F(HandOverCommand, TakesWhatTheRegisterNamesAndTellsWhatItCant) {
    Place.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|NORTH.TXT|20261123|\nMeter|site.dat|20261123|\n"
                                         "Meter|never.txt|20261123|\nMeter|gone.txt|20261123|\n");
    Place.Put("root/Quorin/NORTH.TXT", "Place\na\n");
    Place.Put("root/Quorin/site.dat", "Place\nb\n");
    std::filesystem::create_symlink("nowhere", Place.Path("root/Quorin/gone.txt"));
    EXPECT_EQ(Run(Place.Path("stick")), 1);
    EXPECT_EQ(Place.Bytes(Find("NORTH.TXT")), "Place\na\n");
    EXPECT_EQ(Place.Bytes(Find("site.dat")), "Place\nb\n");
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("gone.txt is not handed over: "));
    EXPECT_THAT(Place.Bytes("told"), testing::Not(HasSubstr("never.txt"))) << "it was never opened";
}

TEST_F(HandOverCommand, TellsAFolderThatItCantList) {
    Place.Put("root/Databases", "no folder");
    EXPECT_EQ(Run(Place.Path("stick")), 1);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("The folder " + Place.Path("root") + "/Databases can't be read: "));
    EXPECT_EQ(Place.Bytes(Find("qrn0001.txt")), "Place|Moisture\nNorth|12\nSouth|13\n")
        << "the others come all the same";
}

TEST_F(HandOverCommand, WorksBesideAProgramOnTheRoot) {
    backends::RootLock lock;
    ASSERT_EQ(lock.Take(Place.Path("root"), "window"), backends::LockResult::Held);
    EXPECT_EQ(Run(Place.Path("stick")), 0);
    EXPECT_EQ(Place.Bytes("told"), "");
}

TEST_F(HandOverCommand, TakesTheJournalOfItsRootAlong) {
    Place.Put("script", "quit\n");
    const std::string keep = "'" QUORIN_CONSOLE "' --root '" + Place.Path("root") + "' --journal '" +
                             Place.Path("journal") + "' '" + Place.Path("script") + "' > /dev/null";
    ASSERT_EQ(std::system(keep.c_str()), 0);
    Place.Put("journal/2026-11-22-0123456789abcdef.jsonl", "{}\n"); // of another root
    EXPECT_EQ(Run(Place.Path("stick"), "--journal '" + Place.Path("journal") + "'"), 0);
    EXPECT_THAT(Place.Bytes("out"), HasSubstr("{\"file\":\"journal/2007-03-05-"));
    EXPECT_EQ(Find("2026-11-22-0123456789abcdef.jsonl"), "not found");
}

TEST_F(HandOverCommand, AStickThatIsNotThereIsToldWithTwo) {
    EXPECT_EQ(Run(Place.Path("none")), 2);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("nothing is handed over. There is no folder "));
}

TEST_F(HandOverCommand, WhatCantBeWrittenIsToldWithOne) {
    Place.Put("stick/shed", "a file in place of the folder\n");
    EXPECT_NE(Run(Place.Path("stick")), 0);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("handed over"));
    std::filesystem::remove(Place.Path("stick/shed"));
    EXPECT_EQ(Run(Place.Path("stick")), 0);
}

TEST_F(HandOverCommand, ALineOfAReceiptThatIsOddIsToldWithFive) {
    Place.Put("stick/shed/hand-over.jsonl", "{\"hand-over\":1}\nodd\n");
    EXPECT_EQ(Run(Place.Path("stick")), 5);
    EXPECT_THAT(Place.Bytes("told"), HasSubstr("1 lines of the receipts can't be read."));
}

} // namespace
