// SPDX-License-Identifier: MIT
// The device around the form, and its fonts, clock and random numbers.
#include "tests/conformance/form_suites.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace conformance {

TEST_P(DeviceSuite, HasAScreenAndSaysWhatItIs) {
    SystemObject& system = Form().myCsys;
    EXPECT_GE(system.DeviceType(), 0);
    EXPECT_GT(system.WorkArea().Width, 0);
    EXPECT_GT(system.WorkArea().Height, 0);
    EXPECT_GE(static_cast<float>(system.ScreenDimension()),
              std::max(system.WorkArea().Width, system.WorkArea().Height));
}

TEST_P(DeviceSuite, WalksOverItsVolumesInOneOrder) {
    Volumes& volumes = Form().volumes;
    std::vector<Text> walks[2];
    for (std::vector<Text>& walk : walks) {
        for (Text root = volumes.First(); !root.empty() && walk.size() < 100; root = volumes.Next())
            walk.push_back(root);
        EXPECT_EQ(volumes.Next(), u"") << "after the last one";
    }
    EXPECT_EQ(walks[0], walks[1]);
    for (const Text& root : walks[0])
        EXPECT_EQ(root.back(), u'\\') << modStringTools::ToBytes(root);
}

TEST_P(DeviceSuite, HasNoSpaceOnAVolumeThatIsNotThere) {
    std::int32_t bytes = 0;
    EXPECT_NE(Form().volumes.Space(u"Nowhere:\\", bytes), NoError);
}

TEST_P(DeviceSuite, SetsAConnectionOnlyIfItIsOpen) {
    std::unique_ptr<Connection> connection;
    const ErrorNumber error = Form().connectionService.Open(u"any name", connection);
    EXPECT_EQ(connection != nullptr, error == NoError);
}

TEST_P(DeviceSuite, HasAPortThatIsOpenOnlyIfItCouldBeOpened) {
    SerialPort& port = Form().serConnection;
    port.SetPortId(1);
    port.SetLineSettings(u"9600,N,8,1");
    port.SetReceiveThreshold(0);
    EXPECT_FALSE(port.PortOpen());
    const ErrorNumber error = port.SetPortOpen(true);
    EXPECT_EQ(port.PortOpen(), error == NoError);
    EXPECT_EQ(port.SetPortOpen(false), NoError);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_EQ(port.ReadInput(), u"");
}

TEST_P(DeviceSuite, PlaysAToneEachTimeAndNoneWhenItIsMade) {
    const auto tone = Form().toneMaker.MakeTone(1046, 250);
    ASSERT_NE(tone, nullptr);
    const auto before = Device->TonesPlayed();
    tone->Play(0);
    tone->Play(0);
    const auto after = Device->TonesPlayed();
    if (!after)
        return; // the tones of this device can't be observed
    EXPECT_THAT(*before, testing::IsEmpty());
    EXPECT_THAT(*after, testing::ElementsAre(std::pair(1046, 250), std::pair(1046, 250)));
}

TEST_P(DeviceSuite, TakesAnyKeyForOneToGrabOrRelease) {
    for (const std::int32_t key : {0, 13, 264, 1280, -1}) {
        Form().hardwareKeys.Grab(key);
        Form().hardwareKeys.Release(key);
        Form().hardwareKeys.Release(key);
    }
    EXPECT_THAT(Heard(), testing::IsEmpty());
}

// Fonts.

TEST_P(FontSuite, NeverFails) {
    for (const char16_t* name : {u"Tahoma", u"AFPalm", u"No such font", u""}) {
        for (const std::int32_t size : {9, 1, 0, -3, 100}) {
            const FontHandle font = Fonts->GetFont(name, size, 0);
            EXPECT_GT(Fonts->FontHeight(font), 0) << size;
            EXPECT_EQ(Fonts->GetFont(name, size, 0), font) << size;
        }
    }
}

TEST_P(FontSuite, HasNoWidthOfNothing) {
    const TextSize size = Fonts->MeasureLine(Font, u"", 0, 0);
    EXPECT_EQ(size.Width, 0);
    EXPECT_EQ(size.Height, Fonts->FontHeight(Font));
    EXPECT_EQ(Fonts->MeasureWrapped(Font, u"", 100).Height, Fonts->FontHeight(Font)) << "one line";
}

TEST_P(FontSuite, WalksOverTheNamesOfItsFonts) {
    std::vector<Text> names;
    for (Text name = Fonts->FirstFontName(); !name.empty() && names.size() < 10000; name = Fonts->NextFontName())
        names.push_back(name);
    EXPECT_EQ(Fonts->NextFontName(), u"");
    EXPECT_EQ(Fonts->FirstFontName(), names.empty() ? Text() : names.front());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    EXPECT_EQ(std::set<Text>(names.begin(), names.end()).size(), names.size()) << "repeated next to itself alone";
}

const Text SomeWords = u"Moisture of the sample that was taken at noon, in per cent of its weight";

TEST_P(TextMeasureSuite, MeasuresAPartOfALine) {
    const Text text = u"abcdef";
    EXPECT_EQ(Fonts->MeasureLine(Font, text, 0, 100).Width, Width(text)) << "no more than there is";
    EXPECT_EQ(Fonts->MeasureLine(Font, text, 2, 2).Width, Width(u"cd"));
    EXPECT_EQ(Fonts->MeasureLine(Font, text, 9, 1).Width, 0);
    EXPECT_EQ(Fonts->MeasureLine(Font, text, 0, -1).Width, 0);
    EXPECT_GT(Width(u"ab"), Width(u"a"));
    EXPECT_EQ(Width(u"ab\r\ncd"), Width(u"abcd")) << "line ends have no width";
}

