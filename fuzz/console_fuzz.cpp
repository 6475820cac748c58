// SPDX-License-Identifier: MIT
// The bytes are a console's script. A script that begins with `#` and a digit runs on a device of that type.
#include "fuzz/technician.h"

#include "apps/quorin-console/session.h"

#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// Returns the script without `quit`, which ends the process, and with shorter times for `tick`, which raises every
/// timer of the time that it is given.
std::string Harmless(const std::string& script) {
    constexpr std::size_t LongestTime = 5; // digits of milliseconds
    std::istringstream in(script);
    std::string kept;
    for (std::string line; std::getline(in, line);) {
        const std::size_t word = line.find_first_not_of(" \t");
        if (word != std::string::npos && line.compare(word, 4, "quit") == 0)
            continue;
        if (word != std::string::npos && line.compare(word, 4, "tick") == 0)
            line.resize(std::min(line.size(), word + std::string("tick ").size() + LongestTime));
        kept += line + '\n';
    }
    return kept;
}

int Opened(const std::string& script) {
    const int input = ::memfd_create("script", MFD_CLOEXEC);
    fuzz::Must(input >= 0 && ::write(input, script.data(), script.size()) == static_cast<ssize_t>(script.size()) &&
                   ::lseek(input, 0, SEEK_SET) == 0,
               "no place for the script");
    return input;
}

void Play(const fuzz::Place& place, const std::string& script, std::int32_t deviceType) {
    const int input = Opened(script);
    std::ostringstream out;
    console::Session session(input, out, false);
    backends::DeviceOptions options;
    options.DeviceType = deviceType;
    options.Root = place.Root().string();
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    backends::HostDevice host(options);
    backends::headless::HeadlessPlatform device(host, session, session.Out());
    device.runTime.Rest = [](std::int32_t) {}; // there is nothing to wait for
    backends::headless::HeadlessHand user(device);
    session.Use(device, user);
    try {
        session.Run();
    } catch (const backends::ProgramOver& over) {
        session.Over(over);
    }
    ::close(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    const std::string script = fuzz::AsString(bytes, count);
    const bool saysType = count > 1 && script[0] == '#' && script[1] >= '0' && script[1] <= '9';
    const std::int32_t deviceType = saysType ? script[1] - '0' : 0;
    place.Empty();
    fuzz::PutMeter(place);
    place.Put("Card/meter.qvd", "# A package\nOther|other.txt\n" + std::string(fuzz::InfTable));
    Play(place, Harmless(script), deviceType);
    Play(place, "choose Start...\nscreen\nshow\nstate\n", deviceType);
    place.MustHaveKeptWithinRoot();
    return 0;
}
