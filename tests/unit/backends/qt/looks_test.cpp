// SPDX-License-Identifier: MIT
// What the window looks like on another desktop: its font, its colours, its size.
#include "backends/qt/offer_bar.h"
#include "tests/support/in_a_window.h"

#include <QScreen>
#include <QTableView>

#include <cmath>
#include <map>

namespace windowtest {
namespace {

/// Returns the contrast of two colours, 1 to 21, as the guidelines for accessible pages define it.
double Contrast(const QColor& one, const QColor& other) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto light = [&](const QColor& colour) {
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const double first = light(one) + 0.05, second = light(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// Returns the contrast of a drawn text: of the colour that most pixels have, and of the one that differs most from it.
double DrawnContrast(QWidget& widget) {
    const QImage drawn = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    std::map<QRgb, int> pixels;
    for (int y = 0; y < drawn.height(); ++y)
        for (int x = 0; x < drawn.width(); ++x)
            ++pixels[drawn.pixel(x, y)];
    const auto ground = std::max_element(pixels.begin(), pixels.end(),
                                         [](const auto& one, const auto& other) { return one.second < other.second; });
    double most = 1;
    for (const auto& [colour, count] : pixels)
        most = std::max(most, Contrast(QColor(colour), QColor(ground->first)));
    return most;
}

QPalette Dark() {
    QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x2B, 0x2B, 0x2B));
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        dark.setColor(group, QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
        const QColor text = group == QPalette::Disabled ? QColor(0x80, 0x80, 0x80) : QColor(0xEE, 0xEE, 0xEE);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            dark.setColor(group, role, text);
    }
    return dark;
}

struct DarkDesktop {
    DarkDesktop() { QApplication::setPalette(Dark()); }
    ~DarkDesktop() { QApplication::setPalette(QPalette()); }
};

class OnADarkDesktop : DarkDesktop, public InAWindow {
protected:
    static void ExpectReadable(const QWidget& widget) {
        using P = QPalette;
        const auto name = widget.metaObject()->className() + (" " + widget.objectName().toStdString());
        for (const auto group : {P::Active, P::Inactive, P::Disabled})
            for (const auto& [text, ground] : {std::pair{P::Text, P::Base},
                                               {P::WindowText, P::Window},
                                               {P::ButtonText, P::Button},
                                               {P::PlaceholderText, P::Base},
                                               {P::HighlightedText, P::Highlight}})
                EXPECT_GE(Contrast(widget.palette().color(group, text), widget.palette().color(group, ground)), 4.5)
                    << name << " group " << group << " role " << text;
        EXPECT_EQ(widget.palette().color(P::Base), QColor(Qt::white)) << name;
    }
    QLabel& Label(const char* name) { return *Form().findChild<QLabel*>(QString::fromLatin1(name)); }
};

TEST_F(OnADarkDesktop, EachControlOfTheFormIsReadable) {
    OpenRecord();
    const auto* const list = Form().findChild<QListWidget*>(QStringLiteral("lstHoldMenu"));
    for (const QWidget* const control :
         {static_cast<QWidget*>(&Line()), static_cast<QWidget*>(&Page()), static_cast<QWidget*>(&Combo()),
          static_cast<QWidget*>(Combo().lineEdit()), static_cast<QWidget*>(Combo().view()),
          static_cast<QWidget*>(&Calendar()), static_cast<QWidget*>(Calendar().findChild<QTableView*>())})
        ExpectReadable(*control);
    ExpectReadable(*list);
    for (const Qt::DayOfWeek day : {Qt::Monday, Qt::Saturday, Qt::Sunday})
        EXPECT_GE(Contrast(Calendar().weekdayTextFormat(day).foreground().color(), Qt::white), 4.5);
}

TEST_F(OnADarkDesktop, AnOpenFieldAndAnOpenListAreDrawnReadable) {
    OpenRecord();
    Tap(0, 1);
    EXPECT_GE(DrawnContrast(Line()), 4.5);
    Ask(modPDAUI::PromptKind::List, u"one", u"one,two,three,");
    Combo().showPopup();
    EXPECT_GE(DrawnContrast(*Combo().view()), 4.5);
    EXPECT_EQ(Combo().view()->viewport()->palette().color(QPalette::Base), QColor(Qt::white));
    Combo().hidePopup();
}

TEST_F(OnADarkDesktop, TheLinesOfTheWindowAreReadable) {
    using companion::LineLook;
    for (const auto look : {LineLook::Plain, LineLook::Alive, LineLook::Alarm}) {
        Form().SetLinkLine({"● HHH", look, ""});
        EXPECT_GE(DrawnContrast(Label("linkState")), 4.5) << static_cast<int>(look);
    }
    for (const auto weight : {companion::Severity::Note, companion::Severity::Hint, companion::Severity::Warning,
                              companion::Severity::Loss})
        for (const auto action : {companion::NoticeAction::None, companion::NoticeAction::Open}) {
            companion::Notices notices;
            notices.Raise({u"a", weight, u"HHHH", companion::Until::Withdrawn, action});
            Form().SetNotices(notices);
            EXPECT_GE(DrawnContrast(Label("warning")), 4.5) << static_cast<int>(weight);
        }
    backends::qt::OfferBar bar(&Form());
    Form().PutAbove(bar);
    bar.Show(QStringLiteral("HHH"));
    bar.findChild<QPushButton*>()->hide(); // which has the colours of the desktop
    EXPECT_GE(DrawnContrast(bar), 4.5);
}

TEST_F(OnADarkDesktop, ALinkFollowsTheColoursOfTheDesktop) {
    Form().SetLinkLine({"● HHH", companion::LineLook::Alive, ""});
    QApplication::setPalette(QPalette(QColor(0xEF, 0xEF, 0xEF), Qt::white));
    QTest::qWait(20);
    EXPECT_EQ(Label("linkState").styleSheet().toStdString(), "color: #006400;"); // dark green
}

class FontOfTheDesktop : public InAWindow {
protected:
    FontOfTheDesktop() : Before(QApplication::font()) {}
    ~FontOfTheDesktop() override { QApplication::setFont(Before); }
    void Take(int pixels) {
        QFont large = Before;
        large.setPixelSize(pixels);
        QApplication::setFont(large);
        QTest::qWait(20);
        Repaint();
    }
    const QFont Before;
};

TEST_F(FontOfTheDesktop, IsThatOfMenusAndLines) {
    Take(24);
    const auto& link = *Form().findChild<QLabel*>(QStringLiteral("linkState"));
    EXPECT_EQ(link.font().pixelSize(), 24);
    EXPECT_GE(link.height(), link.fontMetrics().height());
    EXPECT_GE(Form().Menu().height(), link.fontMetrics().height());
    EXPECT_EQ(Device.Platform.menus.Bar()->font().pixelSize(), 24);
    EXPECT_GE(Device.Platform.menus.Bar()->height(), link.fontMetrics().height());
    EXPECT_EQ(Device.Platform.form.ClientArea().Width, 640) << "the form's own text has its own size";
}

TEST(WideWindow, KeepsTheFormInTheMiddleAtAReadableWidth) {
    WindowDevice device(OfType(0), {.RealFonts = true});
    auto& window = device.Platform.window;
    device.Platform.StartProgram();
    window.resize(1920, 1040);
    QTest::qWait(20);
    device.Platform.loop.HandleDue();
    const QRect form = window.FormWidget().geometry();
    const QRect ground = window.Screen().rect();
    const auto& main = device.Platform.grdMain;
    const int letter = QFontMetrics(backends::qt::FontOf(main.FontName(), main.FontSize())).averageCharWidth();
    EXPECT_EQ(form.width(), 140 * letter);
    EXPECT_EQ(form.height(), ground.height());
    EXPECT_NEAR(form.center().x(), ground.center().x(), 1);
    window.resize(1800, 1040);
    QTest::qWait(20);
    device.Platform.loop.HandleDue();
    EXPECT_NEAR(window.FormWidget().geometry().center().x(), window.Screen().rect().center().x(), 1);
    EXPECT_NE(window.Screen().palette().color(QPalette::Window), QColor(Qt::white));
}

/// The worst of many notices is readable on the smallest screen, and the others can be reached.
TEST(NoticesOnASmallScreen, ShowTheWorst) {
    WindowDevice device(OfType(0), {.RealFonts = true, .Scale = 2});
    auto& window = device.Platform.window;
    window.setMaximumSize(792, 440);
    device.Platform.StartProgram();
    companion::Notices notices;
    for (const char16_t* const name : {u"a", u"b", u"c", u"d", u"e"})
        notices.Raise({name, companion::Severity::Warning, Text(60, u'w') + name});
    notices.Raise({u"loss", companion::Severity::Loss, u"qrn0001.txt is not saved: the disk is full"});
    notices.Raise({u"hint",
                   companion::Severity::Hint,
                   u"No driver is installed yet.",
                   companion::Until::Withdrawn,
                   companion::NoticeAction::None,
                   {{u"x", u"Install a driver…"}, {u"y", u"Try the sample"}}});
    window.SetNotices(notices);
    QTest::qWait(20);
    device.Platform.loop.HandleDue();
    const auto& line = *window.findChild<QLabel*>(QStringLiteral("warning"));
    const auto& more = *window.findChild<QToolButton*>(QStringLiteral("moreNotices"));
    EXPECT_EQ(line.text().toStdString(), "qrn0001.txt is not saved: the disk is full");
    EXPECT_LE(line.fontMetrics().horizontalAdvance(line.text()), line.width());
    EXPECT_TRUE(window.rect().contains(QRect(line.mapTo(&window, QPoint(0, 0)), line.size())));
    EXPECT_EQ(more.text().toStdString(), "+5");
    EXPECT_TRUE(more.isVisible());
    EXPECT_TRUE(window.rect().contains(more.geometry()));
    EXPECT_GE(device.Platform.form.ClientArea().Height, 160);
}

} // namespace
} // namespace windowtest
