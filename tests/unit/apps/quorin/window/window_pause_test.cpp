// SPDX-License-Identifier: MIT
#include "apps/quorin/window_pause.h"

#include "companion/words.h"
#include "src/app/commands.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "tests/support/in_a_window.h"

#include <QCheckBox>

namespace quorin {
namespace {

/// A record that has a value already, and an instrument that sends the same reading over and over.
class PauseOfTheLink : public windowtest::InAWindow {
protected:
    PauseOfTheLink() {
        modQuorin::SaveSetting(u"ComPort", u"Com1");
        OpenRecord();
        Pass(600);
    }
    void Send() {
        Device.Platform.serial.Arrive(
            u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n");
    }
    QMessageBox& Box() { return *Device.Platform.boxes.Dialog(); }
    QCheckBox* Offer() { return Box().findChild<QCheckBox*>(QStringLiteral("pauseLink")); }
    bool Tells() {
        const auto& all = Device.Platform.onlooker.notices.Standing();
        return std::any_of(all.begin(), all.end(),
                           [](const auto& each) { return each.About == companion::AboutPause; });
    }
    /// No is the answer to the next question. `look` sees it first.
    void WillAnswer(std::function<void()> look) {
        Device.WillDo([this, look = std::move(look)] {
            ++Questions;
            look();
            QTest::mouseClick(Box().button(QMessageBox::No), Qt::LeftButton);
        });
    }
    void SendAndPass() {
        Send();
        Pass(1200);
    }

    WindowPause Pause{Device.Platform};
    int Questions = 0;
};

TEST_F(PauseOfTheLink, IsOfferedByTheThirdQuestion) {
    for (int question = 1; question <= 2; ++question) {
        WillAnswer([this] { EXPECT_EQ(Offer(), nullptr); });
        SendAndPass();
    }
    WillAnswer([this] {
        ASSERT_NE(Offer(), nullptr);
        QTest::mouseClick(Offer(), Qt::LeftButton, {}, QPoint(8, Offer()->height() / 2));
        EXPECT_TRUE(Offer()->isChecked());
        EXPECT_TRUE(Tells());
        SendAndPass(); // would open a second box, and no step of the test answers it
    });
    SendAndPass();
    SendAndPass();
    EXPECT_EQ(Questions, 3);
    EXPECT_TRUE(Device.Platform.LinkIsPaused());
    EXPECT_GT(Device.Platform.serial.WaitingCharacters(), 0U) << "nothing is lost";
}

TEST_F(PauseOfTheLink, EndsWhenAPersonGoesOn) {
    Pause.Pause();
    SendAndPass();
    EXPECT_EQ(Questions, 0);
    WillAnswer([] {});
    Pause.GoOn();
    Pass(1200);
    EXPECT_EQ(Questions, 1) << "what has waited is read";
    EXPECT_FALSE(Tells());
}

TEST_F(PauseOfTheLink, EndsWithItsRecord) {
    Pause.Pause();
    SendAndPass();
    modQuorin::MenuEvent(u"Back");
    Pass(1200);
    EXPECT_FALSE(Device.Platform.LinkIsPaused());
    EXPECT_FALSE(Device.Platform.serial.PortOpen()) << "text that is received would open it again";
    EXPECT_EQ(Device.Platform.serial.WaitingCharacters(), 0U) << "it would get into the next record";
    EXPECT_EQ(Device.Platform.onlooker.notices.Sorted().front().Words,
              u"82 characters that came while the link was paused were not read: the record was left."
              u" Tap here when you have read it.");
}

} // namespace
} // namespace quorin
