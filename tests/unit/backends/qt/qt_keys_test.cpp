// SPDX-License-Identifier: MIT
// The path of a key of the keyboard: its press through the form to the control with the focus, then its release.
#include "backends/qt/keyboard_map.h"

#include "src/app/commands.h"
#include "src/app/form.h"
#include "src/view/prompt.h"
#include "tests/support/in_a_window.h"

#include <QClipboard>
#include <QMenu>

namespace windowtest {
namespace {

using backends::qt::CodeOf;
using testing::ElementsAre;
using testing::IsEmpty;

// The map.

std::optional<std::int32_t> Code(Qt::Key key, Qt::KeyboardModifiers held, const std::vector<std::int32_t>& has) {
    return CodeOf(QKeyEvent(QEvent::KeyPress, key, held), has);
}

const std::vector<std::int32_t> AllKeys = {2, 261, 264, 266, 267, 276, 308, 309, 310, 516, 517, 518, 519, 520, 1280};

struct Meaning {
    Qt::Key Key;
    Qt::KeyboardModifiers Held;
    std::int32_t Code;
    bool Everywhere; ///< also on a device without such a key
};

void PrintTo(const Meaning& row, std::ostream* out) {
    *out << "key 0x" << std::hex << row.Key << " with 0x" << row.Held.toInt();
}

class KeyOfTheKeyboard : public testing::TestWithParam<Meaning> {};

TEST_P(KeyOfTheKeyboard, StandsForAKeyOfTheDevice) {
    EXPECT_EQ(Code(GetParam().Key, GetParam().Held, AllKeys), GetParam().Code);
    const auto elsewhere = Code(GetParam().Key, GetParam().Held, {});
    EXPECT_EQ(elsewhere.has_value() && *elsewhere == GetParam().Code, GetParam().Everywhere);
}

INSTANTIATE_TEST_SUITE_P(
    Map, KeyOfTheKeyboard,
    testing::Values(Meaning{Qt::Key_Left, {}, 37, true}, Meaning{Qt::Key_Up, {}, 38, true},
                    Meaning{Qt::Key_Right, {}, 39, true}, Meaning{Qt::Key_Down, {}, 40, true},
                    Meaning{Qt::Key_PageUp, {}, 33, true}, Meaning{Qt::Key_PageDown, {}, 34, true},
                    Meaning{Qt::Key_Return, {}, 13, true}, Meaning{Qt::Key_Enter, Qt::KeypadModifier, 13, true},
                    Meaning{Qt::Key_Escape, {}, 27, true}, Meaning{Qt::Key_Backspace, {}, 8, true},
                    Meaning{Qt::Key_Left, Qt::ControlModifier, 308, false},
                    Meaning{Qt::Key_Right, Qt::ControlModifier, 309, false},
                    Meaning{Qt::Key_Return, Qt::ControlModifier, 310, false}, Meaning{Qt::Key_F3, {}, 2, false},
                    Meaning{Qt::Key_F5, {}, 516, false}, Meaning{Qt::Key_F6, {}, 517, false},
                    Meaning{Qt::Key_F7, {}, 518, false}, Meaning{Qt::Key_F8, {}, 519, false},
                    Meaning{Qt::Key_F9, {}, 1280, false}, Meaning{Qt::Key_F10, {}, 264, false},
                    Meaning{Qt::Key_F11, {}, 266, false}, Meaning{Qt::Key_F12, {}, 267, false},
                    Meaning{Qt::Key_M, Qt::ControlModifier, 261, false},
                    Meaning{Qt::Key_Pause, Qt::ShiftModifier, 276, false}, Meaning{Qt::Key_Pause, {}, 520, false},
                    Meaning{Qt::Key_A, {}, 65, true}, Meaning{Qt::Key_A, Qt::ShiftModifier, 65, true},
                    Meaning{Qt::Key_7, {}, 55, true}, Meaning{Qt::Key_Space, {}, 32, true}));

TEST(KeyboardMap, LeavesTheRestToQt) {
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Home, Qt::Key_Delete, Qt::Key_F1, Qt::Key_F2, Qt::Key_F4})
        EXPECT_EQ(Code(key, {}, AllKeys), std::nullopt) << std::hex << key;
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_Z, Qt::Key_A})
        EXPECT_EQ(Code(key, Qt::ControlModifier, AllKeys), std::nullopt) << std::hex << key;
    for (const Qt::Key key : {Qt::Key_S, Qt::Key_Left, Qt::Key_Return})
        EXPECT_EQ(Code(key, Qt::AltModifier, AllKeys), std::nullopt) << std::hex << key;
}

