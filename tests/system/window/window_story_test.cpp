// SPDX-License-Identifier: MIT
// What a technician does with the real window, by mouse and keyboard, and what is on disk afterwards.
#include "tests/support/running_instrument.h"
#include "tests/system/window/running_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace live {

static void PrintTo(Desktop::Hand hand, std::ostream* out) {
    *out << (hand == Desktop::Hand::Sure ? "sure" : "misses");
}

namespace {

using instrument::RunningInstrument;

constexpr QRgb TitleBlue = 0x0000FF;
constexpr QRgb White = 0xFFFFFF;
constexpr QRgb FrameGreen = 0x00FF00;

/// The fields of the driver. Each has its own colour, by which it is found on the screen.
struct FieldRow {
    const char* Name;
    QRgb Colour;
};
const FieldRow Fields[] = {{"Moisture", 0xFFE0C0}, {"Temperature", 0xE0FFC0}, {"Place", 0xC0E0FF},
                           {"Remark", 0xFFC0E0},   {"Checked", 0xE0C0FF},     {"Started", 0xC0FFE0}};
enum { Moisture, Temperature, Place, Remark, Checked, Started };

/// Returns a colour as in a driver's table: 0xBBGGRR as a decimal number.
std::string DisplayOf(QRgb colour) {
    return std::to_string(qBlue(colour) << 16 | qGreen(colour) << 8 | qRed(colour));
}

std::string DriverTable() {
    const char* const rest[] = {"1||Moisture|", "1||Temperature|", "1|1|dv: Site|", "1|||", "1|||", "1|||"};
    const char* const ends[] = {"||", "||", "||", "||", "|DATE|", "|DATE|startdate"};
    std::string table = "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n";
    for (int i = Moisture; i <= Started; ++i)
        table += std::string(Fields[i].Name) + "|" + rest[i] + DisplayOf(Fields[i].Colour) + "|" + ends[i] + "\n";
    return table;
}

std::string Introduction() {
    return "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n";
}

std::string Result(const std::string& type, const std::string& value, const std::string& unit) {
    return "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n[RESULT_TYPE \"" + type +
           "\"]\r\n[RESULT_VALUE \"" + value + "\"]\r\n[RESULT_UNIT \"" + unit + "\"]\r\n[/BLob]\r\n";
}

std::string DateText(std::tm day) {
    std::mktime(&day);
    char text[16];
    std::strftime(text, sizeof text, "%d/%m/%Y", &day);
    return text;
}

std::tm Today() {
    const std::time_t now = std::time(nullptr);
    std::tm day{};
    ::localtime_r(&now, &day);
    day.tm_hour = 12; // at noon, so that a change to or from summer time does not change the day
    return day;
}

class WindowStory : public testing::TestWithParam<Desktop::Hand> {
protected:
    WindowStory() {
        Home.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nSoil Meter|soil.txt\nWall Meter|wall.txt\n");
        Home.Put("root/Quorin/soil.txt",
                 "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\n");
        Home.Put("root/Quorin/wall.txt", DriverTable());
        Home.Put("root/Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\n");
        Home.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
        Window.emplace(&Screen, Home,
                       std::vector<std::string>{"--root", Home.Path("root"), "--port", "1=" + Home.Path("line")});
    }

    void TearDown() override {
        if (HasFailure() && std::getenv("QUORIN_PICTURES") != nullptr)
            Screen.Picture().save(QString::fromUtf8(std::getenv("QUORIN_PICTURES")) + "/failed.png");
    }
    std::string File(const std::string& name) { return Home.Bytes("root/Quorin/" + name); }

    /// Starts an instrument at the other end of the line, which sends these records. The one before it is ended.
    void Send(const std::string& records) {
        Home.Put("records", Introduction() + records);
        Instrument.emplace(std::vector<std::string>{"--link", Home.Path("line"), "--fast", Home.Path("records")});
    }

    /// Returns the place of the headline, which identifies the screen. It is painted when the whole screen is complete.
    QRect Headline() { return Window->Find(TitleBlue); }
    /// Returns the effect that another screen has appeared.
    Effect AnotherScreen() { return Screen.Change(Headline()); }

    /// Returns the place of a field's value. The name beside it has the row's colour, marked or not.
    QRect Cell(int field) {
        const QRect row = Window->Find(Fields[field].Colour);
        const QRect line = Headline();
        return {line.center().x() + 4, row.top() + 2, line.width() / 2 - 32, row.height() - 4};
    }
    QPoint NameOf(int field) { return Cell(field).translated(-Headline().width() / 2, 0).center(); }
    bool IsEmpty(int field) {
        const QRect cell = Cell(field);
        return Ink(Screen.Picture(), cell) == 0;
    }
    bool Fills(int field) {
        return Eventually([&] { return !IsEmpty(field); });
    }
    /// Returns true if the cell is being edited: the text field is white.
    bool IsEdited(int field) {
        const QRect cell = Cell(field);
        return !BoxOf(Screen.Picture().copy(cell), White).isEmpty();
    }

