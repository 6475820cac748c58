// SPDX-License-Identifier: MIT
// What a person sees of the two grids once a screen has been filled and its events were handled.
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "tests/support/program.h"

namespace backends::headless {
namespace {

using modQuorin::MenuEvent;

constexpr std::int32_t White = 0xFFFFFF;
constexpr std::int32_t Black = 0;
constexpr std::int32_t Grey = 0xD0D0D0;
constexpr std::int32_t Green = 0x00FF00;
constexpr std::int32_t Blue = 0xFF0000;

CellPicture Line(std::int32_t x, std::int32_t y, const Text& text) {
    return {White, std::nullopt, {{x, y, 0, 0, AlignX::Start, AlignY::Top, Black, text}}};
}

CellPicture Selected(CellPicture picture) {
    picture.Background = Grey;
    picture.Frame = Green;
    return picture;
}

CellPicture On(std::int32_t background, CellPicture picture) {
    picture.Background = background;
    return picture;
}

CellPicture Titled(CellPicture picture) {
    picture.Background = Blue;
    picture.Texts[0].Colour = White;
    return picture;
}

class GridPictures : public support::Program {
protected:
    const CellPicture* Main(std::int32_t row, std::int32_t col = 0) {
        return Device.Platform.grdMain.Picture(row, col);
    }
    const CellPicture* Title(std::int32_t row, std::int32_t col = 0) {
        return Device.Platform.grdTitle.Picture(row, col);
    }
    static void ExpectSeen(const CellPicture* picture, const CellPicture& expected) {
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(picture->Background, expected.Background);
        EXPECT_EQ(picture->Frame, expected.Frame);
        ASSERT_EQ(picture->Texts.size(), expected.Texts.size());
        for (std::size_t i = 0; i < expected.Texts.size(); ++i) {
            EXPECT_EQ(picture->Texts[i].Words, expected.Texts[i].Words);
            EXPECT_TRUE(picture->Texts[i] == expected.Texts[i])
                << "text " << i << " at " << picture->Texts[i].X << "," << picture->Texts[i].Y << ", colour "
                << picture->Texts[i].Colour;
        }
    }
    /// Opens a record whose fields are red, white, of the form's colours, hidden and white.
    void OpenColouredRecord(const std::string& row = "a|b|c|d|e") {
        InstallMeter("Red|1|||255|||\nWhite|1||||||\nForm|1|||0|||\nHidden|0|||255|||\nLast|1||||||\n");
        OpenDownload("Red|White|Form|Hidden|Last\n" + row + "\n");
        Settle();
    }
};

TEST_F(GridPictures, OfTheStartScreenAreNameAndVersion) {
    ExpectSeen(Main(0), {White,
                         std::nullopt,
                         {{0, 0, 638, 478, AlignX::Centre, AlignY::Middle, Black, u"Velmor \r\nTallybook"},
                          {0, 0, 638, 478, AlignX::Centre, AlignY::Foot, Black, u"V 0.27"}}});
    EXPECT_EQ(Title(0), nullptr);
}

TEST_F(GridPictures, OfAListHaveItsCurrentRowInGreyWithAGreenFrame) {
    MenuEvent(u"Preferences...");
    Settle();
    ExpectSeen(Title(0), Titled(Line(1, 1, u"Preferences")));
    ExpectSeen(Main(0), Selected(Line(1, 1, u"Zoom")));
    ExpectSeen(Main(1), Line(1, 18, u"Select Storage Volume..."));
    ExpectSeen(Main(5), Line(1, 86, u"Debug"));
    EXPECT_EQ(Main(6), nullptr);
}

TEST_F(GridPictures, FollowTheSelection) {
    MenuEvent(u"Preferences...");
    Settle();
    Device.Main().SetRow(3);
    Settle();
    ExpectSeen(Main(0), Line(1, 1, u"Zoom"));
    ExpectSeen(Main(3), Selected(Line(1, 52, u"Toggle Colour: On")));
}

TEST_F(GridPictures, FollowATextOnceEventsAreHandled) {
    MenuEvent(u"Preferences...");
    Settle();
    Device.Main().SetCell(1, 0, u"new");
    ExpectSeen(Main(1), Line(1, 18, u"Select Storage Volume..."));
    Settle();
    ExpectSeen(Main(1), Line(1, 18, u"new"));
}

TEST_F(GridPictures, AreThoseOfThePageAlone) {
    MenuEvent(u"Preferences...");
    Device.Main().SetRows(100);
    Device.Main().SetTopRow(50);
    Settle();
    EXPECT_EQ(Main(49), nullptr);
    ExpectSeen(Main(50), Line(1, 1, u""));
    EXPECT_NE(Main(77), nullptr) << "464 pixels hold 27 rows of 17 and a part of one more";
    EXPECT_EQ(Main(78), nullptr);
}

TEST_F(GridPictures, OfTheLastScreenAreGone) {
    MenuEvent(u"Preferences...");
    Settle();
    MenuEvent(u"Back");
    Settle();
    EXPECT_EQ(Main(1), nullptr);
    EXPECT_EQ(Main(0)->Texts.size(), 2U);
}

TEST_F(GridPictures, OfATableMarkTheCurrentCellAlone) {
    OpenColouredRecord();
    ExpectSeen(Main(1, 0), Line(1, 18, u"White"));
    Device.Main().SetRow(1);
    Device.Main().SetCol(0);
    Settle();
    ExpectSeen(Main(1, 0), Selected(Line(1, 18, u"White")));
    ExpectSeen(Main(1, 1), Line(320, 18, u"b"));
}

TEST_F(GridPictures, OfARecordHaveTheColoursOfItsFields) {
    OpenColouredRecord();
    ExpectSeen(Main(0, 0), On(0x0000FF, Line(1, 1, u"Red")));
    ExpectSeen(Main(0, 1), Selected(Line(320, 1, u"a")));
    ExpectSeen(Main(1, 1), Line(320, 18, u"b"));
    ExpectSeen(Main(2, 1), Line(320, 35, u"c"));
    EXPECT_EQ(Main(3, 0), nullptr);
    EXPECT_EQ(Main(3, 1), nullptr);
    ExpectSeen(Main(4, 1), Line(320, 52, u"e"));
}

TEST_F(GridPictures, OfARecordWithoutColourHaveTheFormsAndNoHiddenField) {
    MenuEvent(u"Preferences...");
    MenuEvent(u"Toggle Colour: On");
    MenuEvent(u"Back");
    OpenColouredRecord();
    ExpectSeen(Main(0, 0), Line(1, 1, u"Red"));
    ExpectSeen(Main(0, 1), Selected(Line(320, 1, u"a")));
    EXPECT_EQ(Main(3, 1), nullptr);
    ExpectSeen(Main(4, 1), Line(320, 52, u"e"));
}

TEST_F(GridPictures, OfALongTextAreABoxInARowThatHasGrown) {
    const std::string words(60, 'x'); // 319 pixels hold 53 characters
    OpenColouredRecord("a|" + words + "|c|d|e");
    ExpectSeen(Main(1, 1), {White,
                            std::nullopt,
                            {{320, 18, 319, 34, AlignX::Start, AlignY::Top, Black, modStringTools::FromBytes(words)}}});
    ExpectSeen(Main(2, 1), Line(320, 52, u"c"));
}

TEST_F(GridPictures, OfTheTitleAreWhiteOnBlueInBothColumns) {
    OpenColouredRecord();
    ExpectSeen(Title(0, 0), Titled(Line(1, 1, TitleCell(0))));
    ExpectSeen(Title(0, 1), Titled(Line(320, 1, TitleCell(1))));
    EXPECT_EQ(TitleCell(1), u"1/1");
}

TEST_F(GridPictures, AreNoneWhileTheGridIsLocked) {
    MenuEvent(u"Test List");
    Settle();
    ASSERT_TRUE(modPDAUI::Grids.GridLocked);
    for (std::int32_t row = 0; row < 10; ++row)
        EXPECT_EQ(Main(row), nullptr) << row;
    ExpectSeen(Title(0), Titled(Line(1, 1, u"Dummy Test List")));
    Repaint();
    ExpectSeen(Main(0), Selected(Line(1, 1, u"This is list item number 1 and is long")));
    ExpectSeen(Main(9), Line(1, 154, u"This is list item number 10 and is long"));
}

TEST_F(GridPictures, AreNotTakenWhileTheGridIsHidden) {
    MenuEvent(u"Preferences...");
    Settle();
    Device.Main().SetVisible(false);
    Device.Main().SetCell(0, 0, u"unseen");
    Device.Main().SetRow(2);
    Settle();
    ExpectSeen(Main(0), Selected(Line(1, 1, u"Zoom")));
    Device.Main().SetVisible(true);
    Settle();
    ExpectSeen(Main(0), Line(1, 1, u"unseen"));
    ExpectSeen(Main(2), Selected(Line(1, 35, u"Bluetooth Serial Setup...")));
}

/// A row that grows beyond the page causes a scroll bar. The title's columns get their new widths at once.
TEST_F(GridPictures, OfTheTitleFollowTheColumnsOfTheGrid) {
    std::string rows;
    std::string header;
    for (int i = 1; i <= 27; ++i) {
        rows += "F" + std::to_string(i) + "|1||||||\n";
        header += (i > 1 ? "|F" : "F") + std::to_string(i);
    }
    InstallMeter(rows);
    OpenDownload(header + "\n" + std::string(26, '|') + "\n");
    Repaint();
    ASSERT_EQ(Device.Main().ColWidth(0), 319);
    ASSERT_EQ(Device.Title().ColWidth(0), 319);
    Device.Main().SetCell(0, 1, Text(120, u'x')); // three lines, which the page has no space for
    Settle();
    EXPECT_EQ(Device.Main().ColWidth(0), 319 - 13);
    EXPECT_EQ(Device.Title().ColWidth(0), 319 - 13);
    EXPECT_EQ(Device.Title().ColWidth(1), 640 - (319 - 13));
}

} // namespace
} // namespace backends::headless
