// SPDX-License-Identifier: MIT
// What the technician has selected.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

struct SelectionState {
    Text SelectedDriver;   ///< follows the row of the driver screens
    Text SelectedDownload; ///< a bare file name, or its full path once it was opened; follows the row of ScrDownloads
    Text DownloadOwner;    ///< the driver from whose list SelectedDownload was taken
    Text SelectedPackage;  ///< a driver package; follows the row of ScrAddDriver
};
inline SelectionState Selection;

} // namespace modQuorin
