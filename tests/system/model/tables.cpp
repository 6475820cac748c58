// SPDX-License-Identifier: MIT
#include "tests/system/model/tables.h"

#include "tests/system/model/instrument_text.h"

namespace shift {

namespace {

std::string Joined(const Row& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i)
        line += (i > 0 ? "|" : "") + row[i];
    return line;
}

std::size_t ColumnOf(const Row& columns, const std::string& name) {
    std::size_t column = 0;
    while (columns[column] != name)
        ++column;
    return column;
}

} // namespace

Row SplitFields(const std::string& line) {
    Row row(1);
    for (const char character : line) {
        if (character == '|')
            row.emplace_back();
        else
            row.back() += character;
    }
    return row;
}

std::vector<std::string> DataFile::Lines() const {
    std::vector<std::string> lines = {Joined(Columns)};
    for (const Row& row : Rows)
        lines.push_back(Joined(row));
    return lines;
}

std::string DataFile::Bytes() const {
    std::string bytes;
    for (const std::string& line : Lines())
        bytes += line + "\n";
    return bytes;
}

const std::string& DataFile::At(std::size_t row, const std::string& column) const {
    return Rows[row][ColumnOf(Columns, column)];
}

std::string DataFolder::InfOf(const std::string& driver) const {
    const DataFile& drivers = Read(DriversName);
    std::size_t row = 0;
    while (drivers.At(row, "NAME") != driver)
        ++row;
    return drivers.At(row, "INFFILE");
}

std::vector<Field> DataFolder::FieldsOf(const std::string& driver) const {
    const DataFile& inf = Read(InfOf(driver));
    std::vector<Field> fields;
    for (std::size_t row = 0; row < inf.Rows.size(); ++row) {
        fields.push_back({inf.At(row, "FIELDNAME"), inf.At(row, "VISIBLE") == "1", inf.At(row, "COPY") == "1",
                          inf.At(row, "BLOB"), SameInAnyCase(inf.At(row, "DATATYPE"), "DATE"), inf.At(row, "FORMULA")});
    }
    return fields;
}

std::vector<std::size_t> DataFolder::DownloadsOf(const std::string& driver) const {
    std::vector<std::size_t> rows;
    const DataFile& control = Read(RegisterName);
    for (std::size_t row = 0; row < control.Rows.size(); ++row) {
        if (control.At(row, "DRIVER") == driver)
            rows.push_back(row);
    }
    return rows;
}

std::string DataFolder::NextDownload() const {
    const DataFile& control = Read(RegisterName);
    if (control.Rows.empty())
        return "qrn0001.txt";
    std::string number = std::to_string(std::stoi(control.At(control.Rows.size() - 1, "FILE").substr(3, 4)) + 1);
    number.insert(0, number.size() < 4 ? 4 - number.size() : 0, '0');
    return "qrn" + number + ".txt";
}

} // namespace shift
