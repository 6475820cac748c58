// SPDX-License-Identifier: MIT
// Compares two pictures as a person would.
#pragma once

#include <QImage>

#include <string>

namespace windowtest {

/// Returns in words where two pictures differ visibly; empty if they don't. An edge that is moved by a pixel or a
/// little paler does not count, because another version of the font library draws it so. An added or missing letter, a
/// line, a colour or another size does.
std::string Difference(const QImage& stored, const QImage& seen);

} // namespace windowtest
