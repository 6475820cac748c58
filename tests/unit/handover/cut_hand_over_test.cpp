// SPDX-License-Identifier: MIT
// A hand-over that is cut at each of its calls, and run again.
#include "tests/unit/handover/a_device.h"
#include "tests/unit/handover/file_calls.h"

#include <csignal>
#include <sys/wait.h>

namespace handover {

namespace {

using file_calls::Blow;
using testing::IsEmpty;
using testing::Not;

class CutHandOver : public ADevice {
protected:
    CutHandOver() {
        for (int i = 3; i < 12; ++i)
            Root.Put("Quorin/qrn00" + std::to_string(i + 10) + ".txt", First + std::to_string(i) + "|1\n");
    }

    Plan PlanOfMany() const {
        std::vector<Source> sources = Sources();
        for (int i = 3; i < 12; ++i) {
            const std::string name = "qrn00" + std::to_string(i + 10) + ".txt";
            sources.push_back({name, Root.Path("Quorin/" + name), Kind::Download});
        }
        return PlanOf(sources);
    }

    /// Returns what is at the stick under a name of its own, and not as it is on the device.
    std::vector<std::string> Wrong() const {
        std::vector<std::string> wrong;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Stick.Path())) {
            const std::string name = entry.path().filename().string();
            if (!entry.is_regular_file() || name.front() == '.')
                continue;
            const std::string path = entry.path().string().substr(Stick.Path().size() + 1);
            if (name == ReceiptName ? Receipt().Read(entry.path().string()) != ""
                                    : Stick.Bytes(path) != Root.Bytes("Quorin/" + name))
                wrong.push_back(path);
        }
        return wrong;
    }

    /// Returns what is left beside the files.
    std::vector<std::string> Hidden() const {
        std::vector<std::string> hidden;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Stick.Path()))
            if (entry.path().filename().string().front() == '.')
                hidden.push_back(entry.path().string());
        return hidden;
    }

    std::size_t FilesOfDay() const {
        std::size_t files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(Stick.Path(Day(""))))
            files += entry.path().filename().string().front() == '.' ? 0u : 1u;
        return files;
    }

    int CallsOfAll() {
        file_calls::Strike(Blow::None, 0);
        HandOver(PlanOfMany(), [](const FileResult&) {});
        const int calls = file_calls::Counted();
        Clear();
        return calls;
    }

    void Clear() {
        std::filesystem::remove_all(Stick.Path("shed"));
        std::filesystem::remove(Root.Path(ReceiptName));
    }

    void RunAgainCompletes(int number) {
        const Result again = HandOver(PlanOfMany(), [](const FileResult&) {});
        EXPECT_EQ(again.WhyNot, "") << number;
        EXPECT_EQ(again.Failed, 0u) << number;
        EXPECT_EQ(again.Copied + again.Same, PlanOfMany().List().Sources.size()) << number;
        EXPECT_THAT(Wrong(), IsEmpty()) << number;
        EXPECT_THAT(Hidden(), IsEmpty()) << number;
        EXPECT_EQ(Stick.Entries("shed/2026-11-23"), static_cast<std::ptrdiff_t>(PlanOfMany().List().Sources.size()))
            << number;
    }
};

TEST_F(CutHandOver, AKilledOneIsWholeAndCompletedByTheNext) {
    const int calls = CallsOfAll();
    ASSERT_GT(calls, 50);
    for (int number = 1; number <= calls; ++number) {
        const pid_t child = ::fork();
        if (child == 0) {
            file_calls::Strike(Blow::Kill, number);
            HandOver(PlanOfMany(), [](const FileResult&) {});
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << number;
        EXPECT_THAT(Wrong(), IsEmpty()) << number;
        if (Stick.Has(Day("qrnctrl.txt"))) { // and with it all that it names
            EXPECT_EQ(FilesOfDay(), PlanOfMany().List().Sources.size()) << number;
        }
        RunAgainCompletes(number);
        Clear();
    }
}

TEST_F(CutHandOver, AStickThatSpoilsWhatIsWrittenIsTold) {
    std::vector<std::string> told;
    file_calls::Strike(Blow::Spoilt, 1);
    HandOver(ThePlan(), [&](const FileResult& file) { told.push_back(file.Why); });
    file_calls::Counted();
    EXPECT_THAT(told, testing::Each(testing::HasSubstr("what was read back is not what was written")));
    EXPECT_THAT(told, Not(IsEmpty()));
    EXPECT_THAT(Wrong(), IsEmpty());
}

TEST_F(CutHandOver, AFullOrPulledStickIsToldAndCompletedLater) {
    const int calls = CallsOfAll();
    for (const Blow blow : {Blow::Full, Blow::Pulled}) {
        for (int number = 1; number <= calls; ++number) {
            std::vector<std::string> told;
            file_calls::Strike(blow, number);
            const Result cut = HandOver(PlanOfMany(), [&](const FileResult& file) {
                if (!file.Why.empty())
                    told.push_back(file.Why);
            });
            file_calls::Counted();
            EXPECT_EQ(cut.Failed, told.size()) << number;
            EXPECT_THAT(told, Not(IsEmpty())) << number;
            EXPECT_THAT(Wrong(), IsEmpty()) << number;
            RunAgainCompletes(number);
            Clear();
        }
    }
}

} // namespace

} // namespace handover
