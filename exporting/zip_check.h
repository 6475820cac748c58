// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace exporting {

/// True if the file is a whole ZIP file of XML documents: each is there with its checksum, and ends in the end
/// tag of its outermost element. One that a full disk has cut off stops before that.
bool IsWholeZipOfXml(const std::string& path);

} // namespace exporting
