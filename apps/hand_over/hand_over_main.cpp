// SPDX-License-Identifier: MIT
#include "apps/hand_over/hand_over_main.h"

#include "apps/hand_over/hand_over_run.h"
#include "apps/options/command_line.h"
#include "apps/options/device_name.h"
#include "apps/options/device_options.h"
#include "backends/headless/formless_device.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace apps {

using start::ExitStatus;

ExitStatus HandOverMain(int count, const char* const* words) {
    CLI::App app("Hands the data of a device over.", "quorin");
    DeviceWords said{{"0", "", ""}};
    AddDeviceOptions(app, said);
    HandOverWish wish{.Program = "quorin", .Root = {}, .Journal = {}, .Target = {}, .DeviceName = NameOfDevice()};
    bool isCount = false;
    app.add_option("--hand-over", wish.Target);
    app.add_option("--name", wish.DeviceName);
    app.add_option("--journal", wish.Journal);
    app.add_flag("--count", isCount);
    backends::DeviceOptions options;
    if (ReadCommandLine(app, count, words, [&] { options = UnderstoodDevice(said); }) != Reading::Run)
        return ExitStatus::NotStarted;
    wish.Root = options.Root;
    backends::headless::FormlessDevice device(options);
    return isCount ? CountNotHandedOver(wish, device.Platform, std::cout) : HandOver(wish, device.Platform, std::cout);
}

} // namespace apps
