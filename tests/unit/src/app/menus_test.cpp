// SPDX-License-Identifier: MIT
#include "src/app/menus.h"

#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace modQuorin {
namespace {

using support::PrintTo;
using testing::ElementsAre;

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
    /// The entries up to the last one that is offered; "(back)" behind one that goes Back.
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

class MenuRowOf : public MenuTable, public testing::WithParamInterface<MenuRowExpected> {};

TEST_P(MenuRowOf, HoldsItsEntries) {
    const Menu menu = Of(*GetParam().Menu);
    EXPECT_EQ(menu.First, GetParam().First);
    EXPECT_EQ(menu.Second, GetParam().Second);
}

// clang-format off: a row a menu
INSTANTIATE_TEST_SUITE_P(
    Table, MenuRowOf,
    testing::Values(
        MenuRowExpected{"MenuInput", &MenuInput, {u"Back"}, {u"Ok"}},
        MenuRowExpected{
            "MenuFileSelect", &MenuFileSelect, {u"Back"}, {u"Options", u"Select directory", u"Select a volume"}},
        MenuRowExpected{"MenuMessage", &MenuMessage, {u"Back"}, {}},
        MenuRowExpected{"MenuBack", &MenuBack, {u"Back (back)"}, {}},
        MenuRowExpected{"MenuBackCommand", &MenuBackCommand, {u"Back"}, {}},
        MenuRowExpected{"MenuMain",
                        &MenuMain,
                        {u"Main", u"Start...", u"Exit (back)"},
                        {u"Options", u"Preferences...", u"inf editor...", u"Bluetooth Debug..."}},
        MenuRowExpected{"MenuOk", &MenuOk, {u"Ok"}, {u"Back"}},
        MenuRowExpected{"MenuDrivers",
                        &MenuDrivers,
                        {u"File", u"Edit", u"Delete", u"Show/Hide Columns...", u"New", u"Add Driver..."},
                        {u"Back"}},
        MenuRowExpected{"MenuDriverColumns",
                        &MenuDriverColumns,
                        {u"File", u"Show/Hide Columns...", u"Add Driver...", u"Delete"},
                        {u"Back"}},
        MenuRowExpected{"MenuDownloads", &MenuDownloads, {u"File", u"Open", u"Delete", u"Rename", u"New"}, {u"Back"}},
        MenuRowExpected{"MenuDownload", &MenuDownload, {u"File", u"Close (back)"}, {u"Options"}},
        MenuRowExpected{"MenuSave", &MenuSave, {u"Save"}, {u"Back"}},
        MenuRowExpected{"MenuRecord",
                        &MenuRecord,
                        {u"File", u"Next Record", u"Previous Record", u"First Record", u"Last Record", u"Close (back)"},
                        {u"Edit", u"New Record", u"Insert Record", u"Delete Record"}},
        MenuRowExpected{"MenuInstall", &MenuInstall, {u"Install..."}, {u"Back"}}),
    [](const auto& each) { return each.param.Name; });
// clang-format on

TEST_F(MenuTable, HasItsRowsInOrder) {
    const std::vector<MenuId> rows = {MenuInput,    MenuFileSelect, MenuMessage, MenuBack,          MenuBackCommand,
                                      MenuMain,     MenuOk,         MenuDrivers, MenuDriverColumns, MenuDownloads,
                                      MenuDownload, MenuSave,       MenuRecord,  MenuInstall};
    EXPECT_THAT(rows, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14));
    EXPECT_EQ(Menus.Table.size(), rows.size());
}

TEST_F(MenuTable, RowOutsideItStopsTheProgram) {
    support::FailureOf([] { MenuRow(0); });
    support::FailureOf([] { MenuRow(15); });
}

} // namespace
} // namespace modQuorin
