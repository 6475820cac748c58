// SPDX-License-Identifier: MIT
// The properties of a form's controls, which must keep what they are set to.
#include "tests/conformance/form_suites.h"

namespace conformance {

TEST_P(ControlsSuite, KeepTheirBoxes) {
    for (const auto& [name, control] : Controls()) {
        const Box box = {3, 4.5F, 120, 60.25F};
        control->SetBounds(box);
        EXPECT_EQ(control->Bounds(), box) << name;
        control->SetVisible(true);
        control->SetBounds({0, 0, 10, 10});
        EXPECT_EQ(control->Bounds(), (Box{0, 0, 10, 10})) << name;
    }
}

TEST_P(ControlsSuite, AreHiddenAtFirstExceptForTheGrids) {
    for (const auto& [name, control] : Controls()) {
        EXPECT_EQ(control->Visible(), control == &Form().grdTitle || control == &Form().grdMain) << name;
        EXPECT_TRUE(control->Enabled()) << name;
    }
    for (const MenuItem* item : MenuItems()) {
        EXPECT_FALSE(item->Visible());
        EXPECT_TRUE(item->Enabled());
    }
}

TEST_P(ControlsSuite, AreVisibleAsTheyWereSet) {
    for (const auto& [name, control] : Controls()) {
        for (const bool visible : {true, false, true}) {
            control->SetVisible(visible);
            EXPECT_EQ(control->Visible(), visible) << name;
            EXPECT_TRUE(control->Enabled()) << name;
        }
    }
}

TEST_P(ControlsSuite, AreEnabledAsTheyWereSet) {
    for (const auto& [name, control] : Controls()) {
        control->SetVisible(true);
        for (const bool enabled : {false, true}) {
            control->SetEnabled(enabled);
            EXPECT_EQ(control->Enabled(), enabled) << name;
            EXPECT_TRUE(control->Visible()) << name;
        }
    }
}

TEST_P(ControlsSuite, AreSetOneByOne) {
    const auto controls = Controls();
    for (const auto& [name, control] : controls)
        control->SetVisible(false);
    controls[3].second->SetVisible(true);
    controls[3].second->SetBounds({1, 2, 3, 4});
    for (std::size_t i = 0; i < controls.size(); ++i) {
        EXPECT_EQ(controls[i].second->Visible(), i == 3) << controls[i].first;
        EXPECT_EQ(controls[i].second->Bounds() == (Box{1, 2, 3, 4}), i == 3) << controls[i].first;
    }
}

TEST_P(ControlsSuite, HaveTheFontThatTheyWereGiven) {
    for (const auto& [name, control] : FontControls()) {
        control->SetFontName(u"Tahoma");
        EXPECT_EQ(control->FontName(), u"Tahoma") << name;
        control->SetFontSize(12);
        const std::int32_t size = control->FontSize();
        EXPECT_GT(size, 0) << name;
        control->SetFontSize(size);
        EXPECT_EQ(control->FontSize(), size) << name << " rounds a size that it has given";
    }
}

TEST_P(ControlsSuite, IncludeAFormInTwips) {
    platform::Form& form = Form().form;
    const Box twips = {0, 0, 4800, 3600};
    form.SetBounds(twips);
    EXPECT_EQ(form.Bounds(), twips);
    ASSERT_GT(form.TwipsPerPixelX(), 0);
    ASSERT_GT(form.TwipsPerPixelY(), 0);
    const Box area = form.ClientArea();
    EXPECT_GT(area.Width, 0);
    EXPECT_LE(area.Left + area.Width, twips.Width / form.TwipsPerPixelX());
    EXPECT_GT(area.Height, 0);
    EXPECT_LE(area.Top + area.Height, twips.Height / form.TwipsPerPixelY());
    EXPECT_GE(Form().AFVScrollBar1.Width(), 0);
}

// Fields.

TEST_P(ControlsSuite, KeepAnyText) {
    const std::vector<Text> texts = {u"", u" ", u"a b", u"größer €", u"\xD83D\xDE00", Text(70000, u'x')};
    for (TextBox* box : {&Form().txtInputField, &Form().cbotxtInputField}) {
        for (const bool multiLine : {false, true}) {
            box->SetMultiLine(multiLine);
            EXPECT_EQ(box->MultiLine(), multiLine);
            for (const Text& text : texts) {
                box->SetContents(text);
                EXPECT_EQ(box->Contents(), text);
            }
        }
    }
    for (const Text& text : texts) {
        Form().cboInputField.SetContents(text);
        EXPECT_EQ(Form().cboInputField.Contents(), text);
    }
}

TEST_P(ControlsSuite, KeepTheLineEndsOfAText) {
    for (const bool multiLine : {true, false}) {
        Form().txtInputField.SetMultiLine(multiLine);
        for (const char16_t* text : {u"a\r\nb", u"a\nb\rc", u"\r\n", u"a\r\n"}) {
            Form().txtInputField.SetContents(text);
            EXPECT_EQ(Form().txtInputField.Contents(), text);
        }
    }
}

TEST_P(ControlsSuite, KeepATextWhateverElseIsSet) {
    TextBox& box = Form().txtInputField;
    box.SetContents(u"a\r\nb");
    box.SetMultiLine(true);
    box.SetVisible(true);
    box.SetFontSize(14);
    box.Select(1, 2);
    box.Select(-5, 100);
    box.Select(100, -1);
    box.Commit(); // no text is being composed
    box.SetMultiLine(false);
    box.SetVisible(false);
    EXPECT_EQ(box.Contents(), u"a\r\nb");
}

TEST_P(ControlsSuite, HaveAListWhoseItemsAreNotTheText) {
    ComboBox& box = Form().cboInputField;
    EXPECT_EQ(box.ItemCount(), 0);
    box.SetContents(u"own");
    for (const char16_t* item : {u"a", u"b", u"b"})
        box.AddItem(item);
    EXPECT_EQ(box.ItemCount(), 3);
    EXPECT_EQ(box.Contents(), u"own");
    box.Select(0, 3);
    EXPECT_EQ(box.Contents(), u"own");
    box.SetContents(u"b");
    EXPECT_EQ(box.ItemCount(), 3);
    box.Clear();
    EXPECT_EQ(box.ItemCount(), 0);
    EXPECT_EQ(box.Contents(), u"");
}

TEST_P(ControlsSuite, KeepAnyDateOfTheCalendar) {
    for (const CalendarDate date : {CalendarDate{2007, 2, 28}, CalendarDate{2008, 2, 29}, CalendarDate{1, 1, 1},
                                    CalendarDate{9999, 12, 31}, CalendarDate{2000, 1, 31}}) {
        Form().dteInputField.SetDate(date);
        EXPECT_EQ(Form().dteInputField.Date(), date);
    }
}

TEST_P(ControlsSuite, HaveAListBoxWithAMark) {
    ListBox& list = Form().lstHoldMenu;
    EXPECT_EQ(list.ItemCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    for (const char16_t* item : {u"one", u"two", u"two"})
        list.AddItem(item);
    EXPECT_EQ(list.ItemCount(), 3);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.ItemText(0), u"one");
    EXPECT_EQ(list.ItemText(2), u"two");
    for (const std::int32_t index : {2, 0, -1, 1}) {
        list.SetListIndex(index);
        EXPECT_EQ(list.ListIndex(), index);
    }
    list.AddItem(u"last");
    EXPECT_EQ(list.ListIndex(), 1);
}

TEST_P(ControlsSuite, HaveNoTextOfAnItemThatIsNotThere) {
    ListBox& list = Form().lstHoldMenu;
    list.AddItem(u"one");
    for (const std::int32_t index : {-1, 1, 2147483647, -2147483647 - 1})
        EXPECT_EQ(list.ItemText(index), u"") << index;
}

TEST_P(ControlsSuite, HaveAListBoxThatLosesItemsAndMark) {
    ListBox& list = Form().lstHoldMenu;
    list.AddItem(u"one");
    list.SetListIndex(0);
    list.SetTag(u"7");
    list.Clear();
    EXPECT_EQ(list.ItemCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Tag(), u"7");
    list.SetTag(u"");
    EXPECT_EQ(list.Tag(), u"");
}

TEST_P(ControlsSuite, HaveALabelWithItsCaption) {
    Label& label = Form().lblStatus;
    for (const bool visible : {false, true}) {
        label.SetVisible(visible);
        label.SetBackColor(0x800000);
        label.SetForeColor(0xFFFFFF);
        label.SetCaption(u"Busy & <b>more</b>");
        label.Refresh();
        EXPECT_EQ(label.Caption(), u"Busy & <b>more</b>");
    }
}

TEST_P(ControlsSuite, HaveTwelveMenuItemsEachOfItsOwn) {
    const auto items = MenuItems();
    ASSERT_EQ(items.size(), 12U);
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i]->SetCaption(u"&Item " + modStringTools::NumberText(static_cast<std::int64_t>(i)));
        items[i]->SetVisible(i % 2 == 0);
        items[i]->SetEnabled(i % 3 == 0);
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i]->Caption(), u"&Item " + modStringTools::NumberText(static_cast<std::int64_t>(i)));
        EXPECT_EQ(items[i]->Visible(), i % 2 == 0) << i;
        EXPECT_EQ(items[i]->Enabled(), i % 3 == 0) << i;
    }
    items[5]->SetCaption(u"");
    EXPECT_EQ(items[5]->Caption(), u"");
}

} // namespace conformance
