// SPDX-License-Identifier: MIT
// The window's own fonts: text is drawn in the size that was measured.
#include "backends/qt/fonts.h"

#include "backends/qt/conversions.h"
#include "tests/support/in_a_window.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>
#include <QProcess>

#include <set>

namespace windowtest {
namespace {

using backends::qt::FontOf;
using backends::qt::LinesOf;
using backends::qt::QtFonts;
using backends::qt::ToQt;

const Text SomeWords = u"Moisture of the sample that was taken at noon, in per cent of its weight";

class MeasuredText : public testing::Test {
protected:
    QtFonts Fonts;
    platform::FontHandle Font = Fonts.GetFont(u"Tahoma", 9, 0);
    std::int32_t Lines(const Text& text, std::int32_t width) {
        return Fonts.MeasureWrapped(Font, text, width).Height / Fonts.FontHeight(Font);
    }
};

TEST_F(MeasuredText, IsBrokenBeforeTheWordThatDoesNotFit) {
    const std::int32_t width = Fonts.MeasureLine(Font, SomeWords, 0, 100).Width;
    EXPECT_EQ(Lines(SomeWords, width + 2), 1);
    EXPECT_EQ(Lines(SomeWords, width - 2), 2);
    EXPECT_GE(Lines(SomeWords, width / 3), 3);
    for (const QString& line : LinesOf(FontOf(u"Tahoma", 9), SomeWords, width / 3))
        EXPECT_TRUE(ToQt(SomeWords).contains(line));
}

TEST_F(MeasuredText, CutsAWordThatIsLongerThanALine) {
    const Text word(60, u'm');
    const std::int32_t width = Fonts.MeasureLine(Font, u"mmmmmmmmmm", 0, 10).Width + 1;
    EXPECT_EQ(Lines(word, width), 6);
    QString all;
    for (const QString& line : LinesOf(FontOf(u"Tahoma", 9), word, width))
        all += line;
    EXPECT_EQ(all, ToQt(word)) << "nothing of it is lost";
}

// Fonts of the devices.

class FontOfADevice : public testing::TestWithParam<const char16_t*> {};

TEST_P(FontOfADevice, HasAStandInInEverySize) {
    std::int32_t before = 0;
    QtFonts fonts;
    for (const std::int32_t size : {6, 8, 10, 14, 20}) {
        const std::int32_t height = fonts.FontHeight(fonts.GetFont(GetParam(), size, 0));
        EXPECT_GT(height, before) << size;
        before = height;
    }
    const QFont font = FontOf(GetParam(), 9);
    EXPECT_TRUE(QFontInfo(font).family().startsWith(font.family())) << QFontInfo(font).family().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Names, FontOfADevice,
                         testing::Values(u"AFPalm", u"AFPalmHR", u"AFSE UIQ Standard", u"Microsoft Sans Serif CMF",
                                         u"Nokia Sans S60", u"Tahoma"));

class NarrowLetters : public testing::Test {
protected:
    static constexpr const char* Family = "DejaVu Sans Condensed";
    static constexpr const char* Missing = "QUORIN_TEST_WITHOUT_NARROW_FONT";

    static std::int32_t Width(const char16_t* font, std::int32_t size) {
        QtFonts fonts;
        return fonts.MeasureLine(fonts.GetFont(font, size, 0), SomeWords, 0, 100).Width;
    }
};

TEST_F(NarrowLetters, TakeLessRoomThanTheOthers) {
    EXPECT_NE(QFontDatabase::hasFamily(QLatin1String(Family)), qEnvironmentVariableIsSet(Missing));
    EXPECT_LT(Width(u"AFPalm", 9), Width(u"Nokia Sans S60", 9));
    EXPECT_LT(Width(u"AFPalmHR", 9) * 100, Width(u"Nokia Sans S60", 18) * 95);
}

/// The same on a machine without their font: starts this program again so that it does not find the font.
TEST_F(NarrowLetters, AreThereAlsoWhereTheirFontIsNot) {
    support::TemporaryFolder folder;
    folder.Put("fonts.conf", std::string("<fontconfig><include>/etc/fonts/fonts.conf</include><selectfont><rejectfont>"
                                         "<pattern><patelt name=\"family\"><string>") +
                                 Family + "</string></patelt></pattern></rejectfont></selectfont></fontconfig>");
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("FONTCONFIG_FILE"),
                       QString::fromStdString((folder.Path() / "fonts.conf").string()));
    environment.insert(QLatin1String(Missing), QStringLiteral("1"));
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=NarrowLetters.Take*:*FontOfADevice.*")});
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardOutput().toStdString();
}

TEST(FontsOfTheWindow, AreTheSameFontUnderTheSameHandle) {
    QtFonts fonts;
    const auto font = fonts.GetFont(u"Tahoma", 9, 0);
    EXPECT_EQ(fonts.GetFont(u"Tahoma", 9, 0), font);
    EXPECT_NE(fonts.GetFont(u"Tahoma", 10, 0), font);
    EXPECT_NE(fonts.GetFont(u"AFPalm", 9, 0), font);
}

TEST(FontsOfTheWindow, AreListedOnceEach) {
    QtFonts fonts;
    std::set<Text> names;
    for (Text name = fonts.FirstFontName(); !name.empty(); name = fonts.NextFontName())
        EXPECT_TRUE(names.insert(name).second) << modStringTools::ToBytes(name);
    EXPECT_FALSE(names.empty());
}

// What is drawn.

class DrawnText : public InAWindow {
protected:
    DrawnText() : InAWindow(OfType(0), {.RealFonts = true}) {}

