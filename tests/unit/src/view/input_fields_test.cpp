// SPDX-License-Identifier: MIT
#include "src/view/input_fields.h"

#include "src/storage/keyed_tables.h"
#include "tests/support/program.h"

namespace modPDAUI {
namespace {

using namespace modQuorin;
using platform::Box;

bool& Dirty() {
    return modFileSystem::Table.RecordDirty;
}

/// A record of three fields on a page of 640 by 464 pixels.
class CellEdit : public support::Program {
protected:
    CellEdit() {
        InstallMeter();
        OpenDownload("Place|Moisture|Remark\na|b|c\n");
        Repaint();
    }
    void Edit(std::int32_t row) {
        Device.Platform.grdMain.SetCurrentCell(row, 1);
        BeginCellEdit(row, 1);
    }
    backends::headless::HeadlessTextBox& Field() { return Device.Platform.txtInputField; }
    backends::headless::HeadlessComboBox& Combo() { return Device.Platform.cboInputField; }
    void LeaveField() { Device.Main().SetFocus(); }
};

TEST_F(CellEdit, LaysTheBoxOverTheCellAndItsLines) {
    Edit(2);
    EXPECT_EQ(Field().Bounds(), (Box{319, 16 + 34, 320, 18}));
    EXPECT_EQ(Field().Contents(), u"c");
    EXPECT_TRUE(Field().Visible());
    EXPECT_FALSE(Field().MultiLine());
    EXPECT_EQ(Field().FontName(), u"Tahoma");
    EXPECT_EQ(Field().FontSize(), 8);
    EXPECT_EQ(Device.Platform.focus.Holder(), &Field());
    EXPECT_EQ(Input.EditRow, 2);
    EXPECT_EQ(Input.EditCol, 1);
    EXPECT_TRUE(Input.InputFocused);
    EXPECT_FALSE(Dirty());
}

TEST_F(CellEdit, OfTheFirstRowOfThePageStandsAtTheHeadOfTheGrid) {
    Device.Main().SetRow(1);
    Device.Main().SetTopRow(1);
    Edit(1);
    EXPECT_EQ(Field().Bounds().Top, 16);
}

TEST_F(CellEdit, CountsTheRowsAsHighAsTheyAre) {
    Device.Main().SetRowHeight(0, 64);
    Edit(1);
    EXPECT_EQ(Field().Bounds().Top, 16 + 64);
}

/// The page keys move the current row, and the field stays in its place. The select key then edits the new row.
TEST_F(CellEdit, LeavesTheCellBehindAsItIsWhenItMovesToAnotherRow) {
    Edit(0);
    std::int32_t key = 34;
    frmQuorin::Form_KeyUp(key, 0);
    key = 310;
    frmQuorin::Form_KeyUp(key, 0);
    EXPECT_EQ(Cell(0, 1), u"a");
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_EQ(Field().Contents(), u"b");
    EXPECT_EQ(Input.EditRow, 1);
    EXPECT_TRUE(Input.InputFocused);
    EXPECT_FALSE(Dirty());
}

std::vector<std::string> Edited; ///< the closed fields that were reported to the screen

void NoteEdit(std::int32_t row, std::int32_t col, const Text& text) {
    Edited.push_back(std::to_string(row) + " " + std::to_string(col) + " " + modStringTools::ToBytes(text));
}

class EditedCell : public CellEdit {
protected:
    EditedCell() {
        Edited.clear();
        ScreenRow(ScrInfRecord).Behaviour.CellEdited = NoteEdit;
    }
};

TEST_F(EditedCell, IsToldToTheScreenWhenTheFieldCloses) {
    Edit(1);
    Type(u"b1");
    EXPECT_TRUE(Edited.empty());
    LeaveField();
    EXPECT_EQ(Edited, std::vector<std::string>{"1 1 b1"});
}

TEST_F(EditedCell, IsToldOfAComboBoxAsWell) {
    Edit(2);
    LeaveField();
    Edited.clear();
    Combo().SetContents(u"chosen");
    Combo().SetVisible(true);
    Combo().SetFocus();
    LeaveField();
    EXPECT_EQ(Edited, std::vector<std::string>{"2 1 chosen"});
}

TEST_F(EditedCell, IsNotToldOfAFieldThatWasHiddenBefore) {
    Edit(1);
    Field().SetVisible(false); // this moves the focus, and the screen is called
    Edited.clear();
    Field().SetFocus();
    LeaveField();
    EXPECT_TRUE(Edited.empty());
}

TEST_F(EditedCell, IsToldByTheRowKeysBeforeTheRowMoves) {
    Edit(1);
    Type(u"b1");
    std::int32_t key = 40;
    frmQuorin::Form_KeyUp(key, 0);
    ASSERT_FALSE(Edited.empty());
    EXPECT_EQ(Edited.front(), "1 1 b1");
}

TEST_F(CellEdit, FollowsEachKeystroke) {
    Edit(1);
    Type(u"b1");
    EXPECT_EQ(Cell(1, 1), u"b1");
    EXPECT_TRUE(Dirty());
    Type(u"");
    EXPECT_EQ(Cell(1, 1), u"");
}

TEST_F(CellEdit, CountsATextSetFromOutsideAsAChange) {
    Edit(1);
    Field().SetContents(u"captured");
    EXPECT_EQ(Cell(1, 1), u"captured");
    EXPECT_TRUE(Dirty());
}

TEST_F(CellEdit, KeepsTheTextInTheCellWhenTheFocusGoes) {
    Edit(1);
    Type(u"new");
    LeaveField();
    EXPECT_FALSE(Field().Visible());
    EXPECT_EQ(Field().Contents(), u"");
    EXPECT_FALSE(Input.InputFocused);
    EXPECT_EQ(Cell(1, 1), u"new");
}

TEST_F(CellEdit, LeftUntouchedIsNoChange) {
    Edit(1);
    LeaveField();
    EXPECT_EQ(Cell(1, 1), u"b");
    EXPECT_FALSE(Dirty());
}

TEST_F(CellEdit, OfAnotherCellFollowsATap) {
    Tap(0, 1);
    Type(u"a1");
    Tap(2, 1);
    EXPECT_EQ(Field().Contents(), u"c");
    EXPECT_EQ(Input.EditRow, 2);
    EXPECT_EQ(Cell(0, 1), u"a1");
    EXPECT_EQ(Cell(2, 1), u"c");
}

TEST_F(CellEdit, ChangeOfAHiddenBoxReachesNoCell) {
    Field().SetContents(u"stray");
    EXPECT_EQ(Cell(0, 1), u"a");
    EXPECT_FALSE(Dirty());
}

TEST_F(CellEdit, LostFocusOfAHiddenBoxChangesNothing) {
    frmQuorin::txtInputField_LostFocus();
    EXPECT_EQ(Cell(0, 1), u"a");
    EXPECT_FALSE(Dirty());
}

TEST_F(CellEdit, MayReachBelowTheLastRowOfThePage) {
    Device.Main().SetRows(27); // 459 of 464 pixels
    Edit(26);
    EXPECT_EQ(Field().Bounds().Top + Field().Bounds().Height, 16 + 459 + 1);
}

TEST_F(CellEdit, ComboBoxPutsItsTextIntoTheCellWhenTheFocusGoes) {
    Input.EditRow = 1;
    Input.EditCol = 1;
    Combo().SetVisible(true);
    Combo().SetFocus();
    EXPECT_TRUE(Input.InputFocused);
    Combo().SetContents(u"chosen");
    LeaveField();
    EXPECT_EQ(Cell(1, 1), u"chosen");
    EXPECT_FALSE(Combo().Visible());
    EXPECT_EQ(Combo().Contents(), u"");
    EXPECT_FALSE(Input.InputFocused);
    EXPECT_FALSE(Dirty()); // only the text box marks the record
}

TEST_F(CellEdit, HiddenComboBoxPutsNothing) {
    Combo().SetContents(u"stray");
    frmQuorin::cboInputField_LostFocus();
    EXPECT_EQ(Cell(0, 1), u"a");
}

TEST_F(CellEdit, AnyOfTheFourFieldsCounts) {
    EXPECT_FALSE(AnyInputFieldVisible());
    auto& form = Device.Platform;
    for (platform::Control* field :
         {static_cast<platform::Control*>(&form.dteInputField), static_cast<platform::Control*>(&form.txtInputField),
          static_cast<platform::Control*>(&form.cboInputField),
          static_cast<platform::Control*>(&form.cbotxtInputField)}) {
        field->SetVisible(true);
        EXPECT_TRUE(AnyInputFieldVisible());
        field->SetVisible(false);
    }
}

} // namespace
} // namespace modPDAUI
