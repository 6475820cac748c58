// SPDX-License-Identifier: MIT
#include "src/blob/capture.h"

#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/blob/lost_results.h"
#include "src/storage/keyed_tables.h"
#include "src/text/digits.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "src/view/platform/platform.h"
#include "src/view/questions.h"
#include "src/view/screen_table.h"
#include "src/view/soft_menus.h"
#include "src/view/sound.h"
#include "src/view/status_strip.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace modBLob {

using modPDAUI::AnyInputFieldVisible;
using modQuorin::InfField;
using modQuorin::ValueColumn;
using modStringTools::SameIgnoringCase;
using modStringTools::TwoDigits;
using platform::Device;

namespace {

/// The current result as it was when its capture began. Timers go on while a question is open, and a batch that they
/// decode makes another result the current one; the answer is still about the result that was asked about.
struct TakenResult {
    std::vector<Text> Types;
    std::vector<Text> Vars;
    Text ValueAndUnit;
    bool HasValue = true;
};

struct Target {
    std::int16_t Row = -1; ///< row of grdMain, -1 for none
    Text MatchedType; ///< the type that led to the row; empty for none, and when the result was refused or diverted
};

std::int16_t RowNumber(std::int64_t row) {
    if (row > std::numeric_limits<std::int16_t>::max())
        platform::RuntimeFailure(u"A result belongs to row " + modStringTools::NumberText(row) +
                                 u" of the record, which is above 32767");
    return static_cast<std::int16_t>(row);
}

void RefreshSoftMenus() {
    WM5Menus::ApplyMenu(modQuorin::ScreenRow(modQuorin::Screens.CurrentScreen).Menu);
}

void ListOnLinkTrace(const TakenResult& result) {
    for (const Text& type : result.Types)
        modPDAUI::AddGridRow(u"RT: " + type);
    for (const Text& variable : result.Vars)
        modPDAUI::AddGridRow(u"DV: " + variable);
    modPDAUI::AddGridRow(result.ValueAndUnit);
    modPDAUI::AddGridRow(u"---");
    modAudio::PlaySound(modAudio::SoundCode::Taken);
    platform::OwnerDrawGrid& grid = Device().grdMain;
    const std::int32_t lastRow = grid.Rows() - 1;
    grid.SetRow(lastRow);
    grid.SetTopRow(lastRow);
    RefreshSoftMenus();
}

/// Returns the row of the last type that has one; of several rows of one type, the first.
Target FindTarget(const std::vector<Text>& types) {
    const std::vector<InfField>& fields = modQuorin::Inf.InfFields;
    Target target;
    for (const Text& type : types) {
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&type](const InfField& each) { return SameIgnoringCase(each.Blob, type); });
        if (field != fields.end()) {
            target.Row = RowNumber(field - fields.begin());
            target.MatchedType = type;
        }
    }
    return target;
}

/// If another row is being edited, the result goes there, also a result that has no row of its own.
void DivertToOpenEdit(Target& target) {
    const std::int32_t row = Device().grdMain.Row();
    if (AnyInputFieldVisible() && row != target.Row) {
        target.Row = RowNumber(row);
        target.MatchedType.clear();
    }
}

bool AskToReplace(const Text& old, const Text& valueAndUnit) {
    const bool yes = modPDAUI::Ask(u"Replace: \r\n" + old + u"\r\nWith:\r\n" + valueAndUnit + u"?");
    // The time while the question was open must not look like a sleep of the device.
    frmQuorin::Form.lastTimerEvent = Device().clock.SteadySeconds();
    return yes;
}

/// Writes the result into the cell, or into the text box if that is open. If another input control is open, the result
/// is lost. Returns false if the user kept the old value.
bool WriteValue(Target& target, const Text& valueAndUnit) {
    platform::OwnerDrawGrid& grid = Device().grdMain;
    const Text old = grid.Cell(target.Row, ValueColumn);
    if (AnyInputFieldVisible()) {
        if (Device().txtInputField.Visible())
            Device().txtInputField.SetContents(valueAndUnit);
        RefreshSoftMenus();
    } else if (old.empty() || AskToReplace(old, valueAndUnit)) {
        grid.SetCell(target.Row, ValueColumn, valueAndUnit);
    } else {
        target.MatchedType.clear();
        return false;
    }
    return true;
}

