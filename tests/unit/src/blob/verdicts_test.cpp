// SPDX-License-Identifier: MIT
// What a verdict contains besides its name, and which events have none. The console's tests check that each fate has a
// name.
#include "src/blob/verdicts.h"

#include "tests/support/heard_readings.h"
#include "tests/unit/src/blob/record_screen.h"

#include <optional>

namespace modBLob {
namespace {

using platform::BoxAnswer;
using platform::Fate;
using platform::Verdict;
using testing::ElementsAre;
using testing::IsEmpty;

Text ResultLines(const Text& type, const Text& value) {
    return u"[RESULT_TYPE \"" + type + u"\"]\r\n[RESULT_VALUE \"" + value + u"\"]\r\n[RESULT_UNIT \"ms\"]\r\n";
}

Text InBlob(const Text& lines, const Text& end = u"[/BLob]") {
    return u"[BLob]\r\n" + lines + end + u"\r\n";
}

class VerdictOfAReading : public RecordScreen {
protected:
    /// Opens a table whose row has this many fields.
    static void OpenRowOf(std::size_t fields) {
        modFileSystem::Table.TableFile.valid = true;
        modFileSystem::Table.TableRowIndex = modFileSystem::Table.TableRowTotal = 1;
        modFileSystem::Table.TableColumns.resize(fields);
        modFileSystem::Table.TableValues.resize(fields);
    }
    void Edit(platform::Control& field, std::int32_t row) {
        Grid().SetRow(row);
        modPDAUI::Input.EditRow = row;
        modPDAUI::Input.EditCol = 1;
        field.SetVisible(true);
    }
    Verdict Last() { return Heard.Verdicts.empty() ? Verdict() : Heard.Verdicts.back(); }
    std::vector<Fate> Fates() {
        std::vector<Fate> fates;
        for (const Verdict& verdict : Heard.Verdicts)
            fates.push_back(verdict.Fate);
        return fates;
    }

    support::HeardReadings Heard{Device};
};

TEST_F(VerdictOfAReading, HasTheValueThatWasReplaced) {
    ShowRecord({{u"Alpha"}});
    OpenRowOf(1);
    SetValue(0, u"old ms");
    WillAnswer(BoxAnswer::Yes);
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Last().Fate, Fate::Replaced);
    EXPECT_EQ(Last().Old, u"old ms");
}

/// A page key has moved the grid's current row away from the field.
TEST_F(VerdictOfAReading, HasTheOldValueOfTheOpenFieldsRow) {
    ShowRecord({{u"x1"}, {u"Alpha"}});
    OpenRowOf(2);
    SetValue(0, u"old x1");
    SetValue(1, u"old Alpha");
    Edit(Device.Platform.txtInputField, 0);
    Device.Platform.txtInputField.SetContents(u"old x1");
    Grid().SetRow(1);
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Last().Fate, Fate::OpenField);
    EXPECT_EQ(Last().Row, 0);
    EXPECT_EQ(Last().Old, u"old x1");
}

TEST_F(VerdictOfAReading, IsAboutTheOneThatWasAskedAbout) {
    ShowRecord({{u"Alpha"}, {u"Beta"}});
    OpenRowOf(2);
    SetValue(0, u"old");
    WillAnswer(BoxAnswer::Yes);
    WhileAQuestionIsOpen([] { Capture({u"Beta"}, u"2"); });
    Capture({u"Alpha"}, u"1");
    ASSERT_THAT(Fates(), ElementsAre(Fate::Taken, Fate::Replaced));
    EXPECT_EQ(Heard.Verdicts[0].Reading.Value, u"2");
    EXPECT_EQ(Heard.Verdicts[1].Reading.Value, u"1");
}

TEST_F(VerdictOfAReading, IsKeptUnderAnOpenListWithoutARecordToo) {
    ShowRecord({{u"Alpha"}});
    Edit(Device.Platform.cboInputField, 0);
    Capture({u"Alpha"}, u"1");
    OpenRowOf(1);
    Capture({u"Alpha"}, u"2");
    EXPECT_THAT(Fates(), ElementsAre(Fate::Kept, Fate::Kept));
}

TEST_F(VerdictOfAReading, IsNoRecordIfTheFileHasAHeaderAlone) {
    ShowRecord({{u"Alpha"}});
    OpenRowOf(0);
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Last().Fate, Fate::NoRecord);
}

