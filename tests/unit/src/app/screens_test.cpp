// SPDX-License-Identifier: MIT
#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;

struct ScreenRowExpected {
    const char* Name;
    const ScreenId* Screen;
    std::int32_t BackMode;
    const ScreenId* BackScreen; ///< null if there is none
    std::int32_t Rows, Cols, Percent, TitleRows, TitleCols, DrawStyle;
    const MenuId* Menu;
};

// clang-format off: a row a screen, in the order of the table
const ScreenRowExpected ExpectedScreens[] = {
    {"ScrInput", &ScrInput, 3, nullptr, 1, 1, 100, 1, 1, 0, &MenuInput},
    {"ScrFileSelect", &ScrFileSelect, 3, nullptr, 1, 1, 100, 2, 1, 0, &MenuFileSelect},
    {"ScrMessage", &ScrMessage, 3, nullptr, 1, 1, 100, 1, 1, 1, &MenuMessage},
    {"ScrMain", &ScrMain, 2, nullptr, 1, 1, 100, 0, 0, 2, &MenuMain},
    {"ScrDrivers", &ScrDrivers, 1, &ScrMain, 1, 1, 100, 1, 1, 1, &MenuOk},
    {"ScrInstalledDrivers", &ScrInstalledDrivers, 1, &ScrMain, 1, 1, 100, 1, 1, 1, &MenuDrivers},
    {"ScrPreferences", &ScrPreferences, 3, nullptr, 1, 1, 100, 1, 1, 1, &MenuBackCommand},
    {"ScrList", &ScrList, 3, nullptr, 1, 1, 100, 1, 1, 1, &MenuBack},
    {"ScrDownloads", &ScrDownloads, 1, &ScrDrivers, 1, 1, 100, 1, 1, 1, &MenuDownloads},
    {"ScrDownload", &ScrDownload, 1, &ScrDownloads, 1, 2, 50, 2, 2, 0, &MenuDownload},
    {"ScrBluetoothDebug", &ScrBluetoothDebug, 3, nullptr, 1, 1, 100, 1, 1, 0, &MenuBack},
    {"ScrFileDebug", &ScrFileDebug, 1, &ScrMain, 1, 1, 100, 1, 1, 0, &MenuBack},
    {"ScrTextFile", &ScrTextFile, 3, nullptr, 1, 1, 100, 1, 1, 1, &MenuBack},
    {"ScrDriverProperties", &ScrDriverProperties, 1, &ScrInstalledDrivers, 1, 2, 50, 1, 2, 0, &MenuSave},
    {"ScrInfRecord", &ScrInfRecord, 0, nullptr, 1, 2, 50, 1, 2, 0, &MenuRecord},
    {"ScrColumns", &ScrColumns, 3, nullptr, 1, 2, 80, 1, 1, 0, &MenuBack},
    {"ScrAddDriver", &ScrAddDriver, 3, nullptr, 1, 1, 100, 1, 1, 1, &MenuInstall},
};
// clang-format on

class ScreenTable : public support::Program, public testing::WithParamInterface<ScreenRowExpected> {};

TEST_P(ScreenTable, HoldsTheScreenAsItIsMeant) {
    const ScreenRowExpected& expected = GetParam();
    const ScreenDef& row = ScreenRow(*expected.Screen);
    EXPECT_STREQ(row.Name, expected.Name);
    EXPECT_EQ(static_cast<std::int32_t>(row.BackMode), expected.BackMode);
    EXPECT_EQ(row.BackScreen, expected.BackScreen == nullptr ? 0 : *expected.BackScreen);
    EXPECT_EQ(row.GridRows, expected.Rows);
    EXPECT_EQ(row.GridCols, expected.Cols);
    EXPECT_EQ(row.ColumnPercent, expected.Percent);
    EXPECT_EQ(row.TitleRows, expected.TitleRows);
    EXPECT_EQ(row.TitleCols, expected.TitleCols);
    EXPECT_EQ(static_cast<std::int32_t>(row.DrawStyle), expected.DrawStyle);
    EXPECT_EQ(row.Menu, *expected.Menu);
}

INSTANTIATE_TEST_SUITE_P(Of, ScreenTable, testing::ValuesIn(ExpectedScreens),
                         [](const auto& each) { return each.param.Name; });

class ScreenRows : public support::Program {
protected:
    static std::vector<std::string> Expected() {
        std::vector<std::string> names;
        for (const ScreenRowExpected& row : ExpectedScreens)
            names.emplace_back(row.Name);
        return names;
    }
    static std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const ScreenDef& row : Screens.Table)
            names.emplace_back(row.Name);
        return names;
    }
};

TEST_F(ScreenRows, StandInTheOrderInWhichTheyAreAdded) {
    EXPECT_EQ(Names(), Expected());
}

TEST_F(ScreenRows, AreThereOnceAfterASecondActivation) {
    frmQuorin::Form_Activate();
    EXPECT_EQ(Names(), Expected());
}

TEST_F(ScreenRows, AreThereOnceAfterASecondStart) {
    Device.Platform.StartProgram();
    EXPECT_EQ(Names(), Expected());
}

TEST_F(ScreenRows, PercentOfZeroIsStoredAsAHundred) {
    const ScreenId id = AddScreen(MenuBack, BackStep::Nothing, 0, 1, 1, 0, 1, 1, CellDrawing::Table);
    EXPECT_EQ(ScreenRow(id).ColumnPercent, 100);
    EXPECT_EQ(ScreenRow(id).ColumnPixels, 0);
}

TEST_F(ScreenRows, OutsideTheTableStopTheProgram) {
    support::FailureOf([] { ScreenRow(0); });
    support::FailureOf([] { GotoScreen(99); });
}

} // namespace
} // namespace modQuorin
