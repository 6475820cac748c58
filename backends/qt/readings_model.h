// SPDX-License-Identifier: MIT
// The readings of a run as a model of Qt's views.
#pragma once

#include "companion/reading_table.h"

#include <QAbstractTableModel>

namespace backends::qt {

class ReadingsModel final : public QAbstractTableModel {
public:
    explicit ReadingsModel(companion::ReadingTable& table) : Table_(table) {}

    /// Shows what was reported since the last call, and drops the rows that are not kept any more.
    void TakeUp();
    /// As for ReadingTable::SetFilter.
    void SetFilter(const QString& text, int choice);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    companion::ReadingTable& Table_;
};

} // namespace backends::qt
