// SPDX-License-Identifier: MIT
// What a CSV file has in it, for programs: a data package of the "Frictionless" standard.
#pragma once

#include "exporting/csv.h"

#include <string>
#include <vector>

namespace exporting {

struct CsvFile {
    std::string Name;   ///< without a folder
    std::string Sha256; ///< of its bytes, in hexadecimal digits
    std::size_t Bytes = 0;
    std::size_t Rows = 0; ///< without the header
    std::string Source;   ///< the file of the download
    std::string Alias;
    std::string Driver; ///< empty if it is not known
};

/// Returns the text of the package: name, path, hash, dialect and, for each column, name, type, unit and the field that
/// it is made of. A column that has other texts among its numbers or dates is of the type "any".
std::string DataPackage(const CsvFile& file, const CsvForm& form, const std::vector<OutColumn>& columns);

} // namespace exporting
