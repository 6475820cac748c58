// SPDX-License-Identifier: MIT
#include "backends/web/page_line.h"

#include <unistd.h>

namespace backends::web {

namespace {

using std::chrono::steady_clock;

/// As a source gives up: the form calls Open twice a second while it wants its link.
constexpr auto Forgotten = std::chrono::seconds(2);

/// A port of the page as the device's serial port uses it.
class PageSource final : public DescriptorSource {
public:
    PageSource(PageLine& line, std::int32_t number) : Line_(line), Number_(number) {}
    ~PageSource() override { Line_.Close(); }

    SourceTrouble Open(const Text& lineSettings) override { return Line_.Open(Number_, lineSettings); }
    void Close() override { Line_.Close(); }
    ReadState TakeAvailable(std::string& bytes) override { return Line_.TakeAvailable(bytes); }
    int Descriptor() const override { return Line_.Descriptor(); }
    std::string Ending() const override { return Line_.Ending(); }

private:
    PageLine& Line_;
    std::int32_t Number_;
};

} // namespace

PortPaths PageLine::Paths() {
    PortPaths paths;
    paths.Find = [this](std::int32_t number) {
        const bool isGranted = number >= 1 && static_cast<std::size_t>(number) <= Names_.size();
        return isGranted ? Names_[static_cast<std::size_t>(number) - 1] : std::string();
    };
    paths.Make = [this](std::int32_t number) -> std::unique_ptr<DescriptorSource> {
        return std::make_unique<PageSource>(*this, number);
    };
    return paths;
}

bool PageLine::TakeUp(const PageEvent& event) {
    if (event.Kind == "ports") {
        Names_ = event.Names;
        return true;
    }
    const bool isOpened = event.Kind == "portopened";
    const bool isEnded = event.Kind == "portended";
    const bool isLost = event.Kind == "portlost";
    if (!isOpened && !isEnded && !isLost)
        return false;
    if (event.Item != Attempt_ || State_ == State::Closed)
        return true; // of an opening that was given up
    if (isLost && Lost)
        Lost(event.Words);
    if (isOpened)
        State_ = State::Opened;
    if (isEnded)
        TakeUpEnd(modStringTools::ToBytes(event.Words));
    return true;
}

void PageLine::TakeUpEnd(const std::string& why) {
    const bool wasOpen = State_ == State::Open;
    State_ = wasOpen ? State::Ended : State::Closed;
    (wasOpen ? Ending_ : Failure_) = why;
}

void PageLine::Ask(PortRequest::Act wanted, const std::string& lineSettings) const {
    Ask_({.Wanted = wanted, .Number = Number_, .Attempt = Attempt_, .LineSettings = lineSettings});
}

SourceTrouble PageLine::BeginOpening(std::int32_t number, const Text& lineSettings) {
    if (number != Number_)
        Failure_.clear();
    Number_ = number;
    ++Attempt_;
    State_ = State::Opening;
    Ask(PortRequest::Act::Open, modStringTools::ToBytes(lineSettings));
    return StillOpening();
}

/// A person is told why the opening before has failed for as long as the next one takes.
SourceTrouble PageLine::StillOpening() const {
    return {NotAvailable, Failure_.empty() ? "opening" : Failure_};
}

SourceTrouble PageLine::Open(std::int32_t number, const Text& lineSettings) {
    Wanted_ = steady_clock::now();
    if (State_ == State::Ended || (State_ != State::Closed && number != Number_))
        Close();
    switch (State_) {
    case State::Closed:
    case State::Ended:
        return BeginOpening(number, lineSettings);
    case State::Opening:
        return StillOpening();
    case State::Opened:
        DiscardOldBytes();
        State_ = State::Open;
        Failure_.clear();
        Ending_.clear();
        Ask(PortRequest::Act::Read);
        return {};
    case State::Open:
        break;
    }
    return {};
}

/// What is left of the opening before: the page has written it before it opened the port again.
void PageLine::DiscardOldBytes() const {
    std::string old;
    int error = 0;
    while (ReadDescriptor(Bytes_, old, error) == ReadState::Data)
        old.clear();
}

void PageLine::Close() {
    if (State_ != State::Closed)
        Ask(PortRequest::Act::Close);
    State_ = State::Closed;
}

ReadState PageLine::TakeAvailable(std::string& bytes) {
    if (State_ == State::Opening || State_ == State::Opened) {
        if (steady_clock::now() - Wanted_ > Forgotten)
            Close();
        return ReadState::Nothing;
    }
    if (State_ == State::Closed)
        return ReadState::Nothing;
    int error = 0;
    const ReadState state = ReadDescriptor(Bytes_, bytes, error);
    if (state == ReadState::Data || State_ == State::Open)
        return state;
    State_ = State::Closed;
    return ReadState::Gone;
}

} // namespace backends::web