/// Returns the row of a variable, or none. A row that names the result's type as well ends the search, and so has
/// precedence over every plain row before it; of several plain rows, the last one is returned.
std::optional<std::int32_t> FindVariableRow(const Text& name, const Text& matchedType) {
    const Text plain = u"dv: " + name;
    const Text tied = u"dv: {" + matchedType + u"}" + name;
    std::optional<std::int32_t> found;
    std::int32_t row = 0;
    for (const InfField& field : modQuorin::Inf.InfFields) {
        if (SameIgnoringCase(field.Blob, tied))
            return row;
        if (SameIgnoringCase(field.Blob, plain))
            found = row;
        ++row;
    }
    return found;
}

void SpreadVariables(const std::vector<Text>& variables, const Text& matchedType, PutRows& put) {
    for (const Text& variable : variables) {
        const std::size_t equals = std::min(variable.find(u'='), variable.size());
        const auto row = FindVariableRow(variable.substr(0, equals), matchedType);
        if (row) {
            const Text value = variable.substr(std::min(equals + 1, variable.size()));
            Device().grdMain.SetCell(*row, ValueColumn, value);
            put.Others.push_back(*row);
        }
    }
}

void AddFormulaRows(PutRows& put) {
    const std::vector<InfField>& fields = modQuorin::Inf.InfFields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fields[i].Formula.empty())
            put.Others.push_back(static_cast<std::int32_t>(i));
    }
}

void PutIntoRecord(const TakenResult& result) {
    Target target = FindTarget(result.Types);
    DivertToOpenEdit(target);
    modAudio::SoundCode soundCode = modAudio::SoundCode::Refused;
    PutRows put;
    if (target.Row >= 0) {
        if (WriteValue(target, result.ValueAndUnit))
            put.Value = AnyInputFieldVisible() ? modPDAUI::Input.EditRow : target.Row;
        if (!target.MatchedType.empty() && !AnyInputFieldVisible()) {
            Device().grdMain.SetRow(target.Row);
            Device().grdMain.SetTopRow(target.Row);
        }
        modFileSystem::Table.RecordDirty = true; // also when the user has kept the old value
        if (!target.MatchedType.empty())
            soundCode = modAudio::SoundCode::Taken;
    }
    if (!target.MatchedType.empty())
        SpreadVariables(result.Vars, target.MatchedType, put);
    modAudio::PlaySound(soundCode);
    if (soundCode == modAudio::SoundCode::Taken) {
        FillFormulaFields();
        AddFormulaRows(put);
    }
    TellWhatIsLost(put, result.ValueAndUnit);
    if (put.Value >= 0 && !result.HasValue)
        Device().onlooker.ReadingWithoutValue(FieldName(put.Value));
}

Text FormulaValueAt(const platform::DateTime& now, const Text& formula, const Text& current) {
    const Text kind = modStringTools::LowerCase(formula);
    const bool isDate = kind == u"startdate" || kind == u"enddate";
    const bool isTime = kind == u"starttime" || kind == u"endtime";
    if (!isDate && !isTime)
        return {};
    const bool keepsFirst = kind == u"startdate" || kind == u"starttime";
    if (keepsFirst && !current.empty())
        return current;
    if (isTime)
        return TwoDigits(now.Hour) + u":" + TwoDigits(now.Minute);
    return TwoDigits(now.Date.Day) + u"/" + TwoDigits(now.Date.Month) + u"/" + TwoDigits(now.Date.Year);
}

} // namespace

void ProcessReceivedText(const Text& received) {
    modPDAUI::ShowStatus(u"Decoding Result");
    if (ExtractBlobs(received))
        while (NextResult())
            CaptureResult();
    modPDAUI::HideStatus();
}

void CaptureResult() {
    const TakenResult result{Decoder.ResultTypes, Decoder.ResultVars, Decoder.ResultValue + u" " + Decoder.ResultUnit,
                             !Decoder.ResultValue.empty()};
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (screen == modQuorin::ScrBluetoothDebug)
        ListOnLinkTrace(result);
    else if (screen == modQuorin::ScrInfRecord)
        PutIntoRecord(result);
}

// An unknown formula wipes its cell, at each capture.
void FillFormulaFields() {
    modPDAUI::ShowBusy(true);
    const platform::DateTime now = Device().clock.Now();
    platform::OwnerDrawGrid& grid = Device().grdMain;
    std::int32_t row = 0;
    for (const InfField& field : modQuorin::Inf.InfFields) {
        if (!field.Formula.empty())
            grid.SetCell(row, ValueColumn, FormulaValueAt(now, field.Formula, grid.Cell(row, ValueColumn)));
        ++row;
    }
    modPDAUI::ShowBusy(false);
}

Text FormulaValue(const Text& formula, const Text& current) {
    return FormulaValueAt(Device().clock.Now(), formula, current);
}

Text PadZeros(const Text& text, std::int16_t width) {
    return modStringTools::WithZeros(text, width);
}

} // namespace modBLob
