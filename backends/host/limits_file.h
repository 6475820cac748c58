// SPDX-License-Identifier: MIT
// The files with the limits of values, NAME.limits beside the settings.
#pragma once

#include "src/text/text.h"

#include <optional>
#include <string>

namespace backends {

class LimitsFile {
public:
    explicit LimitsFile(std::string folder) : Folder_(std::move(folder)) {}

    struct Content {
        std::optional<Text> Table; ///< none if there is no file, or it can't be read
        Text Why;                  ///< why it can't be read; empty if it was read or does not exist
    };
    /// Reads the file of a driver. Only a plain file of at most 1 MB is read, and no link is followed. A driver whose
    /// name is no plain file name has none.
    Content Read(const Text& driver) const;

private:
    std::string Folder_;
};

} // namespace backends
