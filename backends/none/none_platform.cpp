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
    : record_{
          .form = form_,
          .grdTitle = grdTitle_,
          .grdMain = grdMain_,
          .txtInputField = txtInputField_,
          .cboInputField = cboInputField_,
          .cbotxtInputField = cbotxtInputField_,
          .dteInputField = dteInputField_,
          .lstHoldMenu = lstHoldMenu_,
          .lblStatus = lblStatus_,
          .AFVScrollBar1 = scrollBar_,
          .tmrBlue = tmrBlue_,
          .tmrHoldEvent = tmrHoldEvent_,
          .tmrMenus = tmrMenus_,
          .mnuButton1 = menuTitles_[0],
          .mnuButton2 = menuTitles_[1],
          .mnuButtonO1 = PointersTo(menuItems1_),
          .mnuButtonO2 = PointersTo(menuItems2_),
          .colours = {},
          .fontServer = fonts_,
          .myCsys = system_,
          .hardwareKeys = keys_,
          .serConnection = port_,
          .connectionService = connections_,
          .toneMaker = tones_,
          .messageBox = box_,
          .settings = settings_,
          .clock = clock_,
          .random = random_,
          .runTime = runTime_,
          .volumes = volumes_,
          .fileSystem = files_,
          .recordDatabase = databases_,
          .saveWatcher = onlooker_,
          .onlooker = onlooker_,
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
