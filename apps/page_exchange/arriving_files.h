// SPDX-License-Identifier: MIT
// Files that a person gives to the page. The page can't hand a file over as a whole while the program runs: the program
// asks for its parts one by one, so that neither side ever holds more than it has room for.
#pragma once

#include "src/text/text.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace apps {

/// Returns the bytes of a text in base64, with its padding; nothing if it is none.
std::optional<std::string> FromBase64(std::string_view text);

struct ArrivingFile {
    Text Name;         ///< without a folder
    std::string Use;   ///< what the person wants with it: "driver", "zip", or empty for what its name says
    std::int64_t Size; ///< bytes
    std::string Bytes = {};
};

class ArrivingFiles {
public:
    /// Takes up a file, which the page knows by a number.
    void Begin(std::int32_t number, ArrivingFile file);
    /// Takes the next part of a file, in base64.
    void TakePart(std::int32_t number, std::string_view part);
    /// The page can't read the file.
    void Fail(std::int32_t number, const Text& why);

    static constexpr std::int32_t PartSize = 24'000; ///< bytes: of the ring's 64 KB, half as base64

    std::function<void(std::int32_t number, std::int64_t at)> Wants; ///< the next part, of at most PartSize bytes
    std::function<void(const ArrivingFile&)> Arrived;                ///< all of it is there
    std::function<void(const Text& problem)> Failed;                 ///< it is dropped

private:
    void GoOn(std::int32_t number);

    std::map<std::int32_t, ArrivingFile> Begun_;
};

} // namespace apps
