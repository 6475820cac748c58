// SPDX-License-Identifier: MIT
// What a page shows once events have been handled: no row takes more space than it needs, and no part of the page is
// empty while there are rows above it.
#include "src/blob/capture.h"
#include "src/blob/decoding.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "tests/support/program.h"

#include <random>

namespace modPDAUI {
namespace {

using namespace modQuorin;

/// A device of 240 by 320 pixels: a page of a record has 304, a row 17, each column 119.
class FullPage : public support::Program {
protected:
    FullPage() {
        Device.Platform.system.SetScreen({240, 320});
        frmQuorin::mykb_statechanged(0, 0, 0, 0, 0);
    }

    /// Shows a record of so many fields. Each is filled by a type with the field's own name.
    void OpenFields(std::int32_t count) {
        std::string inf;
        std::string header;
        std::string row;
        for (std::int32_t field = 0; field < count; ++field) {
            const std::string name = "f" + std::to_string(field);
            inf += name + "|1||" + name + "||||\n";
            header += (field > 0 ? "|" : "") + name;
            row += field > 0 ? "|" : "";
        }
        InstallMeter(inf);
        OpenDownload(header + "\n" + row + "\n");
        Repaint();
    }
    void Capture(const Text& type, const Text& value) {
        modBLob::Decoder.ResultTypes = {type};
        modBLob::Decoder.ResultVars = {u"a=1", u"b=2"};
        modBLob::Decoder.ResultValue = value;
        modBLob::Decoder.ResultUnit = u"ms";
        modBLob::CaptureResult();
        Settle();
    }
    backends::headless::HeadlessGrid& Grid() { return Device.Platform.grdMain; }
    /// Returns how many cells are painted in ten seconds in which nothing happens.
    int PaintingsAtRest() {
        static int count = 0;
        count = 0;
        const auto draw = Grid().DrawCell;
        Grid().DrawCell = [](platform::CellCanvas&, const platform::PaintedCell&) { ++count; };
        Device.Tick(10000);
        Grid().DrawCell = draw;
        return count;
    }
};

TEST_F(FullPage, IsNotLeftByAReadingWhereTheWholeRecordHasRoom) {
    OpenFields(10);
    Capture(u"f8", u"1");
    EXPECT_EQ(Grid().Row(), 8);
    EXPECT_EQ(Grid().TopRow(), 0);
    EXPECT_EQ(Grid().ColWidth(0), 119);
}

TEST_F(FullPage, IsTheLastOneWhereAReadingHasMovedItBehindThat) {
    OpenFields(40);
    Capture(u"f5", u"1");
    EXPECT_EQ(Grid().TopRow(), 5) << "a whole page of rows stands behind it";
    Capture(u"f38", u"1");
    EXPECT_EQ(Grid().TopRow(), Grid().LastTop());
    EXPECT_TRUE(Grid().RowOnScreen(39));
    EXPECT_TRUE(Grid().RowOnScreen(38));
}

TEST_F(FullPage, KeepsTheRowOfAReadingThatGrowsOverSeveralLines) {
    OpenFields(40);
    Capture(u"f39", Text(200, u'x'));
    EXPECT_EQ(Grid().Row(), 39);
    EXPECT_GT(Grid().RowHeight(39), 100);
    EXPECT_TRUE(Grid().RowOnScreen(39));
    EXPECT_GT(Grid().TopRow(), 20);
    EXPECT_EQ(PaintingsAtRest(), 0);
}

TEST_F(FullPage, ShowsTheLastLinesOfTheLinkTrace) {
    modQuorin::MenuEvent(u"Bluetooth Debug...");
    Repaint();
    for (int result = 0; result < 10; ++result)
        Capture(u"type " + Text(60, u'x'), u"1");
    const std::int32_t last = Grid().Rows() - 1;
    EXPECT_EQ(Cell(last), u"---");
    EXPECT_TRUE(Grid().RowOnScreen(last));
    EXPECT_TRUE(Grid().RowOnScreen(last - 5));
    EXPECT_EQ(Grid().TopRow(), Grid().LastTop());
}

TEST_F(FullPage, StaysWhereAFieldIsOpenUntilThatCloses) {
    OpenFields(10);
    Tap(8, 1);
    frmQuorin::mykb_statechanged(-1, 0, 240, 240, 80);
    Settle();
    EXPECT_EQ(Grid().TopRow(), 8);
    frmQuorin::mykb_statechanged(0, 0, 0, 0, 0);
    Settle();
    EXPECT_EQ(Grid().TopRow(), 8);
    Grid().SetFocus();
    Settle();
    EXPECT_EQ(Grid().TopRow(), 0);
}

TEST_F(FullPage, StaysUnderAHandUntilThatIsLifted) {
    OpenFields(10);
    Device.Hand.PressCell(3, 0);
    Grid().SetTopRow(3);
    Settle();
    EXPECT_EQ(Grid().TopRow(), 3);
    Device.Hand.ReleaseCell();
    Settle();
    EXPECT_EQ(Grid().TopRow(), 0);
}

TEST_F(FullPage, MovesOnceARound) {
    OpenFields(40);
    Grid().SetTopRow(39);
    Grid().RaiseWhatIsPending();
    EXPECT_EQ(Grid().TopRow(), Grid().LastTop());
}

/// If rows turn out to need less height, more of them fit; the next round fills the page.
TEST_F(FullPage, MovesOnceARoundAlsoWhereRowsAreFoundToBeLower) {
    GotoScreen(ScrTextFile);
    ShowList(std::vector<Text>(40, Text(60, u'x')));
    for (std::int32_t row = 0; row < 40; ++row)
        Grid().SetRowHeight(row, 100);
    Grid().SetTopRow(39);
    const std::int32_t first = Grid().LastTop();
    Grid().RaiseWhatIsPending();
    EXPECT_EQ(Grid().TopRow(), first);
    EXPECT_LT(Grid().LastTop(), first);
    Settle();
    EXPECT_EQ(Grid().TopRow(), Grid().LastTop());
}

/// The name fits in its column, but not with a scroll bar beside it. A row that has wrapped for a scroll bar stays as
/// high.
TEST_F(FullPage, IsFilledBeforeAScrollBarTakesRoom) {
    const std::string name(19, 'x');
    InstallMeter("a|1||||||\nb|1||b||||\n" + name + "|1||||||\n");
    OpenDownload("a|b|" + name + "\n||\n");
    Repaint();
    ASSERT_EQ(Grid().RowHeight(2), 17);
    Capture(u"b", u"1");
    Repaint();
    EXPECT_EQ(Grid().RowHeight(2), 17);
}

/// The name fits in its column, but not with a scroll bar beside it. The record would need one if hidden fields
/// counted.
TEST_F(FullPage, MakesNoRoomForHiddenFieldsWhenARecordIsShown) {
    std::string inf = std::string(19, 'x') + "|1||||||\n";
    std::string header(19, 'x');
    for (int field = 1; field < 25; ++field) {
        const std::string name = "f" + std::to_string(field);
        inf += name + (field < 10 ? "|1||||||\n" : "|0||||||\n");
        header += "|" + name;
    }
    InstallMeter(inf);
    OpenDownload(header + "\n" + std::string(24, '|') + "\n" + std::string(24, '|') + "\n");
    for (const char* moment : {"at once", "after the refresh", "on the next record"}) {
        EXPECT_EQ(Grid().ColWidth(0), 119) << moment;
        EXPECT_EQ(Grid().RowHeight(0), 17) << moment;
        if (std::string(moment) == "after the refresh")
            modQuorin::MenuEvent(u"Next Record");
        Repaint();
    }
}

TEST_F(FullPage, IsAtRestWhereEveryRowWraps) {
    GotoScreen(ScrTextFile);
    ShowList(std::vector<Text>(200, Text(100, u'x')));
    Repaint();
    Grid().SetRow(199);
    Grid().SetTopRow(199);
    Settle();
    EXPECT_TRUE(Grid().RowOnScreen(199));
    EXPECT_LT(Grid().TopRow(), 199);
    EXPECT_EQ(PaintingsAtRest(), 0);
}

TEST_F(FullPage, LeavesTheSelectionWhereThePageHasBeenTurned) {
    OpenFields(40);
    Grid().SetTopRow(30);
    Settle();
    EXPECT_EQ(Grid().TopRow(), Grid().LastTop());
    EXPECT_EQ(Grid().Row(), 0);
}

// A press, and a box that opens during it.

TEST_F(FullPage, PressIsWithdrawnByABoxThatComesUpUnderIt) {
    SaveSetting(u"ComPort", u"SERVER");
    OpenFields(3);
    Device.Hand.PressCell(1, 1);
    Device.Tick(500);
    ASSERT_EQ(Device.Did.Boxes.size(), 1U) << "no server runs";
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
    Device.Hand.ReleaseCell();
    EXPECT_FALSE(AnyInputFieldVisible());
    Tap(1, 1);
    EXPECT_TRUE(AnyInputFieldVisible());
}

// Generated records with hidden fields.

struct MadeUpField {
    Text Name, Value;
    bool Visible = true;
};

class HeightsOfARecord : public FullPage, public testing::WithParamInterface<unsigned> {
protected:
    using Made = std::vector<MadeUpField>;