TEST_F(VerdictOfAReading, IsNoColumnIfAFormulaOverwritesIt) {
    ShowRecord({{u"Alpha", u"enddate"}});
    OpenRowOf(1);
    Capture({u"Alpha"}, u"1");
    EXPECT_EQ(Last().Fate, Fate::NoColumn);
}

TEST_F(VerdictOfAReading, OfAConnectionComesFirst) {
    ShowRecord({{u"Alpha"}});
    OpenRowOf(1);
    ProcessReceivedText(InBlob(u"[CONNECT \"A1\"]\r\n" + ResultLines(u"Alpha", u"1")) +
                        InBlob(ResultLines(u"Alpha", u"2")));
    EXPECT_THAT(Fates(), ElementsAre(Fate::Connect, Fate::Taken));
}

// --- refused BLobs -------------------------------------------------------------------------------------------------

TEST_F(VerdictOfAReading, SharesTheRefusedBLobWithItsSiblings) {
    ProcessReceivedText(InBlob(ResultLines(u"Alpha", u"1") + ResultLines(u"Beta", u"2"), u"[/BLob 2]"));
    ASSERT_THAT(Fates(), ElementsAre(Fate::Shape, Fate::Shape));
    ASSERT_NE(Last().Reading.Blob, nullptr);
    EXPECT_EQ(*Last().Reading.Blob, u"[BLob]\r[RESULT_TYPE \"Alpha\"]\r[RESULT_VALUE \"1\"]\r[RESULT_UNIT \"ms\"]\r"
                                    u"[RESULT_TYPE \"Beta\"]\r[RESULT_VALUE \"2\"]\r[RESULT_UNIT \"ms\"]\r[/BLob 2]\r");
    EXPECT_EQ(Heard.Verdicts[0].Reading.Blob, Last().Reading.Blob) << "no copy: one BLob may have many results";
}

TEST_F(VerdictOfAReading, ExpectsAnOriginOnlyIfThatIsWrong) {
    Decoder.ConnectedID = u"A1";
    ProcessReceivedText(InBlob(ResultLines(u"Alpha", u"1"), u"[/BLob 2]"));
    EXPECT_EQ(Last().Fate, Fate::Shape);
    EXPECT_EQ(Last().Expected, u"");
    ProcessReceivedText(InBlob(u"[ORIGIN \"B2\"]\r\n" + ResultLines(u"Alpha", u"1")));
    EXPECT_EQ(Last().Fate, Fate::Origin);
    EXPECT_EQ(Last().Expected, u"A1");
}

// --- texts that are dropped ----------------------------------------------------------------------------------------

TEST_F(VerdictOfAReading, HasTheConnectedOriginWhenItIsEmptied) {
    Decoder.ConnectedID = u"A1";
    JudgeEmptied(Framing, Decoder, InBlob(ResultLines(u"Alpha", u"1")));
    ASSERT_THAT(Fates(), ElementsAre(Fate::Emptied));
    EXPECT_EQ(Last().Reading.Origin, u"A1");
}

TEST_F(VerdictOfAReading, IsEmptiedThoughItWouldHaveBeenRefused) {
    Decoder.ConnectedID = u"A1";
    JudgeEmptied(Framing, Decoder, InBlob(u"[ORIGIN \"B2\"]\r\n" + ResultLines(u"Alpha", u"1")));
    ASSERT_THAT(Fates(), ElementsAre(Fate::Emptied));
    EXPECT_EQ(Last().Reading.Origin, u"B2");
}

TEST_F(VerdictOfAReading, ComesAfterTheTextThatWasDropped) {
    JudgeEmptied(Framing, Decoder, u"");
    EXPECT_THAT(Heard.Emptied, IsEmpty()) << "nothing was dropped";
    JudgeEmptied(Framing, Decoder, u"noise\r\n");
    EXPECT_THAT(Heard.Emptied, ElementsAre(u"noise\r\n"));
    EXPECT_THAT(Heard.Verdicts, IsEmpty());
}

TEST(BLobThatWasCut, IsForgottenAtAStart) {
    std::optional<support::TestDevice> device(std::in_place);
    JudgeEmptied(Framing, Decoder, u"[BLob]\r\n");
    device.reset();
    device.emplace();
    const support::HeardReadings heard(*device);
    JudgeCutBlob(Decoder, ResultLines(u"Alpha", u"1") + u"[/BLob]\r\n");
    EXPECT_THAT(heard.Verdicts, IsEmpty());
}

} // namespace
} // namespace modBLob
