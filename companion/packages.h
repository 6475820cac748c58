// SPDX-License-Identifier: MIT
// A driver package that comes from outside of the device, on its way into the data folder.
#pragma once

#include "src/text/text.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace companion {

/// No package is longer, in bytes: a table of a thousand fields has a tenth of that.
inline constexpr std::size_t LargestPackage = 1'000'000;

struct Package {
    Text Name; ///< of its file, without a folder
    std::vector<Text> Lines;
};

/// Says that a file is too long for a package.
Text TooLongForPackage(const Text& name);

/// Makes a package of the bytes of a file. Returns why it is none, as a sentence; empty if it is one.
Text TakePackage(const Text& name, std::string_view bytes, Package& package);

/// What the data folder has under the name of a package. An empty file counts as none.
enum class Presence { None, Same, Other };

/// A place in the data folder.
struct PackagePlace {
    Text FullName; ///< as "Add Driver" lists it
    Presence There = Presence::None;
    bool IsFree = false; ///< there is no file of that name, not even an empty one
    Text WhyNot;         ///< why the package can't be there, as a sentence; empty if it can
};
PackagePlace PlaceOf(const Package& package);

/// Puts a package into the data folder, in place of one of its name. Returns why that failed, as a sentence; empty on
/// success. On failure the folder is as it was.
Text PutPackage(const Package& package);

/// Asks whether the package may replace another one of its name.
Text ReplaceQuestion(const Package& package);

} // namespace companion
