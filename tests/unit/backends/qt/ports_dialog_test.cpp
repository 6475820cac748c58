// SPDX-License-Identifier: MIT
#include "backends/qt/ports_dialog.h"

#include "tests/support/in_a_window.h"

#include <QApplication>
#include <QClipboard>
#include <QScreen>

namespace windowtest {
namespace {

using backends::qt::PortsDialog;
using companion::PortChoice;
using companion::PortRow;
using companion::PortState;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A machine with an adapter that is ready, one that the user may not open, and a port of the board.
class DialogOfPorts : public InAWindow {
protected:
    DialogOfPorts() {
        PortRow ready{.Path = "/dev/ttyUSB0"};
        ready.Name = {"Example Works", "Serial Adapter", "A1"};
        ready.Numbers = {{1, false}};
        ready.Links = {"/dev/serial/by-id/usb-Example-if00"};
        PortRow refused{.Path = "/dev/ttyUSB1"};
        refused.State = PortState::Refused;
        refused.Trouble = {"You are not in the group dialout.", "Join it with: sudo usermod", "sudo usermod"};
        PortRow board{.Path = "/dev/ttyS0"};
        board.State = PortState::Untried;
        Ports = {ready, refused, board};
        Names = {"/dev/ttyUSB0"};
    }
    backends::qt::PortsOfMachine Machine() {
        return {
            .Survey =
                [this] {
                    ++Surveys;
                    return Ports;
                },
            .Names = [this] { return Names; },
            .Use = [this](const PortChoice& choice) { Used.push_back(choice); },
            .WhyNotUsable = [](const std::string& typed) { return typed == "tcp:" ? "tcp: names no host." : ""; },
            .Forget =
                [this](std::int32_t number) {
                    Forgotten.push_back(number);
                    Ports.back().Numbers.clear();
                },
            .Listen = [this](const std::vector<std::string>& paths) { ListensTo = paths; },
            .Heard =
                [] {
                    return std::map<std::string, std::size_t>{{"/dev/ttyUSB0", 42}};
                },
        };
    }
    QTreeWidget& List() { return *Dialog.findChild<QTreeWidget*>(); }
    QPushButton& Button(const char* name) { return *Dialog.findChild<QPushButton*>(QString::fromLatin1(name)); }
    std::string Details() { return Dialog.findChild<QLabel*>(QStringLiteral("portDetails"))->text().toStdString(); }
    std::vector<std::string> Row(int at) {
        std::vector<std::string> cells;
        for (int column = 0; column < List().columnCount(); ++column)
            cells.push_back(List().topLevelItem(at)->text(column).toStdString());
        return cells;
    }
    void Select(int at) { List().setCurrentItem(List().topLevelItem(at)); }

