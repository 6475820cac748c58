// SPDX-License-Identifier: MIT
// How every program reads its command line.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace apps {

enum class Reading { Run, Shown, Wrong };

/// Reads the words, then lets `understand` look at them, which may Refuse one. Shown: help or the version were asked
/// for and written. Wrong: a line on standard error says what is.
Reading ReadCommandLine(CLI::App& app, int count, const char* const* words, const std::function<void()>& understand);

/// Says that an option was given a text that it can't have. For use inside of ReadCommandLine.
[[noreturn]] void Refuse(const std::string& option, const std::string& text, const std::string& why);

/// What --version answers, such as "quorin-console V 0.27".
std::string VersionText(const std::string& program);

} // namespace apps
