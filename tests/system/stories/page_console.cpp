// SPDX-License-Identifier: MIT
// The console's commands on the device of the page: each command is what the page sends when a person does it. The page
// has fonts of its own.
#include "apps/quorin-console/console_main.h"
#include "tests/support/page_person.h"

namespace {

start::ExitStatus RunOnPage(const console::Options& options, console::Session& session) {
    backends::HostDevice host(options.Device);
    backends::web::PageFonts fonts({.Ascent = 0.93, .Descent = 0.24, .Other = 0.6, .Ranges = {}});
    backends::web::WebPlatform device(host, fonts, session, session.Out());
    device.Changed = [](const std::string&) {};
    webtest::PagePerson user(device);
    session.Use(device, user);
    try {
        session.Run();
    } catch (const backends::ProgramOver& over) {
        return console::EndOf(session, over);
    }
}

} // namespace

int main(int count, char** words) {
    return NumberOf(console::ConsoleMain(count, words, RunOnPage));
}
