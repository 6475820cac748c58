// SPDX-License-Identifier: MIT
// An end of the program that something outside of it asks for, whatever is open at that moment.
#include "backends/loop/ending.h"

#include "src/storage/line_files.h"
#include "src/view/prompt.h"
#include "src/view/questions.h"
#include "src/view/screen_table.h"
#include "tests/unit/backends/headless/attended_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace {

using platform::BoxAnswer;
using support::AttendedProgram;
using support::ProgramOver;
using testing::HasSubstr;

class EndOfTheProgram : public testing::Test {
protected:
    EndOfTheProgram() { Program.WillOpenTheRecord(); }

    void WillPutAValue() {
        Program.WillTap(1, 1);
        Program.WillType(u"North");
    }
    /// Ends the program. Steps that are added later are not performed.
    ProgramOver EndThere() {
        Program.Steps.push_back([this] { Last.Begin("SIGTERM"); });
        const ProgramOver over = Program.Run();
        EXPECT_EQ(Program.Refused, "");
        return over;
    }
    std::string File() const { return Program.Folder.Bytes("Quorin/qrn0001.txt"); }

    static constexpr const char* Saved = "Moisture|Site|Day\n|North|\n";
    AttendedProgram Program;
    backends::Ending Last{Program.Platform};
};

TEST_F(EndOfTheProgram, SavesTheRecordOnTheScreen) {
    WillPutAValue();
    Program.WillTap(0, 0);
    EXPECT_EQ(EndThere().Why, ProgramOver::Reason::Ended);
    EXPECT_EQ(File(), Saved);
    EXPECT_EQ(Last.Words(), "ended by SIGTERM; row 1 of qrn0001.txt was saved");
    EXPECT_FALSE(Last.IsLost());
}

TEST_F(EndOfTheProgram, SavesWhatIsInAnOpenField) {
    WillPutAValue();
    EndThere();
    EXPECT_EQ(File(), Saved);
}

TEST_F(EndOfTheProgram, AnswersAQuestionWithNoAndSavesTheRecord) {
    Program.WillReceive(AttendedProgram::Reading(u"1"));
    Program.WillReceive(AttendedProgram::Reading(u"2"));
    EndThere();
    EXPECT_EQ(File(), "Moisture|Site|Day\n1 %||\n");
    EXPECT_EQ(Last.Words(),
              "ended by SIGTERM; row 1 of qrn0001.txt was saved; not answered: \"Replace: 1 % With: 2 %?\"");
}

TEST_F(EndOfTheProgram, UnwindsQuestionsThatStandUponOneAnother) {
    for (const char16_t* value : {u"1", u"2", u"3", u"4"})
        Program.WillReceive(AttendedProgram::Reading(value));
    EXPECT_EQ(EndThere().Why, ProgramOver::Reason::Ended);
    EXPECT_EQ(File(), "Moisture|Site|Day\n1 %||\n");
    const std::string waits = std::to_string(AttendedProgram::Reading(u"4").size());
    EXPECT_THAT(Last.Words(), HasSubstr("With: 2 %?\"; not answered"));
    EXPECT_THAT(Last.Words(), HasSubstr("; " + waits + " characters of the instrument were not decoded"));
}

TEST_F(EndOfTheProgram, SaysThatReadingsOfARefusedBurstWait) {
    Program.WillReceive(AttendedProgram::Reading(u"1") + u"[BLob]\r\n[ORIGIN \"QI-9\"]\r\n[/BLob]\r\n");
    EndThere();
    EXPECT_EQ(Last.Words(),
              "ended by SIGTERM; there was nothing to save; readings that waited for another burst of the "
              "instrument are in no record");
}

TEST_F(EndOfTheProgram, DeletesNothingThatWasAskedAbout) {
    WillPutAValue();
    Program.WillChoose(u"Delete Record");
    Program.WillAnswer(BoxAnswer::Yes); // "Are you sure?" is open
    EndThere();
    EXPECT_EQ(File(), Saved);
}

TEST_F(EndOfTheProgram, TakesAMessageAway) {
    WillPutAValue();
    Program.Steps.push_back([] { modPDAUI::Tell(u"Driver installed"); });
    EndThere();
    EXPECT_EQ(File(), Saved);
    EXPECT_THAT(Last.Words(), HasSubstr("not answered: \"Driver installed\""));
}

TEST_F(EndOfTheProgram, LeavesACalendarAndSavesTheRecordUnderIt) {
    WillPutAValue();
    Program.WillTap(2, 1);
    Program.Steps.push_back([] { EXPECT_EQ(modQuorin::Screens.CurrentScreen, modQuorin::ScrInput); });
    EndThere();
    EXPECT_EQ(File(), Saved);
    EXPECT_EQ(Last.Words(), "ended by SIGTERM; row 1 of qrn0001.txt was saved");
}

