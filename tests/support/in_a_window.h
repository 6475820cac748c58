// SPDX-License-Identifier: MIT
// The whole program in a window that nobody sees, with fonts of fixed sizes and a clock that stands still. The person
// at it clicks and types by Qt's own test functions, which go the way of a real mouse and a real keyboard.
#pragma once

#include "backends/headless/font_server.h"
#include "src/view/prompt.h"
#include "src/view/screen_table.h"
#include "tests/support/test_device.h"
#include "tests/support/window_hand.h"

#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>

namespace windowtest {

using backends::DeviceOptions;

struct Looks {
    bool RealFonts = false; ///< the window's own instead of those of fixed sizes
    double Scale = 1;       ///< which the application has been made with
};

class WindowDevice final : backends::CommandSource {
public:
    explicit WindowDevice(DeviceOptions options, Looks looks);
    ~WindowDevice() override;

    const support::TemporaryFolder Folder;
    support::Record Did;
    backends::headless::HeadlessFonts FixedFonts;
    backends::qt::QtPump Pump;
    backends::HostDevice Host;
    backends::qt::QtPlatform Platform;
    WindowHand Hand{Platform};

    /// What the person does while the program waits for a prompt or a message box, one step at a time.
    void WillDo(std::function<void()> step) { Steps_.push_back(std::move(step)); }
    bool HasStepsLeft() const { return !Steps_.empty(); }

private:
    void AboutToWait(int) override {}
    bool HasCommand() override { return !Steps_.empty(); }
    bool Ended() override { return true; } ///< a wait that nobody was told about ends the program
    void TakeInput() override {}
    void RunCommand() override;

    std::deque<std::function<void()>> Steps_;
};

DeviceOptions OfType(std::int32_t deviceType);

class InAWindow : public testing::Test {
protected:
    explicit InAWindow(const DeviceOptions& options = OfType(0), Looks looks = {});

    static modQuorin::ScreenId Screen() { return modQuorin::Screens.CurrentScreen; }

    // What is seen.
    backends::qt::Window& Form() { return Device.Platform.window; }
    backends::qt::QtGrid& Main() { return Device.Platform.grdMain; }
    backends::qt::GridWidget& Grid() { return Main().Widget(); }
    backends::qt::QtTextBox& Field() { return Device.Platform.txtInputField; }
    QLineEdit& Line() { return *Form().findChild<QLineEdit*>(QStringLiteral("txtInputField")); }
    QPlainTextEdit& Page() { return *Form().findChild<QPlainTextEdit*>(QStringLiteral("txtInputField")); }
    QComboBox& Combo() { return *Form().findChild<QComboBox*>(QStringLiteral("cboInputField")); }
    QCalendarWidget& Calendar() { return Device.Platform.dteInputField.Calendar(); }
    backends::FocusTarget* Holder() { return Device.Platform.focus.Holder(); }
    Text Cell(std::int32_t row, std::int32_t col = 0) { return Main().Cell(row, col); }
    QPoint Middle(std::int32_t row, std::int32_t col = 0) { return Grid().CellRect(row, col).center(); }

    // What the person does. Each is followed by the events that come of it.
    void Click(QWidget& widget, QPoint place);
    void Tap(std::int32_t row, std::int32_t col = 0) { Click(Grid(), Middle(row, col)); }
    void Down(QWidget& widget, QPoint place);
    void Up(QWidget& widget, QPoint place);
    void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
    void Type(const char* letters);

    void Settle() { Device.Platform.loop.HandleDue(); }
    void Pass(std::int64_t milliseconds) { Device.Platform.loop.PassTime(milliseconds); }
    /// Lets the deferred repaint come.
    void Repaint();

    void Put(const std::string& name, const std::string& bytes) { Device.Folder.Put("Quorin/" + name, bytes); }
    std::string File(const std::string& name) { return Device.Folder.Bytes("Quorin/" + name); }
    /// A driver "Meter" with three fields, and a record of it on the screen.
    void OpenRecord(const std::string& content = "Place|Moisture|Remark\na|b|c\n");
    /// A question that waits for nobody, over the list of file operations.
    void Ask(modPDAUI::PromptKind kind, const Text& value, const Text& list = u"");
    /// A list of so many rows of text, with the focus on it; nothing comes of a tap there but the row change.
    void ShowRows(std::int32_t rows);
    /// An open message box answers as the person does in `step`.
    platform::BoxAnswer AskInABox(platform::BoxButtons buttons, std::function<void()> step);

    WindowDevice Device;
};

/// The form's box in its own units, the grid's, and the pixels of the screen to one of them, as a line of text.
std::string FormOnThisScreen();

} // namespace windowtest
