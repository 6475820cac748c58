// SPDX-License-Identifier: MIT
// A whole device in a window.
#pragma once

#include "backends/host/host_back_end.h"
#include "backends/qt/accessible_grid.h"
#include "backends/qt/boxes.h"
#include "backends/qt/keyboard_map.h"
#include "backends/qt/pump.h"
#include "backends/qt/qt_controls.h"
#include "backends/qt/qt_grid.h"
#include "backends/qt/qt_soft_menus.h"
#include "backends/qt/window.h"
#include "src/view/screen_table.h"

#include <QObject>

#include <chrono>
#include <map>

namespace backends::qt {

/// What a window adds to the options of a device.
struct WindowOptions {
    FontServer* Fonts = nullptr;         ///< in place of the window's own, so that sizes are predictable; may be null
    std::optional<float> ScrollBarWidth; ///< pixels; if not set, that of the desktop's style
    DeviceProfile Profile;               ///< of the device, whose keys are shown as buttons
    double Scale = 1;                    ///< pixels of the window for a pixel of the form
    double UsualScale = 1;               ///< the one at which menus have the desktop's size
};

class QtScrollBar final : public ScrollBar {
public:
    explicit QtScrollBar(float width) : Pixels_(width) {}
    float Width() const override { return Pixels_; }

private:
    float Pixels_;
};

class QtPlatform final : private QObject, public HostBackEnd, private EventSource {
public:
    QtPlatform(HostDevice& device, const WindowOptions& looks, QtPump& qtPump, CommandSource& commands,
               Watcher& watcher);
    ~QtPlatform() override;

    Window window;
    NativeFocus native;
    QtForm form;
    QtGrid grdTitle;
    QtGrid grdMain;
    GridNews newsOfTitle{grdTitle};
    GridNews newsOfMain{grdMain};
    QtTextBox txtInputField;
    QtComboBox cboInputField;
    QtTextBox cbotxtInputField;
    QtDatePicker dteInputField;
    QtListBox lstHoldMenu;
    QtLabel lblStatus;
    QtScrollBar scrollBar;
    SoftMenus menus;
    QtFonts fonts;
    QtBoxes boxes;

    /// Called when the session of the desktop ends, or the desktop asks the program to end.
    std::function<void()> SessionEnds;

    Controls controls;
    Platform record;

    const Controls& Seen() const override { return controls; }

    /// Sends a key to the widget of a control, as if the key had come from the keyboard and the form had left it to the
    /// control.
    void SendKey(FocusTarget& taker, int key, const QString& text);

    /// True if no box, menu or press is in the way of what changes the form's screen from outside of it.
    bool IsAtRest() const;

    /// Shows the window before the form is started: its screen is empty.
    void ShowEmpty();

protected:
    Platform& Record() override { return record; }
    void ShowForm() override;

    /// Passes the keys of the keyboard to the form first.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct HeldKey {
        std::int32_t Code = 0;
        modQuorin::ScreenId Screen = 0; ///< on which it was pressed
    };

    void WireControls();
    void WireWindow();

    // The window's own events. The loop raises them, never in the middle of a handler.
    bool RaiseWhatIsPending() override;
    void TakeUpSize();
    int WidestForm() const;
    /// Returns the milliseconds since the screen appeared.
    std::int64_t ScreenAge() const;
    void TakeUpKeyboard();

    /// What happens to an input event that arrives while a handler runs.
    enum class Fate { Passes, Dropped, Postponed };
    Fate FateOf(const QObject& object, const QEvent& event) const;
    bool TakeKeyRelease(const QKeyEvent& event);
    void ComesUp(const HeldKey& key);
    /// Raises key down. Returns true if the control is to react to it.
    bool KeyGoesDown(std::int32_t code);
    bool TakeKeyPress(QKeyEvent& event);
    bool TakeTab(const QKeyEvent& event);
    bool TakeQuestionMark(const QKeyEvent& event);
    bool TakeHomeOrEnd(const QKeyEvent& event);
    bool EnterSelects() const;
    /// True if the key was meant for the text field that a change of the record has closed while the user was typing.
    bool ComesTooLate() const;
    void ActOnKey(FocusTarget& taker, std::int32_t code);

    QtPump& Pump_;
    std::vector<std::int32_t> KeysOfDevice_;
    std::vector<DeviceKey> KeyStrip_; ///< the keys that are shown as buttons
    bool IsResizable_ = false;
    bool SizeChanged_ = false;
    bool KeyboardChanged_ = false;
    bool CloseWanted_ = false;
    bool Delivering_ = false;                             ///< SendKey is sending a key, which the form must not get
    std::map<int, HeldKey> Held_;                         ///< keys of the keyboard that were pressed on the form
    std::map<std::int32_t, HeldKey> HeldButtons_;         ///< pressed buttons of the strip
    modQuorin::ScreenId SeenScreen_ = 0;                  ///< the screen at the last round of events
    std::int64_t SeenSince_ = 0;                          ///< since when, by the device's clock
    std::chrono::steady_clock::time_point LastKey_;       ///< when a key was last pressed, but in a box
    std::chrono::steady_clock::time_point LastCharacter_; ///< when a character was last typed anywhere in the window
    std::chrono::steady_clock::time_point LastFieldKey_;  ///< when a key was last typed into the text field
};

} // namespace backends::qt
