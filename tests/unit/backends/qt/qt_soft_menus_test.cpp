// SPDX-License-Identifier: MIT
#include "backends/qt/qt_soft_menus.h"

#include "src/view/menu_table.h"
#include "src/view/prompt.h"
#include "src/view/soft_menus.h"
#include "src/view/status_strip.h"
#include "tests/support/in_a_window.h"

#include <set>

namespace windowtest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t Desktop = 0;
constexpr std::int32_t SoftKeyDevice = 5;

class Menus : public InAWindow {
protected:
    explicit Menus(std::int32_t deviceType = Desktop) : InAWindow(OfType(deviceType)) {
        Of().TitleClicked = [this](std::int32_t menu) { Heard.push_back("menu " + std::to_string(menu)); };
        Of().ItemClicked = [this](std::int32_t menu, std::int32_t item) {
            Heard.push_back("item " + std::to_string(item) + " of menu " + std::to_string(menu));
        };
    }
    backends::qt::SoftMenus& Of() { return Device.Platform.menus; }

    /// Sets the captions. A title or an item with an empty caption is hidden, and so are the items beyond the list.
    void Set(std::size_t menu, const Text& title, const std::vector<Text>& items) {
        Of().Titles[menu].SetCaption(title);
        Of().Titles[menu].SetVisible(!title.empty());
        for (std::size_t item = 0; item < Of().Items[menu].size(); ++item) {
            const Text caption = item < items.size() ? items[item] : Text();
            Of().Items[menu][item].SetCaption(caption);
            Of().Items[menu][item].SetVisible(!caption.empty());
        }
        Settle();
    }
    QList<QAction*> Bar() {
        QList<QAction*> seen;
        for (QAction* const action : Of().Bar()->actions()) {
            if (action->isVisible())
                seen.push_back(action);
        }
        return seen;
    }
    static std::vector<std::string> Texts(const QList<QAction*>& actions) {
        std::vector<std::string> texts;
        for (const QAction* const action : actions) {
            if (action->isVisible())
                texts.push_back(action->text().toStdString());
        }
        return texts;
    }

    std::vector<std::string> Heard;
};

// On a desktop.

TEST_F(Menus, AreThoseOfAMenuBarWithWhatIsOnShowAlone) {
    Set(0, u"Menu", {u"Open", u"", u"Delete"});
    Set(1, u"", {u"Never"});
    EXPECT_FALSE(Of().AreKeys());
    ASSERT_EQ(Bar().size(), 1);
    EXPECT_THAT(Texts(Bar().front()->menu()->actions()), ElementsAre("&Open", "&Delete"));
}

TEST_F(Menus, StandAboveTheForm) {
    EXPECT_LE(Of().Bar()->geometry().bottom(), Form().Screen().geometry().top());
}

TEST_F(Menus, HaveALetterEach) {
    Set(0, u"Menu", {u"Open", u"Other", u"One", u"Op"});
    Set(1, u"More", {u"X"});
    std::set<QChar> letters;
    for (const std::string& text : Texts(Bar().front()->menu()->actions())) {
        const QString caption = QString::fromStdString(text);
        const qsizetype mark = caption.indexOf(QLatin1Char('&'));
        ASSERT_GE(mark, 0) << text;
        EXPECT_TRUE(letters.insert(caption[mark + 1].toLower()).second) << text;
    }
    EXPECT_THAT(Texts(Bar()), ElementsAre("&Menu", "M&ore"));
}

TEST_F(Menus, HaveALetterEachAlsoWhereACaptionBeginsWithNone) {
    Set(0, u"(Menu)", {u"X"});
    Set(1, u"Menu", {u"X"});
    EXPECT_THAT(Texts(Bar()), ElementsAre("(&Menu)", "M&enu"));
}

TEST_F(Menus, ShowAnAmpersandAsSuch) {
    Set(0, u"This & that", {u"Salt & pepper", u"&", u"&Ok"});
    EXPECT_THAT(Texts(Bar().front()->menu()->actions()), ElementsAre("&Salt && pepper", "&&", "&&&Ok"));
    EXPECT_EQ(Texts(Bar()).front(), "&This && that");
}

TEST_F(Menus, TellOfTheMenuThenOfTheItem) {
    Set(0, u"Menu", {u"Open", u"Close"});
    const QRect place = Of().Bar()->actionGeometry(Bar().front());
    Click(*Of().Bar(), place.center());
    QMenu& list = *Bar().front()->menu();
    ASSERT_TRUE(list.isVisible());
    QTest::mouseClick(&list, Qt::LeftButton, {}, list.actionGeometry(list.actions()[1]).center());
    Settle();
    EXPECT_THAT(Heard, ElementsAre("menu 1", "item 2 of menu 1"));
    EXPECT_FALSE(list.isVisible());
}

TEST_F(Menus, AreWorkedByTheKeyboardAlone) {
    Set(0, u"Menu", {u"Open", u"Close"});
    Press(Qt::Key_F1);
    QMenu& list = *Bar().front()->menu();
    ASSERT_TRUE(list.isVisible());
    QTest::keyClick(&list, Qt::Key_C);
    Settle();
    EXPECT_THAT(Heard, ElementsAre("menu 1", "item 2 of menu 1"));
}

