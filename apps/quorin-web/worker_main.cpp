// SPDX-License-Identifier: MIT
// The form on a page. The worker of the page (backends/web/page/worker.js) starts it, gives it the measures of the
// fonts as a file and the acts of a person as a device.
#include "apps/options/command_line.h"
#include "apps/options/device_options.h"
#include "apps/options/journal_options.h"
#include "apps/page_demo/page_demonstration.h"
#include "apps/page_exchange/page_exchange.h"
#include "apps/start/exit_status.h"
#include "apps/start/process.h"
#include "backends/descriptor/descriptor.h"
#include "backends/host/drafts.h"
#include "backends/host/journal.h"
#include "backends/loop/ending.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "backends/web/page_events.h"
#include "backends/web/page_hand.h"
#include "backends/web/page_line.h"
#include "backends/web/page_link.h"
#include "backends/web/page_recovery.h"
#include "backends/web/web_platform.h"
#include "companion/words.h"
#include "src/app/start_up.h"

#include <CLI/CLI.hpp>
#include <emscripten/emscripten.h>

#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

// The compiler does not see that JavaScript uses these arguments.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdollar-in-identifier-extension"
EM_JS(void, ShowOnPage, (const char* mirror), { postMessage({mirror : UTF8ToString(mirror)}); });
EM_JS(void, ShowLinkOnPage, (const char* link), { postMessage({link : UTF8ToString(link)}); });
EM_JS(void, AskForPort, (const char* act, int number, int attempt, const char* settings),
      { postMessage({port : {act : UTF8ToString(act), number, attempt, settings : UTF8ToString(settings)}}); });
EM_JS(void, PlayOnPage, (int hertz, int milliseconds), { postMessage({tone : [ hertz, milliseconds ]}); });
EM_JS(void, OfferRecoveryOnPage, (const char* offer), { postMessage({recovery : UTF8ToString(offer)}); });
EM_JS(void, TellPageOfEnd, (const char* failure), { postMessage({over : UTF8ToString(failure)}); });
EM_JS(void, ShowInstrumentOnPage, (const char* strip), { postMessage({instrument : UTF8ToString(strip)}); });
EM_JS(void, SayToPage, (const char* words), { postMessage({exchange : UTF8ToString(words)}); });
EM_JS(void, GiveToPage, (const char* words, const char* bytes, int count), {
    const copy = HEAPU8.slice(bytes, bytes + count);
    postMessage({given : UTF8ToString(words), bytes : copy}, [copy.buffer]);
});
#pragma clang diagnostic pop

namespace {

constexpr const char* Measures = "/page/fonts.json";
constexpr const char* Acts = "/dev/page";
constexpr const char* PortBytes = "/dev/page-port";
constexpr const char* Scratch = "/exchange";      ///< in memory
constexpr std::int64_t JournalBytes = 20'000'000; ///< of the storage that a browser gives a page

/// What the program keeps for itself is beside the folders of the device.
std::string OwnFolder(const backends::DeviceOptions& options, const char* name) {
    return options.Root + "/." + name;
}

/// Passes on what the page can't see from the controls.
class PageWatcher final : public backends::SilentWatcher {
public:
    void TonePlayed(std::int32_t hertz, std::int32_t milliseconds) override { PlayOnPage(hertz, milliseconds); }
    void StatusShown(const Text&) override {
        if (Shows)
            Shows(); // the handler goes on, perhaps for long
    }

