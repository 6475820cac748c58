// SPDX-License-Identifier: MIT
#include "apps/options/command_line.h"

#include "apps/start/help.h"
#include "src/text/text.h"
#include "src/view/painting.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace apps {

Reading ReadCommandLine(CLI::App& app, int count, const char* const* words, const std::function<void()>& understand) {
    start::NameTheProgram(app);
    try {
        app.parse(count, words);
        understand();
        return Reading::Run;
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? Reading::Shown : Reading::Wrong;
    }
}

void Refuse(const std::string& option, const std::string& text, const std::string& why) {
    throw CLI::ValidationError(option + " " + text, why);
}

std::string VersionText(const std::string& program) {
    return program + " " +
           modStringTools::ToBytes(modPDAUI::VersionLine(modPDAUI::VersionMajor, modPDAUI::VersionMinor));
}

} // namespace apps
