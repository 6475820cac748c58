// SPDX-License-Identifier: MIT
#include "apps/quorin/window_hints.h"
#include "apps/quorin/window_ports.h"

#include "backends/linux/port_names.h"
#include "companion/words.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"
#include "tests/support/plugged_instrument.h"
#include "tests/support/temporary_root.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace quorin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Exists before the device, whose ports are looked for here and not in this machine.
struct FolderOfDevices {
    TemporaryRoot Dev;
};

class PortsOfTheWindow : protected FolderOfDevices, public windowtest::InAWindow {
protected:
    static backends::DeviceOptions Options(const std::string& folder) {
        backends::DeviceOptions options = windowtest::OfType(0);
        options.Ports.Find = [folder](std::int32_t number) { return backends::PortPath(number, folder); };
        return options;
    }
    PortsOfTheWindow() : InAWindow(Options(Dev.Path())) {
        Ports.Survey.DeviceFolder = Dev.Path();
        Ports.Survey.SystemFolder = Sys.Path();
        Ports.Survey.Describe = [](const std::string&) { return companion::DeviceName{"", "FT232R", ""}; };
        Look();
    }
    /// Looks at what is plugged in, as the program does every two seconds.
    void Look() {
        for (int look = 0; look < 2; ++look) { // an adapter is offered at the second look
            Ports.LookSoon();
            Settle();
        }
    }
    std::string PlugIn(const std::string& name) {
        Dev.Link(Adapter.Path(), name);
        Look();
        return Dev.Path(name);
    }
    Text Offered() const {
        for (const companion::Notice& notice : Device.Platform.onlooker.notices.Standing())
            if (notice.About == companion::AboutAdapter)
                return notice.Words;
        return u"nothing";
    }
    QWidget* ShownDialog() {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QStringLiteral("ports") && widget->isVisible())
                return widget;
        return nullptr;
    }
    Text Stored() const { return modQuorin::GetSetting(u"ComPort", u"none"); }

    TemporaryRoot Sys;
    PseudoTerminal Adapter;
    bool IsSilent = true;
    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowPorts Ports{Device.Platform, Remembered, [this] { return IsSilent; }};
};

TEST_F(PortsOfTheWindow, OneOfTheCommandLineIsChosenByItsHint) {
    WindowHints hints(Device.Platform, Remembered, [] { return std::string(); });
    hints.GivenPort = [this] { return Ports.Given(); };
    Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Device.Platform.host.ports.Pin(3, *backends::ReadAddress("tcp:localhost:4000").Address);
    hints.LookForDriver();
    Settle();
    const auto& standing = Device.Platform.onlooker.notices.Standing();
    ASSERT_FALSE(standing.empty());
    EXPECT_EQ(standing.back().Words, u"Com3 is tcp:localhost:4000, and no port is chosen: nothing can be received.");
    Ports.UseGiven();
    EXPECT_EQ(Stored(), u"Com3");
}

TEST_F(PortsOfTheWindow, AnAdapterThatIsPluggedInIsOffered) {
    const std::string path = PlugIn("ttyUSB0");
    EXPECT_EQ(Offered(), u"ttyUSB0 (FT232R) was plugged in. Use it?");
    Ports.UseOffered();
    EXPECT_EQ(Offered(), u"nothing");
    EXPECT_EQ(Stored(), u"Com1");
    EXPECT_THAT(Device.Host.ports.Pinned(), ElementsAre(Pair(1, backends::PathAddress(path))));
}

TEST_F(PortsOfTheWindow, NoneIsOfferedWhileReadingsArrive) {
    IsSilent = false;
    PlugIn("ttyUSB0");
    EXPECT_EQ(Offered(), u"nothing");
}

TEST_F(PortsOfTheWindow, AnOfferEndsWithItsAdapter) {
    PlugIn("ttyUSB0");
    std::filesystem::remove(Dev.Path("ttyUSB0"));
    Look();
    EXPECT_EQ(Offered(), u"nothing");
}

