// SPDX-License-Identifier: MIT
// Compares everything that an event handled at the wrong time would change.
#pragma once

#include "backends/input/keyboard.h"
#include "src/app/form.h"
#include "src/link/receive.h"
#include "src/storage/settings.h"
#include "src/view/display_state.h"
#include "src/view/grids.h"
#include "src/view/status_strip.h"
#include "tests/support/program.h"

#include <map>

namespace modQuorin {

using backends::Refusal;
using modBluetooth::Receive;
using platform::BoxAnswer;
using testing::Each;
using testing::ElementsAre;

inline const Text Reading =
    u"[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n";
inline const std::int32_t AllKeys[] = {8, 13, 27, 33, 34, 37, 38, 39, 40, 65, 308, 309, 310};

/// Everything that an event handled at the wrong time would change.
struct Sight {
    std::vector<ScreenId> Screens;    ///< the current one, the previous one
    std::vector<std::int32_t> Places; ///< row, column and top row of grdMain
    std::vector<Text> Title, Main;    ///< cells
    std::vector<Text> Hands;          ///< the selected driver, download and package
    std::map<std::string, std::string> Files;
    bool operator==(const Sight&) const = default;
};

class Onlooker : public support::Program {
protected:
    explicit Onlooker(const backends::DeviceOptions& options = {}) : Program(options) {
        InstallMeter();
        SaveSetting(u"ComPort", u"Com1");
    }

    static std::vector<Text> CellsOf(platform::OwnerDrawGrid& grid) {
        std::vector<Text> cells;
        for (std::int32_t row = 0; row < grid.Rows(); ++row) {
            for (std::int32_t col = 0; col < grid.Cols(); ++col)
                cells.push_back(grid.Cell(row, col));
        }
        return cells;
    }
    Sight Look() {
        auto& grid = Device.Main();
        Sight sight;
        sight.Screens = {Screens.CurrentScreen, Screens.PreviousScreen};
        sight.Places = {grid.Row(), grid.Col(), grid.TopRow()};
        sight.Title = CellsOf(Device.Title());
        sight.Main = CellsOf(grid);
        sight.Hands = {Selection.SelectedDriver, Selection.SelectedDownload, Selection.SelectedPackage};
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Device.Folder.Path())) {
            const std::string name = entry.path().lexically_relative(Device.Folder.Path()).string();
            sight.Files[name] = entry.is_regular_file() ? Device.Folder.Bytes(name) : "";
        }
        return sight;
    }

    std::vector<Refusal> TryGrid() {
        std::vector<Refusal> refusals;
        for (std::int32_t row = 0; row < Device.Main().Rows(); ++row) {
            for (std::int32_t col = 0; col < Device.Main().Cols(); ++col) {
                refusals.push_back(backends::Tap(Device.Hand, row, col));
                refusals.push_back(backends::Hold(Device.Hand, row, col));
            }
        }
        return refusals;
    }
    std::vector<Refusal> TryMenus() {
        std::vector<Refusal> refusals;
        for (const std::int32_t menu : {1, 2}) {
            refusals.push_back(backends::ClickTitle(Device.Hand, menu));
            for (std::int32_t item = 1; item <= platform::MenuItemCount; ++item)
                refusals.push_back(backends::ClickItem(Device.Hand, menu, item));
        }
        for (const char16_t* caption : {u"Back", u"Ok", u"Exit", u"Close", u"Delete", u"Next Record", u"Install..."})
            refusals.push_back(backends::Choose(Device.Hand, caption));
        return refusals;
    }
    std::vector<Refusal> TryEverything() {
        std::vector<Refusal> refusals = TryGrid();
        for (const Refusal& refusal : TryMenus())
            refusals.push_back(refusal);
        for (const std::int32_t key : AllKeys)
            refusals.push_back(backends::PressKey(Device.Hand, key));
        for (const std::int32_t key : {264, 266, 267, 276, 516, 517, 518, 519, 520, 1280})
            refusals.push_back(backends::PressKey(Device.Hand, key));
        refusals.push_back(backends::TypeText(Device.Hand, u"typed"));
        refusals.push_back(backends::SetInput(Device.Hand, u"set"));
        refusals.push_back(backends::PickDate(Device.Hand, {2007, 3, 5}));
        refusals.push_back(backends::CloseForm(Device.Hand));
        return refusals;
    }

    static std::int32_t Down(std::int32_t key) {
        frmQuorin::Form_KeyDown(key, 0);
        return key;
    }
    static std::int32_t Up(std::int32_t key) {
        frmQuorin::Form_KeyUp(key, 0);
        return key;
    }

    void Press(std::int32_t key) { EXPECT_EQ(backends::PressKey(Device.Hand, key), ""); }

    void Arrive(const Text& text) {
        Device.Platform.serial.Arrive(text);
        Settle();
    }
    /// Expects that timers and the serial port work; the link is open.
    void ExpectEventsGoOn() {
        const std::int64_t before = frmQuorin::Form.lastTimerEvent;
        Device.Tick(2000);
        EXPECT_EQ(frmQuorin::Form.lastTimerEvent, before + 2);
        Arrive(u"a line\r\nrest");
        EXPECT_EQ(Receive.ReadyText, u"a line\r\n");
        EXPECT_EQ(Receive.RxText, u"rest");
    }
    void OpenRecords() {
        OpenDownload("Place|Moisture|Remark\na||c\nd||f\n");
        Device.Tick(500);
    }
};

} // namespace modQuorin
