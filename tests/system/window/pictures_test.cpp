// SPDX-License-Identifier: MIT
// Pictures of the window as users see it, to be looked at and for the README. They are compared with those in pictures/
// by what a person would notice. UPDATE_GOLDEN=1 rewrites these instead; a person then looks at each that has changed.
#include "apps/demo/demo_data.h"
#include "companion/words.h"
#include "src/app/commands.h"
#include "src/link/receive.h"
#include "src/view/status_strip.h"
#include "tests/support/in_a_window.h"
#include "tests/system/window/picture_comparison.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QVersionNumber>

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace windowtest {
namespace {

constexpr const char* FontsName = "QUORIN_PICTURE_FONTS";
const char* ThisProgram = "";

const QColor TitleBlue(0, 0, 0xFF);
const QColor SelectedGrey(0xD0, 0xD0, 0xD0);
const QColor FrameGreen(0, 0xFF, 0);

QRect BoxOf(const QImage& picture, const QColor& colour) {
    QRect box;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) == colour)
                box |= QRect(x, y, 1, 1);
    return box;
}

/// Returns what an instrument sends for a result, with the place, the operator and the probe.
Text Result(const char16_t* probe, const char16_t* type, const char16_t* value, const char16_t* unit) {
    Text blob = u"[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Site=North wall\"]\r\n"
                u"[DESCRIPTIVE_VAR \"Operator=Cleo\"]\r\n[DESCRIPTIVE_VAR \"Probe=";
    blob += probe;
    blob += u"\"]\r\n[RESULT_TYPE \"";
    blob += type;
    blob += u"\"]\r\n[RESULT_VALUE \"";
    blob += value;
    blob += u"\"]\r\n[RESULT_UNIT \"";
    blob += unit;
    return blob + u"\"]\r\n[/BLob]\r\n";
}

class Pictures : public InAWindow {
protected:
    explicit Pictures(std::int32_t deviceType = 0, double scale = 1)
        : InAWindow(OfType(deviceType), Looks{true, scale, scale}) {}

    /// Shows the main screen with the sample driver installed.
    void InstallSample() {
        apps::PrepareDemo();
        Repaint();
    }
    void Choose(const char16_t* command) {
        modQuorin::MenuEvent(command);
        Repaint();
    }
    void OpenSample() {
        InstallSample();
        for (const char16_t* command : {u"Start...", u"Ok", u"New", u"Open"})
            Choose(command);
        companion::Notices notices;
        notices.Raise(companion::DataFolder(u"/home/cleo/.local/share/quorin"));
        Form().SetNotices(notices);
        Form().SetLinkLine({"● Humidity 62.2 %RH → Humidity, 20:30:12", companion::LineLook::Alive,
                            "● Humidity 62.2 %RH → Humidity, 20:30:12"});
    }
    /// Lets a result arrive as if the port had received it.
    void Receive(const Text& blob) {
        modBluetooth::Receive.ReadyText = u"[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n" + blob;
        modBluetooth::Receive.BlobEndSeen = true;
        Pass(1500);
        Settle();
    }
    void FillRecord() {
        Receive(Result(u"Air", u"Temperature", u"21.4", u"°C"));
        Receive(Result(u"Pin", u"Moisture", u"24.5", u"%"));
        Receive(Result(u"Air", u"Humidity", u"62.2", u"%RH"));
    }