TEST_P(TextMeasureSuite, IsHigherInALargerFont) {
    std::int32_t before = 0;
    for (const std::int32_t size : {6, 8, 10, 14, 20}) {
        const std::int32_t height = Fonts->FontHeight(Fonts->GetFont(u"AFPalm", size, 0));
        EXPECT_GT(height, before) << size;
        before = height;
    }
}

struct ParagraphRow {
    const char16_t* Words;
    std::int32_t Lines;
};

TEST_P(TextMeasureSuite, BeginsALineAtEachLineEnd) {
    constexpr std::int32_t Wide = 500;
    for (const auto& [words, lines] :
         {ParagraphRow{u"", 1}, ParagraphRow{u"a", 1}, ParagraphRow{u"a\r\nb", 2}, ParagraphRow{u"a\nb", 2},
          ParagraphRow{u"a\rb", 2}, ParagraphRow{u"a\n\nb", 3}, ParagraphRow{u"a\n\rb", 3}, ParagraphRow{u"a\r\n", 1},
          ParagraphRow{u"\r\n", 1}, ParagraphRow{u"\r\nb", 2}, ParagraphRow{u"a\r\n\r\n", 2}})
        EXPECT_EQ(Lines(words, Wide), lines) << modStringTools::ToBytes(words);
}

TEST_P(TextMeasureSuite, BreaksALineBeforeTheWordThatDoesNotFit) {
    const std::int32_t width = Width(SomeWords);
    const TextSize onOne = Fonts->MeasureWrapped(Font, SomeWords, width + 2);
    EXPECT_EQ(onOne.Height, Fonts->FontHeight(Font));
    EXPECT_EQ(onOne.Width, width);
    EXPECT_EQ(Lines(SomeWords, width - 2), 2);
    EXPECT_GE(Lines(SomeWords, width / 3), 3);
    for (const std::int32_t narrow : {60, 100, 170, 300}) {
        const TextSize size = Fonts->MeasureWrapped(Font, SomeWords, narrow);
        EXPECT_LE(size.Width, narrow + 3) << "a blank at the end of a line may reach beyond it";
        EXPECT_EQ(size.Height % Fonts->FontHeight(Font), 0);
    }
}

TEST_P(TextMeasureSuite, CutsAWordThatIsLongerThanALine) {
    EXPECT_EQ(Lines(Text(60, u'm'), Width(Text(10, u'm')) + 1), 6);
}

TEST_P(TextMeasureSuite, ComesToAnEndAtAWidthOfNothing) {
    EXPECT_GE(Lines(u"abc", 0), 1);
    EXPECT_GE(Lines(u"abc", -5), 1);
}

// Clock and random numbers.

TEST_P(ClockSuite, ShowsAMomentOfTheCalendar) {
    const DateTime now = Time->Now();
    EXPECT_GE(now.Date.Year, 1);
    EXPECT_TRUE(now.Date.Month >= 1 && now.Date.Month <= 12) << now.Date.Month;
    EXPECT_TRUE(now.Date.Day >= 1 && now.Date.Day <= 31) << now.Date.Day;
    EXPECT_TRUE(now.Hour >= 0 && now.Hour <= 23) << now.Hour;
    EXPECT_TRUE(now.Minute >= 0 && now.Minute <= 59) << now.Minute;
    EXPECT_TRUE(now.Second >= 0 && now.Second <= 60) << now.Second;
}

TEST_P(ClockSuite, HasTheTimeOfDayOfThatMoment) {
    constexpr float Day = 86400;
    const DateTime now = Time->Now();
    const float ofDay = Time->TimeOfDay();
    EXPECT_GE(ofDay, 0);
    EXPECT_LT(ofDay, Day);
    const float apart = std::abs(ofDay - static_cast<float>(now.Hour * 3600 + now.Minute * 60 + now.Second));
    EXPECT_LE(std::min(apart, Day - apart), 30) << "seconds, on a machine however slow";
}

TEST_P(ClockSuite, NeverCountsBackwards) {
    std::int64_t steady = Time->SteadySeconds();
    std::int64_t shown = Time->Now().WholeSeconds;
    for (int i = 0; i < 1000; ++i) {
        const std::int64_t steadyBefore = std::exchange(steady, Time->SteadySeconds());
        const std::int64_t shownBefore = std::exchange(shown, Time->Now().WholeSeconds);
        ASSERT_GE(steady, steadyBefore);
        ASSERT_GE(shown, shownBefore);
    }
}

TEST_P(RandomSuite, StaysFromZeroToBelowOne) {
    for (int i = 0; i < 10000; ++i) {
        const double number = Numbers->Next();
        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
    }
}

TEST_P(RandomSuite, GivesTheSameNumbersForTheSameSeed) {
    for (const std::int32_t seed : {0, 1, -34200, 2147483647}) {
        std::vector<double> runs[2];
        for (std::vector<double>& run : runs) {
            Numbers->Seed(seed);
            for (int i = 0; i < 100; ++i)
                run.push_back(Numbers->Next());
        }
        EXPECT_EQ(runs[0], runs[1]) << seed;
    }
}

} // namespace conformance
