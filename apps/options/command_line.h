// SPDX-License-Identifier: MIT
// Reads the command line of every program.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace apps {

enum class Reading { Run, Shown, Wrong };

/// Reads the words, then calls `understand` to check them, which may call Refuse. Returns Shown if help or the version
/// was asked for and written, and Wrong after a line on standard error that says what is wrong.
Reading ReadCommandLine(CLI::App& app, int count, const char* const* words, const std::function<void()>& understand);

/// Reports that an option has a text that it can't have. Only for use within ReadCommandLine.
[[noreturn]] void Refuse(const std::string& option, const std::string& text, const std::string& why);

/// Returns the text for --version, such as "quorin-console V 0.27".
std::string VersionText(const std::string& program);

} // namespace apps