    std::vector<PortRow> Ports;
    std::vector<std::string> Names;
    std::vector<PortChoice> Used;
    std::vector<std::int32_t> Forgotten;
    std::vector<std::string> ListensTo;
    int Surveys = 0;
    PortsDialog Dialog{Machine(), Form()};
};

TEST_F(DialogOfPorts, SaysOfEachPortWhatItIsAndWhatItIsCalled) {
    Dialog.Open();
    EXPECT_THAT(Row(0), ElementsAre("/dev/ttyUSB0", "Serial Adapter", "Com1", "ready", ""));
    EXPECT_THAT(Row(1), ElementsAre("/dev/ttyUSB1", "", "", "no permission", ""));
    EXPECT_THAT(Row(2), ElementsAre("/dev/ttyS0", "", "", "looks ready, was not opened", ""));
}

TEST_F(DialogOfPorts, SaysWhyAPortCantBeOpenedAndWhatHelps) {
    Dialog.Open();
    EXPECT_TRUE(Button("copyRemedy").isHidden());
    Select(1);
    EXPECT_EQ(Details(), "You are not in the group dialout. Join it with: sudo usermod");
    ASSERT_TRUE(Button("copyRemedy").isVisible());
    Button("copyRemedy").click();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("sudo usermod"));
}

TEST_F(DialogOfPorts, SaysWhyAPortOfTheBoardIsNotTakenByItself) {
    Dialog.Open();
    Select(2);
    EXPECT_THAT(Details(), HasSubstr("console may be on it"));
}

TEST_F(DialogOfPorts, ProposesAPortThatCanBeOpened) {
    std::reverse(Ports.begin(), Ports.end());
    Dialog.Open();
    EXPECT_EQ(List().currentItem()->text(0), QStringLiteral("/dev/ttyUSB0"));
}

TEST_F(DialogOfPorts, UsesThePortThatIsSelected) {
    Dialog.Open();
    Button("usePort").click();
    EXPECT_THAT(Used, ElementsAre(PortChoice{1, "/dev/serial/by-id/usb-Example-if00"}));
    EXPECT_FALSE(Dialog.isVisible());
    Dialog.Open();
    Select(2);
    Button("usePort").click();
    EXPECT_THAT(Used, testing::Contains(PortChoice{2, "/dev/ttyS0"}));
}

TEST_F(DialogOfPorts, FitsOnASmallScreen) {
    Ports[1].Numbers = {{3, true}};
    Dialog.resize(5000, 5000);
    Dialog.Open();
    Select(1); // with every button
    EXPECT_LE(Dialog.width(), Form().screen()->availableGeometry().width());
    EXPECT_LE(Dialog.height(), Form().screen()->availableGeometry().height());
    EXPECT_LE(Dialog.minimumSizeHint().width(), 392) << "of 400, with a frame";
}

TEST_F(DialogOfPorts, UsesAnAddressThatIsTyped) {
    Dialog.Open();
    EXPECT_FALSE(Button("useAddress").isEnabled()) << "nothing is typed";
    auto& line = *Dialog.findChild<QLineEdit*>(QStringLiteral("portAddress"));
    QTest::keyClicks(&line, QStringLiteral(" tcp:meter:4000 "));
    QTest::mouseClick(&Button("useAddress"), Qt::LeftButton);
    EXPECT_THAT(Used, ElementsAre(PortChoice{2, "tcp:meter:4000"})) << "Com1 is the adapter";
    EXPECT_FALSE(Dialog.isVisible());
    Dialog.Open();
    EXPECT_EQ(line.text(), QString());
    QTest::keyClicks(&line, QStringLiteral("/dev/serial/by-id/usb-Example-if00"));
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_THAT(Used, testing::Contains(PortChoice{1, "/dev/serial/by-id/usb-Example-if00"}));
}

TEST_F(DialogOfPorts, SaysWhatIsWrongWithATypedAddress) {
    Dialog.Open();
    auto& trouble = *Dialog.findChild<QLabel*>(QStringLiteral("addressTrouble"));
    EXPECT_FALSE(trouble.isVisible());
    auto& line = *Dialog.findChild<QLineEdit*>(QStringLiteral("portAddress"));
    QTest::keyClicks(&line, QStringLiteral("tcp:"));
    EXPECT_TRUE(trouble.isVisible());
    EXPECT_EQ(trouble.text(), QStringLiteral("tcp: names no host."));
    EXPECT_FALSE(Button("useAddress").isEnabled());
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_THAT(Used, IsEmpty());
    QTest::keyClicks(&line, QStringLiteral("m"));
    EXPECT_FALSE(trouble.isVisible());
}

TEST_F(DialogOfPorts, ForgetsThePinOfTheSelectedPort) {
    Ports.back().Numbers = {{3, true}};
    Dialog.Open();
    EXPECT_FALSE(Button("forgetPin").isVisible()) << "Com1 goes by the rule";
    Select(2);
    ASSERT_TRUE(Button("forgetPin").isVisible());
    QTest::mouseClick(&Button("forgetPin"), Qt::LeftButton);
    EXPECT_THAT(Forgotten, ElementsAre(3));
    EXPECT_EQ(Row(2)[2], "");
    EXPECT_EQ(Details(), "Com3 is not pinned any more: there is no port for it now.");
    EXPECT_FALSE(Button("forgetPin").isVisible());
    Dialog.Survey();
    EXPECT_EQ(Details(), "Com3 is not pinned any more: there is no port for it now.");
    Select(0);
    EXPECT_EQ(Details(), "");
}

TEST_F(DialogOfPorts, UsesNoPortThatCantBeOpened) {
    Dialog.Open();
    Select(1);
    EXPECT_FALSE(Button("usePort").isEnabled());
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_THAT(Used, IsEmpty());
}

TEST_F(DialogOfPorts, ASingleClickSelectsOnly) {
    Dialog.Open();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(List().topLevelItem(2)).center());
    EXPECT_EQ(List().currentItem(), List().topLevelItem(2));
    EXPECT_THAT(Used, IsEmpty());
}

TEST_F(DialogOfPorts, ListsAnAdapterThatIsPluggedInWhileItIsOpen) {
    Dialog.Open();
    Select(1);
    PortRow other{.Path = "/dev/ttyUSB2"};
    Ports.push_back(other);
    EXPECT_EQ(List().topLevelItemCount(), 3);
    Names.push_back("/dev/ttyUSB2");
    EXPECT_TRUE(QTest::qWaitFor([this] { return List().topLevelItemCount() == 4; }, 10'000));
    EXPECT_EQ(List().currentItem()->text(0), QStringLiteral("/dev/ttyUSB1"));
}

TEST_F(DialogOfPorts, OpensNoDeviceWhileNothingIsPluggedIn) {
    Dialog.Open();
    QTest::qWait(300); // it becomes the active window
    const int before = Surveys;
    QTest::qWait(2500); // two looks
    EXPECT_EQ(Surveys, before);
}

TEST_F(DialogOfPorts, LooksForCharactersWhenAskedAndForThreeSeconds) {
    Dialog.Open();
    EXPECT_THAT(ListensTo, IsEmpty());
    Button("listenPorts").click();
    EXPECT_THAT(ListensTo, ElementsAre("/dev/ttyUSB0")) << "the others can't be opened, or may be the console";
    EXPECT_EQ(Row(0).back(), "42");
    EXPECT_FALSE(Button("listenPorts").isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return ListensTo.empty(); }, 20'000));
    EXPECT_EQ(Row(0).back(), "42");
    EXPECT_TRUE(Button("listenPorts").isEnabled());
}

TEST_F(DialogOfPorts, ClosesTheDevicesBeforeAPortIsUsed) {
    Dialog.Open();
    Button("listenPorts").click();
    Button("usePort").click();
    EXPECT_THAT(ListensTo, IsEmpty());
}

TEST_F(DialogOfPorts, SaysThatAMachineHasNoPort) {
    Ports.clear();
    Dialog.Open();
    EXPECT_THAT(Details(), HasSubstr("Plug an adapter in"));
    EXPECT_FALSE(Button("usePort").isEnabled());
    EXPECT_FALSE(Button("listenPorts").isEnabled());
}

} // namespace
} // namespace windowtest
