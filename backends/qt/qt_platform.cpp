// SPDX-License-Identifier: MIT
#include "backends/qt/qt_platform.h"

#include "backends/loop/acts.h"
#include "backends/loop/form_events.h"
#include "backends/loop/form_keys.h"
#include "companion/form_state.h"
#include "src/app/keys.h"
#include "src/view/display_state.h"
#include "src/view/input_fields.h"

#include <QApplication>
#include <QInputMethod>
#include <QPointer>
#include <QStyle>

#include <cmath>

namespace backends::qt {

namespace {

constexpr int ThinBar = 4;                                 // pixels, on a device that draws the bar over the cells
constexpr auto HandsRest = std::chrono::milliseconds(500); // after this time without a key, the user is not typing

float BarWidth(const WindowOptions& looks) {
    const int ofStyle = QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return looks.ScrollBarWidth.value_or(static_cast<float>(ofStyle));
}

std::vector<std::int32_t> CodesOf(const DeviceProfile& profile) {
    std::vector<std::int32_t> codes;
    for (const DeviceKey& key : profile.Keys)
        codes.push_back(key.Code);
    return codes;
}

} // namespace

QtPlatform::QtPlatform(HostDevice& device, const WindowOptions& looks, QtPump& qtPump, CommandSource& commands,
                       Watcher& watcher)
    : HostBackEnd(device, qtPump, commands, watcher), window(looks.Scale, looks.UsualScale),
      native(focus, window.Screen()), form(window.FormWidget()),
      grdTitle(window.FormWidget(), focus, native, "grdTitle"), grdMain(window.FormWidget(), focus, native, "grdMain"),
      txtInputField(window.FormWidget(), focus, native, "txtInputField"),
      cboInputField(window.FormWidget(), focus, native, "cboInputField"),
      cbotxtInputField(window.FormWidget(), focus, native, "cbotxtInputField"),
      dteInputField(window.FormWidget(), focus, native, "dteInputField"),
      lstHoldMenu(window.FormWidget(), focus, native, "lstHoldMenu"),
      lblStatus(window.FormWidget(), focus, native, "lblStatus"), scrollBar(BarWidth(looks)),
      boxes(loop, watcher, window),
      controls{
          .form = form,
          .grdTitle = grdTitle,
          .grdMain = grdMain,
          .txtInputField = txtInputField,
          .cboInputField = cboInputField,
          .cbotxtInputField = cbotxtInputField,
          .dteInputField = dteInputField,
          .lstHoldMenu = lstHoldMenu,
          .lblStatus = lblStatus,
          .scrollBar = scrollBar,
          .menuTitles = {&menus.Titles[0], &menus.Titles[1]},
          .menuItems = {Pointers(menus.Items[0]), Pointers(menus.Items[1])},
          .fonts = looks.Fonts != nullptr ? *looks.Fonts : fonts,
          .boxes = boxes,
      },
      record(RecordOf(controls)), Pump_(qtPump), KeysOfDevice_(CodesOf(looks.Profile)) {
    qtPump.Serve(loop);
    loop.Listen(grdTitle);
    loop.Listen(grdMain);
    loop.Listen(*this);
    DesignControls(controls);
    WireEvents(*this, watcher);
    WireControls();
    WireWindow();
    if (!TraitsOf(system.DeviceType()).HasWindow)
        KeyStrip_ = looks.Profile.Keys;
    qApp->installEventFilter(this);
}

QtPlatform::~QtPlatform() {
    qApp->removeEventFilter(this);
    Pump_.WorkShown = nullptr; // the pump may live longer
    host.faults.Working = nullptr;
    host.hostDatabases.Patience.Waiting = nullptr;
    host.hostDatabases.Patience.Shown = nullptr;
}

void QtPlatform::WireControls() {
    grdMain.BarWidth = TraitsOf(system.DeviceType()).BarOverCells ? ThinBar : static_cast<int>(scrollBar.Width());
    grdMain.Pressed = frmQuorin::grdMain_Press;
    grdMain.Released = frmQuorin::grdMain_Release;
    grdTitle.PressesNothing = true;
    grdTitle.SetEnabled(true);                     // sets its focus policy: clicks and Tab do not move Qt's focus there
    grdTitle.Pressed = modPDAUI::FocusPromptField; // the press has taken the focus from the field of a prompt
    grdTitle.Released = frmQuorin::grdTitle_Release;
    grdMain.ScreenAge = [this] { return ScreenAge(); };
    lstHoldMenu.Click = RaiseHoldMenuClick;
    dteInputField.Closed = RaiseDateChosen;
    lblStatus.Hiding = [this] { Pump_.Breathe(QtPump::Input::Too); }; // handles what was tapped under the strip
    // The accessible name of a field over a cell is that of its row; a prompt's field has the name of its question.
    const auto name = [this] { return grdMain.Visible() ? grdMain.Cell(grdMain.Row(), 0) : grdTitle.Cell(0, 0); };
    txtInputField.NameForPeople = name;
    cboInputField.NameForPeople = name;
    cbotxtInputField.NameForPeople = name;
    dteInputField.NameForPeople = name;
    lstHoldMenu.NameForPeople = name;
    menus.TitleClicked = RaiseTitleClick;
    menus.ItemClicked = RaiseItemClick;
}

void QtPlatform::WireWindow() {
    boxes.Opening = [this] {
        // The box gets the release of what is pressed now.
        if (grdMain.Widget().Withdraw())
            tmrHoldEvent.SetEnabled(false);
        Held_.clear();
        menus.SetBlocked(true);
    };
    boxes.Leaving = [this] { menus.SetBlocked(boxes.AnyIsOpen()); };
    boxes.PersonIsTyping = [this] { return std::chrono::steady_clock::now() - LastKey_ < HandsRest; };
    window.CloseRequested = [this] { CloseWanted_ = true; };
    Pump_.WorkShown = [this](bool working) {
        window.SetWorking(working);
        menus.FollowIfChanged(); // they are disabled while the strip is visible
    };
    host.faults.Working = [this] { Pump_.Working(); };
    runTime.Rest = [this](std::int32_t milliseconds) { Pump_.Rest(milliseconds); };
    fonts.Working = [this] { Pump_.Working(); };
    host.hostDatabases.Patience.Waiting = [this] { Pump_.Working(); };
    host.hostDatabases.Patience.Shown = [this](bool waits) { window.SetWaiting(waits); };
    window.KeyPressed = [this](std::int32_t code) {
        HeldButtons_[code] = {code, modQuorin::Screens.CurrentScreen};
        FocusTarget& taker = focus.HolderOr(grdMain);
        if (KeyGoesDown(code) && &focus.HolderOr(grdMain) == &taker)
            ActOnKey(taker, code);
    };
    window.KeyReleased = [this](std::int32_t code) { ComesUp(HeldButtons_[code]); };
    window.Screen().Resized = [this] { SizeChanged_ = true; };
    window.Rescaled = [this] {
        menus.SetFont(window.FormWidget().DesktopFont());
        SizeChanged_ = true;
    };
    QObject::connect(QGuiApplication::inputMethod(), &QInputMethod::keyboardRectangleChanged, this,
                     [this] { KeyboardChanged_ = true; });
}

bool QtPlatform::IsAtRest() const {
    return !loop.Ending() && !boxes.AnyIsOpen() && QApplication::activePopupWidget() == nullptr &&
           QApplication::mouseButtons() == Qt::NoButton && !grdMain.HandIsDown;
}

void QtPlatform::ShowEmpty() {
    const Box screen = system.WorkArea();
    window.Screen().SetWish({qRound(screen.Width), qRound(screen.Height)});
    window.show();
}

/// Called when the form has its size and it is known whether the device's menus are keys.
void QtPlatform::ShowForm() {
    const QRect size = RectOf(PixelsOf(form));
    constexpr int FingerWidth = 44; // pixels of the window
    menus.PutInto(window, window.Head(), window.Foot(), modPDAUI::Display.SoftKeyMenus, FingerWidth);
    window.Screen().SetWish(size.size());
    window.ShowKeys(KeyStrip_);
    IsResizable_ = TraitsOf(system.DeviceType()).HasWindow;
    if (IsResizable_)
        window.LetSize();
    else
        window.HoldSize();
    window.SetScale(window.Scale()); // as far as the screen has room for it
    native.Follow();
    window.show();
    if (IsResizable_)
        window.Fit(); // it may have been open before, without the menus
}

// --- the window's own events -----------------------------------------------------------------------------------------

std::int64_t QtPlatform::ScreenAge() const {
    return modQuorin::Screens.CurrentScreen == SeenScreen_ ? clock.Milliseconds() - SeenSince_ : 0;
}

bool QtPlatform::RaiseWhatIsPending() {
    if (modQuorin::Screens.CurrentScreen != SeenScreen_) {
        SeenScreen_ = modQuorin::Screens.CurrentScreen;
        SeenSince_ = clock.Milliseconds();
    }
    const bool sized = SizeChanged_ && IsResizable_;
    SizeChanged_ = false;
    if (sized)
        TakeUpSize();
    const bool keyboard = KeyboardChanged_;
    KeyboardChanged_ = false;
    if (keyboard)
        TakeUpKeyboard();
    const bool close = CloseWanted_;
    CloseWanted_ = false;
    if (close)
        RaiseCloseRequest();
    return menus.FollowIfChanged() || sized || keyboard || close;
}

/// Returns the greatest width of the form in a resizable window, in its pixels: the eye loses longer
/// lines.
int QtPlatform::WidestForm() const {
    constexpr int Characters = 140; // of its font: a record has two columns
    return Characters * QFontMetrics(FontOf(grdMain.FontName(), grdMain.FontSize())).averageCharWidth();
}

/// The working area has changed: the form lays itself out in it, as it does when a soft keyboard opens or closes.
void QtPlatform::TakeUpSize() {
    const QSize room = window.FormWidget().Room();
    const QSize size(std::min(room.width(), WidestForm()), room.height());
    if (size == RectOf(PixelsOf(form)).size() || size.isEmpty())
        return;
    TakeUpWorkArea(system, controls, {size.width(), size.height()});
}

/// Reports the part of the form that a soft keyboard covers.
void QtPlatform::TakeUpKeyboard() {
    const QRect covered = QGuiApplication::inputMethod()->keyboardRectangle().toRect(); // of the window
    const FormCanvas& canvas = window.FormWidget();
    const QRect part = QRect(canvas.mapFrom(&window, covered.topLeft()), covered.size()).intersected(canvas.rect());
    if (part.isEmpty())
        return RaiseKeyboard(system, {});
    const QPoint from = canvas.OfForm(part.topLeft());
    const QPoint to = canvas.OfForm(part.bottomRight());
    RaiseKeyboard(system, {.State = -1,
                           .Left = from.x(),
                           .Top = from.y(),
                           .Width = to.x() - from.x() + 1,
                           .Height = to.y() - from.y() + 1});
}

// --- keys ------------------------------------------------------------------------------------------------------------

bool QtPlatform::KeyGoesDown(std::int32_t code) {
    if (!KeyDownPasses(code))
        return false;
    if (IsPageKey(code) && focus.Holder() == &dteInputField)
        return false; // as on the devices: a page key does not change the month
    if (!grdMain.TurnsPages || !IsPageKey(code))
        return true;
    grdMain.ActOnKey(code); // on Palm OS the grid scrolls, whatever has the focus
    return false;
}

/// While a handler runs, presses and keys outside of the input fields are dropped. Those in an input field are
/// postponed, and so is every release, because its press may have come before.
QtPlatform::Fate QtPlatform::FateOf(const QObject& object, const QEvent& event) const {
    if (!Pump_.Breathing() || !object.isWidgetType())
        return Fate::Passes;
    const FocusTarget* const target = native.TargetOf(static_cast<const QWidget*>(&object));
    const bool isField = target != nullptr && target != &grdMain && target != &grdTitle;
    switch (event.type()) {
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
        return Fate::Postponed;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
        return isField ? Fate::Postponed : Fate::Dropped;
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::ShortcutOverride:
        return Fate::Dropped;
    default:
        return Fate::Passes;
    }
}

bool QtPlatform::eventFilter(QObject* object, QEvent* event) {
    if (object == qApp && event->type() == QEvent::Quit && SessionEnds) {
        SessionEnds();
        return true;
    }
    if (!Pump_.Breathing() && (event->spontaneous() || event->type() == QEvent::Shortcut)) {
        Pump_.Awake();
        BeginOperation();
    }
    if (event->type() == QEvent::KeyPress && IsTyped(*static_cast<QKeyEvent*>(event)))
        LastCharacter_ = std::chrono::steady_clock::now(); // also of one that is dropped
    const Fate fate = FateOf(*object, *event);
    if (fate == Fate::Postponed)
        QCoreApplication::postEvent(object, event->clone());
    if (fate != Fate::Passes)
        return true;
    if (event->type() == QEvent::WindowDeactivate && object == &window)
        Held_.clear(); // their releases go to another window
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || Delivering_ || !object->isWidgetType())
        return false;
    const auto* const widget = static_cast<QWidget*>(object);
    if (boxes.Current() != nullptr)
        return false;
    if (widget->window() != &window) {
        LastKey_ = std::chrono::steady_clock::now(); // a box that opens now was not expected there either
        return false;
    }
    auto& key = *static_cast<QKeyEvent*>(event);
    if (event->type() == QEvent::KeyRelease)
        return TakeKeyRelease(key);
    // Only the widget that gets the key first, and not its parents, to which Qt passes a key that it ignores.
    if (widget != window.focusWidget() || !native.TakesKeys(widget))
        return false;
    if (focus.Holder() == &txtInputField)
        LastFieldKey_ = std::chrono::steady_clock::now();
    return ComesTooLate() || TakeKeyPress(key);
}

