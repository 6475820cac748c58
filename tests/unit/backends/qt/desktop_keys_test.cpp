// SPDX-License-Identifier: MIT
// Keys that a person expects on a desktop: Enter selects, Tab goes from field to field, Home and End in lists.
#include "src/app/commands.h"
#include "src/drivers/selection.h"
#include "src/storage/settings.h"
#include "src/view/input_fields.h"
#include "tests/support/in_a_window.h"

namespace windowtest {
namespace {

class DesktopKeys : public InAWindow {
protected:
    explicit DesktopKeys(std::int32_t type = 0) : InAWindow(OfType(type)) {}

    void ShowDrivers() {
        Put("drivers.txt", "NAME|INFFILE\nA|a.txt\nB|b.txt\nC|c.txt\n");
        modQuorin::MenuEvent(u"Start...");
        Repaint();
    }
    /// Opens a record with a text, a date, a hidden text, and a text.
    void OpenFourFields() {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n"
                         "Day|1|||||DATE|\nKey|||||||\nRemark|1||||||\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Put("qrn0001.txt", "Place|Day|Key|Remark\na|01/03/2007|k|d\n");
        for (const char16_t* const command : {u"Start...", u"Ok", u"Open"})
            modQuorin::MenuEvent(command);
        Repaint();
    }
    std::int32_t EditedRow() { return Field().Visible() ? modPDAUI::Input.EditRow : -1; }
};

TEST_F(DesktopKeys, EnterSelectsARowOfAList) {
    ShowDrivers();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrDownloads);
    EXPECT_EQ(modQuorin::Selection.SelectedDriver, u"B");
}

TEST_F(DesktopKeys, EnterOfABarCodeScannerSelectsNothing) {
    ShowDrivers();
    Press(Qt::Key_4);
    Press(Qt::Key_2);
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrDrivers);
    QTest::qWait(600);
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrDownloads);
}

TEST_F(DesktopKeys, EnterInAFieldClosesIt) {
    OpenFourFields();
    Tap(0, 1);
    ASSERT_EQ(EditedRow(), 0);
    QTest::qWait(600);
    Press(Qt::Key_Return);
    EXPECT_EQ(EditedRow(), -1);
}

TEST_F(DesktopKeys, TabGoesToTheNextFieldThatIsTypedIn) {
    OpenFourFields();
    Press(Qt::Key_Tab);
    ASSERT_EQ(EditedRow(), 0);
    Type("x");
    Press(Qt::Key_Tab);
    EXPECT_EQ(EditedRow(), 3) << "row 1 is a date, row 2 is hidden";
    EXPECT_EQ(Cell(0, 1), u"ax");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(EditedRow(), 0);
}

TEST_F(DesktopKeys, TabOnTheLastFieldClosesIt) {
    OpenFourFields();
    Tap(3, 1);
    Type("x");
    Press(Qt::Key_Tab);
    EXPECT_EQ(EditedRow(), -1);
    EXPECT_EQ(Cell(3, 1), u"dx");
}

TEST_F(DesktopKeys, TabDoesNothingInAPrompt) {
    OpenFourFields();
    Ask(modPDAUI::PromptKind::Line, u"a");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Screen(), modQuorin::ScrInput);
    EXPECT_TRUE(Field().Visible());
}

TEST_F(DesktopKeys, HomeAndEndGoToTheEndsOfAList) {
    ShowDrivers();
    Press(Qt::Key_End);
    EXPECT_EQ(Main().Row(), 2);
    EXPECT_EQ(modQuorin::Selection.SelectedDriver, u"C");
    Press(Qt::Key_Home);
    EXPECT_EQ(Main().Row(), 0);
}

TEST_F(DesktopKeys, HomeAndEndChooseNoPort) {
    modQuorin::MenuEvent(u"Bluetooth Serial Setup...");
    Repaint();
    Press(Qt::Key_End);
    EXPECT_EQ(Main().Row(), 0);
    EXPECT_EQ(modQuorin::GetSetting(u"ComPort", u"none"), u"none");
}

class KeysOfAHandheld : public DesktopKeys {
protected:
    KeysOfAHandheld() : DesktopKeys(3) {}
};

TEST_F(KeysOfAHandheld, EnterSelectsNothing) {
    ShowDrivers();
    Press(Qt::Key_Return);
    EXPECT_EQ(Screen(), modQuorin::ScrDrivers);
}

} // namespace
} // namespace windowtest
