// SPDX-License-Identifier: MIT
#include "companion/driver_fields.h"

#include "src/storage/line_files.h"
#include "src/storage/settings.h"

namespace companion {

std::vector<values::FieldRow> FieldsOfDriver(const Text& infFile) {
    std::vector<Text> lines;
    if (modFileSystem::ReadLines(infFile, modQuorin::DataType, modQuorin::DataCreator, lines) != platform::NoError)
        return {};
    std::vector<std::string> bytes;
    for (const Text& line : lines)
        bytes.push_back(modStringTools::ToBytes(line));
    return values::FieldRowsOf({bytes.begin(), bytes.end()});
}

} // namespace companion
