// SPDX-License-Identifier: MIT
// Makes other formats of SVG by a program that a person may have installed.
#pragma once

#include <string>

namespace exporter {

/// What became of a conversion.
struct Converted {
    std::string Bytes;
    std::string Why;        ///< why there are none, as a sentence; empty on success
    bool IsMissing = false; ///< the program is not installed
};

/// Runs rsvg-convert. `format`: png or pdf.
Converted Convert(const std::string& svg, const std::string& format);

} // namespace exporter
