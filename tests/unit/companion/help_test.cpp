// SPDX-License-Identifier: MIT
#include "companion/help_pages.h"
#include "companion/help_rows.h"

#include "src/app/commands.h"
#include "src/view/menu_table.h"
#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace companion {
namespace {

using modStringTools::ToBytes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string Document(const std::string& name) {
    std::ifstream file(std::string(QUORIN_DOCUMENTS) + "/" + name);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

bool Names(const HelpRow& row, const std::string& caption) {
    for (const HelpAct& act : row.Acts)
        if (caption.rfind(act.Name, 0) == 0)
            return true;
    return false;
}

class Help : public testing::Test {
protected:
    Help() { Device.Platform.StartProgram(); }

    support::TestDevice Device;
};

TEST_F(Help, HasARowForEachScreenOfTheForm) {
    const auto screens = static_cast<modQuorin::ScreenId>(modQuorin::Screens.Table.size());
    for (modQuorin::ScreenId screen = 1; screen <= screens; ++screen)
        EXPECT_NE(HelpRowOf(screen), nullptr) << modQuorin::ScreenRow(screen).Name;
    EXPECT_EQ(static_cast<std::size_t>(screens), HelpRows().size());
}

TEST_F(Help, SaysWhatEachEntryOfAMenuDoes) {
    for (const HelpRow& row : HelpRows()) {
        const modQuorin::MenuId number = modQuorin::ScreenRow(*row.Screen).Menu;
        ASSERT_NE(number, 0);
        const modQuorin::MenuDef& menu = modQuorin::MenuRow(number);
        for (const auto& texts : {menu.Text1, menu.Text2}) {
            const bool isCommand = texts[1].empty(); // a caption without items
            for (std::size_t entry = isCommand ? 0 : 1; entry < texts.size(); ++entry)
                EXPECT_TRUE(texts[entry].empty() || Names(row, ToBytes(texts[entry])))
                    << row.Title << ": " << ToBytes(texts[entry]);
        }
    }
}

TEST_F(Help, SaysWhatEachPreferenceDoes) {
    modQuorin::MenuEvent(u"Preferences...");
    const auto& list = platform::Device().grdMain;
    ASSERT_GT(list.Rows(), 4);
    for (std::int32_t row = 0; row < list.Rows(); ++row)
        EXPECT_TRUE(Names(*HelpRowOf(modQuorin::ScrPreferences), ToBytes(list.Cell(row, 0))))
            << ToBytes(list.Cell(row, 0));
}

TEST_F(Help, NamesRowsThatAreInTheListOfLimits) {
    const std::vector<LimitRow> limits = LimitRows(Document("limits.md"));
    ASSERT_GT(limits.size(), 50u);
    for (const HelpRow& row : HelpRows())
        for (const char* const wanted : row.Limits) {
            int found = 0;
            for (const LimitRow& limit : limits)
                found += limit.What.rfind(wanted, 0) == 0 ? 1 : 0;
            EXPECT_EQ(found, 1) << row.Title << ": " << wanted;
        }
}

TEST_F(Help, OfAScreenHasItsActsLimitsAndKeys) {
    const std::string page =
        ScreenPage(modQuorin::ScrDownloads, "| An alias of a download can't be cleared: so it is. | Type it. |\n",
                   "F4  readings\n");
    EXPECT_THAT(page, StartsWith("# Downloads\n"));
    EXPECT_THAT(page, HasSubstr("- **Rename** gives the download a name"));
    EXPECT_THAT(page, HasSubstr("- An alias of a download can't be cleared: so it is. *Type it.*\n"));
    EXPECT_THAT(page, HasSubstr("F4  readings\n"));
}

TEST_F(Help, OfNoScreenSaysSo) {
    EXPECT_THAT(ScreenPage(0, "", ""), HasSubstr("has not started"));
}

TEST(HelpPages, ReadRowsOfLimitsWithBarsInThem) {
    const auto rows =
        LimitRows("# Head\n\n| What happens | How to avoid it |\n|---|---|\n| A bar (`\\|`) in it | No. |\n");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].What, "A bar (`|`) in it");
    EXPECT_EQ(rows[0].Avoid, "No.");
}

TEST(HelpPages, KeepOnlyLinksToPages) {
    const auto isPage = [](const std::string& name) { return name == "limits.md"; };
    EXPECT_EQ(WithLinksTo(isPage, "see [it](limits.md#a) ([why](decisions/x.md)), [blank] [here](#b)."),
              "see [it](limits.md#a) (why), [blank] [here](#b).");
    EXPECT_EQ(WithLinksTo(isPage, "[a](../docs/limits.md) [net](https://example.org/limits.md)"), "[a](limits.md) net");
}

TEST(HelpPages, KnowTheNamesOfHeadings) {
    EXPECT_EQ(NameOfHeading("Check a package"), "check-a-package");
    EXPECT_EQ(NameOfHeading("What's new: Keys"), "whats-new-keys");
}

TEST(HelpPages, ListScratchFilesWithDateAndSize) {
    const std::string page = ScratchPage({{"/data/00000012.txt", "2026-11-22 20:30", 1}});
    EXPECT_THAT(page, HasSubstr("| `/data/00000012.txt` | 2026-11-22 20:30 | 1 byte |"));
    EXPECT_THAT(page, HasSubstr("only copy"));
}

TEST(HelpPages, OfTheProgramNamePlacesAndLicences) {
    const std::string page = AboutPage("quorin V 1", {{"Data", "/home/a_b_c"}, {"Journal", ""}}, {{"Qt", "LGPL"}});
    EXPECT_THAT(page, HasSubstr("quorin V 1"));
    EXPECT_THAT(page, HasSubstr("| Data | `/home/a_b_c` |"));
    EXPECT_THAT(page, HasSubstr("| Journal | none is kept |"));
    EXPECT_THAT(page, HasSubstr("| Qt | LGPL |"));
}

TEST(RecoveryCard, FitsOnOnePage) {
    const std::string card = Document("recovery-card.md");
    EXPECT_GT(card.size(), 500u);
    EXPECT_LE(std::count(card.begin(), card.end(), '\n'), 45);
    for (const char* const sign : {"beeped low", "red", "battery died", "link is down", "question stands"})
        EXPECT_THAT(card, HasSubstr(sign));
}

} // namespace
} // namespace companion
