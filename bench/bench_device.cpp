// SPDX-License-Identifier: MIT
#include "bench/bench_device.h"

#include "bench/ratio.h"
#include "src/app/start_up.h"

namespace bench {

backends::DeviceOptions OptionsFor(const std::string& root, const std::string& port) {
    backends::DeviceOptions options;
    options.Root = root;
    options.StartMoment = *backends::MomentFromText("2007-03-05T09:30:00");
    if (!port.empty())
        options.Ports.Pinned[1] = backends::PathAddress(port);
    return options;
}

BenchDevice::BenchDevice(const std::string& root, const std::string& port)
    : Host_(OptionsFor(root, port)), Platform(Host_, Commands_, Watcher_) {
    Platform.StartProgram();
}

BenchDevice::~BenchDevice() {
    modQuorin::ResetModules();
}

void BenchWatcher::BoxOpened(const Text& text, platform::BoxButtons, platform::BoxIcon, const Text&) {
    Fail("a message box: " + modStringTools::ToBytes(text));
}

void BenchWatcher::NotSaved(const Text& file, const Text& why) {
    Fail("not saved: " + modStringTools::ToBytes(file) + ", " + modStringTools::ToBytes(why));
}

} // namespace bench