bool QtPlatform::ComesTooLate() const {
    return modPDAUI::Input.TakenAway && focus.Holder() != &txtInputField &&
           std::chrono::steady_clock::now() - LastFieldKey_ < HandsRest;
}

/// Raises one release for each press. A release whose press went to a menu or a box is left to these.
bool QtPlatform::TakeKeyRelease(const QKeyEvent& event) {
    const auto held = Held_.find(event.key());
    if (held == Held_.end() || event.isAutoRepeat())
        return false;
    const HeldKey key = held->second;
    Held_.erase(held);
    ComesUp(key);
    return true;
}

/// Raises no key up if the screen has changed since the press: the key has acted, or was meant for the screen before.
void QtPlatform::ComesUp(const HeldKey& key) {
    if (key.Screen == modQuorin::Screens.CurrentScreen)
        RaiseKeyUp(key.Code);
    else if (Key{key.Code} == Key::Enter)
        tmrHoldEvent.SetEnabled(false); // which its press has started
}

/// Tab closes the field of a record and opens the one below it that is edited in place, Shift+Tab the one above, by a
/// tap on its cell. At the last one it closes the field.
bool QtPlatform::TakeTab(const QKeyEvent& event) {
    const bool isBack = event.key() == Qt::Key_Backtab;
    if ((event.key() != Qt::Key_Tab && !isBack) || !grdMain.Visible() || !grdMain.Enabled())
        return false;
    const bool isOpen = focus.Holder() == &txtInputField && txtInputField.Visible();
    if (!isOpen && (modPDAUI::AnyInputFieldVisible() || isBack))
        return false;
    constexpr std::int32_t ValueColumn = 1;
    const std::int32_t from = isOpen ? modPDAUI::Input.EditRow : grdMain.Row() - 1;
    if (event.isAutoRepeat())
        return true; // a key that is held acts once
    if (const auto row = companion::NextEditedRow(from, isBack ? -1 : 1)) {
        grdMain.Widget().PointerDown(*row, ValueColumn);
        grdMain.Widget().PointerUp();
        return true;
    }
    if (isOpen && KeyGoesDown(platform::CodeOf(Key::Enter)))
        ActOnKey(txtInputField, platform::CodeOf(Key::Enter));
    return isOpen;
}