TEST_F(EndOfTheProgram, AnswersNoPromptWhichWouldRenameADownload) {
    Program.WillChoose(u"Close");
    Program.WillChoose(u"Rename");
    Program.WillType(u"first name");
    Program.WillChoose(u"Ok");
    Program.WillChoose(u"Rename");
    Program.WillType(u"other");
    const std::string before = "Meter|qrn0001.txt|20070301|first name\n";
    EXPECT_EQ(EndThere().Why, ProgramOver::Reason::Ended);
    EXPECT_THAT(Program.Folder.Bytes("Quorin/qrnctrl.txt"), HasSubstr(before));
    EXPECT_EQ(Last.Words(), "ended by SIGTERM; there was nothing to save, and the open prompt was not answered");
}

TEST_F(EndOfTheProgram, SaysWhatCouldNotBeSaved) {
    WillPutAValue();
    Program.Steps.push_back([this] { Program.Host.faults.FailNext(-1); });
    EndThere();
    EXPECT_EQ(Last.Words(), "ended by SIGTERM; row 1 of qrn0001.txt was NOT saved");
    EXPECT_TRUE(Last.IsLost());
    EXPECT_EQ(File(), "Moisture|Site|Day\n||\n");
}

TEST_F(EndOfTheProgram, NamesARecordThatIsNotInItsFile) {
    std::string before;
    std::string after;
    std::string stateBefore;
    std::string stateAfter, stateKept;
    Program.Steps.push_back([&] {
        before = backends::UnsavedRecordWords();
        stateBefore = backends::StateWords();
    });
    WillPutAValue();
    Program.Steps.push_back([&] {
        after = backends::UnsavedRecordWords();
        stateAfter = backends::StateWords();
        stateKept = backends::StateWords(true);
    });
    EndThere();
    EXPECT_EQ(before, "");
    EXPECT_EQ(after, "row 1 of qrn0001.txt was NOT saved");
    EXPECT_EQ(stateBefore, "Every file is as the last completed save left it.");
    EXPECT_EQ(stateAfter, stateBefore + " What is on the screen is lost: " + after + ".");
    EXPECT_EQ(stateKept, stateBefore + " The next start offers what is on the screen: " + after + ".");
    EXPECT_EQ(backends::UnsavedRecordWords(), "") << "once it is saved";
}

TEST_F(EndOfTheProgram, HasNothingToSaveOnARecordThatIsAsItsFile) {
    EndThere();
    EXPECT_EQ(Last.Words(), "ended by SIGTERM; there was nothing to save");
}

// --- without a display: nothing is unwound ---------------------------------------------------------------------------

class EndWithoutADisplay : public EndOfTheProgram {
protected:
    void LoseItThere(bool storageRuns = false) {
        Program.Steps.push_back([this, storageRuns] {
            std::optional<modFileSystem::StorageStep> step;
            if (storageRuns)
                step.emplace();
            Last.SaveAtOnce("a display that is gone");
            Program.Platform.loop.Leave({ProgramOver::Reason::Failed, {}});
        });
        Program.Run();
        EXPECT_EQ(Program.Refused, "");
    }
};

TEST_F(EndWithoutADisplay, SavesTheRecordWhereverItStands) {
    WillPutAValue();
    LoseItThere();
    EXPECT_EQ(File(), Saved);
    EXPECT_EQ(Last.Words(), "ended by a display that is gone; row 1 of qrn0001.txt was saved");
}

TEST_F(EndWithoutADisplay, SavesTheRecordUnderACalendarWithoutItsDate) {
    WillPutAValue();
    Program.WillTap(2, 1);
    LoseItThere();
    EXPECT_EQ(File(), Saved);
}

TEST_F(EndWithoutADisplay, SavesTheRecordUnderQuestions) {
    for (const char16_t* value : {u"1", u"2", u"3", u"4"})
        Program.WillReceive(AttendedProgram::Reading(value));
    LoseItThere();
    EXPECT_EQ(File(), "Moisture|Site|Day\n1 %||\n");
}

TEST_F(EndWithoutADisplay, WritesNothingIntoAFileThatIsBeingWritten) {
    WillPutAValue();
    LoseItThere(true);
    EXPECT_EQ(File(), "Moisture|Site|Day\n||\n");
    EXPECT_EQ(Last.Words(), "ended by a display that is gone; row 1 of qrn0001.txt was NOT saved");
}

TEST_F(EndWithoutADisplay, WritesNothingWhereAPromptHasNoRecordUnderIt) {
    WillPutAValue();
    Program.WillChoose(u"Close");
    Program.WillChoose(u"Rename");
    Program.WillType(u"typing raises the changed flag");
    LoseItThere();
    EXPECT_EQ(File(), Saved);
    EXPECT_EQ(Last.Words(), "ended by a display that is gone; there was nothing to save");
}

} // namespace
