// SPDX-License-Identifier: MIT
// A story is a text file that tells what a technician does and what comes of it. It is its own expectation: playing it
// gives a text, and that text must be the file.
//
//   # prose, and empty lines            stay as they are
//   $ quorin-console ARGUMENTS          starts the program on the story's root folder
//   > choose Start...                   a command for it; `>>` stands for one that is read while a box or prompt waits
//   {"done":"choose"}                   what it answers (the `ready` objects become the `>`); a picture is drawn out
//   $ cat Quorin/drivers.txt            any other line with a `$` is run by the shell in the root folder
//   [exit status 1]                     after anything that does not end with 0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace story {

/// The stories of a folder, by their names.
std::vector<std::filesystem::path> Stories(const std::filesystem::path& folder);
/// The name of a story's test: "01-first-run.story" is "01FirstRun".
std::string Title(const std::filesystem::path& story);

/// Plays a story in a fresh folder and gives it back as it went.
std::string Play(const std::string& text, const std::filesystem::path& console);

/// Both texts side by side, as far as they differ: lines of the old one with `-`, of the new one with `+`.
std::string Difference(const std::string& expected, const std::string& actual);

} // namespace story
