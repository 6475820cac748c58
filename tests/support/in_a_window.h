// SPDX-License-Identifier: MIT
// The whole program in an invisible window, with fonts of fixed sizes and a clock that moves only when a test moves it.
// Clicks and keys come from Qt's own test functions and take the path of a real mouse and keyboard.
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
    bool RealFonts = false; ///< the window's own in place of those of fixed sizes
    double Scale = 1;       ///< pixels of the window for a pixel of the form
    double UsualScale = 1;
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

    /// Adds an action of the user. One is performed each time the program waits for a prompt or a message box.
    void WillDo(std::function<void()> step) { Steps_.push_back(std::move(step)); }
    bool HasStepsLeft() const { return !Steps_.empty(); }

private:
    void AboutToWait(int) override {}
    bool HasCommand() override { return !Steps_.empty(); }
    bool Ended() override { return true; } ///< a wait without an action left ends the program
    void TakeInput() override {}
    void RunCommand() override;

    std::deque<std::function<void()>> Steps_;
};

DeviceOptions OfType(std::int32_t deviceType);

class InAWindow : public testing::Test {
protected:
    explicit InAWindow(const DeviceOptions& options = OfType(0), Looks looks = {});

    static modQuorin::ScreenId Screen() { return modQuorin::Screens.CurrentScreen; }

    // What is in the window.
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

    // Actions of the user. Each of them also handles the events that it causes.
    void Click(QWidget& widget, QPoint place);
    void Tap(std::int32_t row, std::int32_t col = 0) { Click(Grid(), Middle(row, col)); }
    void Down(QWidget& widget, QPoint place);
    void Up(QWidget& widget, QPoint place);
    void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
    void Type(const char* letters);

    void Settle() { Device.Platform.loop.HandleDue(); }
    void Pass(std::int64_t milliseconds) { Device.Platform.loop.PassTime(milliseconds); }
    /// Lets the time of the deferred repaint pass.
    void Repaint();

    void Put(const std::string& name, const std::string& bytes) { Device.Folder.Put("Quorin/" + name, bytes); }
    std::string File(const std::string& name) { return Device.Folder.Bytes("Quorin/" + name); }
    /// Stores a driver "Meter" with three fields and a download of it, and opens its first record.
    void OpenRecord(const std::string& content = "Place|Moisture|Remark\na|b|c\n");
    /// Opens a prompt over the list of file operations and does not wait for its answer.
    void Ask(modPDAUI::PromptKind kind, const Text& value, const Text& list = u"");
    /// Shows a list of so many rows of text. A tap on it changes the row and does nothing else.
    void ShowRows(std::int32_t rows);
    /// Opens a message box, performs `step` while it is open, and returns the answer.
    platform::BoxAnswer AskInABox(platform::BoxButtons buttons, std::function<void()> step);

    WindowDevice Device;
};

/// Returns a line of text with four sizes: the form and the grid in the form's pixels, the grid's widget, and a picture
/// of the form in pixels of the screen.
std::string FormOnThisScreen();

} // namespace windowtest
