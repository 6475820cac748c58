// SPDX-License-Identifier: MIT
// The program is killed, or the power is lost, after each step of a session in which readings come: each reading whose
// tone has sounded is in the download, in the draft or in the journal, and putting the draft back makes no second one.
#include "backends/headless_input/headless_hand.h"
#include "backends/host/drafts.h"
#include "backends/host/journal.h"
#include "backends/input/gestures.h"
#include "src/app/start_up.h"
#include "tests/system/power_loss/lost_writes.h"
#include "tests/system/power_loss/machine.h"
#include "tests/system/power_loss/trial.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace disk {
namespace {

constexpr int RecordCount = 3;
constexpr int WaysToLose = 50;

const std::string TableOfRecords = "device/Quorin/qrn0001.txt";

/// A reading whose tone has sounded, and the number of steps of the disk before.
struct Heard {
    std::string Value;
    std::size_t Steps = 0;
};

class TonesHeard final : public platform::ReadingLog {
public:
    void TextReceived(platform::TextSource, TextView) override {}
    void DecodingBegins() override {}
    void TextEmptied(TextView) override {}
    void ReadingJudged(const platform::Verdict& verdict) override {
        EXPECT_EQ(verdict.Fate, platform::Fate::Taken);
        All.push_back({modStringTools::ToBytes(verdict.Reading.Value), Watch::StepsTaken().size()});
    }
    void RowChanged(const platform::RowChange&) override {}