    QImage Grab() { return Form().grab().toImage().convertToFormat(QImage::Format_RGB32); }
    /// Draws another window of the program over the picture of the form.
    static QImage With(QImage picture, QWidget& window, QPoint place) {
        QPainter painter(&picture);
        const QPixmap seen = window.grab();
        painter.drawPixmap(place, seen);
        painter.setPen(Qt::darkGray);
        painter.drawRect(QRect(place, seen.deviceIndependentSize().toSize()).adjusted(-1, -1, 0, 0));
        return picture;
    }
    void Keep(const QImage& picture, const char* name) {
        QDir().mkpath(QStringLiteral(QUORIN_PICTURES));
        ASSERT_TRUE(picture.save(QStringLiteral(QUORIN_PICTURES "/%1.png").arg(QLatin1String(name)), "PNG", 0));
        EXPECT_EQ(picture.size(), Form().size() * Form().devicePixelRatio());
        const QString stored = QStringLiteral(QUORIN_STORED_PICTURES "/%1.png").arg(QLatin1String(name));
        if (qEnvironmentVariableIsSet("UPDATE_GOLDEN")) {
            ASSERT_TRUE(picture.save(stored, "PNG", 0));
        }
        EXPECT_EQ(Difference(QImage(stored), picture), "")
            << QUORIN_PICTURES "/" << name << ".png is not what " << stored.toStdString() << " shows";
    }
    /// Expects a blue headline over the whole width of the form.
    static void ExpectTitle(const QImage& picture) {
        const QRect title = BoxOf(picture, TitleBlue);
        EXPECT_GE(title.width(), picture.width() - 4);
        EXPECT_GT(title.height(), 10);
    }
    /// Expects one cell that is grey in a green frame, with or without text.
    static void ExpectMarkedCell(const QImage& picture) {
        const QRect frame = BoxOf(picture, FrameGreen);
        EXPECT_GT(frame.height(), 10);
        EXPECT_LT(frame.height(), 60);
        const QImage cell = picture.copy(frame);
        int grey = 0;
        for (int y = 0; y < cell.height(); ++y)
            for (int x = 0; x < cell.width(); ++x)
                grey += cell.pixelColor(x, y) == SelectedGrey ? 1 : 0;
        EXPECT_GT(grey, cell.width() * cell.height() / 2);
    }
};

TEST_F(Pictures, OfTheMainScreen) {
    InstallSample();
    const QImage picture = Grab();
    Keep(picture, "main-screen");
    EXPECT_EQ(Form().FormWidget().size(), QSize(640, 480));
    EXPECT_TRUE(BoxOf(picture, TitleBlue).isEmpty()) << "there is no headline";
}

TEST_F(Pictures, OfTheDrivers) {
    InstallSample();
    Choose(u"Start...");
    const QImage picture = Grab();
    Keep(picture, "drivers");
    ExpectTitle(picture);
    ExpectMarkedCell(picture);
}

TEST_F(Pictures, OfARecordThatFills) {
    OpenSample();
    FillRecord();
    const QImage picture = Grab();
    Keep(picture, "record");
    ExpectTitle(picture);
    ExpectMarkedCell(picture);
    EXPECT_FALSE(BoxOf(picture, QColor(0xC0, 0xE0, 0xFF)).isEmpty()) << "the colour of a row";
}

TEST_F(Pictures, OfARefusedReading) {
    OpenSample();
    FillRecord();
    const std::string words = "○ refused: no row of Climate Meter asks for \"Bogus\"";
    Form().SetLinkLine({words + ", 3 s ago", companion::LineLook::Alarm, words});
    Keep(Grab(), "refused");
}

TEST_F(Pictures, OfTheQuestionBeforeAValueIsReplaced) {
    OpenSample();
    FillRecord();
    bool asked = false;
    Device.WillDo([&] {
        QMessageBox* const box = Device.Platform.boxes.Dialog();
        ASSERT_NE(box, nullptr);
        asked = true;
        const QPoint place((Form().width() - box->width()) / 2, (Form().height() - box->height()) / 2);
        const QImage picture = With(Grab(), *box, place);
        Keep(picture, "replace-question");
        ExpectTitle(picture);
        Device.Hand.PressBoxButton(platform::BoxAnswer::No);
    });
    Receive(Result(u"Pin", u"Moisture", u"24.9", u"%"));
    EXPECT_TRUE(asked);
}

TEST_F(Pictures, OfADateThatIsAskedFor) {
    OpenSample();
    Tap(8, 1); // the date of the first result
    Repaint();
    const QImage picture = Grab();
    Keep(picture, "date");
    ExpectTitle(picture);
    EXPECT_TRUE(Calendar().isVisible());
}

TEST_F(Pictures, OfAnEditInPlace) {
    OpenSample();
    FillRecord();
    Tap(7, 1); // the remark
    Type("damp corner");
    Settle();
    Keep(Grab(), "edit");
    ASSERT_TRUE(Field().Visible());
    const QRect cell(Grid().mapTo(&Form(), Grid().CellRect(7, 1).topLeft()), Grid().CellRect(7, 1).size());
    EXPECT_EQ(QRect(Line().mapTo(&Form(), QPoint()), Line().size()), cell.adjusted(0, 0, 1, 1));
}