    /// Returns the number of lines of text in a box of a picture: the groups of pixel rows that contain something dark.
    static int LinesIn(const QImage& picture, const QRect& box) {
        int lines = 0;
        bool wasInk = false;
        for (int y = box.top() + 1; y < box.bottom(); ++y) {
            bool ink = false;
            for (int x = box.left() + 2; x < box.right() - 2; ++x)
                ink = ink || picture.pixelColor(x, y).lightness() < 110;
            lines += ink && !wasInk ? 1 : 0;
            wasInk = ink;
        }
        return lines;
    }
};

TEST_F(DrawnText, HasAsManyLinesAsWereMeasured) {
    // No letter has a separate part below or above, so that each line is one group of pixel rows.
    const std::string words = "nuxo mruw saxo nemo runa womo saru xeno mora suno";
    OpenRecord("Place|Moisture|Remark\na|" + words + " " + words + " " + words + "|c\n");
    auto& fonts = Device.Platform.fonts;
    const auto font = fonts.GetFont(Main().FontName(), Main().FontSize(), 0);
    const platform::TextSize size = fonts.MeasureWrapped(font, Cell(1, 1), Main().ColWidth(1));
    const int lines = size.Height / fonts.FontHeight(font);
    ASSERT_GE(lines, 2);
    EXPECT_EQ(Main().RowHeight(1), size.Height + 4);
    EXPECT_EQ(LinesIn(Grid().grab().toImage(), Grid().CellRect(1, 1)), lines);
}

TEST_F(DrawnText, OfALineStandsInItsRow) {
    OpenRecord();
    const QImage picture = Grid().grab().toImage();
    EXPECT_EQ(LinesIn(picture, Grid().CellRect(0, 1)), 1);
    EXPECT_EQ(LinesIn(picture, Grid().CellRect(1, 1)), 1);
}

TEST_F(MeasuredText, IsShapedOnceHoweverOftenALongOneIsAskedFor) {
    Text text;
    for (int i = 0; i < 2000; ++i)
        text += SomeWords;
    const std::size_t before = backends::qt::LongTextsShaped();
    const platform::TextSize size = Fonts.MeasureWrapped(Font, text, 200);
    EXPECT_EQ(Fonts.MeasureWrapped(Font, text, 200).Height, size.Height);
    EXPECT_EQ(LinesOf(FontOf(u"Tahoma", 9), text, 200).size(), size.Height / Fonts.FontHeight(Font));
    EXPECT_EQ(backends::qt::LongTextsShaped(), before + 1);
    EXPECT_LE(Fonts.MeasureWrapped(Font, text, 400).Height, size.Height) << "another width is another shape";
    EXPECT_EQ(backends::qt::LongTextsShaped(), before + 2);
    text.back() = u'!';
    Fonts.MeasureWrapped(Font, text, 200);
    EXPECT_EQ(backends::qt::LongTextsShaped(), before + 3);
}

class LongTextOnThePage : public InAWindow {
protected:
    LongTextOnThePage() : InAWindow(OfType(0), {true, 1}) {}
};

TEST_F(LongTextOnThePage, IsNotShapedAnewAtEachPaint) {
    ShowRows(3);
    Text text;
    while (text.size() < 200000)
        text += SomeWords;
    Main().SetCell(1, 0, text);
    Settle();
    Grid().grab();
    const std::size_t shaped = backends::qt::LongTextsShaped();
    EXPECT_GT(shaped, 0U);
    for (int i = 0; i < 5; ++i) {
        Main().SetRow(i % 2);
        Settle();
        Grid().grab();
    }
    EXPECT_EQ(backends::qt::LongTextsShaped(), shaped);
}

} // namespace
} // namespace windowtest
