// SPDX-License-Identifier: MIT
// The shared selection list, and what a change of the row does on each screen.
#pragma once

#include "src/text/text.h"

namespace modQuorin {

struct ListState {
    std::int32_t PreferenceRow = 0; ///< row of ScrPreferences last highlighted
};
inline ListState Lists;

/// Fills ScrList by ListKind; an unknown kind fills nothing.
void FillList();

/// Called on every change of grdMain's row or column, whatever caused it.
void RowChanged(std::int32_t screen);

// What RowChanged does, by screen.
void StoreListChoice(); ///< stores the highlighted entry at once, so that leaving needs no confirmation
void RememberPreferenceRow();
void TakeDriverOfRow();
void TakeDownloadOfRow();
void TakePackageOfRow();
void SkipHiddenRows(); ///< moves on in the same direction until the row has a height

} // namespace modQuorin
