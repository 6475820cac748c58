// SPDX-License-Identifier: MIT
#include "src/blob/lost_results.h"

#include "src/storage/keyed_tables.h"
#include "src/view/inf_fields.h"
#include "src/view/platform/platform.h"

#include <algorithm>
#include <iterator>

namespace modBLob {

using modFileSystem::Table;
using platform::Device;
using platform::ReadingLoss;

namespace {

ReadingLoss WhyNotHeld() {
    if (!Table.TableFile.valid)
        return ReadingLoss::NoFile;
    return modFileSystem::HeldFields() == 0 ? ReadingLoss::NoRow : ReadingLoss::NoField;
}

Text NamesOf(const std::vector<std::int32_t>& rows) {
    Text names;
    for (const std::int32_t& row : rows)
        names += (&row == &rows.front() ? u"" : u", ") + FieldName(row);
    return names;
}

/// True if the cell, which is what a save stores, no longer has the value. If an input field is open over the cell, the
/// field's text is compared: it may show the value without its line feeds.
bool IsOverwritten(std::int32_t row, const Text& valueAndUnit) {
    const platform::TextBox& field = Device().txtInputField;
    return row >= 0 &&
           Device().grdMain.Cell(row, modQuorin::ValueColumn) != (field.Visible() ? field.Contents() : valueAndUnit);
}

} // namespace

std::optional<ReadingLoss> TellWhatIsLost(const PutRows& rows, const Text& valueAndUnit) {
    const std::int32_t held = modFileSystem::HeldFields();
    std::vector<std::int32_t> lost;
    const bool valueIsLost = rows.Value >= held;
    if (valueIsLost)
        lost.push_back(rows.Value);
    std::copy_if(rows.Others.begin(), rows.Others.end(), std::back_inserter(lost),
                 [held](std::int32_t row) { return row >= held; });
    if (!lost.empty()) {
        Device().onlooker.ReadingLost({Table.TableName, WhyNotHeld(), valueAndUnit, valueIsLost, NamesOf(lost)});
        if (valueIsLost)
            return WhyNotHeld();
        return IsOverwritten(rows.Value, valueAndUnit) ? std::optional(ReadingLoss::Overwritten) : std::nullopt;
    }
    if (!IsOverwritten(rows.Value, valueAndUnit))
        return std::nullopt;
    Device().onlooker.ReadingLost(
        {Table.TableName, ReadingLoss::Overwritten, valueAndUnit, true, FieldName(rows.Value)});
    return ReadingLoss::Overwritten;
}

Text FieldName(std::int32_t row) {
    const auto& fields = modQuorin::Inf.InfFields;
    const auto i = static_cast<std::size_t>(row);
    return i < fields.size() ? fields[i].FieldName : Device().grdMain.Cell(row, 0);
}

} // namespace modBLob