bool QtPlatform::TakeHomeOrEnd(const QKeyEvent& event) {
    const bool isHome = event.key() == Qt::Key_Home;
    if ((!isHome && event.key() != Qt::Key_End) || &focus.HolderOr(grdMain) != &grdMain || !HasEndsToSelect(grdMain))
        return false;
    if (!event.isAutoRepeat()) // it may have been pressed on another screen
        SelectEnd(grdMain, isHome);
    return true;
}

/// A "?" asks for help where it is no character: outside of the fields and lists that are open.
bool QtPlatform::TakeQuestionMark(const QKeyEvent& event) {
    if (!IsQuestionMark(event) || modPDAUI::AnyInputFieldVisible())
        return false;
    if (!event.isAutoRepeat())
        window.WantHelp();
    return true;
}

/// A bar-code scanner types its digits and Enter: no row is selected by that.
bool QtPlatform::EnterSelects() const {
    return TraitsOf(system.DeviceType()).HasWindow && !modPDAUI::AnyInputFieldVisible() &&
           std::chrono::steady_clock::now() - LastCharacter_ >= HandsRest;
}

/// Returns true if the key has been handled.
bool QtPlatform::TakeKeyPress(QKeyEvent& event) {
    if (TakeTab(event) || TakeHomeOrEnd(event) || TakeQuestionMark(event))
        return true;
    auto code = CodeOf(event, KeysOfDevice_);
    if (!code)
        return false;
    FocusTarget& taker = focus.HolderOr(grdMain);
    if (&taker == &grdMain && Key{*code} == Key::Enter && EnterSelects())
        code = platform::CodeOf(Key::PalmSelect);
    if (&taker == &grdMain)
        code = modQuorin::KeyForGrid(*code);
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (!event.isAutoRepeat())
        Held_[event.key()] = {*code, screen};
    else if (const auto held = Held_.find(event.key()); held == Held_.end() || held->second.Screen != screen)
        return true; // it was pressed in another window or on another screen
    LastKey_ = std::chrono::steady_clock::now();
    if (AnswersPrompt(*this, *code)) {
        RaiseItemClick(2, 1);
        return true;
    }
    if (!KeyGoesDown(*code) || &focus.HolderOr(grdMain) != &taker)
        return true;
    if (focus.Holder() != nullptr)
        return false; // Qt delivers it to the control
    ActOnKey(taker, *code);
    return true;
}

void QtPlatform::ActOnKey(FocusTarget& taker, std::int32_t code) {
    if (&taker == &grdMain || &taker == &grdTitle)
        return taker.ActOnKey(code);
    if (IsCharacter(code) && code > Qt::Key_Space)
        SendKey(taker, QChar(code).toUpper().unicode(), QString(QChar(code)));
    else if (IsCharacter(code))
        taker.EnterCharacter(Text(1, static_cast<char16_t>(code)));
    else if (KeyOf(code) != 0)
        SendKey(taker, KeyOf(code), QString());
}

void QtPlatform::SendKey(FocusTarget& taker, int key, const QString& text) {
    QWidget* widget = native.WidgetOf(taker);
    if (widget == nullptr)
        return;
    if (widget->focusProxy() != nullptr)
        widget = widget->focusProxy();
    const QPointer<QWidget> receiver = widget; // which the key may close
    Delivering_ = true;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        if (receiver != nullptr)
            QCoreApplication::sendEvent(receiver, &event);
    }
    Delivering_ = false;
}

} // namespace backends::qt
