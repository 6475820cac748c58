// SPDX-License-Identifier: MIT
#include "apps/start/help.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace start {

namespace {

class OneLineEach final : public CLI::Formatter {
public:
    OneLineEach() { column_width(28); }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_size() == 0 && option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        const std::string byDefault = option->get_default_str();
        return option->get_description() + (byDefault.empty() ? "" : " [" + byDefault + "]");
    }
};

} // namespace

void ShowOneLineEach(CLI::App& app) {
    const auto form = std::make_shared<OneLineEach>();
    app.formatter(form);
    app.get_help_ptr()->description("Show this help and end");
    app.get_version_ptr()->description("Show the version and end");
    for (CLI::App* const command : app.get_subcommands({})) {
        command->formatter(form);
        command->get_help_ptr()->description("Show this help and end");
    }
}

void NameTheProgram(CLI::App& app) {
    app.failure_message([](const CLI::App* program, const CLI::Error& error) {
        return program->get_name() + ": " + CLI::FailureMessage::simple(program, error);
    });
}

std::string ExitStatusHelp() {
    return R"(Exit status of all programs:
  0  done
  1  failed while running: a run-time failure, no memory, or a record that could not be saved
  2  not started: wrong usage, or something that is missing or in use
  3  a command failed under --strict (quorin-console)
  4  standard output could not be written
  5  done, and some of the input was odd, as the output says line by line (quorin-journal, quorin-driver, quorin-export,
     quorin-import, quorin-console --hand-over and --import)
  6  a station has stopped, because what it collects can't be stored (quorin-console))";
}

} // namespace start
