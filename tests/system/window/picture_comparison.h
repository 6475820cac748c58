// SPDX-License-Identifier: MIT
// Whether two pictures show the same to an eye.
#pragma once

#include <QImage>

#include <string>

namespace windowtest {

/// Where two pictures differ so that a person would see it, in words; empty where they don't. An edge that is a pixel
/// further or a little paler is no difference, since another version of the font library draws it so; a letter more or
/// less, a line, a colour, or another size is one.
std::string Difference(const QImage& stored, const QImage& seen);

} // namespace windowtest
