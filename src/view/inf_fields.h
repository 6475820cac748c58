// SPDX-License-Identifier: MIT
// The rows of the open driver's inf table in memory: one for each column of its downloads.
#pragma once

#include "src/view/platform/canvas.h"

#include <vector>

namespace modQuorin {

enum class FieldType : std::int32_t { Text = 0, Date = 1, Time = 2 };

/// The column of grdMain that holds the values of a record; the one before it has their names.
inline constexpr std::int32_t ValueColumn = 1;

struct InfField {
    Text FieldName;
    bool Visible = false;                   ///< shown on the record screen
    bool Copy = false;                      ///< "New Record" carries the value over from the last record
    Text CopyValue;                         ///< that value, while the command runs
    Text Blob;                              ///< the item of a BLob that fills the field; empty: none
    std::int32_t Display = platform::White; ///< colour of the row, 0xBBGGRR
    FieldType DataType = FieldType::Text;
    Text Formula; ///< automatic date or time; empty: none
};

struct InfState {
    /// Row n is at index n - 1. Filled by OpenDownload, emptied by the screens that edit the inf table itself.
    std::vector<InfField> InfFields;
};
inline InfState Inf;

} // namespace modQuorin
