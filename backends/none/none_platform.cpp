// SPDX-License-Identifier: MIT
#include "backends/none/none_platform.h"

#include "src/text/text.h"

#include <cstdlib>
#include <iostream>

namespace backends::none {

namespace {

std::array<MenuItem*, MenuItemCount> PointersTo(std::array<NoneMenuItem, MenuItemCount>& items) {
    std::array<MenuItem*, MenuItemCount> pointers{};
    for (std::size_t i = 0; i < items.size(); ++i)
        pointers[i] = &items[i];
    return pointers;
}

} // namespace

NonePlatform::NonePlatform()
    : Record_{
          .form = Form_,
          .grdTitle = GrdTitle_,
          .grdMain = GrdMain_,
          .txtInputField = TxtInputField_,
          .cboInputField = CboInputField_,
          .cbotxtInputField = CbotxtInputField_,
          .dteInputField = DteInputField_,
          .lstHoldMenu = LstHoldMenu_,
          .lblStatus = LblStatus_,
          .AFVScrollBar1 = ScrollBar_,
          .tmrBlue = TmrBlue_,
          .tmrHoldEvent = TmrHoldEvent_,
          .tmrMenus = TmrMenus_,
          .mnuButton1 = MenuTitles_[0],
          .mnuButton2 = MenuTitles_[1],
          .mnuButtonO1 = PointersTo(MenuItems1_),
          .mnuButtonO2 = PointersTo(MenuItems2_),
          .colours = {},
          .fontServer = Fonts_,
          .myCsys = System_,
          .hardwareKeys = Keys_,
          .serConnection = Port_,
          .connectionService = Connections_,
          .toneMaker = Tones_,
          .messageBox = Box_,
          .settings = Settings_,
          .clock = Clock_,
          .random = Random_,
          .runTime = RunTime_,
          .volumes = Volumes_,
          .fileSystem = Files_,
          .recordDatabase = Databases_,
          .saveWatcher = Onlooker_,
          .onlooker = Onlooker_,
          .readingLog = Log_,
      } {
}

void NoneRunTime::EndProgram() {
    std::exit(EXIT_SUCCESS);
}

void NoneRunTime::RuntimeFailure(const Text& text) {
    std::cerr << modStringTools::ToBytes(text) + "\n";
    std::exit(EXIT_FAILURE);
}

} // namespace backends::none
