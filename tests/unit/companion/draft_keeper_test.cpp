// SPDX-License-Identifier: MIT
#include "companion/draft_keeper.h"

#include "src/drivers/record_editor.h"
#include "src/storage/settings.h"
#include "src/view/input_fields.h"
#include "src/view/prompt.h"
#include "tests/support/program.h"

#include <map>

namespace companion {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string Header = "Place|Moisture|Remark\n";

class StoreInMemory final : public DraftStore {
public:
    Text Write(const std::string& name, const std::string& bytes) override {
        ++Writes;
        if (Why.empty())
            Files[name] = bytes;
        return Why;
    }
    void Remove(const std::string& name) override { Files.erase(name); }

    std::map<std::string, std::string> Files;
    int Writes = 0;
    Text Why; ///< why nothing can be written
};

/// A record on the screen, which is checked for drafts as in the loop.
class DraftOfTheScreen : public support::Program {
protected:
    DraftOfTheScreen() {
        InstallMeter();
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        OpenDownload(Header + "a|b|c\n1|2|3\n");
        Device.Tick(600);
        Device.Platform.readings.Add(Keeper);
        Device.Platform.loop.Listen(Rounds);
        Now = seconds(1000);
    }
    /// Lets so much time pass without a key.
    void Rest(milliseconds time) {
        for (const auto end = Now + time; Now < end; Now += std::min(milliseconds(100), end - Now))
            Keeper.Look();
        Keeper.Look();
    }
    void Edit(std::int32_t row, const Text& text) {
        Tap(row, 1);
        Type(text);
    }
    void Receive(const Text& type, const Text& value) {
        Device.Platform.serial.Arrive(u"[BLob]\r\n[RESULT_TYPE \"" + type + u"\"]\r\n[RESULT_VALUE \"" + value +
                                      u"\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
        Settle();
        Device.Tick(1500);
    }
    /// Returns the texts of each stored draft.
    std::vector<std::vector<Text>> Drafts() {
        std::vector<std::vector<Text>> all;
        for (const auto& [name, bytes] : Store.Files)
            all.push_back(DraftFrom(bytes).value().Texts);
        return all;
    }

    struct EachRound final : backends::EventSource {
        explicit EachRound(DraftKeeper& keeper) : Keeper(keeper) {}
        bool RaiseWhatIsPending() override {
            Keeper.Look();
            return false;
        }
        DraftKeeper& Keeper;
    };

    static inline DraftKeeper::Moment Now;
    StoreInMemory Store;
    DraftKeeper Keeper{Store, {1, 2, "/root"}, "run", [] { return Now; }};
    EachRound Rounds{Keeper};
};

using Texts = std::vector<Text>;

TEST_F(DraftOfTheScreen, IsKeptOnceTheKeysRestForASecond) {
    Edit(2, u"typed");
    Rest(milliseconds(999));
    EXPECT_THAT(Drafts(), IsEmpty());
    Rest(milliseconds(401)); // two checks
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
    Rest(seconds(5));
    EXPECT_EQ(Store.Writes, 1) << "the same is not written again";
}

TEST_F(DraftOfTheScreen, NamesTheRecordThatItIsOf) {
    Edit(2, u"typed");
    Rest(seconds(2));
    ASSERT_EQ(Store.Files.size(), 1U);
    const Draft draft = DraftFrom(Store.Files.begin()->second).value();
    EXPECT_EQ(draft.Root, (RootId{1, 2, "/root"}));
    EXPECT_EQ(draft.File, u"qrn0001.txt");
    EXPECT_EQ(draft.Header, u"Place|Moisture|Remark");
    EXPECT_EQ(draft.Register, u"Meter|qrn0001.txt|20070301|");
    EXPECT_EQ(draft.Row, 1);
    EXPECT_EQ(draft.Line, u"a|b|c");
    EXPECT_EQ(draft.Time.size(), Text(u"2026-11-22 20:30:05").size());
}

TEST_F(DraftOfTheScreen, IsKeptAtOnceAfterAReading) {
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Receive(u"Moisture", u"14.1");
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"14.1 %", u"c"}));
}

TEST_F(DraftOfTheScreen, GoesWhenTheRowIsSaved) {
    Edit(2, u"typed");
    Rest(seconds(2));
    modQuorin::RecordCommand(u"NEXT");
    EXPECT_THAT(Drafts(), IsEmpty());
    EXPECT_EQ(File("qrn0001.txt"), Header + "a|b|typed\n1|2|3\n");
}

TEST_F(DraftOfTheScreen, GoesWhenTheTextIsAsItWas) {
    Edit(2, u"typed");
    Rest(seconds(2));
    Type(u"c");
    Rest(seconds(2));
    EXPECT_THAT(Drafts(), IsEmpty());
}

TEST_F(DraftOfTheScreen, StaysWhenTheSaveFails) {
    Edit(2, u"typed");
    Rest(seconds(2));
    Device.Host.faults.FailNext(-1);
    modQuorin::RecordCommand(u"NEXT");
    Rest(seconds(2));
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
    Device.Host.faults.FailNext(0);
    Edit(0, u"another");
    Rest(seconds(2));
    EXPECT_EQ(Drafts().size(), 2U) << "what is lost is not replaced by what is typed later";
    modQuorin::RecordCommand(u"PREV");
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
}

