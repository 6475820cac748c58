// SPDX-License-Identifier: MIT
// A device with a record on screen, and a technician who answers its questions.
#pragma once

#include "src/blob/capture.h"
#include "src/blob/decoding.h"
#include "src/blob/framing.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/inf_fields.h"
#include "src/view/input_fields.h"
#include "src/view/menu_table.h"
#include "src/view/platform/application.h"
#include "src/view/screen_table.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modBLob {

/// What fills a field of the record: an item of a BLob, a formula, both or neither.
struct Field {
    Text Blob;
    Text Formula = u"";
};

class RecordScreen : public testing::Test {
protected:
    RecordScreen() {
        modQuorin::ApplicationName = u"Quorin";
        const modQuorin::MenuId menu = modQuorin::AddMenu({{{u"Record"}}}, {{{u"Back"}}});
        modQuorin::AddScreen(modQuorin::ScrInfRecord, {.GridRows = 1, .GridCols = 2, .Menu = menu});
        for (modQuorin::ScreenId* list : {&modQuorin::ScrBluetoothDebug, &modQuorin::ScrMain})
            modQuorin::AddScreen(
                *list, {.GridRows = 1, .GridCols = 1, .Menu = menu, .DrawStyle = modQuorin::CellDrawing::List});
        modQuorin::Screens.CurrentScreen = modQuorin::ScrInfRecord;
        Grid().SetBounds({0, 0, 200, 200});
        SetTime("2021-03-04T09:05:00");
    }

    /// Puts a record on screen, with all its values empty.
    void ShowRecord(const std::vector<Field>& fields) {
        Grid().SetRows(static_cast<std::int32_t>(fields.size()));
        Grid().SetCols(2);
        Grid().SetColWidth(0, 100);
        Grid().SetColWidth(1, 100);
        modQuorin::Inf = {};
        for (const Field& field : fields) {
            modQuorin::InfField row;
            row.Blob = field.Blob;
            row.Formula = field.Formula;
            modQuorin::Inf.InfFields.push_back(row);
        }
    }

    void ShowEmptyList(modQuorin::ScreenId screen) {
        modQuorin::Screens.CurrentScreen = screen;
        Grid().SetRows(1);
        Grid().SetCols(1);
    }

    void SetValue(std::int32_t row, const Text& text) { Grid().SetCell(row, 1, text); }
    Text Value(std::int32_t row) { return Grid().Cell(row, 1); }

    /// The values of the record on screen from the first row on, or the lines of a list.
    std::vector<Text> Column(std::int32_t col) {
        std::vector<Text> texts;
        for (std::int32_t row = 0; row < Grid().Rows(); ++row)
            texts.push_back(Grid().Cell(row, col));
        return texts;
    }
    std::vector<Text> Values() { return Column(1); }

    static void MakeCurrent(const std::vector<Text>& types, const Text& value, const std::vector<Text>& vars = {}) {
        Decoder.ResultTypes = types;
        Decoder.ResultVars = vars;
        Decoder.ResultValue = value;
        Decoder.ResultUnit = u"ms";
    }
    static void Capture(const std::vector<Text>& types, const Text& value, const std::vector<Text>& vars = {}) {
        MakeCurrent(types, value, vars);
        CaptureResult();
    }

    platform::OwnerDrawGrid& Grid() { return Device.Main(); }
    void SetTime(const std::string& moment) { Device.SetTime(moment); }
    void WillAnswer(platform::BoxAnswer answer) { Device.WillAnswer(answer); }
    void WhileAQuestionIsOpen(std::function<void()> action) { Device.WhileABoxIsOpen(std::move(action)); }
    std::vector<Text> Questions() { return Device.Did.Messages(); }

    using ToneList = std::vector<std::pair<std::int32_t, std::int32_t>>;
    const ToneList& Tones() { return Device.Did.Tones; }
    const ToneList TakenTone = {{1046, 250}};
    const ToneList RefusedTone = {{369, 300}};

    static bool RecordDirty() { return modFileSystem::Table.RecordDirty; }

    support::TestDevice Device;
};

} // namespace modBLob