TEST(KeyboardMap, HasALineForEachKey) {
    const std::string help = backends::qt::KeyboardHelp();
    constexpr std::size_t OfTheWindow = 9;
    EXPECT_EQ(static_cast<std::size_t>(std::count(help.begin(), help.end(), '\n')),
              backends::qt::KeyRows().size() + OfTheWindow);
    EXPECT_THAT(help, testing::HasSubstr("  readings of this run    F4\n"));
    EXPECT_THAT(help, testing::HasSubstr("  list of notices         Shift+F4\n"));
    EXPECT_THAT(help, testing::HasSubstr("  menu of the window      Shift+F10\n"));
    EXPECT_THAT(help, testing::HasSubstr("  help on the screen      Ctrl+F1"));
}

// The path of a key.

class KeysOfAWindow : public InAWindow {
protected:
    explicit KeysOfAWindow(std::int32_t deviceType = 0) : InAWindow(OfType(deviceType)) {}

    /// Records the arrow keys that the screen gets, with the current row at that moment.
    void ListenToArrows() {
        static std::vector<std::string>* heard = nullptr;
        heard = &Heard;
        modQuorin::ScreenRow(Screen()).Behaviour.ArrowKey = [](std::int32_t key) {
            heard->push_back(std::to_string(key) + " on " + std::to_string(platform::Device().grdMain.Row()));
        };
    }

    std::vector<std::string> Heard;
};

TEST_F(KeysOfAWindow, ReachTheFormThenTheGridThenTheFormAgain) {
    OpenRecord();
    ListenToArrows();
    Press(Qt::Key_Down);
    EXPECT_THAT(Heard, ElementsAre("40 on 0", "40 on 1"));
}

TEST_F(KeysOfAWindow, ThatTheFormSwallowsDoNotReachTheControl) {
    Ask(modPDAUI::PromptKind::Text, u"a");
    modQuorin::Screens.GridEditMode = false; // so that Enter closes no field
    Press(Qt::Key_Return);
    EXPECT_EQ(Field().Contents(), u"a");
    EXPECT_EQ(Holder(), &Field());
}

TEST_F(KeysOfAWindow, MoveAgainAndAgainWhileHeldAndComeUpOnce) {
    OpenRecord();
    ListenToArrows();
    const auto send = [this](QEvent::Type type, bool repeats) {
        QKeyEvent event(type, Qt::Key_Down, Qt::NoModifier, QString(), repeats);
        QCoreApplication::sendEvent(&Grid(), &event);
        Settle();
    };
    send(QEvent::KeyPress, false);
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
    EXPECT_EQ(Main().Row(), 2);
    send(QEvent::KeyRelease, false);
    EXPECT_THAT(Heard, ElementsAre("40 on 0", "40 on 1", "40 on 2"));
}

TEST_F(KeysOfAWindow, ActOnceWhenTheyAreHeldOverAChangeOfScreen) {
    OpenRecord("Place|Moisture|Remark\na|b|c\n");
    ListenToArrows();
    const auto send = [this](QEvent::Type type, Qt::Key key, bool repeats) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), repeats);
        QCoreApplication::sendEvent(Form().focusWidget(), &event);
        Settle();
    };
    send(QEvent::KeyPress, Qt::Key_Down, false);
    ASSERT_EQ(Main().Row(), 1);
    modQuorin::MenuEvent(u"Fonts...");
    Repaint();
    Main().SetRow(0);
    send(QEvent::KeyPress, Qt::Key_Down, true);
    EXPECT_EQ(Main().Row(), 0);
    modQuorin::ScreenRow(Screen()).Behaviour.ArrowKey =
        modQuorin::ScreenRow(modQuorin::ScrInfRecord).Behaviour.ArrowKey;
    Heard.clear();
    send(QEvent::KeyRelease, Qt::Key_Down, false);
    EXPECT_THAT(Heard, IsEmpty());
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().Row(), 1);
}

TEST_F(KeysOfAWindow, HeldOverABoxActOnce) {
    ShowRows(5);
    const auto send = [this](bool repeats) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), repeats);
        QCoreApplication::sendEvent(Form().focusWidget(), &event);
        Settle();
    };
    send(false);
    send(true);
    ASSERT_EQ(Main().Row(), 2);
    AskInABox(platform::BoxButtons::YesNo, [this] { Device.Hand.PressBoxButton(platform::BoxAnswer::No); });
    send(true);
    EXPECT_EQ(Main().Row(), 2);
}

