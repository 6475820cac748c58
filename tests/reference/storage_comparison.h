// SPDX-License-Identifier: MIT
// Compares the product's line files, tables and streams with the literal forms.
#pragma once

#include "tests/reference/choices.h"

#include <string>

namespace reference {

/// A short sequence of operations on two line files at once: results, handles, and what is on the disk at the end.
std::string CompareLineFiles(Choices& choices);
/// The same on files and line databases of the host.
std::string CompareLineFilesOnDisk(Choices& choices);
/// A short sequence of operations on the open table: results, its state, and what is on the disk at the end.
std::string CompareTables(Choices& choices);
std::string CompareTablesOnDisk(Choices& choices);
/// A stream of the host on a file of arbitrary bytes, short or several blocks long.
std::string CompareStreams(Choices& choices);

} // namespace reference
