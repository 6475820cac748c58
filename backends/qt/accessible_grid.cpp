// SPDX-License-Identifier: MIT
#include "backends/qt/accessible_grid.h"

#include "backends/loop/acts.h"
#include "backends/qt/conversions.h"
#include "backends/qt/qt_grid.h"
#include "backends/qt/to_screen_reader.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <map>
#include <set>

namespace backends::qt {

namespace {

/// True for the title, which is read as a heading: no cell of it can be selected.
bool IsTitle(const QtGrid& grid) {
    return grid.PressesNothing;
}

/// The name of a cell: its text, and for a value also the name of its row, because a screen reader reads the cell
/// alone.
QString NameOf(const QtGrid& grid, std::int32_t row, std::int32_t col) {
    const QString text = ToQt(grid.Cell(row, col));
    const QString ofRow = col == 0 || IsTitle(grid) ? QString() : ToQt(grid.Cell(row, 0));
    if (ofRow.isEmpty())
        return text;
    return ofRow + QStringLiteral(": ") + (text.isEmpty() ? QStringLiteral("empty") : text);
}

/// False while a message box takes all input. A screen reader may call an action at any time.
bool TakesInput(const GridWidget& widget) {
    return widget.isVisible() && widget.Grid().Enabled() && QApplication::activeModalWidget() == nullptr;
}

// --- a cell ----------------------------------------------------------------------------------------------------------

class AccessibleCell final : public QAccessibleInterface,
                             public QAccessibleTableCellInterface,
                             public QAccessibleActionInterface {
public:
    AccessibleCell(GridWidget& widget, std::int32_t row, std::int32_t col) : Widget_(&widget), Row_(row), Col_(col) {}

    bool isValid() const override {
        return Widget_ != nullptr && Row_ < Widget_->Grid().Rows() && Col_ < Widget_->Grid().Cols();
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return isValid() ? Widget_->window()->windowHandle() : nullptr; }

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(Widget_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid())
            return {};
        if (kind == QAccessible::Name)
            return NameOf(Widget_->Grid(), Row_, Col_);
        return kind == QAccessible::Value ? ToQt(Widget_->Grid().Cell(Row_, Col_)) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect cell = Widget_->CellRect(Row_, Col_).intersected(Widget_->rect());
        return cell.isEmpty() ? QRect() : QRect(Widget_->mapToGlobal(cell.topLeft()), cell.size());
    }

    QAccessible::Role role() const override {
        return Widget_ != nullptr && IsTitle(Widget_->Grid()) ? QAccessible::ColumnHeader : QAccessible::Cell;
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (!isValid())
            return state;
        const QtGrid& grid = Widget_->Grid();
        const bool isOffered = grid.Offers(Row_, Col_);
        state.invisible = !Widget_->isVisible() || !isOffered;
        state.offscreen = !state.invisible && rect().isEmpty();
        state.disabled = !grid.Enabled();
        state.readOnly = true;
        if (IsTitle(grid))
            return state;
        state.selectable = isOffered;
        state.focusable = isOffered;
        state.selected = isSelected();
        state.focused = isSelected() && Widget_->hasFocus();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface*>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        return nullptr;
    }