    static Made MakeUp(unsigned seed) {
        std::mt19937 chance(seed);
        const auto below = [&chance](unsigned limit) { return chance() % limit; };
        Made fields(1 + below(30));
        for (std::size_t i = 0; i < fields.size(); ++i) {
            fields[i].Name = u"n" + modStringTools::NumberText(static_cast<std::int32_t>(i));
            fields[i].Visible = below(3) > 0;
            const bool longName = below(4) == 0;
            fields[i].Name += Text(longName ? below(30) : below(5), u'm');
            if (!longName)
                fields[i].Value = Text(below(40), u'v');
        }
        fields[below(static_cast<unsigned>(fields.size()))].Visible = true;
        return fields;
    }
    void Open(const Made& fields) {
        std::string inf;
        Text header;
        Text row;
        for (const MadeUpField& field : fields) {
            inf += modStringTools::ToBytes(field.Name) + (field.Visible ? "|1||||||\n" : "|0||||||\n");
            header += (header.empty() ? u"" : u"|") + field.Name;
            row += (&field == &fields.front() ? u"" : u"|") + field.Value;
        }
        InstallMeter(inf);
        OpenDownload(modStringTools::ToBytes(header) + "\n" + modStringTools::ToBytes(row) + "\n");
    }
    std::int32_t Wrapped(const Text& text, std::int32_t width) {
        auto& fonts = Device.Platform.fonts;
        const auto font = fonts.GetFont(Grid().FontName(), Grid().FontSize(), 0);
        const std::int32_t line = fonts.MeasureLine(font, text, 0, static_cast<std::int32_t>(text.size())).Height;
        const std::int32_t wrapped = fonts.MeasureWrapped(font, text, width).Height;
        return wrapped > line ? wrapped + 4 : 17;
    }
    /// Returns the heights that the fields need if column 0 has this width.
    std::vector<std::int32_t> Needed(const Made& fields, std::int32_t width) {
        std::vector<std::int32_t> heights;
        for (const MadeUpField& field : fields)
            heights.push_back(field.Visible ? std::max(Wrapped(field.Name, width), Wrapped(field.Value, 119)) : 0);
        return heights;
    }
    static std::int32_t Sum(const std::vector<std::int32_t>& heights) {
        std::int32_t sum = 0;
        for (const std::int32_t height : heights)
            sum += height;
        return sum;
    }
    std::vector<std::int32_t> Heights() {
        std::vector<std::int32_t> heights;
        for (std::int32_t row = 0; row < Grid().Rows(); ++row)
            heights.push_back(Grid().RowHeight(row));
        return heights;
    }
};

TEST_P(HeightsOfARecord, AreThoseThatItsFieldsNeed) {
    const Made fields = MakeUp(GetParam());
    Open(fields);
    const bool wide = Sum(Needed(fields, 119)) <= 304;
    const std::int32_t width = wide ? 119 : 119 - 13;
    for (const char* moment : {"at once", "after the refresh", "after a relayout"}) {
        EXPECT_EQ(Grid().ColWidth(0), width) << moment;
        // Rows below the page are painted only by the refresh.
        if (wide || std::string(moment) != "at once") {
            EXPECT_EQ(Heights(), Needed(fields, width)) << moment;
        }
        EXPECT_EQ(Grid().TopRow(), 0) << moment;
        if (std::string(moment) == "at once")
            Repaint();
        else
            frmQuorin::mykb_statechanged(0, 0, 0, 0, 0);
        Settle();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HeightsOfARecord, testing::Range(1U, 201U));

} // namespace
} // namespace modPDAUI