/// The prompt gets neither its release nor the long press that it has started.
TEST_F(KeysOfAWindow, EnterThatIsHeldOverAPromptIsNoLongPress) {
    modQuorin::MenuEvent(u"File Debug...");
    Repaint();
    Press(Qt::Key_X); // Enter right after a character is not the select key
    QTest::keyPress(Form().focusWidget(), Qt::Key_Return);
    Settle();
    ASSERT_TRUE(Device.Platform.tmrHoldEvent.Enabled());
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, false);
    Settle();
    QTest::keyRelease(Form().focusWidget(), Qt::Key_Return);
    Settle();
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
}

/// Enter chooses the date when it is pressed. Its repeats and its release must not act on the record.
TEST_F(KeysOfAWindow, EnterHeldOverACalendarPressesNothingOnTheRecord) {
    OpenRecord();
    Text value;
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Date, value, u"", false, false);
    Settle();
    const auto send = [this](QEvent::Type type, bool repeats) {
        QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, QString(), repeats);
        QCoreApplication::sendEvent(Form().focusWidget(), &event);
        Settle();
    };
    send(QEvent::KeyPress, false);
    ASSERT_EQ(Screen(), modQuorin::ScrInfRecord);
    send(QEvent::KeyPress, true);
    EXPECT_FALSE(Device.Platform.tmrHoldEvent.Enabled());
    send(QEvent::KeyRelease, false);
    Repaint();
    Tap(1, 1);
    EXPECT_TRUE(Field().Visible());
}

TEST_F(KeysOfAWindow, EnterAnswersAPromptOfOneLine) {
    std::vector<Text> answers;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        modQuorin::MenuEvent(u"File Debug...");
        Repaint();
        Text value = u"a";
        Device.WillDo([this, key] {
            Type("b");
            Press(key);
        });
        modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::Line, value, u"", false, true);
        answers.push_back(value);
        EXPECT_EQ(Screen(), modQuorin::ScrFileDebug);
    }
    EXPECT_THAT(answers, ElementsAre(u"ab", u"ab"));
}

TEST_F(KeysOfAWindow, EnterAnswersAChoiceFromAList) {
    modQuorin::MenuEvent(u"File Debug...");
    Repaint();
    Text value = u"a";
    Device.WillDo([this] {
        Press(Qt::Key_Down);
        Press(Qt::Key_Return);
    });
    modPDAUI::InputPrompt(u"Title", modPDAUI::PromptKind::List, value, u"a,b", false, true);
    EXPECT_EQ(value, u"b");
    EXPECT_EQ(Screen(), modQuorin::ScrFileDebug);
}

TEST_F(KeysOfAWindow, EnterAnswersNoTextOfSeveralLines) {
    Ask(modPDAUI::PromptKind::Text, u"a");
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
    EXPECT_TRUE(Field().Visible());
}

class KeysOfAPocketPc : public KeysOfAWindow {
protected:
    KeysOfAPocketPc() : KeysOfAWindow(3) {}
};

TEST_F(KeysOfAPocketPc, EnterReachesTheFormAndAnswersNothing) {
    Ask(modPDAUI::PromptKind::Line, u"a");
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
    EXPECT_EQ(Field().Contents(), u"a");
    EXPECT_TRUE(Field().Visible());
}

TEST_F(KeysOfAWindow, PageKeysTurnNoMonth) {
    Ask(modPDAUI::PromptKind::Date, u"05/03/2007");
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp}) {
        Press(key);
        EXPECT_EQ(Calendar().monthShown(), 3);
    }
    Device.Hand.StrikeKey(34);
    EXPECT_EQ(Calendar().monthShown(), 3);
    EXPECT_EQ(Device.Platform.dteInputField.Date(), (platform::CalendarDate{2007, 3, 5}));
    EXPECT_TRUE(Calendar().isVisible());
}

TEST_F(KeysOfAWindow, EscapeGoesBack) {
    OpenRecord();
    Press(Qt::Key_Escape);
    EXPECT_NE(Screen(), modQuorin::ScrInfRecord);
}

TEST_F(KeysOfAWindow, EscapeLeavesAQuestion) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(Qt::Key_Escape);
    EXPECT_NE(Screen(), modQuorin::ScrInput);
    EXPECT_FALSE(Field().Visible());
}

TEST_F(KeysOfAWindow, SpaceEditsTheCurrentCellOfARecord) {
    OpenRecord();
    Press(Qt::Key_Down);
    Press(Qt::Key_Space);
    EXPECT_TRUE(Field().Visible());
    EXPECT_EQ(Line().text(), QStringLiteral("b")) << "and is not typed into the field that it opens";
    Press(Qt::Key_Space);
    EXPECT_EQ(Cell(1, 1), u"b ");
}