TEST_F(PortsOfTheWindow, AnOfferThatIsNotWantedIsNotRepeated) {
    PlugIn("ttyUSB0");
    Ports.DropOffer();
    Look();
    EXPECT_EQ(Offered(), u"nothing");
    EXPECT_EQ(Stored(), u"none");
}

TEST_F(PortsOfTheWindow, TheChoiceIsRememberedForTheNextRun) {
    const std::string path = PlugIn("ttyUSB0");
    Ports.UseOffered();
    const WindowSettings later(Device.Folder.Path() / "settings.ini");
    std::vector<std::string> wrong;
    EXPECT_THAT(PinsWith(later, {}, wrong), ElementsAre(Pair(1, backends::PathAddress(path))));
    const auto other = backends::PathAddress("/dev/other");
    EXPECT_THAT(PinsWith(later, {{1, other}}, wrong), ElementsAre(Pair(1, other))) << "the command line comes first";
    EXPECT_THAT(wrong, IsEmpty());
}

TEST_F(PortsOfTheWindow, ARememberedPortThatIsNoAddressIsTold) {
    Remembered.Save("Pin2", "tcp:");
    std::vector<std::string> wrong;
    EXPECT_THAT(PinsWith(Remembered, {}, wrong), IsEmpty());
    ASSERT_EQ(wrong.size(), 1U);
    EXPECT_EQ(wrong.front().rfind("Pin2=tcp: is not of the form", 0), 0U) << wrong.front();
}

TEST_F(PortsOfTheWindow, TheBoardsPortIsOfferedWhereThereIsNoAdapter) {
    Dev.Link(Adapter.Path(), "ttyS0");
    Sys.Put("class/tty/ttyS0/type", "4\n");
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    Look();
    EXPECT_EQ(Offered(), u"nothing") << "no record wants the link";
    OpenRecord();
    modBluetooth::Receive.LinkWanted = true;
    Look();
    EXPECT_EQ(Offered(), u"nothing") << "it was not tried yet";
    Pass(600);
    Look();
    EXPECT_EQ(Offered(), u"No adapter is plugged in. This machine has a port of its own, " +
                             modStringTools::FromBytes(Dev.Path("ttyS0")) + u". Use it?");
    Ports.DropOffer();
    Look();
    EXPECT_EQ(Offered(), u"nothing");
}

TEST_F(PortsOfTheWindow, AnAdapterThatIsChosenAlreadyIsNotOffered) {
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    PlugIn("ttyUSB0");
    EXPECT_EQ(Offered(), u"nothing") << "Com1 means the first adapter";
    const PseudoTerminal another;
    Dev.Link(another.Path(), "ttyUSB1");
    Look();
    EXPECT_EQ(Offered(), u"ttyUSB1 (FT232R) was plugged in. Use it?");
}

TEST_F(PortsOfTheWindow, NoneOfTwoRefusedOnesIsOfferedAgain) {
    for (const char* const name : {"ttyS0", "ttyS1"}) {
        Dev.Link(Adapter.Path(), name);
        Sys.Put(std::string("class/tty/") + name + "/type", "4\n");
    }
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    OpenRecord();
    modBluetooth::Receive.LinkWanted = true;
    Pass(600);
    Look();
    Ports.DropOffer();
    Look();
    ASSERT_NE(Offered(), u"nothing") << "there is another one";
    Ports.DropOffer();
    Look();
    EXPECT_EQ(Offered(), u"nothing");
}

TEST_F(PortsOfTheWindow, TheBoardsPortIsNotOfferedForLong) {
    Dev.Link(Adapter.Path(), "ttyS0");
    Sys.Put("class/tty/ttyS0/type", "4\n");
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    OpenRecord();
    modBluetooth::Receive.LinkWanted = true;
    Pass(600);
    Look();
    ASSERT_NE(Offered(), u"nothing");
    modBluetooth::Receive.LinkWanted = false;
    Look();
    EXPECT_EQ(Offered(), u"nothing") << "the record was left";
}