TEST_F(DraftOfTheScreen, HasNoRecordOnceItsDownloadIsDeleted) {
    Edit(2, u"typed");
    Device.Host.faults.FailNext(-1);
    modQuorin::GoBack();
    Device.Host.faults.FailNext(0);
    ASSERT_EQ(Drafts().size(), 1U);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    modQuorin::MenuEvent(u"Delete");
    ASSERT_EQ(File("qrnctrl.txt"), "DRIVER|FILE|DATE|ALIAS\n");
    EXPECT_EQ(DraftFrom(Store.Files.begin()->second).value().Row, 0) << "the next download may have the same name";
}

TEST_F(DraftOfTheScreen, StaysOneWhileALockKeepsTheRecordOnTheScreen) {
    Edit(2, u"typed");
    Rest(seconds(2));
    platform::RowChange failed{.Event = platform::RowEvent::Saved, .File = u"qrn0001.txt", .Row = 1, .Why = u"in use"};
    Device.Platform.readings.RowChanged(failed); // and the record stays as it is
    Type(u"typed on");
    Rest(seconds(2));
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed on"}));
    modQuorin::RecordCommand(u"NEXT");
    EXPECT_THAT(Drafts(), IsEmpty());
}

TEST_F(DraftOfTheScreen, IsKeptWhenAFailureInASaveEndsTheProgram) {
    Device.Platform.runTime.Failing = [this] { Keeper.KeepNow(); };
    Edit(2, u"typed");
    Device.Host.faults.FailNext(-1, 1); // in the middle of the file
    EXPECT_NE(support::FailureOf([] { modQuorin::RecordCommand(u"NEXT"); }), u"");
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
}

TEST_F(DraftOfTheScreen, FollowsItsRecordWhenRowsAreAddedAndDeleted) {
    const auto left = [this] { return DraftFrom(Store.Files.begin()->second).value().Row; };
    modQuorin::RecordCommand(u"NEXT");
    Edit(2, u"typed");
    Device.Host.faults.FailNext(-1);
    modQuorin::RecordCommand(u"PREV");
    Device.Host.faults.FailNext(0);
    Rest(seconds(1));
    EXPECT_EQ(left(), 2);
    modQuorin::RecordCommand(u"INSERT"); // before record 1
    EXPECT_EQ(left(), 3);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    modQuorin::RecordCommand(u"DELETE");
    EXPECT_EQ(left(), 2);
    modQuorin::RecordCommand(u"NEXT");
    Device.WillAnswer(platform::BoxAnswer::Yes);
    Device.WillAnswer(platform::BoxAnswer::Yes);
    modQuorin::RecordCommand(u"DELETE");
    EXPECT_EQ(left(), 0) << "its own record is gone";
}

TEST_F(DraftOfTheScreen, GoesWhenALaterRunSavesTheSame) {
    Draft draft;
    draft.File = u"qrn0001.txt";
    draft.Header = u"Place|Moisture|Remark";
    draft.Row = 1;
    draft.Line = u"a|b|c";
    draft.Texts = {u"a", u"b", u"typed"};
    Store.Files["earlier-1.draft"] = BytesOf(draft);
    Keeper.TakeUp("earlier-1.draft", draft);
    Edit(2, u"typed");
    modQuorin::RecordCommand(u"NEXT");
    EXPECT_THAT(Drafts(), IsEmpty());
}

TEST_F(DraftOfTheScreen, IsWrittenWhenASaveFailsBeforeTheKeysRest) {
    Edit(2, u"typed");
    Device.Host.faults.FailNext(-1);
    modQuorin::RecordCommand(u"NEXT");
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
}

TEST_F(DraftOfTheScreen, IsOfTheRecordThatACalendarCovers) {
    Edit(2, u"typed");
    modPDAUI::CloseCellEdit();
    Text date;
    modPDAUI::EditByPrompt(u"Date", modPDAUI::PromptKind::Date, date);
    ASSERT_EQ(Screen(), modQuorin::ScrInput);
    Rest(seconds(2));
    EXPECT_THAT(Drafts(), ElementsAre(Texts{u"a", u"b", u"typed"}));
}

TEST_F(DraftOfTheScreen, IsNotKeptOfAPromptThatCoversNoRecord) {
    modQuorin::GoBack();
    Text name;
    modPDAUI::EditByPrompt(u"Name", modPDAUI::PromptKind::Line, name);
    Type(u"typed");
    Rest(seconds(2));
    EXPECT_EQ(Store.Writes, 0);
}

TEST_F(DraftOfTheScreen, IsToldOnceWhenItCanNotBeKept) {
    std::vector<Text> failures;
    int works = 0;
    Keeper.Failed = [&failures](const Text& why) { failures.push_back(why); };
    Keeper.Works = [&works] { ++works; };
    Store.Why = u"the disk is full";
    Edit(2, u"typed");
    Rest(seconds(2));
    Rest(seconds(2));
    Rest(seconds(11));
    EXPECT_THAT(failures, ElementsAre(u"the disk is full"));
    EXPECT_EQ(Store.Writes, 2) << "not five times a second";
    Store.Why.clear();
    Rest(seconds(11));
    EXPECT_EQ(works, 1);
    EXPECT_EQ(Drafts().size(), 1U);
}

} // namespace
} // namespace companion
