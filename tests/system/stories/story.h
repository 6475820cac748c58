// SPDX-License-Identifier: MIT
// A story is a text file with the actions of a technician and their results. It is its own expectation: the player
// writes a text, which must be equal to the file.
//
//   # prose, and empty lines            are copied
//   $ quorin-console ARGUMENTS          starts the program on the story's root folder
//   > choose Start...                   a command for it; `>>` is one that is read while a box or prompt waits
//   {"done":"choose"}                   its answer (the `ready` objects become the `>`); a picture is drawn as lines
//   $ cat Quorin/drivers.txt            any other line with a `$` is run by the shell in the root folder
//   [exit status 1]                     after a program that does not end with 0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace story {

/// Returns the stories of a folder, sorted by name.
std::vector<std::filesystem::path> Stories(const std::filesystem::path& folder);
/// Returns the name of a story's test: "01FirstRun" for "01-first-run.story".
std::string Title(const std::filesystem::path& story);

/// Plays a story in a new folder. Returns its text with the actual results.
std::string Play(const std::string& text, const std::filesystem::path& console);

/// Returns the lines in which both texts differ: those of the old one with `-`, of the new one with `+`.
std::string Difference(const std::string& expected, const std::string& actual);

} // namespace story
