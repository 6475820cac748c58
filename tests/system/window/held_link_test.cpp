// SPDX-License-Identifier: MIT
// What the window says about the link while two questions are open, one above the other.
#include "backends/input/gestures.h"
#include "tests/system/window/watched_window.h"

namespace windowtest {
namespace {

using platform::BoxAnswer;

Text Reading(const Text& value) {
    return u"[BLob]\r\n[ORIGIN \"QI-1\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"" + value +
           u"\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
}

/// A record with a reading in it. The parameter is the number of readings that come while the question about the next
/// one is open.
class HeldLink : public WatchedWindow, public testing::WithParamInterface<int> {
protected:
    HeldLink() {
        Device.Platform.settings.Save(u"Quorin", u"Settings", u"ComPort", u"Com1");
        OpenRecord("Place|Moisture|Remark\n||\n");
        Pass(600);
        Receive(u"[BLob]\r\n[CONNECT \"QI-1\"]\r\n[/BLob]\r\n");
        Receive(Reading(u"first"));
    }
    /// Lets the text arrive over the line, and lets enough time pass to decode it.
    void Receive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
        Pass(1100);
    }
    void AnswerAndGoOn() {
        if (Boxes().Current() == nullptr)
            return;
        ++Answers;
        Deepest = std::max(Deepest, Boxes().Depth());
        EXPECT_EQ(backends::Answer(Device.Hand, BoxAnswer::No), "");
        Device.WillDo([this] { Pass(1100); }); // the time that a user needs to read the next one
        Device.WillDo([this] { AnswerAndGoOn(); });
    }
    backends::DeviceBoxes& Boxes() { return Device.Platform.boxes; }

    std::size_t Answers = 0;
    std::size_t Deepest = 0;
};

TEST_P(HeldLink, SaysHowManyCharactersWaitUntilOneAnswer) {
    std::size_t waits = 0;
    const auto held = [&] {
        return "Link held: two questions are open" +
               (waits == 0 ? std::string() : ", " + std::to_string(waits) + " characters are waiting");
    };
    for (int number = 1; number <= GetParam(); ++number) {
        Device.WillDo([&, number] {
            const Text text = Reading(modStringTools::NumberText(number));
            Receive(text);
            waits += number > 1 ? text.size() : 0; // the first one has opened the second question
            if (number <= 2) {
                EXPECT_TRUE(LinkLineBecomes(held())) << LinkLine();
            }
        });
    }
    Device.WillDo([&] {
        EXPECT_EQ(Boxes().Depth(), 2U);
        EXPECT_TRUE(LinkLineBecomes(held())) << LinkLine();
        AnswerAndGoOn();
    });
    Receive(Reading(u"0"));
    EXPECT_EQ(Boxes().Depth(), 0U);
    EXPECT_EQ(Deepest, 2U);
    EXPECT_EQ(Answers, static_cast<std::size_t>(GetParam()) + 2);
    EXPECT_TRUE(LinkLineBegins("○ Moisture keeps first %, not Moisture ")) << LinkLine();
    EXPECT_EQ(Cell(1, 1), u"first %");
}

INSTANTIATE_TEST_SUITE_P(Readings, HeldLink, testing::Values(3, 20, 200));

} // namespace
} // namespace windowtest
