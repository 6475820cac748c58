// SPDX-License-Identifier: MIT
#include "backends/qt/readings_model.h"

#include "backends/qt/conversions.h"

namespace backends::qt {

void ReadingsModel::TakeUp() {
    if (const int gone = static_cast<int>(Table_.Expired()); gone > 0) {
        beginRemoveRows({}, 0, gone - 1);
        Table_.DropExpired();
        endRemoveRows();
    }
    if (const int fresh = static_cast<int>(Table_.FindFresh()); fresh > 0) {
        beginInsertRows({}, rowCount(), rowCount() + fresh - 1);
        Table_.ShowFresh();
        endInsertRows();
    }
}

void ReadingsModel::SetFilter(const QString& text, int choice) {
    beginResetModel();
    Table_.SetFilter(FromQt(text), static_cast<std::size_t>(choice));
    endResetModel();
}

int ReadingsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Table_.Rows());
}

int ReadingsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(companion::ReadingColumns);
}

QVariant ReadingsModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<companion::ReadingColumn>(index.column());
    return ToQt(role == Qt::ToolTipRole ? Table_.WholeCell(row, column) : Table_.Cell(row, column));
}

QVariant ReadingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    return ToQt(companion::NameOf(static_cast<companion::ReadingColumn>(section)));
}

} // namespace backends::qt