TEST_F(Menus, OfOneItemRunItByAClickOnTheirTitle) {
    Set(0, u"Ok", {u"Ok"});
    EXPECT_EQ(Texts(Bar()).front(), "&Ok");
    EXPECT_EQ(Bar().front()->menu(), nullptr);
    Click(*Of().Bar(), Of().Bar()->actionGeometry(Bar().front()).center());
    EXPECT_THAT(Heard, ElementsAre("item 1 of menu 1"));
    Press(Qt::Key_F1);
    EXPECT_THAT(Heard, ElementsAre("item 1 of menu 1", "item 1 of menu 1"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Set(0, u"File", {u"Open", u"Close"});
    EXPECT_NE(Bar().front()->menu(), nullptr);
}

TEST_F(Menus, OfOneItemRunNothingWhileTheyAreDisabled) {
    Set(0, u"Ok", {u"Ok"});
    modPDAUI::ShowStatus(u"Busy");
    Settle();
    Press(Qt::Key_F1);
    Click(*Of().Bar(), Of().Bar()->actionGeometry(Bar().front()).center());
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(Menus, OpenNothingWhileTheyAreDisabled) {
    Set(0, u"Menu", {u"Open", u"Close"});
    modPDAUI::ShowStatus(u"Busy");
    Settle();
    Press(Qt::Key_F1);
    Click(*Of().Bar(), Of().Bar()->actionGeometry(Bar().front()).center());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_THAT(Heard, IsEmpty());
    modPDAUI::HideStatus();
    Settle();
    Press(Qt::Key_F1);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    QApplication::activePopupWidget()->hide();
}

TEST_F(Menus, KeepTheFormsSizeWhenThereIsNone) {
    const QSize before = Form().Screen().size();
    WM5Menus::ApplyMenu(0);
    Settle();
    QTest::qWait(20);
    EXPECT_THAT(Bar(), IsEmpty());
    EXPECT_EQ(Form().Screen().size(), before);
}

// On a device whose menus are keys.

class SoftKeys : public Menus {
protected:
    SoftKeys() : Menus(SoftKeyDevice) {}
    QPushButton& Key(std::int32_t menu) { return *Of().Key(menu); }
    void PressKey(std::int32_t menu) { Click(Key(menu), Key(menu).rect().center()); }
};

TEST_F(SoftKeys, AreTwoLargeKeysAtTheFootOfTheWindow) {
    Set(0, u"Back", {});
    Set(1, u"Menu", {u"Open"});
    ASSERT_TRUE(Of().AreKeys());
    EXPECT_EQ(Of().Bar(), nullptr);
    for (const std::int32_t menu : {1, 2}) {
        EXPECT_TRUE(Key(menu).isVisible());
        EXPECT_GE(Key(menu).height(), 40);
        EXPECT_GT(Key(menu).geometry().top(), Form().Screen().geometry().bottom());
    }
    EXPECT_LE(std::abs(Key(1).width() - Key(2).width()), 1);
    EXPECT_LT(Key(1).x(), Key(2).x());
}

TEST_F(SoftKeys, RunASingleCommandAtOnce) {
    Set(0, u"Back", {});
    PressKey(1);
    EXPECT_THAT(Heard, ElementsAre("menu 1"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(SoftKeys, OpenAListOfSeveralCommands) {
    Set(1, u"Menu", {u"Open", u"Close"});
    PressKey(2);
    auto* const list = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(list, nullptr);
    EXPECT_THAT(Texts(list->actions()), ElementsAre("&Open", "&Close"));
    EXPECT_GE(list->width(), Key(2).width());
    EXPECT_LE(list->geometry().bottom(), Key(2).mapToGlobal(QPoint()).y());
    QTest::mouseClick(list, Qt::LeftButton, {}, list->actionGeometry(list->actions()[1]).center());
    Settle();
    EXPECT_THAT(Heard, ElementsAre("menu 2", "item 2 of menu 2"));
}

TEST_F(SoftKeys, ArePressedByF1AndF2) {
    Set(0, u"Back", {});
    Set(1, u"Ok", {});
    Press(Qt::Key_F2);
    Press(Qt::Key_F1);
    EXPECT_THAT(Heard, ElementsAre("menu 2", "menu 1"));
}

TEST_F(SoftKeys, TakeTheFocusFromNothing) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    ASSERT_EQ(Holder(), &Field());
    Set(0, u"Back", {});
    PressKey(1);
    EXPECT_EQ(Holder(), &Field());
    EXPECT_TRUE(Field().Visible());
}

TEST_F(SoftKeys, AreOffWhileTheBusyStripShows) {
    Set(0, u"Back", {});
    modPDAUI::ShowStatus(u"Busy");
    Settle();
    EXPECT_FALSE(Key(1).isEnabled());
    PressKey(1);
    Press(Qt::Key_F1);
    modPDAUI::HideStatus();
    Settle();
    EXPECT_TRUE(Key(1).isEnabled());
    EXPECT_THAT(Heard, IsEmpty());
}

TEST_F(SoftKeys, AreEmptyAndOffWithoutACaption) {
    Set(0, u"", {});
    EXPECT_TRUE(Key(1).isVisible()) << "so that the other one stays where it is";
    EXPECT_FALSE(Key(1).isEnabled());
    EXPECT_EQ(Key(1).text(), QString());
}

TEST_F(SoftKeys, ShowAnAmpersandAsSuch) {
    Set(0, u"This & that", {});
    EXPECT_EQ(Key(1).text(), QStringLiteral("&This && that"));
    EXPECT_EQ(Key(1).accessibleName(), QStringLiteral("This & that"));
}

} // namespace
} // namespace windowtest