    /// Returns the place of the day that is selected in the calendar. The head of the calendar, above the names of the
    /// days, has the same colour.
    QRect MarkedDay() {
        constexpr QRgb Marked = 0x1A5FB4;
        constexpr int Days = 420; // pixels; below is a link of that colour
        const int top = Headline().bottom() + 40;
        QRect day;
        EXPECT_TRUE(Eventually([&] {
            const QImage picture = Screen.Picture();
            const QRect before = day;
            day = BoxOf(picture.copy(0, top, picture.width(), Days), Marked, 16).translated(0, top);
            return day == before && day.height() > 20;
        }));
        return day;
    }

    Folder Home;
    Desktop Screen{GetParam()};
    std::optional<RunningWindow> Window;
    std::optional<RunningInstrument> Instrument;
};

TEST_P(WindowStory, OfATechnicianEndsInTheRecordsOnDisk) {
    if (GetParam() == Desktop::Hand::Misses && std::getenv("QUORIN_FEWER") != nullptr)
        GTEST_SKIP() << "it takes its time";
    const std::tm start = Today();
    // Start, and the second of two drivers by a click on it.
    Window->Choose("F1", "s", [&] { return !BoxOf(Screen.Picture(), FrameGreen).isEmpty(); });
    const QRect marked = Window->Find(FrameGreen);
    EXPECT_TRUE(Screen.Click([&] { return marked.center() + QPoint(0, marked.height()); }, AnotherScreen()));
    Window->Choose("F1", "n",
                   [&] { return File("qrnctrl.txt").find("\nWall Meter|qrn0001.txt|") != std::string::npos; });
    Window->Choose("F1", "o", [&] { return !BoxOf(Screen.Picture(), Fields[Started].Colour).isEmpty(); });
    for (int field = Moisture; field <= Started; ++field)
        ASSERT_FALSE(Cell(field).isEmpty());

    // Two readings fill their fields, and also the date and the place.
    Send(Result("Temperature", "19.5", "C") + Result("Moisture", "23.4", "%"));
    EXPECT_TRUE(Fills(Moisture));
    for (const int field : {Temperature, Place, Started})
        EXPECT_FALSE(IsEmpty(field)) << Fields[field].Name;
    EXPECT_TRUE(IsEmpty(Remark));

    // A remark is typed over its cell.
    EXPECT_TRUE(Screen.Click([&] { return Cell(Remark).center(); }, [&] { return IsEdited(Remark); }));
    EXPECT_TRUE(Screen.Type("damp", [&] { return Cell(Remark); }));
    EXPECT_TRUE(Screen.Click([&] { return NameOf(Place); }, [&] { return !IsEdited(Remark); }));

    // Another reading for the same field is answered No, the next one Yes.
    QImage before = Screen.Picture();
    Send(Result("Moisture", "88.8", "%"));
    ASSERT_TRUE(Window->Asks());
    Window->Answer("Return");
    EXPECT_EQ(Screen.Picture().copy(Cell(Moisture)), before.copy(Cell(Moisture)));
    Send(Result("Moisture", "24.1", "%"));
    ASSERT_TRUE(Window->Asks());
    Window->Answer("alt+y");
    EXPECT_TRUE(Window->Changes(Cell(Moisture), before));

    // The next record keeps the place.
    Window->Choose("F2", "n", [&] { return IsEmpty(Moisture); });
    EXPECT_FALSE(IsEmpty(Place));
    Send(Result("Temperature", "20.0", "C"));
    EXPECT_TRUE(Fills(Temperature));

    // A day of the same month, a week from today, which is the marked one.
    EXPECT_TRUE(Screen.Click([&] { return Cell(Checked).center(); }, AnotherScreen()));
    const QRect today = MarkedDay();
    std::tm chosen = Today();
    const int weeks = chosen.tm_mday > 15 ? -1 : 1;
    chosen.tm_mday += 7 * weeks;
    const QPoint chosenDay = today.center() + QPoint(0, weeks * today.height());
    EXPECT_TRUE(Screen.Click([&] { return chosenDay; }, AnotherScreen()));
    EXPECT_TRUE(Fills(Checked));

    // Leave by the menus, and by closing the window.
    Window->Choose("F1", "c", AnotherScreen());
    Window->Run("F2", AnotherScreen());
    Window->Run("F2", [&] { return BoxOf(Screen.Picture(), TitleBlue).isEmpty(); });
    EXPECT_TRUE(Screen.Press("alt+F4", [&] { return Window->Process().HasEnded(); }));
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
    EXPECT_EQ(Window->Process().Errors(), "");

    const auto written = [&](const std::tm& first, const std::tm& second) {
        return "Moisture|Temperature|Place|Remark|Checked|Started\n24.1 %|19.5 C|North wall|damp||" + DateText(first) +
               "\n|20.0 C|North wall||" + DateText(chosen) + "|" + DateText(second) + "\n";
    };
    const std::tm end = Today(); // midnight may have passed, before the first record or after it
    EXPECT_THAT(File("qrn0001.txt"), testing::AnyOf(written(start, start), written(start, end), written(end, end)));
}

INSTANTIATE_TEST_SUITE_P(Hands, WindowStory, testing::Values(Desktop::Hand::Sure, Desktop::Hand::Misses),
                         [](const auto& hand) {
                             return hand.param == Desktop::Hand::Sure ? "ThatIsSure" : "WhoseFirstTryMisses";
                         });

} // namespace
} // namespace live
