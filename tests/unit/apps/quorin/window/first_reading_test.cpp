// SPDX-License-Identifier: MIT
// How much a person has to do from the start of the window to the first reading in a file.
#include "apps/quorin/arriving.h"
#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_ports.h"
#include "apps/quorin/window_watch.h"
#include "backends/linux/port_names.h"
#include "companion/offers.h"
#include "src/view/screen_table.h"
#include "tests/support/in_a_window.h"
#include "tests/support/plugged_instrument.h"
#include "tests/support/temporary_root.h"

#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>

namespace quorin {
namespace {

using testing::HasSubstr;

/// Exists before the device, whose ports are looked for here and not in this machine.
struct PluggedAdapter {
    PluggedAdapter() { Dev.Link(Meter.Path(), "ttyUSB0"); }
    TemporaryRoot Dev;
    PseudoTerminal Meter;
};

/// The window on an empty folder, with an instrument that is plugged in.
class FirstReading : protected PluggedAdapter, public windowtest::InAWindow {
protected:
    static backends::DeviceOptions Options(const std::string& folder) {
        backends::DeviceOptions options = windowtest::OfType(0);
        options.Ports.Find = [folder](std::int32_t number) { return backends::PortPath(number, folder); };
        return options;
    }
    FirstReading() : InAWindow(Options(Dev.Path())) {
        Ports.Survey.DeviceFolder = Dev.Path();
        Ports.Survey.SystemFolder = Sys.Path();
        Watch.Attach(Device.Platform);
        Watch.Does(companion::OfferPorts, [this] { Ports.OpenDialog(); });
        Watch.Does(companion::OfferSample, [this] { Arriving_.ArriveSample(); });
        Rest();
    }

    /// Lets the program act, and the hands rest for as long as keys of a person do.
    void Rest(int milliseconds = 20) {
        QTest::qWait(milliseconds);
        Pass(600);
        Arriving_.Step();
        Settle();
    }
    void ClickOn(QWidget& widget, QPoint place) {
        ++Clicks;
        QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
        Rest();
    }
    void ClickOn(QWidget& widget) { ClickOn(widget, widget.rect().center()); }
    void Strike(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        ++Keys;
        QTest::keyClick(&widget, key, held);
        Rest(TimeOfHands);
    }
    void StrikeInForm(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        ++Keys;
        Form().activateWindow(); // a desktop does this by itself when a box or a dialog has closed
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
        Press(key, held);
        Rest(TimeOfHands);
    }
    /// What a person does in the form's next message box.
    void WillAnswer(std::function<void(QMessageBox& box)> act) {
        Device.WillDo([this, act = std::move(act)] {
            QTest::qWait(TimeOfHands); // the box takes no key of a hand that is still typing
            act(*Device.Platform.boxes.Dialog());
        });
    }
    void ClickMenu(const char* title, const char* item) {
        QMenuBar& bar = *Device.Platform.menus.Bar();
        for (QAction* const action : bar.actions()) {
            if (action->text().remove(QLatin1Char('&')) != QLatin1String(title) || action->menu() == nullptr)
                continue;
            ClickOn(bar, bar.actionGeometry(action).center());
            for (QAction* const entry : action->menu()->actions())
                if (entry->text().remove(QLatin1Char('&')) == QLatin1String(item))
                    return ClickOn(*action->menu(), action->menu()->actionGeometry(entry).center());
        }
        FAIL() << "no " << title << ", " << item;
    }
    QWidget& PortsDialog() {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QStringLiteral("ports") && widget->isVisible())
                return *widget;
        ADD_FAILURE() << "no dialog";
        return Form();
    }
    /// Opens the list of the notices and chooses the offer whose words begin so.
    void ChooseOffer(const char* words) {
        StrikeInForm(Qt::Key_F4, Qt::ShiftModifier);
        auto& rows = *Form().findChild<QFrame*>(QStringLiteral("notices"))->findChild<QListWidget*>();
        while (!rows.currentItem()->text().contains(QString::fromUtf8(words)) && rows.currentRow() + 1 < rows.count())
            Strike(rows, Qt::Key_Down);
        EXPECT_THAT(rows.currentItem()->text().toStdString(), HasSubstr(words));
        Strike(rows, Qt::Key_Return);
    }
    void MeterSends() {
        Meter.Send(
            "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"14.1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
        EXPECT_TRUE(QTest::qWaitFor(
            [this] {
                Pass(600);
                return Cell(Main().Row(), 1).rfind(u"14.1", 0) == 0;
            },
            10'000));
    }
    /// Returns the first download, which has the reading once it was saved.
    std::string Saved() { return File("qrn0001.txt"); }

    static constexpr int TimeOfHands = 520; ///< milliseconds after which keys are not taken for those before

    TemporaryRoot Sys;
    int Clicks = 0;
    int Keys = 0;
    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowWatch Watch;
    WindowPorts Ports{Device.Platform, Remembered, [] { return true; }};
    WindowHints Hints{Device.Platform, Remembered, [] { return std::string(); }};
    DataFolder Data{Device.Platform, Device.Folder.Path()};
    Arriving Arriving_{Device.Platform, Data};
};

TEST_F(FirstReading, TakesTwelveClicksAtMost) {
    WillAnswer([this](QMessageBox& box) {
        ++Clicks;
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });
    ClickOn(*Form().findChild<QToolButton*>(QStringLiteral("offer_sample")));
    EXPECT_FALSE(Device.HasStepsLeft()) << "the form has said that it is installed";
    ClickOn(Grid(), Middle(0)); // Start...
    ASSERT_EQ(Screen(), modQuorin::ScrDrivers);
    ClickOn(*Form().findChild<QToolButton*>(QStringLiteral("offer_ports")));
    ClickOn(*PortsDialog().findChild<QPushButton*>(QStringLiteral("usePort")));
    ClickOn(Grid(), Middle(0));
    ASSERT_EQ(Screen(), modQuorin::ScrDownloads);
    ClickMenu("File", "New");
    ClickOn(Grid(), Middle(0));
    ASSERT_EQ(Screen(), modQuorin::ScrInfRecord);
    MeterSends();
    ClickMenu("File", "Close");
    EXPECT_THAT(Saved(), HasSubstr("14.1"));
    EXPECT_LE(Clicks, 12);
}

TEST_F(FirstReading, TakesSixteenKeysAtMost) {
    WillAnswer([this](QMessageBox& box) {
        ++Keys;
        QTest::keyClick(&box, Qt::Key_Return);
    });
    ChooseOffer("Try the sample");
    EXPECT_FALSE(Device.HasStepsLeft()) << "the form has said that it is installed";
    StrikeInForm(Qt::Key_Return); // Start...
    ASSERT_EQ(Screen(), modQuorin::ScrDrivers);
    ChooseOffer("Choose a port");
    Strike(*PortsDialog().findChild<QTreeWidget*>(), Qt::Key_Return);
    StrikeInForm(Qt::Key_Return);
    ASSERT_EQ(Screen(), modQuorin::ScrDownloads);
    StrikeInForm(Qt::Key_F1);
    Strike(*QApplication::activePopupWidget(), Qt::Key_N);
    StrikeInForm(Qt::Key_Return);
    ASSERT_EQ(Screen(), modQuorin::ScrInfRecord);
    MeterSends();
    StrikeInForm(Qt::Key_Escape);
    EXPECT_THAT(Saved(), HasSubstr("14.1"));
    EXPECT_LE(Keys, 16);
}

} // namespace
} // namespace quorin
