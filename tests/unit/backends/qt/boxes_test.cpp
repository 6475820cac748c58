// SPDX-License-Identifier: MIT
#include "backends/qt/boxes.h"

#include "tests/support/in_a_window.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>

namespace windowtest {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using testing::ElementsAre;

class BoxInAWindow : public InAWindow {
protected:
    explicit BoxInAWindow(const backends::DeviceOptions& options = OfType(0)) : InAWindow(options) {}

    QMessageBox& Box() { return *Device.Platform.boxes.Dialog(); }
    void KeyInBox(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        Box().activateWindow(); // a desktop does this by itself
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Box()));
        QTest::keyClick(Box().windowHandle(), key, held);
    }
    void ClickInBox(QMessageBox::StandardButton button) { QTest::mouseClick(Box().button(button), Qt::LeftButton); }
};

TEST_F(BoxInAWindow, AnswersAsItsButtonsAreClicked) {
    EXPECT_EQ(AskInABox(BoxButtons::YesNo, [this] { ClickInBox(QMessageBox::Yes); }), BoxAnswer::Yes);
    EXPECT_EQ(AskInABox(BoxButtons::YesNo, [this] { ClickInBox(QMessageBox::No); }), BoxAnswer::No);
    EXPECT_EQ(AskInABox(BoxButtons::Ok, [this] { ClickInBox(QMessageBox::Ok); }), BoxAnswer::Ok);
    EXPECT_EQ(Device.Platform.boxes.Dialog(), nullptr);
}

TEST_F(BoxInAWindow, ShowsItsWholeTitleAndCantBeMinimised) {
    AskInABox(BoxButtons::Ok, [this] {
        EXPECT_GE(Box().width(), 20 * Box().fontMetrics().averageCharWidth());
        EXPECT_FALSE(Box().windowFlags().testAnyFlags(Qt::WindowMinMaxButtonsHint));
        ClickInBox(QMessageBox::Ok);
    });
}

class BoxOfADevice : public BoxInAWindow {
protected:
    BoxOfADevice() : BoxInAWindow(OfType(3)) {}
};

TEST_F(BoxOfADevice, IsOverTheForm) {
    Device.WillDo([this] {
        const QWidget& form = Form().FormWidget();
        const QPoint off = Box().geometry().center() - form.mapToGlobal(form.rect().center());
        EXPECT_LE(std::abs(off.y()), 2);
        ClickInBox(QMessageBox::No);
    });
    Device.Platform.boxes.Show(
        u"A download of this name exists. Replace it by the one that was received?\nThe old one is lost then.",
        BoxButtons::YesNo, BoxIcon::Question, u"Replace");
}

class BoxOfASmallDevice : public BoxInAWindow {
protected:
    BoxOfASmallDevice() : BoxInAWindow(OfType(1)) {}
};

TEST_F(BoxOfASmallDevice, IsNotWiderThanTheForm) {
    Form().SetScale(2);
    Device.WillDo([this] {
        const QWidget& form = Form().FormWidget();
        ASSERT_EQ(form.width(), 320);
        EXPECT_LE(Box().width(), form.width());
        QTest::qWait(50); // the box is laid out again
        EXPECT_LE(Box().width(), form.width());
        for (QAbstractButton* const button : Box().buttons())
            EXPECT_TRUE(Box().rect().contains(QRect(button->mapTo(&Box(), QPoint()), button->size())));
        const auto* const text = Box().findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << "all of its lines can be read";
        ClickInBox(QMessageBox::No);
    });
    Device.Platform.boxes.Show(
        u"A download of this name exists. Replace it by the one that was received?\nThe old one is lost then.",
        BoxButtons::YesNo, BoxIcon::Question, u"Replace");
}

TEST_F(BoxInAWindow, IsNoAtEnter) {
    EXPECT_EQ(AskInABox(BoxButtons::YesNo, [this] { KeyInBox(Qt::Key_Return); }), BoxAnswer::No);
    EXPECT_EQ(AskInABox(BoxButtons::Ok, [this] { KeyInBox(Qt::Key_Return); }), BoxAnswer::Ok);
}

TEST_F(BoxInAWindow, IsNoAtEscape) {
    EXPECT_EQ(AskInABox(BoxButtons::YesNo, [this] { KeyInBox(Qt::Key_Escape); }), BoxAnswer::No);
    EXPECT_EQ(AskInABox(BoxButtons::Ok, [this] { KeyInBox(Qt::Key_Escape); }), BoxAnswer::Ok);
}

TEST_F(BoxInAWindow, IsNoWhenItsFrameIsClosed) {
    EXPECT_EQ(AskInABox(BoxButtons::YesNo, [this] { Box().close(); }), BoxAnswer::No);
    EXPECT_EQ(AskInABox(BoxButtons::Ok, [this] { Box().close(); }), BoxAnswer::Ok);
}

TEST_F(BoxInAWindow, IsYesByItsLetter) {
    const BoxAnswer answer = AskInABox(BoxButtons::YesNo, [this] {
        KeyInBox(Qt::Key_Y, Qt::AltModifier);
        QTest::qWait(200); // the time in which the button is shown pressed
    });
    EXPECT_EQ(answer, BoxAnswer::Yes);
}

