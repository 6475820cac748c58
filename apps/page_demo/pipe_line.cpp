// SPDX-License-Identifier: MIT
#include "apps/page_demo/pipe_line.h"

#include "apps/demo/demo_data.h"
#include "backends/descriptor/reason.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace apps {

using backends::ReadState;

namespace {

const std::string Name = "simulated instrument";
const std::string Unplugged = "it is unplugged";

/// The line as the device's serial port uses it.
class PipeSource final : public backends::DescriptorSource {
public:
    explicit PipeSource(PipeLine& line) : Line_(line) {}
    ~PipeSource() override { Line_.Close(); }

    backends::SourceTrouble Open(const Text&) override { return Line_.Open(); }
    void Close() override { Line_.Close(); }
    ReadState TakeAvailable(std::string& bytes) override { return Line_.TakeAvailable(bytes); }
    int Descriptor() const override { return Line_.Descriptor(); }
    std::string Ending() const override { return Unplugged; }

private:
    PipeLine& Line_;
};

} // namespace

PipeLine::PipeLine() {
    std::array<int, 2> ends = {-1, -1};
    bool isMade = ::pipe(ends.data()) == 0;
    Out_ = backends::Descriptor(ends[0]);
    In_ = backends::Descriptor(ends[1]);
    for (const int end : ends)
        isMade = isMade && ::fcntl(end, F_SETFL, O_NONBLOCK) == 0;
    if (!isMade)
        Problem_ = "no pipe can be made: " + backends::ReasonOf(errno);
    Plug();
}

backends::PortPaths PipeLine::Paths() {
    backends::PortPaths paths;
    paths.Find = [](std::int32_t number) { return number == DemoPort ? Name : std::string(); };
    paths.Make = [this](std::int32_t) { return std::make_unique<PipeSource>(*this); };
    return paths;
}

bool PipeLine::Send(const std::string& text) {
    return IsHeard() && ::write(In_.Number(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

/// What was sent to the record before is not for this one.
backends::SourceTrouble PipeLine::Open() {
    if (!IsPlugged_)
        return {backends::NotAvailable, Problem_.empty() ? Unplugged : Problem_};
    std::string old;
    while (!IsOpen_ && TakeAvailable(old) == ReadState::Data)
        old.clear();
    IsOpen_ = true;
    return {};
}

ReadState PipeLine::TakeAvailable(std::string& bytes) {
    int error = 0;
    const ReadState state = backends::ReadDescriptor(Out_.Number(), bytes, error);
    if (state == ReadState::Nothing && IsOpen_ && !IsPlugged_) {
        Close();
        return ReadState::Gone;
    }
    return state;
}

} // namespace apps