    std::function<void()> Shows;
};

void AskPage(const backends::web::PortRequest& request) {
    using Act = backends::web::PortRequest::Act;
    const char* const act = request.Wanted == Act::Open ? "open" : request.Wanted == Act::Read ? "read" : "close";
    AskForPort(act, request.Number, request.Attempt, request.LineSettings.c_str());
}

std::optional<backends::web::FontMeasures> MeasuresOfPage() {
    std::stringstream bytes;
    bytes << std::ifstream(Measures).rdbuf();
    return backends::web::ReadMeasures(bytes.str());
}

/// Returns what a person must know of the end; an empty text if the person has ended the program.
std::string WordsOf(const backends::ProgramOver& over, bool isKept) {
    const std::string failure = modStringTools::ToBytes(over.Failure);
    return over.Why == backends::ProgramOver::Reason::Ended ? backends::UnsavedRecordWords()
                                                            : failure + " " + backends::StateWords(isKept);
}

/// Connects the demonstration with the rest of the page.
void Connect(apps::PageDemonstration& demonstration, apps::PageExchange& exchange) {
    demonstration.Says = [](const std::string& strip) { ShowInstrumentOnPage(strip.c_str()); };
    demonstration.Emptied = [&exchange](const Text& why) {
        exchange.LookAnew();
        if (!why.empty())
            exchange.Tell(why);
    };
}

start::ExitStatus Run(backends::DeviceOptions options, bool isDemo, const backends::ProgramName& program) {
    const auto measures = MeasuresOfPage();
    const backends::Descriptor acts(::open(Acts, O_RDONLY | O_NONBLOCK));
    if (!measures || !acts.Valid()) {
        std::cerr << "quorin-web: the page has not measured its fonts, or has no way to tell what a person does\n";
        return start::ExitStatus::NotStarted;
    }
    const backends::Descriptor bytes(::open(PortBytes, O_RDONLY | O_NONBLOCK));
    backends::web::PageLine ports(bytes.Number(), AskPage);
    apps::PipeLine simulated;
    options.Ports = isDemo ? simulated.Paths() : ports.Paths();
    backends::NoCommands commands;
    PageWatcher watcher;
    backends::HostDevice host(options);
    backends::web::PageFonts fonts(*measures);
    backends::web::WebPlatform device(host, fonts, commands, watcher);
    backends::web::PageHand hand(device);
    backends::web::PageEvents events(acts.Number());
    backends::web::PageLink link(device);
    link.Changed = [](const std::string& line) { ShowLinkOnPage(line.c_str()); };
    ports.Lost = [&device](const Text& why) { device.onlooker.notices.Raise(companion::CharactersLost(why)); };
    device.Changed = [](const std::string& mirror) { ShowOnPage(mirror.c_str()); };
    watcher.Shows = [&device] { device.Show(); };
    apps::PageExchange exchange(device, {.Root = options.Root, .Scratch = Scratch});
    exchange.Says = [](const std::string& words) { SayToPage(words.c_str()); };
    exchange.Gives = [](const std::string& words, const std::string& bytes) {
        GiveToPage(words.c_str(), bytes.data(), static_cast<int>(bytes.size()));
    };
    std::optional<apps::PageDemonstration> demonstration;
    if (isDemo)
        Connect(demonstration.emplace(device, simulated), exchange);
    events.Raised = [&](const backends::web::PageEvent& event) {
        const bool isDemos = demonstration && demonstration->Take(event);
        if (!isDemos && !ports.TakeUp(event) && !exchange.Take(event))
            hand.Do(event);
    };
    device.Listen(events);
    backends::Drafts drafts(OwnFolder(options, "drafts"), options.Root);
    backends::Journal journal(
        {.Folder = OwnFolder(options, "journal"), .Root = options.Root, .Limits = {JournalBytes, 0}}, program, device);
    backends::web::PageRecovery recovery(drafts, device, events);
    recovery.Shows = [](const std::string& offer) { OfferRecoveryOnPage(offer.c_str()); };
    try {
        device.Serve();
        recovery.Run();
        drafts.Attach(device);
        device.StartProgram();
        for (;;) {
            if (demonstration)
                demonstration->Step();
            device.loop.WaitOnce();
            exchange.Step();
        }
    } catch (const backends::ProgramOver& over) {
        TellPageOfEnd(WordsOf(over, drafts.KeepsRecord()).c_str());
        journal.End(over);
        modQuorin::ResetModules(); // closes what is open while the platform still exists
        return over.Why == backends::ProgramOver::Reason::Ended ? start::ExitStatus::Ended : start::ExitStatus::Failure;
    }
}

} // namespace

int main(int count, char** words) {
    start::PrepareProcess("quorin-web");
    CLI::App app("The form on a page");
    apps::DeviceWords device({"0", "/data", "settings.ini in the root folder"});
    apps::AddDeviceOptions(app, device);
    bool isDemo = false;
    app.add_flag("--demo", isDemo, "Run with a sample driver and a simulated instrument");
    backends::DeviceOptions options;
    const apps::Reading read = apps::ReadCommandLine(app, count, words, [&] { options = UnderstoodDevice(device); });
    if (read != apps::Reading::Run)
        return NumberOf(start::ExitStatus::NotStarted);
    if (options.Root.empty())
        options.Root = "/data";
    options.RealClock = true;
    return NumberOf(Run(options, isDemo, apps::ProgramOf("quorin-web", count, words)));
}
