// SPDX-License-Identifier: MIT
#include "src/app/menus.h"

#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;

class MenuTable : public testing::Test {
protected:
    MenuTable() {
        AddInputMenus();
        AddApplicationMenus();
    }
    support::TestDevice Device;

    struct Menu {
        std::vector<Text> First, Second;
    };
    /// Returns the entries up to the last one that is not empty; "(back)" follows an entry that goes back.
    static Menu Of(MenuId id) {
        const MenuDef& row = MenuRow(id);
        return {Offered(row.Text1, row.Marker1), Offered(row.Text2, row.Marker2)};
    }

private:
    static std::vector<Text> Offered(const std::array<Text, 6>& texts, const std::array<EntryMarker, 6>& markers) {
        std::vector<Text> entries;
        for (std::size_t i = 0; i < texts.size(); ++i)
            entries.push_back(texts[i] + (markers[i] == EntryMarker::Back ? u" (back)" : u""));
        while (!entries.empty() && entries.back().empty())
            entries.pop_back();
        return entries;
    }
};

struct MenuRowExpected {
    const char* Name;
    const MenuId* Menu;
    std::vector<Text> First, Second;
};

// clang-format off: a row a menu, in the order of the table
const MenuRowExpected ExpectedMenus[] = {
    {"MenuInput", &MenuInput, {u"Back"}, {u"Ok"}},
    {"MenuFileSelect", &MenuFileSelect, {u"Back"}, {u"Options", u"Select directory", u"Select a volume"}},
    {"MenuMessage", &MenuMessage, {u"Back"}, {}},
    {"MenuBack", &MenuBack, {u"Back (back)"}, {}},
    {"MenuBackCommand", &MenuBackCommand, {u"Back"}, {}},
    {"MenuMain",
     &MenuMain,
     {u"Main", u"Start...", u"Exit (back)"},
     {u"Options", u"Preferences...", u"inf editor...", u"Bluetooth Debug..."}},
    {"MenuOk", &MenuOk, {u"Ok"}, {u"Back"}},
    {"MenuDrivers",
     &MenuDrivers,
     {u"File", u"Edit", u"Delete", u"Show/Hide Columns...", u"New", u"Add Driver..."},
     {u"Back"}},
    {"MenuDriverColumns",
     &MenuDriverColumns,
     {u"File", u"Show/Hide Columns...", u"Add Driver...", u"Delete"},
     {u"Back"}},
    {"MenuDownloads", &MenuDownloads, {u"File", u"Open", u"Delete", u"Rename", u"New"}, {u"Back"}},
    {"MenuDownload", &MenuDownload, {u"File", u"Close (back)"}, {u"Options"}},
    {"MenuSave", &MenuSave, {u"Save"}, {u"Back"}},
    {"MenuRecord",
     &MenuRecord,
     {u"File", u"Next Record", u"Previous Record", u"First Record", u"Last Record", u"Close (back)"},
     {u"Edit", u"New Record", u"Insert Record", u"Delete Record"}},
    {"MenuInstall", &MenuInstall, {u"Install..."}, {u"Back"}},
};
// clang-format on

class MenuRowOf : public MenuTable, public testing::WithParamInterface<MenuRowExpected> {};

TEST_P(MenuRowOf, HoldsItsEntries) {
    const Menu menu = Of(*GetParam().Menu);
    EXPECT_EQ(menu.First, GetParam().First);
    EXPECT_EQ(menu.Second, GetParam().Second);
}

INSTANTIATE_TEST_SUITE_P(Table, MenuRowOf, testing::ValuesIn(ExpectedMenus),
                         [](const auto& each) { return each.param.Name; });

TEST_F(MenuTable, HasItsRowsInOrder) {
    ASSERT_EQ(Menus.Table.size(), std::size(ExpectedMenus));
    for (std::size_t i = 0; i < std::size(ExpectedMenus); ++i)
        EXPECT_EQ(*ExpectedMenus[i].Menu, static_cast<MenuId>(i + 1)) << ExpectedMenus[i].Name;
}

using MenuRows = support::Program;

TEST_F(MenuRows, AreThereOnceHoweverOftenTheProgramStarts) {
    EXPECT_EQ(Menus.Table.size(), std::size(ExpectedMenus));
    frmQuorin::Form_Activate();
    EXPECT_EQ(Menus.Table.size(), std::size(ExpectedMenus)) << "a second activation";
    Device.Platform.StartProgram();
    EXPECT_EQ(Menus.Table.size(), std::size(ExpectedMenus)) << "a second start";
}

TEST_F(MenuTable, RowOutsideItStopsTheProgram) {
    support::FailureOf([] { MenuRow(0); });
    support::FailureOf([] { MenuRow(static_cast<MenuId>(Menus.Table.size()) + 1); });
}

} // namespace
} // namespace modQuorin
