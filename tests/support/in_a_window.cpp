// SPDX-License-Identifier: MIT
#include "tests/support/in_a_window.h"

#include "backends/headless/headless_controls.h"
#include "backends/qt/accessible_grid.h"
#include "src/app/commands.h"
#include "src/app/start_up.h"
#include "src/view/prompt.h"

namespace windowtest {

namespace {

DeviceOptions OnFolder(DeviceOptions options, const support::TemporaryFolder& folder) {
    options.Root = folder.Path().string();
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    return options;
}

backends::qt::WindowOptions LooksOf(const DeviceOptions& options, Looks looks, platform::FontServer& fixed) {
    backends::qt::WindowOptions window;
    window.Scale = looks.Scale;
    window.UsualScale = looks.UsualScale;
    if (!looks.RealFonts) {
        window.Fonts = &fixed;
        window.ScrollBarWidth = backends::headless::UsualBarWidth;
    }
    window.Profile = backends::ProfileOfType(options.DeviceType);
    return window;
}

[[noreturn]] int ThrowEnd(const backends::ProgramOver& over) {
    throw over;
}

} // namespace

DeviceOptions OfType(std::int32_t deviceType) {
    DeviceOptions options;
    options.DeviceType = deviceType;
    return options;
}

WindowDevice::WindowDevice(DeviceOptions options, Looks looks)
    : Pump(ThrowEnd), Host(OnFolder(options, Folder)),
      Platform(Host, LooksOf(options, looks, FixedFonts), Pump, *this, Did) {
    backends::qt::InstallAccessibleGrids();
}

WindowDevice::~WindowDevice() {
    modQuorin::ResetModules();
}

void WindowDevice::RunCommand() {
    const std::function<void()> step = std::move(Steps_.front());
    Steps_.pop_front();
    step();
}

InAWindow::InAWindow(const DeviceOptions& options, Looks looks) : Device(options, looks) {
    Device.Platform.StartProgram();
    Form().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Settle();
}

void InAWindow::Down(QWidget& widget, QPoint place) {
    QTest::mousePress(widget.window()->windowHandle(), Qt::LeftButton, {}, widget.mapTo(widget.window(), place));
    Settle();
}

void InAWindow::Up(QWidget& widget, QPoint place) {
    QTest::mouseRelease(widget.window()->windowHandle(), Qt::LeftButton, {}, widget.mapTo(widget.window(), place));
    Settle();
}

void InAWindow::Click(QWidget& widget, QPoint place) {
    Down(widget, place);
    Up(widget, place);
}

void InAWindow::Press(Qt::Key key, Qt::KeyboardModifiers held) {
    QTest::keyClick(Form().windowHandle(), key, held);
    Settle();
}

void InAWindow::Type(const char* letters) {
    for (; *letters != 0; ++letters)
        QTest::keyClick(Form().windowHandle(), *letters);
    Settle();
}

void InAWindow::Repaint() {
    Settle();
    Pass(100);
    Settle();
}

void InAWindow::OpenRecord(const std::string& content) {
    Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                     "Place|1||||||\nMoisture|1||Moisture||||\nRemark|1||||||\n");
    Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    Put("qrn0001.txt", content);
    modQuorin::MenuEvent(u"Start...");
    modQuorin::MenuEvent(u"Ok");
    modQuorin::MenuEvent(u"Open");
    Repaint();
}

void InAWindow::Ask(modPDAUI::PromptKind kind, const Text& value, const Text& list) {
    modQuorin::MenuEvent(u"File Debug...");
    Repaint();
    Text answer = value;
    modPDAUI::InputPrompt(u"Title", kind, answer, list, false, false);
    Settle();
}

void InAWindow::ShowRows(std::int32_t rows) {
    modQuorin::MenuEvent(u"Fonts...");
    Repaint();
    Main().SetRows(rows);
    for (std::int32_t row = 0; row < rows; ++row)
        Main().SetCell(row, 0, u"row");
    Repaint();
}

platform::BoxAnswer InAWindow::AskInABox(platform::BoxButtons buttons, std::function<void()> step) {
    Device.WillDo(std::move(step));
    const auto icon = buttons == platform::BoxButtons::YesNo ? platform::BoxIcon::Question : platform::BoxIcon::None;
    return Device.Platform.boxes.Show(u"Really?", buttons, icon, u"");
}

std::string FormOnThisScreen() {
    WindowDevice device(OfType(1), {});
    device.Platform.StartProgram();
    device.Platform.loop.HandleDue();
    const platform::Box form = device.Platform.form.ClientArea();
    const platform::Box grid = device.Platform.grdMain.Bounds();
    const auto& widget = device.Platform.grdMain.Widget();
    const QPixmap seen = device.Platform.window.FormWidget().grab();
    return QStringLiteral("form %1x%2 grid %3x%4 shown %5x%6 drawn %7x%8")
        .arg(form.Width)
        .arg(form.Height)
        .arg(grid.Width)
        .arg(grid.Height)
        .arg(widget.width())
        .arg(widget.height())
        .arg(seen.width())
        .arg(seen.height())
        .toStdString();
}

} // namespace windowtest