    // The cell of a table.
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    int columnIndex() const override { return Col_; }
    int rowIndex() const override { return Row_; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QAccessibleInterface* table() const override { return parent(); }
    bool isSelected() const override {
        return isValid() && !IsTitle(Widget_->Grid()) && Widget_->Grid().Row() == Row_ && Widget_->Grid().Col() == Col_;
    }

    // The one action of a cell is a tap.
    QStringList actionNames() const override {
        const bool isOffered = isValid() && !IsTitle(Widget_->Grid()) && Widget_->Grid().Offers(Row_, Col_);
        return isOffered ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& action) override {
        if (!actionNames().contains(action) || !TakesInput(*Widget_))
            return;
        const QPointer<GridWidget> widget = Widget_;
        widget->PointerDown(Row_, Col_);
        if (widget != nullptr)
            widget->PointerUp();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<GridWidget> Widget_;
    std::int32_t Row_;
    std::int32_t Col_;
};

// --- the grid --------------------------------------------------------------------------------------------------------

class AccessibleGrid final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleGrid(GridWidget& widget) : QAccessibleWidget(&widget, QAccessible::Table), Widget_(widget) {}
    ~AccessibleGrid() override {
        for (const auto& cell : Cells_)
            QAccessible::deleteAccessibleInterface(cell.second);
    }

    /// The name of the main grid consists of the texts in its title.
    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        if (IsTitle(Grid()))
            return QStringLiteral("Title");
        QStringList words;
        const QtGrid* const title = Grid().Follower;
        for (std::int32_t col = 0; title != nullptr && title->Rows() > 0 && col < title->Cols(); ++col)
            words.push_back(ToQt(title->Cell(0, col)));
        words.removeAll(QString());
        return words.isEmpty() ? QStringLiteral("Records") : words.join(QStringLiteral(", "));
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.disabled = !Grid().Enabled();
        if (IsTitle(Grid()))
            state.focusable = false;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    int childCount() const override { return rowCount() * columnCount(); }
    QAccessibleInterface* child(int index) const override {
        const int cols = columnCount();
        return index >= 0 && cols > 0 ? cellAt(index / cols, index % cols) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        auto* const some = const_cast<QAccessibleInterface*>(child);
        const auto* const cell = some != nullptr ? some->tableCellInterface() : nullptr;
        const bool isMine = cell != nullptr && some->isValid() && cell->table() == this;
        return isMine ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint place = Widget_.mapFromGlobal(QPoint(x, y));
        if (!Widget_.rect().contains(place))
            return nullptr;
        const auto cell = Widget_.CellAt(place);
        return cell ? cellAt(cell->Row, cell->Col) : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        if (!Widget_.hasFocus())
            return nullptr;
        QAccessibleInterface* const current = Current();
        return current != nullptr ? current : QAccessible::queryAccessibleInterface(&Widget_);
    }

    // The table.
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int col) const override {
        if (row < 0 || col < 0 || row >= rowCount() || col >= columnCount())
            return nullptr;
        const auto known = Cells_.find({row, col});
        if (known != Cells_.end())
            return QAccessible::accessibleInterface(known->second);
        auto* const cell = new AccessibleCell(Widget_, row, col);
        Cells_.emplace(std::pair(row, col), QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    int rowCount() const override { return Grid().Rows(); }
    int columnCount() const override { return Grid().Cols(); }
    QString columnDescription(int col) const override {
        const QtGrid* const title = Grid().Follower;
        const bool isNamed = title != nullptr && title->Rows() > 0 && title->Cols() == columnCount() && col >= 0;
        return isNamed && col < columnCount() ? ToQt(title->Cell(0, col)) : QString();
    }
    QString rowDescription(int row) const override {
        const bool isNamed = !IsTitle(Grid()) && columnCount() > 1 && row >= 0 && row < rowCount();
        return isNamed ? ToQt(Grid().Cell(row, 0)) : QString();
    }

    int selectedCellCount() const override { return selectedCells().size() == 1 ? 1 : 0; }
    QList<QAccessibleInterface*> selectedCells() const override {
        QAccessibleInterface* const current = Current();
        return current != nullptr ? QList<QAccessibleInterface*>{current} : QList<QAccessibleInterface*>();
    }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int row) override {
        if (IsTitle(Grid()) || !TakesInput(Widget_) || !Grid().Offers(row, Grid().Col()))
            return false;
        ReportAct({.Word = "select", .Arguments = ArgumentsOf({row}), .About = Grid().Cell(row, 0)});
        Grid().SetRow(row);
        return true;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    QtGrid& Grid() const { return Widget_.Grid(); }
    QAccessibleInterface* Current() const {
        const bool isThere = !IsTitle(Grid()) && Grid().Offers(Grid().Row(), Grid().Col());
        return isThere ? cellAt(Grid().Row(), Grid().Col()) : nullptr;
    }

    GridWidget& Widget_;
    mutable std::map<std::pair<int, int>, QAccessible::Id> Cells_; ///< the cells that were asked for, by row and column
};

QAccessibleInterface* MakeAccessibleGrid(const QString&, QObject* object) {
    auto* const grid = dynamic_cast<GridWidget*>(object);
    return grid != nullptr ? new AccessibleGrid(*grid) : nullptr;
}

} // namespace

void InstallAccessibleGrids() {
    QAccessible::installFactory(MakeAccessibleGrid);
}

// --- reports ---------------------------------------------------------------------------------------------------------

namespace {

constexpr std::size_t ManyCells = 32; // above this number the whole table is reported as changed

} // namespace

GridNews::GridNews(QtGrid& grid) : Grid_(grid.Widget()) {
    grid.CellSet = [this](std::int32_t row, std::int32_t col) { CellChanged(row, col); };
    grid.EventsHandled = [this] { Tell(); };
}

void GridNews::CellChanged(std::int32_t row, std::int32_t col) {
    if (ToScreenReader::IsActive() && Changed_.size() <= ManyCells)
        Changed_.emplace_back(row, col);
}

GridNews::State GridNews::Now() const {
    const QtGrid& grid = Grid_.Grid();
    return {grid.Rows(), grid.Cols(), grid.Row(), grid.Col(), Grid_.hasFocus()};
}

void GridNews::TellCells() {
    const std::set<std::pair<std::int32_t, std::int32_t>> cells(Changed_.begin(), Changed_.end());
    Changed_.clear();
    for (const auto& [row, col] : cells) {
        QAccessibleValueChangeEvent event(&Grid_, ToQt(Grid_.Grid().Cell(row, col)));
        event.setChild(row * Grid_.Grid().Cols() + col);
        ToScreenReader::Send(&event);
        QAccessibleEvent renamed(&Grid_, QAccessible::NameChanged);
        renamed.setChild(event.child());
        ToScreenReader::Send(&renamed);
    }
}

void GridNews::Tell() {
    if (!ToScreenReader::IsActive()) {
        Changed_.clear();
        return;
    }
    const State now = Now();
    const bool isAnother = now.Rows != Reported_.Rows || now.Cols != Reported_.Cols || Changed_.size() > ManyCells;
    const bool hasMoved = now.Row != Reported_.Row || now.Col != Reported_.Col;
    const bool isNewlyFocused = now.HasFocus && !Reported_.HasFocus;
    Reported_ = now;
    if (isAnother) {
        Changed_.clear();
        QAccessibleTableModelChangeEvent event(&Grid_, QAccessibleTableModelChangeEvent::ModelReset);
        ToScreenReader::Send(&event);
    }
    TellCells();
    if (now.HasFocus && (isAnother || hasMoved || isNewlyFocused) && Grid_.Grid().Offers(now.Row, now.Col)) {
        QAccessibleEvent event(&Grid_, QAccessible::Focus);
        event.setChild(now.Row * now.Cols + now.Col);
        ToScreenReader::Send(&event);
    }
}

} // namespace backends::qt
