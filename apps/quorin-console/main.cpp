// SPDX-License-Identifier: MIT
#include "apps/hand_over/archive_run.h"
#include "apps/hand_over/hand_over_run.h"
#include "apps/quorin-console/console_main.h"
#include "apps/quorin-console/recovery.h"
#include "apps/start/process.h"
#include "backends/headless/headless_platform.h"
#include "backends/headless_input/headless_hand.h"
#include "backends/host/end_signals.h"
#include "companion/words.h"

#include <iostream>
#include <optional>

namespace {

start::ExitStatus RunHeadless(const console::Options& options, console::Session& session) {
    backends::HostDevice host(options.Device);
    backends::headless::HeadlessPlatform device(host, session, session.Out());
    backends::headless::HeadlessHand user(device);
    const apps::ArchiveWish zip{.Program = "quorin-console",
                                .Root = options.Device.Root,
                                .Journal = options.HandOverJournal,
                                .Zip = options.Export + options.Import,
                                .IsForPeople = options.PlainText};
    if (!options.Export.empty())
        return apps::ExportZip(zip, device, std::cout);
    if (!options.Import.empty())
        return apps::ImportZip(zip, device, std::cout);
    if (!options.HandOver.empty())
        return apps::HandOver({.Program = "quorin-console",
                               .Root = options.Device.Root,
                               .Journal = options.HandOverJournal,
                               .Target = options.HandOver,
                               .DeviceName = options.DeviceName,
                               .IsForPeople = options.PlainText},
                              device, std::cout);
    session.Use(device, user);
    backends::EndSignals signals;
    session.EndBy(signals);
    std::optional<backends::Drafts> drafts;
    if (!options.Drafts.empty())
        drafts.emplace(options.Drafts, options.Device.Root);
    try {
        if (options.Recover != console::Recovery::None) {
            const start::ExitStatus status = Recover(options.Recover, *drafts, device, session.Out());
            session.EndJournal({});
            return status;
        }
        if (drafts && options.Station) // nobody is there to ask
            Recover(console::Recovery::Put, *drafts, device, session.Out());
        if (drafts)
            drafts->Attach(device);
        else if (options.Device.RealClock)
            device.onlooker.notices.Raise(companion::DraftNotKept(u"neither XDG_STATE_HOME nor HOME is set"));
        session.Run();
    } catch (const backends::ProgramOver& over) {
        return console::EndOf(session, over);
    }
}

} // namespace

int main(int count, char** words) {
    start::PrepareProcess("quorin-console");
    const start::ExitStatus status = console::ConsoleMain(count, words, RunHeadless);
    return NumberOf(start::StatusAfterOutput("quorin-console", status));
}