TEST_F(Pictures, OfABusyProgram) {
    OpenSample();
    FillRecord();
    modPDAUI::ShowStatus(u"Busy");
    Form().SetWorking(true);
    const QImage picture = Grab();
    Keep(picture, "busy");
    EXPECT_GE(BoxOf(picture, QColor(0, 0, 0x80)).width(), picture.width() - 4);
    modPDAUI::HideStatus();
}

class PalmPictures : public Pictures {
protected:
    PalmPictures() : Pictures(1, 2) {}

    /// Returns true in the run with these fonts. The first run starts that one and waits for it.
    static bool RunsWithFonts(const char* fonts) {
        const bool runs = qEnvironmentVariableIsSet(FontsName);
        EXPECT_EQ(runs ? 0 : RunAgainWithFonts(fonts), 0);
        return runs;
    }

private:
    /// Runs this program again, because the fonts are read at its start.
    static int RunAgainWithFonts(const char* fonts) {
        const auto* const self = testing::UnitTest::GetInstance()->current_test_info();
        const std::string filter = std::string("--gtest_filter=PalmPictures.") + self->name();
        const auto child = ::fork();
        if (child == 0) {
            ::setenv(FontsName, fonts, 1);
            ::execl(ThisProgram, ThisProgram, filter.c_str(), "--gtest_brief=1", nullptr);
            ::_exit(127);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return status;
    }
};

/// A pixel of this device is two pixels wide on the screen.
TEST_F(PalmPictures, OfARecord) {
    OpenSample();
    FillRecord();
    const QImage picture = Grab();
    Keep(picture, "palm");
    EXPECT_EQ(Form().FormWidget().size(), QSize(320, 320));
    ExpectTitle(picture);
}

/// The substitute for the missing narrow font is as narrow.
TEST_F(PalmPictures, OfARecordWhereTheNarrowFontIsMissing) {
    if (QLibraryInfo::version() >= QVersionNumber(6, 5))
        GTEST_SKIP() << "this version of Qt draws a font that it narrows itself otherwise";
    if (!RunsWithFonts("fonts-without-narrow"))
        return;
    OpenSample();
    FillRecord();
    Keep(Grab(), "palm-without-narrow-font");
}

class SoftKeyPictures : public Pictures {
protected:
    SoftKeyPictures() : Pictures(7) {}
    QWidget& SoftKey() { return *Form().findChild<QWidget*>(QStringLiteral("softKey1")); }
};

TEST_F(SoftKeyPictures, OfAnOpenList) {
    OpenSample();
    FillRecord();
    Press(Qt::Key_F1);
    QWidget* const list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    const QImage picture = With(Grab(), *list, Form().mapFromGlobal(list->pos()));
    Keep(picture, "soft-keys");
    ExpectTitle(picture);
    EXPECT_EQ(list->mapToGlobal(QPoint(0, list->height())).y(), Form().mapToGlobal(SoftKey().pos()).y());
    list->close();
}

class S60Pictures : public Pictures {
protected:
    S60Pictures() : Pictures(9) {}
};

TEST_F(S60Pictures, OfARecord) {
    OpenSample();
    FillRecord();
    const QImage picture = Grab();
    Keep(picture, "s60");
    ExpectTitle(picture);
    ExpectMarkedCell(picture);
}

} // namespace
} // namespace windowtest

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_STYLE_OVERRIDE");
    // Pictures must be the same on each machine: this sets the fonts and the names of the months, and stops the
    // blinking of the cursor.
    const QByteArray fonts = qgetenv(windowtest::FontsName);
    qputenv("FONTCONFIG_FILE", QUORIN_STORED_PICTURES "/" + (fonts.isEmpty() ? "fonts" : fonts) + ".conf");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // what this screen lacks
    windowtest::ThisProgram = words[0];
    testing::InitGoogleTest(&count, words);
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0);
    return RUN_ALL_TESTS();
}