TEST_F(BoxInAWindow, HasItsTextItsTitleAndItsIcon) {
    Device.WillDo([this] {
        EXPECT_EQ(Box().text(), QStringLiteral("<b>Text</b> & more"));
        EXPECT_EQ(Box().textFormat(), Qt::PlainText);
        EXPECT_EQ(Box().windowTitle(), QStringLiteral("Heading"));
        EXPECT_EQ(Box().icon(), QMessageBox::Question);
        EXPECT_EQ(Box().defaultButton(), Box().button(QMessageBox::No));
        EXPECT_EQ(Box().windowModality(), Qt::WindowModal);
        ClickInBox(QMessageBox::No);
    });
    Device.Platform.boxes.Show(u"<b>Text</b> & more", BoxButtons::YesNo, BoxIcon::Question, u"Heading");
    Device.WillDo([this] {
        EXPECT_EQ(Box().icon(), QMessageBox::NoIcon);
        EXPECT_FALSE(Box().windowTitle().isEmpty());
        ClickInBox(QMessageBox::Ok);
    });
    Device.Platform.boxes.Show(u"text", BoxButtons::Ok, BoxIcon::None, u"");
}

TEST_F(BoxInAWindow, MayStandOverAnotherOne) {
    std::vector<std::string> order;
    const BoxAnswer outer = AskInABox(BoxButtons::YesNo, [&] {
        QMessageBox* const first = &Box();
        const BoxAnswer inner = AskInABox(BoxButtons::YesNo, [&] {
            EXPECT_NE(&Box(), first);
            order.push_back("inner");
            ClickInBox(QMessageBox::Yes);
        });
        EXPECT_EQ(inner, BoxAnswer::Yes);
        EXPECT_EQ(&Box(), first);
        order.push_back("outer");
        ClickInBox(QMessageBox::No);
    });
    EXPECT_EQ(outer, BoxAnswer::No);
    EXPECT_THAT(order, ElementsAre("inner", "outer"));
}

TEST_F(BoxInAWindow, SaysBesideItsTextThatItIsTheNewerOfTwo) {
    AskInABox(BoxButtons::YesNo, [&] {
        EXPECT_EQ(Box().informativeText(), QString());
        AskInABox(BoxButtons::YesNo, [&] {
            EXPECT_EQ(Box().text(), QStringLiteral("Really?"));
            EXPECT_NE(Box().informativeText(), QString());
            ClickInBox(QMessageBox::No);
        });
        ClickInBox(QMessageBox::No);
    });
}

TEST_F(BoxInAWindow, TurnsTheMenuBarOffUntilTheLastOneIsAnswered) {
    QWidget& bar = *Device.Platform.menus.Bar();
    const auto enabled = [this] {
        std::vector<bool> all;
        for (const auto& title : Device.Platform.menus.Titles)
            all.push_back(title.Enabled());
        for (const auto& menu : Device.Platform.menus.Items)
            for (const auto& item : menu)
                all.push_back(item.Enabled());
        return all;
    };
    const std::vector<bool> before = enabled();
    AskInABox(BoxButtons::YesNo, [&] {
        EXPECT_FALSE(bar.isEnabled());
        EXPECT_EQ(enabled(), before) << "what the form says of them";
        AskInABox(BoxButtons::Ok, [&] { ClickInBox(QMessageBox::Ok); });
        EXPECT_FALSE(bar.isEnabled());
        ClickInBox(QMessageBox::No);
    });
    EXPECT_TRUE(bar.isEnabled());
}

TEST_F(BoxInAWindow, AnswersItselfOnItsSafeSideWhenTheSessionEnds) {
    Device.Platform.SessionEnds = [this] { Device.Platform.loop.BeginEnding(); };
    const BoxAnswer answer = AskInABox(BoxButtons::YesNo, [] {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    });
    EXPECT_EQ(answer, BoxAnswer::No);
    EXPECT_EQ(Device.Platform.boxes.Dialog(), nullptr);
    EXPECT_EQ(Device.Platform.boxes.Show(u"One more?", BoxButtons::YesNo, BoxIcon::None, u""), BoxAnswer::No);
    EXPECT_EQ(Device.Platform.boxes.Show(u"Told.", BoxButtons::Ok, BoxIcon::None, u""), BoxAnswer::Ok);
}

TEST_F(BoxInAWindow, TakesAllClicksFromTheForm) {
    ShowRows(5);
    AskInABox(BoxButtons::Ok, [this] {
        Tap(3);
        EXPECT_EQ(Main().Row(), 0);
        ClickInBox(QMessageBox::Ok);
    });
    Settle();
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(BoxInAWindow, IsToldToWhoeverWatches) {
    AskInABox(BoxButtons::YesNo, [this] { ClickInBox(QMessageBox::No); });
    ASSERT_EQ(Device.Did.Boxes.size(), 1U);
    EXPECT_EQ(Device.Did.Boxes[0].Message, u"Really?");
    EXPECT_EQ(Device.Did.Boxes[0].Icon, BoxIcon::Question);
}

TEST_F(BoxInAWindow, DoesNotEndTheProgramWhenTheWindowIsClosedUnderIt) {
    AskInABox(BoxButtons::Ok, [this] {
        Form().close();
        EXPECT_TRUE(Form().isVisible());
        ClickInBox(QMessageBox::Ok);
    });
    EXPECT_TRUE(Form().isVisible());
}

} // namespace
} // namespace windowtest
