// SPDX-License-Identifier: MIT
#include "src/storage/table_lack.h"

#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/view/platform/platform.h"

namespace modFileSystem {

using modQuorin::DataCreator;
using modQuorin::DataType;

namespace {

constexpr std::int32_t SecondLook = 1000; // milliseconds

/// An empty line is no header: an editor leaves one when everything else was deleted.
bool HasHeader() {
    const auto& columns = Table.TableColumns;
    return TableRowCount() > 0 || (TableRowCount() == 0 && !(columns.size() == 1 && columns.front().empty()));
}

} // namespace

TableLack LackOfTable() {
    if (!Table.TableFile.valid)
        return TableLack::File;
    if (!HasHeader())
        return TableLack::Header;
    return TableRowCount() == 0 ? TableLack::Rows : TableLack::Nothing;
}

TableLack LookAtTable(const Text& fullName) {
    OpenTable(fullName, u"r", DataType, DataCreator);
    TableLack lack = LackOfTable();
    if (lack == TableLack::Header) {
        CloseTable();
        platform::Device().runTime.Pause(SecondLook);
        OpenTable(fullName, u"r", DataType, DataCreator);
        lack = LackOfTable();
    }
    if (lack == TableLack::Header)
        CloseTable();
    return lack;
}

void MakeTable(const Text& fullName, const Text& header) {
    CreateTable(fullName, header, u"r", DataType, DataCreator);
}

} // namespace modFileSystem