TEST_F(PortsOfTheWindow, AnotherPortTakesThePlaceOfTheOpenOne) {
    PseudoTerminal first;
    Device.Host.ports.Pin(1, backends::PathAddress(first.Path()));
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    OpenRecord();
    modBluetooth::Receive.LinkWanted = true;
    Pass(600);
    ASSERT_TRUE(Device.Platform.serial.PortOpen());
    PlugIn("ttyUSB0");
    Ports.UseOffered();
    Pass(1100);
    EXPECT_TRUE(Device.Platform.serial.PortOpen());
    EXPECT_EQ(Device.Platform.serial.Address(), Dev.Path("ttyUSB0"));
}

TEST_F(PortsOfTheWindow, ATypedAddressIsUsedAndRemembered) {
    Ports.OpenDialog();
    auto* const line = ShownDialog()->findChild<QLineEdit*>(QStringLiteral("portAddress"));
    auto* const trouble = ShownDialog()->findChild<QLabel*>(QStringLiteral("addressTrouble"));
    QTest::keyClicks(line, QStringLiteral("ttyUSB0"));
    EXPECT_EQ(trouble->text().section(QLatin1Char(','), 0, 0),
              QStringLiteral("The path of a device begins with a slash"));
    line->clear();
    QTest::keyClicks(line, QStringLiteral("bt:00:11:22:33:44:55"));
    EXPECT_EQ(trouble->text(),
              QStringLiteral("bt: is not built yet; bind the device by rfcomm and give /dev/rfcomm0."));
    line->clear();
    QTest::keyClicks(line, QStringLiteral("tcp:localhost"));
    EXPECT_EQ(trouble->text().section(QLatin1Char(','), 0, 0),
              QStringLiteral("tcp:localhost is not of the form tcp:HOST:PORT"));
    QTest::keyClicks(line, QStringLiteral(":4000"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(Stored(), u"Com1");
    std::vector<std::string> wrong;
    const auto typed = *backends::ReadAddress("tcp:localhost:4000").Address;
    EXPECT_THAT(PinsWith(WindowSettings(Device.Folder.Path() / "settings.ini"), {}, wrong),
                ElementsAre(Pair(1, typed)));
}

TEST_F(PortsOfTheWindow, APinThatIsForgottenLeavesTheRule) {
    PseudoTerminal pinned;
    Device.Host.ports.Pin(1, backends::PathAddress(pinned.Path()));
    Remembered.Save("Pin1", pinned.Path());
    const std::string adapter = PlugIn("ttyUSB0");
    modQuorin::SaveSetting(u"ComPort", u"Com1");
    OpenRecord();
    modBluetooth::Receive.LinkWanted = true;
    Pass(600);
    ASSERT_EQ(Device.Platform.serial.Address(), pinned.Path());
    Ports.OpenDialog();
    auto* const list = ShownDialog()->findChild<QTreeWidget*>();
    for (int row = 0; row < list->topLevelItemCount(); ++row)
        if (list->topLevelItem(row)->text(2) == QStringLiteral("Com1 (pinned)"))
            list->setCurrentItem(list->topLevelItem(row));
    QTest::mouseClick(ShownDialog()->findChild<QPushButton*>(QStringLiteral("forgetPin")), Qt::LeftButton);
    EXPECT_EQ(ShownDialog()->findChild<QLabel*>(QStringLiteral("portDetails"))->text().toStdString(),
              "Com1 is not pinned any more: it is " + adapter + " now.");
    std::vector<std::string> wrong;
    EXPECT_THAT(PinsWith(WindowSettings(Device.Folder.Path() / "settings.ini"), {}, wrong), IsEmpty());
    Pass(1100);
    EXPECT_EQ(Device.Platform.serial.Address(), adapter) << "the link goes on with the adapter";
}

TEST_F(PortsOfTheWindow, TheDialogListsThem) {
    PlugIn("ttyUSB0");
    Ports.OpenDialog();
    QWidget* const shown = ShownDialog();
    ASSERT_NE(shown, nullptr);
    auto* const list = shown->findChild<QTreeWidget*>();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(1), QStringLiteral("FT232R"));
    shown->findChild<QPushButton*>(QStringLiteral("usePort"))->click();
    EXPECT_EQ(Stored(), u"Com1");
}

} // namespace
} // namespace quorin
