// SPDX-License-Identifier: MIT
// What happens to the readings of an instrument that sends without being asked while questions are open.
#include "src/link/ports.h"
#include "src/link/receive.h"
#include "src/view/questions.h"
#include "src/view/screen_table.h"
#include "tests/unit/backends/headless/attended_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::BoxAnswer;
using support::AttendedProgram;
using support::ProgramOver;

Text Number(std::size_t number) {
    return modStringTools::NumberText(static_cast<std::int32_t>(number));
}

/// A record with a reading in it, and a question about the next one.
class PiledQuestions : public testing::Test {
protected:
    explicit PiledQuestions(const std::string& port = "Com1") : Program(port) {
        Program.WillOpenTheRecord();
        Program.WillReceive(AttendedProgram::Reading(u"first"));
        Program.WillReceive(AttendedProgram::Reading(u"0"));
    }
    void SendReadings(std::size_t from, std::size_t to) {
        for (std::size_t number = from; number <= to; ++number)
            Program.WillReceive(AttendedProgram::Reading(Number(number)));
    }
    void WillLook(std::function<void()> look) { Program.Steps.push_back(std::move(look)); }
    /// Answers until no question is open.
    void WillAnswerAll(BoxAnswer answer) {
        Program.Steps.push_back([this, answer] { AnswerAndGoOn(answer); });
    }
    void AnswerAndGoOn(BoxAnswer answer) {
        if (Program.Platform.boxes.Current() == nullptr)
            return;
        ++Answers;
        Deepest = std::max(Deepest, Program.Platform.boxes.Depth());
        EXPECT_EQ(backends::Answer(Program.Hand, answer), "");
        // The time that a person needs to read the next question.
        Program.Steps.push_front([this, answer] { AnswerAndGoOn(answer); });
        Program.Steps.push_front([this] { Program.Platform.loop.PassTime(1100); });
    }
    void Run() {
        EXPECT_EQ(Program.Run().Why, ProgramOver::Reason::InputEnded);
        EXPECT_EQ(Program.Refused, "");
    }
    bool WasAskedAbout(const Text& value) const {
        for (const Text& message : Program.Did.Messages())
            if (message.ends_with(u"With:\r\n" + value + u" %?"))
                return true;
        return false;
    }
    Text Moisture() { return Program.Platform.grdMain.Cell(0, 1); }
    backends::DeviceBoxes& Boxes() { return Program.Platform.boxes; }

    AttendedProgram Program;
    std::size_t Answers = 0;
    std::size_t Deepest = 0;
};

class ReadingsDuringAQuestion : public PiledQuestions, public testing::WithParamInterface<std::size_t> {};

TEST_P(ReadingsDuringAQuestion, AskOnceEachAndNeverMoreThanTwoAtATime) {
    const std::size_t readings = GetParam();
    SendReadings(1, readings);
    WillLook([&] {
        EXPECT_EQ(Program.Did.Boxes.size(), 2U) << "one more than the question that stood, for the first of them";
        EXPECT_TRUE(Boxes().Piled());
    });
    WillAnswerAll(BoxAnswer::Yes);
    Run();
    for (std::size_t number = 0; number <= readings; ++number)
        EXPECT_TRUE(WasAskedAbout(Number(number))) << number;
    EXPECT_EQ(Deepest, 2U);
    // The first text is asked about twice, because it is decoded again together with the second one.
    EXPECT_EQ(Answers, readings + 2);
    EXPECT_EQ(Boxes().Current(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Counts, ReadingsDuringAQuestion, testing::Values(3, 20, 200));

TEST_F(PiledQuestions, HoldWhatComesAndRaiseItAsOneBatchWhenOneIsAnswered) {
    SendReadings(1, 5);
    Text read;
    WillLook([&] {
        std::size_t waits = 0;
        for (std::size_t number = 2; number <= 5; ++number)
            waits += AttendedProgram::Reading(Number(number)).size();
        EXPECT_EQ(Program.Platform.serial.WaitingCharacters(), waits);
        read = modBluetooth::Receive.ReadyText;
    });
    Program.WillAnswer(BoxAnswer::No);
    Program.WillAnswer(BoxAnswer::No); // both questions of the inner batch
    WillLook([&] {
        EXPECT_FALSE(Boxes().Piled());
        EXPECT_EQ(Program.Platform.serial.WaitingCharacters(), 0U);
        Text all;
        for (std::size_t number = 2; number <= 5; ++number)
            all += AttendedProgram::Reading(Number(number));
        EXPECT_EQ(modBluetooth::Receive.ReadyText, all);
    });
    WillAnswerAll(BoxAnswer::No);
    Run();
}

TEST_F(PiledQuestions, AreNoSleepOfTheDevice) {
    SendReadings(1, 2);
    Program.WillWait(3600 * 1000);
    Program.WillAnswer(BoxAnswer::No);
    Program.WillAnswer(BoxAnswer::No);
    Program.WillWait(400);
    Program.WillWait(200);
    WillLook([&] { EXPECT_NE(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Reset); });
    WillAnswerAll(BoxAnswer::No);
    Program.WillWait(3000);
    WillLook([&] {
        EXPECT_TRUE(modBluetooth::Ports.LinkOpen);
        EXPECT_EQ(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Open);
    });
    Run();
}

TEST_F(PiledQuestions, AreNoSleepOfTheDeviceWhateverStandsOnTop) {
    Program.Steps.push_back([] { modPDAUI::Tell(u"Something else."); });
    Program.WillWait(60000);
    Program.WillAnswer(BoxAnswer::Ok);
    Program.WillWait(600);
    WillLook([&] { EXPECT_NE(modBluetooth::Receive.LinkState, modBluetooth::LinkPhase::Reset); });
    WillAnswerAll(BoxAnswer::No);
    Run();
}

TEST_F(PiledQuestions, LetAPortThatGoesAwayBeNoticed) {
    SendReadings(1, 2);
    WillLook([&] {
        Program.Platform.serial.Drop();
        EXPECT_FALSE(Program.Platform.serial.PortOpen());
    });
    WillAnswerAll(BoxAnswer::No);
    Program.WillWait(3000);
    WillLook([&] { EXPECT_TRUE(Program.Platform.serial.PortOpen()); });
    Run();
}

class PiledQuestionsOfAServer : public PiledQuestions {
protected:
    PiledQuestionsOfAServer() : PiledQuestions("SERVER") {}
};

TEST_F(PiledQuestionsOfAServer, LeaveAMailboxFileWhereItIs) {
    AttendedProgram& server = Program;
    server.Folder.Put("c/rfcomm.run", "");
    server.Steps.clear();
    const auto put = [&](const Text& text) {
        server.Steps.push_back([&, text] { server.Folder.Put("c/ipcout.txt", modStringTools::ToBytes(text)); });
        server.WillWait(1600);
    };
    for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
        server.WillChoose(caption);
    server.WillWait(600);
    put(u"[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n");
    for (const char16_t* value : {u"first", u"0", u"1"})
        put(AttendedProgram::Reading(value));
    WillLook([&] {
        EXPECT_TRUE(Boxes().Piled());
        EXPECT_FALSE(server.Folder.Has("c/ipcout.txt"));
    });
    put(AttendedProgram::Reading(u"2"));
    WillLook([&] { EXPECT_TRUE(server.Folder.Has("c/ipcout.txt")); });
    WillAnswerAll(BoxAnswer::No);
    server.WillWait(2000);
    WillLook([&] { EXPECT_FALSE(server.Folder.Has("c/ipcout.txt")); });
    Run();
    EXPECT_TRUE(WasAskedAbout(u"2"));
}

} // namespace
