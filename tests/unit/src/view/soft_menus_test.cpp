// SPDX-License-Identifier: MIT
#include "src/view/soft_menus.h"

#include "tests/support/program.h"

namespace WM5Menus {
namespace {

using namespace modQuorin;
using testing::ElementsAre;
using testing::IsEmpty;

class SoftMenus : public support::Program {
protected:
    explicit SoftMenus(std::int32_t deviceType = 0) : Program(support::OfType(deviceType)) {}

    MenuId Add(const std::array<MenuEntry, 6>& first, const std::array<MenuEntry, 6>& second = {}) {
        return AddMenu(first, second);
    }
    /// Returns what a soft menu shows: its caption, then the visible items. Empty for a hidden menu.
    std::vector<Text> Shown(std::size_t menu) {
        std::vector<Text> texts;
        if (!Device.Platform.menuTitles[menu].Visible())
            return texts;
        texts.push_back(Device.Platform.menuTitles[menu].Caption());
        for (const auto& item : Device.Platform.menuItems[menu]) {
            if (item.Visible())
                texts.push_back(item.Caption());
        }
        return texts;
    }
};

TEST_F(SoftMenus, ShowTheEntriesThatHaveACaption) {
    ApplyMenu(Add({{{u"File"}, {u"a"}, {u""}, {u"c"}}}, {{{u"Edit"}, {u"1"}, {u"2"}, {u"3"}, {u"4"}, {u"5"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"File", u"a", u"c"));
    EXPECT_THAT(Shown(1), ElementsAre(u"Edit", u"1", u"2", u"3", u"4", u"5"));
}

TEST_F(SoftMenus, LoneCaptionIsItsOwnItem) {
    ApplyMenu(Add({{{u"Back"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"Back", u"Back"));
    EXPECT_THAT(Shown(1), IsEmpty());
}

TEST_F(SoftMenus, LoneCaptionIsCopiedIntoTheTableForGood) {
    const MenuId menu = Add({{{u"Back", EntryMarker::Back}}}, {{{u"Ok"}}});
    for (int showing = 1; showing <= 2; ++showing) {
        ApplyMenu(menu);
        EXPECT_EQ(MenuRow(menu).Text1[1], u"Back");
        EXPECT_EQ(MenuRow(menu).Marker1[1], EntryMarker::Back);
        EXPECT_EQ(MenuRow(menu).Text2[1], u"Ok");
        EXPECT_EQ(MenuRow(menu).Marker2[1], EntryMarker::Command);
    }
}

TEST_F(SoftMenus, LoneCaptionIsCopiedThoughLaterItemsStand) {
    ApplyMenu(Add({{{u"File"}, {u""}, {u"b"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"File", u"File", u"b"));
}

TEST_F(SoftMenus, WithoutACaptionAreHiddenThoughTheyHaveItems) {
    ApplyMenu(Add({{{u""}, {u"a"}}}));
    EXPECT_THAT(Shown(0), IsEmpty());
}

TEST_F(SoftMenus, OfNoMenuAreHiddenAndKeepTheirCaptions) {
    const MenuId menu = Add({{{u"File"}, {u"a"}}}, {{{u"Back"}}});
    ApplyMenu(menu);
    const std::size_t rows = Menus.Table.size();
    ApplyMenu(0);
    EXPECT_THAT(Shown(0), IsEmpty());
    EXPECT_THAT(Shown(1), IsEmpty());
    EXPECT_EQ(Device.Platform.menuTitles[0].Caption(), u"File");
    EXPECT_EQ(Device.Platform.menuItems[0][0].Caption(), u"a");
    EXPECT_EQ(Menus.Table.size(), rows);
}

TEST_F(SoftMenus, ForgetTheItemsOfTheLastScreen) {
    ApplyMenu(Add({{{u"File"}, {u"a"}, {u"b"}, {u"c"}}}));
    ApplyMenu(Add({{{u"Other"}, {u"x"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"Other", u"x"));
}

class SoftKeyMenus : public SoftMenus {
protected:
    SoftKeyMenus() : SoftMenus(5) {}
};

TEST_F(SoftKeyMenus, LoneCaptionIsOnePress) {
    ApplyMenu(Add({{{u"Back"}}}, {{{u"Ok"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"Back"));
    EXPECT_THAT(Shown(1), ElementsAre(u"Ok"));
}

TEST_F(SoftKeyMenus, CaptionWithItemsOpensAList) {
    ApplyMenu(Add({{{u"File"}, {u"a"}, {u"b"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"File", u"a", u"b"));
}

TEST_F(SoftKeyMenus, FirstItemLikeTheCaptionMakesItOnePress) {
    ApplyMenu(Add({{{u"Same"}, {u"Same"}, {u"b"}}}));
    EXPECT_THAT(Shown(0), ElementsAre(u"Same", u"b"));
}

TEST_F(SoftKeyMenus, EmptyCaptionMakesNoKey) {
    ApplyMenu(Add({{{u"File"}, {u"a"}}}, {{{u"Edit"}, {u"b"}}}));
    SetSoftKey1(u"");
    SetSoftKey2(u"");
    EXPECT_THAT(Shown(0), ElementsAre(u"File", u"a"));
    EXPECT_THAT(Shown(1), ElementsAre(u"Edit", u"b"));
}

TEST_F(SoftKeyMenus, KeyTakesTheCaptionAndHidesItsFirstItemAlone) {
    ApplyMenu(Add({{{u"File"}, {u"a"}, {u"b"}}}, {{{u"Edit"}, {u"c"}, {u"d"}}}));
    SetSoftKey2(u"Key");
    EXPECT_THAT(Shown(0), ElementsAre(u"File", u"a", u"b"));
    EXPECT_THAT(Shown(1), ElementsAre(u"Key", u"d"));
    SetSoftKey1(u"Other");
    EXPECT_THAT(Shown(0), ElementsAre(u"Other", u"b"));
}

} // namespace
} // namespace WM5Menus