TEST_F(KeysOfAWindow, SpaceChoosesTheRowOfAList) {
    ShowRows(3);
    Press(Qt::Key_Down);
    const auto before = Screen();
    Press(Qt::Key_Space);
    EXPECT_NE(Screen(), before);
}

TEST_F(KeysOfAWindow, SpaceIsTypedIntoAField) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(Qt::Key_Space);
    EXPECT_EQ(Field().Contents(), u"ab ");
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
}

TEST_F(KeysOfAWindow, CopyAndPasteAreQts) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("ab"));
    Press(Qt::Key_End);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Field().Contents(), u"abab");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Field().Contents(), u"ab");
}

TEST_F(KeysOfAWindow, HomeAndDeleteAreTheFields) {
    Ask(modPDAUI::PromptKind::Line, u"abc");
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Field().Contents(), u"bc");
}

TEST_F(KeysOfAWindow, UpAndDownLeaveTheFieldOverACellAndMoveTheRow) {
    OpenRecord();
    Tap(1, 1);
    Type("x");
    Press(Qt::Key_Down);
    EXPECT_EQ(Cell(1, 1), u"bx");
    EXPECT_EQ(Main().Row(), 2);
    EXPECT_EQ(Holder(), &Main());
    EXPECT_FALSE(Field().Visible());
}

TEST_F(KeysOfAWindow, LeftAndRightMoveTheCaretOfAField) {
    Ask(modPDAUI::PromptKind::Line, u"ab");
    Press(Qt::Key_Left);
    Type("x");
    Press(Qt::Key_Right);
    Type("y");
    EXPECT_EQ(Field().Contents(), u"axby");
}

TEST_F(KeysOfAWindow, PageDownMovesOneRow) {
    ShowRows(60);
    Press(Qt::Key_PageDown);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Main().Row(), 2);
    EXPECT_EQ(Main().TopRow(), 0);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Main().Row(), 1);
}

TEST_F(KeysOfAWindow, ReachTheGridAlsoWhenNothingHasTheFocus) {
    ShowRows(5);
    Main().SetVisible(false);
    Main().SetVisible(true);
    ASSERT_EQ(Holder(), nullptr);
    Press(Qt::Key_Down);
    EXPECT_EQ(Main().Row(), 1);
}

TEST_F(KeysOfAWindow, ReachTheMessageBoxAloneWhileOneIsOpen) {
    OpenRecord();
    ListenToArrows();
    AskInABox(platform::BoxButtons::YesNo, [this] {
        QTest::keyClick(Form().windowHandle(), Qt::Key_Down);
        QTest::keyClick(Form().windowHandle(), Qt::Key_Escape);
        QTest::keyClick(Device.Platform.boxes.Dialog(), Qt::Key_Down);
        Device.Hand.PressBoxButton(platform::BoxAnswer::No);
    });
    EXPECT_THAT(Heard, IsEmpty());
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_EQ(Screen(), modQuorin::ScrInfRecord);
}

TEST_F(KeysOfAWindow, F1AndF2OpenTheMenus) {
    for (const Qt::Key key : {Qt::Key_F1, Qt::Key_F2}) {
        OpenRecord();
        Press(key);
        QWidget* const menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        menu->hide();
        Settle();
    }
}

TEST_F(KeysOfAWindow, AltAndTheLetterOfAMenuOpenIt) {
    const QString caption = Device.Platform.menus.Bar()->actions().front()->text();
    const QChar letter = caption[caption.indexOf(QLatin1Char('&')) + 1];
    Press(static_cast<Qt::Key>(letter.toUpper().unicode()), Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QApplication::activePopupWidget()->hide();
}

// A Palm.

class KeysOfAPalm : public KeysOfAWindow {
protected:
    KeysOfAPalm() : KeysOfAWindow(1) {}
};

TEST_F(KeysOfAPalm, PageDownTurnsThePageWhateverHasTheFocus) {
    ShowRows(40);
    Press(Qt::Key_PageDown);
    const std::int32_t onPage = Main().TopRow();
    EXPECT_GT(onPage, 1);
    EXPECT_EQ(Main().Row(), onPage);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Main().TopRow(), 0);
}

TEST_F(KeysOfAPalm, ButtonsUnderTheScreenAreItsKeys) {
    ShowRows(40);
    auto* const button = Form().findChild<QAbstractButton*>(QStringLiteral("key34"));
    if (button == nullptr) {
        for (auto* any : Form().findChildren<QAbstractButton*>())
            ADD_FAILURE() << any->objectName().toStdString();
        return;
    }
    Click(*button, button->rect().center());
    EXPECT_GT(Main().TopRow(), 1);
    EXPECT_EQ(Holder(), &Main());
}

} // namespace
} // namespace windowtest