    std::vector<Heard> All;
};

Text Blob(const std::string& type, int value) {
    return modStringTools::FromBytes("[BLob]\r\n[RESULT_TYPE \"" + type + "\"]\r\n[RESULT_VALUE \"" +
                                     std::to_string(value) + "\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
}

Tree Before() {
    const std::string inf = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                            "Place|1||||||\nA|1||A||||\nB|1||B||||\n";
    const State files = {{"drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n"},
                         {"qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n"},
                         {"meter.txt", inf},
                         {"qrn0001.txt", "Place|A|B\n||\n"}};
    Tree device = Furnished(files, Keeping::TextFiles);
    device.Files["settings.ini"] = "[Settings]\nStorageVolume=.\\\nComPort=Com1\n";
    Tree tree;
    tree.Folders.insert("device");
    for (const std::string& folder : device.Folders)
        tree.Folders.insert("device/" + folder);
    for (const auto& [name, bytes] : device.Files)
        tree.Files["device/" + name] = bytes;
    return tree;
}

void Choose(backends::headless::HeadlessHand& hand, const Text& caption) {
    EXPECT_EQ(backends::Choose(hand, caption), "") << modStringTools::ToBytes(caption);
    hand.Device().loop.HandleDue();
}

/// A session in which each record gets two readings and is then saved, but the last.
class SessionWithReadings : public testing::Test {
protected:
    SessionWithReadings() {
        WriteTree(Folder.Path(), Before());
        const Watch watch(Folder.Path());
        Play();
        Steps_ = Watch::StepsTaken();
        Began_ = Watch::Began();
    }

    std::string Device() const { return Folder.Path() + "/device"; }
    std::string State() const { return Folder.Path() + "/state"; }
    std::size_t Steps() const { return Steps_.size(); }
    LostWrites LostAfter(std::size_t step) const { return {Began_, Steps_, step}; }

    void Play() {
        Machine machine(Device(), Keeping::TextFiles);
        machine.Platform.readings.Add(Tones); // before the journal, whose line of a reading comes after the tone
        backends::Journal journal({State() + "/journal", Device(), {}}, {"test", "V 1", {}}, machine.Platform);
        backends::Drafts drafts(State() + "/drafts", Device());
        drafts.Attach(machine.Platform);
        backends::headless::HeadlessHand hand(machine.Platform);
        for (const char16_t* caption : {u"Start...", u"Ok", u"Open"})
            Choose(hand, caption);
        machine.Platform.loop.PassTime(500);
        for (int record = 1; record <= RecordCount; ++record) {
            for (const char* type : {"A", "B"}) {
                machine.Platform.serial.Arrive(Blob(type, 1000 + static_cast<int>(Tones.All.size())));
                machine.Platform.loop.PassTime(1500);
                std::this_thread::sleep_for(std::chrono::milliseconds(300)); // drafts are not looked at more often
                machine.Platform.loop.HandleDue();
            }
            if (record < RecordCount)
                Choose(hand, u"New Record");
        }
    }

    /// Returns the values of the drafts that can be read.
    static std::vector<std::string> InDrafts(const Tree& tree) {
        std::vector<std::string> texts;
        for (const auto& [name, bytes] : tree.Files) {
            const auto draft = name.ends_with(".draft") ? companion::DraftFrom(bytes) : std::nullopt;
            for (const Text& text : draft ? draft->Texts : std::vector<Text>())
                texts.push_back(modStringTools::ToBytes(text));
        }
        return texts;
    }
    /// Returns the texts that came over the line, as the whole lines of the journal have them.
    static std::string InJournal(const Tree& tree) {
        std::string bytes;
        for (const auto& [name, content] : tree.Files) {
            std::istringstream in(name.ends_with(".jsonl") ? content : "");
            for (std::string line; std::getline(in, line) && !in.eof();) {
                const journal::Line event = journal::Line::parse(line, nullptr, false);
                if (event.is_object() && event["event"] == "received")
                    bytes += journal::BytesOfText(event["bytes"].get<std::string>()).value_or("");
            }
        }
        return bytes;
    }
    static std::size_t CountIn(const std::string& bytes, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = bytes.find(part); at != std::string::npos; at = bytes.find(part, at + 1))
            ++count;
        return count;
    }

    /// Checks each reading that was heard by that step. Returns how many there were.
    int JudgeTree(const Tree& tree, std::size_t step) {
        const std::vector<std::string> drafts = InDrafts(tree);
        const std::string journal = InJournal(tree);
        const auto download = tree.Files.find(TableOfRecords);
        const std::string table = download == tree.Files.end() ? "" : download->second;
        int looked = 0;
        for (const Heard& reading : Tones.All) {
            if (reading.Steps > step)
                break;
            ++looked;
            const std::string shown = reading.Value + " %";
            InTable += CountIn(table, shown) > 0 ? 1 : 0;
            InDraft += std::count(drafts.begin(), drafts.end(), shown) > 0 ? 1 : 0;
            const bool isKept = CountIn(table, shown) > 0 ||
                                std::find(drafts.begin(), drafts.end(), shown) != drafts.end() ||
                                CountIn(journal, "\"" + reading.Value + "\"") > 0;
            EXPECT_TRUE(isKept) << "reading " << reading.Value << " is nowhere";
        }
        return looked;
    }

    /// Puts the drafts back as the next start does, and checks that the download has no reading twice.
    void JudgeNextStart(const Tree& tree) {
        WriteTree(Folder.Path(), tree);
        support::Record did;
        backends::NoCommands commands;
        backends::DeviceOptions options;
        options.Root = Device();
        {
            backends::HostDevice host(options);
            backends::headless::HeadlessPlatform device(host, commands, did);
            device.Serve();
            backends::Drafts drafts(State() + "/drafts", Device());
            for (const auto& draft : drafts.OfLastRuns()) {
                Text why;
                if (drafts.IsUnsaved(draft, why)) {
                    EXPECT_EQ(drafts.PutBack(draft), u"");
                }
            }
            modQuorin::ResetModules();
        }
        const Tree after = ReadTree(Folder.Path());
        for (const Heard& reading : Tones.All)
            EXPECT_LE(CountIn(after.Files.at(TableOfRecords), reading.Value + " %"), 1U)
                << reading.Value << " is there twice";
    }

    const FreshFolder Folder;
    TonesHeard Tones;
    int InTable = 0; ///< readings that were found there
    int InDraft = 0;

private:
    std::vector<Step> Steps_;
    Start Began_;
};

TEST_F(SessionWithReadings, LosesNoReadingWhoseToneHasSounded) {
    ASSERT_EQ(Tones.All.size(), 2U * RecordCount);
    int looked = 0;
    std::set<Tree> seen;
    for (std::size_t step = 0; step <= Steps() && !HasFailure(); ++step) {
        SCOPED_TRACE("after step " + std::to_string(step) + " of " + std::to_string(Steps()));
        const LostWrites lost = LostAfter(step);
        for (std::uint32_t seed = 0; seed < WaysToLose && !HasFailure(); ++seed) {
            SCOPED_TRACE("damage " + std::to_string(seed)); // 1 loses nothing, as a kill
            const Tree tree = lost.Damaged(seed);
            looked += JudgeTree(tree, step);
            if (seed < 2 && seen.insert(tree).second)
                JudgeNextStart(tree);
        }
    }
    EXPECT_GT(InTable, 0);
    EXPECT_GT(InDraft, 0);
    EXPECT_GE(looked, 10000);
    CountPoints("readings looked for after a kill or a loss of power:", looked);
}

} // namespace
} // namespace disk
