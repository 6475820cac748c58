// SPDX-License-Identifier: MIT
#include "backends/loop/back_end.h"

#include "src/app/form.h"
#include "src/app/start_up.h"
#include "src/view/display_state.h"
#include "src/view/input_fields.h"

namespace backends {

namespace {

constexpr std::int32_t LinkInterval = 500; // milliseconds
constexpr std::int32_t HoldInterval = 1000;
constexpr std::int32_t RepaintInterval = 100;

const Text DesignFont = u"AFPalm";
constexpr std::int32_t DesignFontSize = 8;

} // namespace

Box PixelsOf(const Form& form) {
    const Box twips = form.Bounds();
    return {twips.Left / form.TwipsPerPixelX(), twips.Top / form.TwipsPerPixelY(), twips.Width / form.TwipsPerPixelX(),
            twips.Height / form.TwipsPerPixelY()};
}

BackEnd::BackEnd(const DeviceParts& parts, Pump& pump, CommandSource& commands, Watcher& watcher)
    : clock(parts.clock), loop(clock, commands, pump), tmrBlue(loop, LinkInterval, true, frmQuorin::tmrBlue_Tick),
      tmrHoldEvent(loop, HoldInterval, false, frmQuorin::tmrHoldEvent_Tick),
      tmrMenus(loop, RepaintInterval, false, frmQuorin::tmrMenus_Tick), system(parts.system), keys(watcher, focus),
      serial(parts.serial), connections(parts.connections), tones(watcher), runTime(loop), onlooker(clock, watcher),
      volumes(parts.volumes), files(parts.files), databases(parts.databases), settings(parts.settings, onlooker) {
    serial.Received = frmQuorin::serConnection_Receive;
    loop.Listen(serial);
    loop.Listen(keys);
    loop.Listen(onlooker);
}

BackEnd::~BackEnd() {
    serial.Received = nullptr;
    serial.Held = nullptr;
}

void BackEnd::WasHeldUp() {
    frmQuorin::Form.lastTimerEvent = clock.SteadySeconds();
}

void BackEnd::PauseLink(bool isPaused) {
    if (LinkIsPaused_ && !isPaused)
        WasHeldUp(); // no tick was raised meanwhile
    LinkIsPaused_ = isPaused;
}

Platform BackEnd::RecordOf(const Controls& controls) {
    return {
        .form = controls.form,
        .grdTitle = controls.grdTitle,
        .grdMain = controls.grdMain,
        .txtInputField = controls.txtInputField,
        .cboInputField = controls.cboInputField,
        .cbotxtInputField = controls.cbotxtInputField,
        .dteInputField = controls.dteInputField,
        .lstHoldMenu = controls.lstHoldMenu,
        .lblStatus = controls.lblStatus,
        .AFVScrollBar1 = controls.scrollBar,
        .tmrBlue = tmrBlue,
        .tmrHoldEvent = tmrHoldEvent,
        .tmrMenus = tmrMenus,
        .mnuButton1 = *controls.menuTitles[0],
        .mnuButton2 = *controls.menuTitles[1],
        .mnuButtonO1 = controls.menuItems[0],
        .mnuButtonO2 = controls.menuItems[1],
        .colours = FormColours(),
        .fontServer = controls.fonts,
        .myCsys = system,
        .hardwareKeys = keys,
        .serConnection = serial,
        .connectionService = connections,
        .toneMaker = tones,
        .messageBox = controls.boxes,
        .settings = settings,
        .clock = clock,
        .random = random,
        .runTime = runTime,
        .volumes = volumes,
        .fileSystem = files,
        .recordDatabase = databases,
        .saveWatcher = onlooker,
        .onlooker = onlooker,
        .readingLog = readings,
    };
}

void BackEnd::DesignControls(const Controls& controls) {
    HoldLinkUnderPile(controls.boxes);
    for (DrawnGrid* grid : {&controls.grdTitle, &controls.grdMain}) {
        grid->SetFontName(DesignFont);
        grid->SetFontSize(DesignFontSize);
    }
    const Box screen = system.WorkArea();
    controls.form.SetBounds(
        {0, 0, screen.Width * controls.form.TwipsPerPixelX(), screen.Height * controls.form.TwipsPerPixelY()});
    controls.grdMain.TurnsPages = TraitsOf(system.DeviceType()).GridTurnsPages;
    controls.grdMain.Moved = frmQuorin::grdMain_RowColChange;
    controls.grdMain.DrawCell = frmQuorin::grdMain_DrawCell;
    controls.grdMain.Painted = modPDAUI::KeepFieldOverCell;
    controls.grdMain.FieldIsOpen = modPDAUI::AnyInputFieldVisible;
    controls.grdTitle.Moved = frmQuorin::grdTitle_RowColChange;
    controls.grdTitle.DrawCell = frmQuorin::grdTitle_DrawCell;
}

// Without this an instrument that sends by itself would open a further question with each reading, on top of the open
// ones. Each would be one level deeper on the stack, and all that the instrument has sent would be decoded again each
// time.
void BackEnd::HoldLinkUnderPile(DeviceBoxes& boxes) {
    const auto held = [this, &boxes] { return boxes.Piled() || LinkIsPaused_; };
    serial.Held = held;
    tmrBlue.Held = held;
    boxes.PileLeft = [this] { WasHeldUp(); }; // no tick was raised meanwhile
}

void BackEnd::StartProgram() {
    Serve();
    modQuorin::ResetModules();
    frmQuorin::Form_Load();
    ShowForm();
    frmQuorin::Form_Activate();
    loop.HandleDue();
}

} // namespace backends
