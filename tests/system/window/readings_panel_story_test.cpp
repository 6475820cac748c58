// SPDX-License-Identifier: MIT
// A reading that was refused is seen in the panel of readings, and taken once the right record is open.
#include "tests/support/running_instrument.h"
#include "tests/system/window/running_window.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace live {
namespace {

constexpr QRgb TitleBlue = 0x0000FF;
constexpr QRgb FrameGreen = 0x00FF00;
constexpr QRgb RefusedOrange = 0xB34700; // the line of the link
constexpr QRgb SoilRow = 0xFFE0C0;
constexpr QRgb WallRow = 0xC0E0FF;

std::string Driver(const std::string& row, QRgb colour) {
    return "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n" + row +
           std::to_string(qBlue(colour) << 16 | qGreen(colour) << 8 | qRed(colour)) + "|||\n";
}

class PanelOnADesktop : public testing::Test {
protected:
    PanelOnADesktop() {
        Home.Put("root/Quorin/drivers.txt", "NAME|INFFILE\nSoil Meter|soil.txt\nWall Meter|wall.txt\n");
        Home.Put("root/Quorin/soil.txt", Driver("Salinity|1||Salinity|", SoilRow));
        Home.Put("root/Quorin/wall.txt", Driver("Moisture|1||Moisture|", WallRow));
        Home.Put("root/Quorin/qrnctrl.txt",
                 "DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\nWall Meter|qrn0002.txt|20070301|\n");
        Home.Put("root/Quorin/qrn0001.txt", "Salinity\n\n");
        Home.Put("root/Quorin/qrn0002.txt", "Moisture\n\n");
        Home.Put("root/settings.ini", "[Settings]\nComPort=Com1\n");
        Home.Put("records", "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n"
                            "[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n"
                            "[/BLob]\r\n");
        Window.emplace(&Screen, Home,
                       std::vector<std::string>{"--root", Home.Path("root"), "--port", "1=" + Home.Path("line")});
    }
    void TearDown() override {
        if (HasFailure())
            Keep("failed");
    }
    void Keep(const std::string& name) {
        if (const char* const folder = std::getenv("QUORIN_PICTURES"))
            Screen.Picture().save(QString::fromStdString(folder + ("/" + name + ".png")));
    }

    bool IsSeen(QRgb colour) { return !BoxOf(Screen.Picture(), colour).isEmpty(); }
    Effect AnotherScreen() { return Screen.Change(Window->Find(TitleBlue)); }
    /// Opens the first record of the only download of a driver, from the list of the drivers.
    void OpenRecordOf(int driver, QRgb row) {
        const QRect marked = Window->Find(FrameGreen);
        EXPECT_TRUE(
            Screen.Click([&] { return marked.center() + QPoint(0, (driver - 1) * marked.height()); }, AnotherScreen()));
        Window->Choose("F1", "o", [&] { return IsSeen(row); });
    }
    QRect ValueBeside(QRgb colour) {
        const QRect row = Window->Find(colour);
        const QRect line = Window->Find(TitleBlue);
        return {line.center().x() + 4, row.top(), line.width() / 2 - 8, row.height()};
    }
    bool PanelOpens() {
        return Screen.Press("F4", [this] { return Window->IsAsking(); });
    }
    bool PanelCloses() {
        return Screen.Press("Escape", [this] { return !Window->IsMenuOrBoxOpen(); });
    }

    Folder Home;
    Desktop Screen;
    std::optional<RunningWindow> Window;
};

TEST_F(PanelOnADesktop, GivesARefusedReadingToTheRightRecord) {
    // Before the record is opened: a link that is down would be orange, too.
    const instrument::RunningInstrument instrument({"--link", Home.Path("line"), "--fast", Home.Path("records")});
    Window->Choose("F1", "s", [&] { return IsSeen(FrameGreen); });
    OpenRecordOf(1, SoilRow);
    ASSERT_TRUE(Eventually([&] { return IsSeen(RefusedOrange); }));
    ASSERT_TRUE(PanelOpens());
    EXPECT_TRUE(Eventually([&] { return Screen.IsAtRest(); }));
    Keep("readings-refused");
    ASSERT_TRUE(PanelCloses());

    Window->Choose("F1", "c", AnotherScreen());
    Window->Run("F2", [&] { return IsSeen(FrameGreen); });
    OpenRecordOf(2, WallRow);
    ASSERT_TRUE(PanelOpens());
    ASSERT_TRUE(Eventually([&] { return Screen.IsAtRest(); }));
    const Effect taken = Screen.Change(ValueBeside(WallRow));
    EXPECT_TRUE(Screen.Press("alt+t", Screen.Change(Screen.Picture().rect())));
    EXPECT_TRUE(Eventually(taken));
    EXPECT_TRUE(Eventually([&] { return Screen.IsAtRest(); }));
    Keep("readings-taken");
    ASSERT_TRUE(PanelCloses());
    Window->Choose("F1", "c", AnotherScreen());
    EXPECT_EQ(Home.Bytes("root/Quorin/qrn0001.txt"), "Salinity\n\n");
    EXPECT_EQ(Home.Bytes("root/Quorin/qrn0002.txt"), "Moisture\n23.4 %\n");
    Window->Process().Signal(SIGTERM);
    EXPECT_EQ(Window->Process().ExitStatus(), 0);
}

} // namespace
} // namespace live
