// SPDX-License-Identifier: MIT
#include "tests/unit/backends/web/page_device.h"

#include "src/app/start_up.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace backends::web {

namespace {

DeviceOptions OnFolder(DeviceOptions options, const support::TemporaryFolder& folder) {
    options.Root = folder.Path().string();
    options.StartMoment = *MomentFromText("2007-03-05T09:30:00");
    return options;
}

} // namespace

FontMeasures EvenMeasures() {
    return {.Ascent = 0.8, .Descent = 0.2, .Other = 0.5, .Ranges = {}};
}

PageDevice::PageDevice(DeviceOptions options)
    : Host(OnFolder(std::move(options), Folder)), Platform(Host, Fonts, Commands_, Watcher_) {
    if (::pipe2(Pipe_, O_NONBLOCK | O_CLOEXEC) != 0)
        std::abort();
    Events = std::make_unique<PageEvents>(Pipe_[0]);
    Events->Raised = [this](const PageEvent& event) { Hand.Do(event); };
    Platform.Listen(*Events);
    Platform.Changed = [this](const std::string& mirror) { Seen_ = journal::Line::parse(mirror); };
    platform::Install(&Platform.record);
    modQuorin::ResetModules();
}

PageDevice::~PageDevice() {
    modQuorin::ResetModules();
    ::close(Pipe_[0]);
    ::close(Pipe_[1]);
}

void PageDevice::PutDriver() const {
    Folder.Put("Quorin/drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Folder.Put("Quorin/qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    Folder.Put("Quorin/meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n"
                                   "Count|1||||||\n");
    Folder.Put("Quorin/qrn0001.txt", "Place|Count\n|\n");
}

void PageDevice::Start() {
    Platform.StartProgram();
    Send({});
}

void PageDevice::Write(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const std::string bytes = line + "\n";
        ASSERT_EQ(::write(Pipe_[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
}

void PageDevice::Send(const std::vector<std::string>& lines) {
    Write(lines);
    Platform.loop.HandleDue();
    Platform.loop.PassTime(200);
}

std::string PageDevice::Act(const std::string& kind, const std::string& more) const {
    return "{\"kind\":\"" + kind + "\",\"stage\":" + Seen_["stage"].dump() + "," + more + "}";
}

void PageDevice::Choose(const std::string& caption) {
    for (std::size_t menu = 0; menu < 2; ++menu) {
        for (std::size_t item = 0; item < Seen_["menus"][menu]["items"].size(); ++item) {
            const auto& entry = Seen_["menus"][menu]["items"][item];
            if (entry["caption"] == caption && entry["visible"] == true)
                return Send({Act("item", "\"menu\":" + std::to_string(menu + 1) + ",\"item\":" +
                                             std::to_string(item + 1) + ",\"words\":\"" + caption + "\"")});
        }
    }
    FAIL() << "no menu offers " << caption << ": " << Seen_["menus"];
}

void PageDevice::OpenRecord() {
    for (const char* const caption : {"Start...", "Ok", "Open"})
        Choose(caption);
}

std::vector<std::string> PageDevice::Texts() const {
    std::vector<std::string> texts;
    for (const char* const grid : {"heading", "grid"}) {
        if (Seen_[grid].is_null())
            continue;
        for (const auto& cell : Seen_[grid]["cells"]) {
            for (const auto& line : cell["lines"])
                texts.push_back(line[3]);
        }
    }
    return texts;
}

} // namespace backends::web
