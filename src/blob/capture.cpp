// SPDX-License-Identifier: MIT
#include "src/blob/capture.h"

#include "src/blob/blob_text.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/blob/lost_results.h"
#include "src/blob/targets.h"
#include "src/blob/verdicts.h"
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

#include <optional>

namespace modBLob {

using modPDAUI::AnyInputFieldVisible;
using modQuorin::InfField;
using modQuorin::ValueColumn;
using modStringTools::TwoDigits;
using platform::Device;
using platform::Fate;
using platform::Reading;
using platform::ReadingLoss;
using platform::Verdict;

namespace {

void RefreshSoftMenus() {
    WM5Menus::ApplyMenu(modQuorin::ScreenRow(modQuorin::Screens.CurrentScreen).Menu);
}

Verdict ListOnLinkTrace(const Reading& result) {
    for (const Text& type : result.Types)
        modPDAUI::AddGridRow(u"RT: " + type);
    for (const Text& variable : result.Variables)
        modPDAUI::AddGridRow(u"DV: " + variable);
    modPDAUI::AddGridRow(ValueAndUnitOf(result));
    modPDAUI::AddGridRow(u"---");
    modAudio::PlaySound(modAudio::SoundCode::Taken);
    platform::OwnerDrawGrid& grid = Device().grdMain;
    const std::int32_t lastRow = grid.Rows() - 1;
    grid.SetRow(lastRow);
    grid.SetTopRow(lastRow);
    RefreshSoftMenus();
    return {.Fate = Fate::Trace, .Reading = result};
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

/// Writes the result into an input field that is open: into the text box alone, any other one ignores it.
Fate WriteIntoField(const Text& valueAndUnit) {
    const bool isText = Device().txtInputField.Visible();
    if (isText)
        Device().txtInputField.SetContents(valueAndUnit);
    RefreshSoftMenus();
    return isText ? Fate::OpenField : Fate::Kept;
}

/// Writes the result into the cell, unless the user keeps the old value.
Fate WriteIntoCell(Target& target, const Text& old, const Text& valueAndUnit) {
    if (!old.empty() && !AskToReplace(old, valueAndUnit)) {
        target.MatchedType.clear();
        return Fate::Kept;
    }
    Device().grdMain.SetCell(target.Row, ValueColumn, valueAndUnit);
    if (target.MatchedType.empty())
        return Fate::NoType;
    return old.empty() ? Fate::Taken : Fate::Replaced;
}

void SpreadVariables(const std::vector<Text>& variables, const Text& matchedType, PutRows& put) {
    for (const Text& variable : variables) {
        const NameAndValue parts = SplitVariable(variable);
        const auto row = FindVariableRow(modQuorin::Inf.InfFields, parts.Name, matchedType);
        if (row) {
            Device().grdMain.SetCell(*row, ValueColumn, parts.Value);
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

/// Returns the fate of a result that was written to the record on screen, and whose value is lost for this reason.
Fate FateOf(Fate written, std::optional<ReadingLoss> loss) {
    if (!loss || written == Fate::Kept)
        return written;
    return *loss == ReadingLoss::NoFile || *loss == ReadingLoss::NoRow ? Fate::NoRecord : Fate::NoColumn;
}

Verdict PutIntoRecord(const Reading& result) {
    const Text valueAndUnit = ValueAndUnitOf(result);
    Target target = FindTarget(modQuorin::Inf.InfFields, result.Types);
    DivertToOpenEdit(target);
    modAudio::SoundCode soundCode = modAudio::SoundCode::Refused;
    Verdict verdict{.Fate = Fate::NoRow, .Reading = result, .File = modFileSystem::Table.TableName};
    PutRows put;
    if (target.Row >= 0) {
        const bool isFieldOpen = AnyInputFieldVisible();
        verdict.Row = isFieldOpen ? modPDAUI::Input.EditRow : target.Row; // a page key may have moved the grid's row
        verdict.Field = FieldName(verdict.Row);
        verdict.Old = Device().grdMain.Cell(verdict.Row, ValueColumn);
        verdict.Fate = isFieldOpen ? WriteIntoField(valueAndUnit) : WriteIntoCell(target, verdict.Old, valueAndUnit);
        if (isFieldOpen || verdict.Fate != Fate::Kept)
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
        SpreadVariables(result.Variables, target.MatchedType, put);
    modAudio::PlaySound(soundCode);
    if (soundCode == modAudio::SoundCode::Taken) {
        FillFormulaFields();
        AddFormulaRows(put);
    }
    verdict.Fate = FateOf(verdict.Fate, TellWhatIsLost(put, valueAndUnit));
    if (put.Value >= 0 && result.Value.empty())
        Device().onlooker.ReadingWithoutValue(FieldName(put.Value));
    return verdict;
}

Verdict Capture(const Reading& result) {
    const modQuorin::ScreenId screen = modQuorin::Screens.CurrentScreen;
    if (screen == modQuorin::ScrBluetoothDebug)
        return ListOnLinkTrace(result);
    if (screen == modQuorin::ScrInfRecord)
        return PutIntoRecord(result);
    return {.Fate = Fate::OffScreen, .Reading = result};
}

} // namespace

void ProcessReceivedText(const Text& received) {
    modPDAUI::ShowStatus(u"Decoding Result");
    JudgeCutBlob(Decoder, received);
    const std::size_t firstSlot = NextSlot(Decoder);
    const bool accepted = ExtractBlobs(received);
    JudgeLostBlobs(Framing);
    if (!accepted)
        JudgeWaiting(Decoder, firstSlot);
    while (accepted && NextResult())
        CaptureResult();
    modPDAUI::HideStatus();
}

// The result is copied: timers go on while a question is open, and a batch that they decode makes another result the
// current one; the answer is still about the result that was asked about.
void CaptureResult() {
    const Reading result = CurrentResult(Decoder);
    Device().readingLog.ResultComes(result);
    Device().readingLog.ReadingJudged(Capture(result));
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

Text FormulaValue(const Text& formula, const Text& current) {
    return FormulaValueAt(Device().clock.Now(), formula, current);
}

Text PadZeros(const Text& text, std::int16_t width) {
    return modStringTools::WithZeros(text, width);
}

} // namespace modBLob
