// SPDX-License-Identifier: MIT
#include "backends/qt/loss_box.h"

#include "backends/qt/conversions.h"
#include "src/app/commands.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QAbstractButton>
#include <QMenuBar>

namespace windowtest {
namespace {

using backends::qt::LossBox;
using backends::qt::ToQt;

/// A download that can't be written because a folder has its name, open on the record screen with the link open.
class BoxOfLosses : public InAWindow {
protected:
    BoxOfLosses() {
        std::filesystem::create_directories(Device.Folder.Path() / "Quorin/qrn0001.txt");
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMoisture|1||Moisture||||\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        for (const char16_t* const command : {u"Start...", u"Ok", u"Open"})
            modQuorin::MenuEvent(command);
        Pass(500);
        Show();
    }
    companion::Losses& Losses() { return Device.Platform.onlooker.losses; }
    /// Shows the losses as the program does between two events.
    void Show() {
        if (Losses().Any())
            Box.Say(ToQt(Losses().Words()));
        Settle();
    }
    void Measure() {
        Device.Platform.serial.Arrive(
            u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
        Pass(1000);
        Show();
    }

    LossBox Box{Device.Platform.boxes, Form(), [this] { Losses().Seen(); }};
};

const QString NotMade =
    QStringLiteral("qrn0001.txt could not be created: the name is not allowed. Readings are not stored.");

TEST_F(BoxOfLosses, IsOneThatCountsTheReadingsWhileItStands) {
    QMessageBox* const box = Box.Dialog();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), NotMade);
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(box->isModal());
    Measure(); // the link continues below the box
    EXPECT_EQ(Box.Dialog(), box);
    EXPECT_EQ(box->text(), NotMade + QStringLiteral("\n\n1 reading is not stored."));
    Device.WillDo([this] { Device.Hand.PressBoxButton(platform::BoxAnswer::Yes); }); // the form's own box, above it
    Measure();
    EXPECT_EQ(box->text(), NotMade + QStringLiteral("\n\n2 readings are not stored."));
    EXPECT_EQ(Form().findChildren<QMessageBox*>().size(), 1);
}

TEST_F(BoxOfLosses, LeavesTheMenusOffWhenABoxOfTheFormIsAnsweredUponIt) {
    const QMenuBar* const menus = Form().findChild<QMenuBar*>();
    ASSERT_NE(menus, nullptr);
    Measure();
    EXPECT_FALSE(menus->isEnabled());
    Device.WillDo([this] { Device.Hand.PressBoxButton(platform::BoxAnswer::No); });
    Measure();
    ASSERT_FALSE(Device.HasStepsLeft()) << "no box of the form came up";
    ASSERT_NE(Box.Dialog(), nullptr);
    EXPECT_FALSE(menus->isEnabled());
    Box.Dialog()->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(menus->isEnabled());
}

TEST_F(BoxOfLosses, ComesAgainWithTheNextReadingOnceAPersonHasClosedIt) {
    Box.Dialog()->button(QMessageBox::Ok)->click();
    Settle();
    EXPECT_EQ(Box.Dialog(), nullptr);
    Show();
    EXPECT_EQ(Box.Dialog(), nullptr);
    Measure();
    ASSERT_NE(Box.Dialog(), nullptr);
    EXPECT_TRUE(Box.Dialog()->isVisible());
    EXPECT_EQ(Box.Dialog()->text(),
              QStringLiteral("qrn0001.txt: the reading 1 % is not stored: the file could not be created.\n\n"
                             "1 reading is not stored."));
    Press(Qt::Key_Escape);
}

TEST_F(BoxOfLosses, WithdrawsAPressUnderWhichItComesUp) {
    Box.Dialog()->button(QMessageBox::Ok)->click();
    Settle();
    Repaint();
    Down(Grid(), Middle(0, 1));
    Measure(); // the release goes to the box
    ASSERT_NE(Box.Dialog(), nullptr);
    EXPECT_FALSE(Grid().Withdraw()) << "there is no press any more";
    Press(Qt::Key_Escape);
}

} // namespace
} // namespace windowtest
