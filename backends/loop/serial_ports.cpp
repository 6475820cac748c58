// SPDX-License-Identifier: MIT
#include "backends/loop/serial_ports.h"

#include <utility>

namespace backends {

namespace {

/// Once an event has read this many characters, the port shows it no more.
constexpr std::size_t ShareOfAnEvent = 4096;

} // namespace

ErrorNumber DeviceSerial::SetPortOpen(bool open) {
    if (open == Open_)
        return NoError;
    if (open)
        return OpenPort();
    ClosePort();
    Report(Step::Closed, {});
    return NoError;
}

ErrorNumber DeviceSerial::OpenPort() {
    const std::optional<PortTarget> target = Sources_.Find(Id_);
    OnSource_ = target.has_value();
    if (target) {
        const SourceTrouble trouble = OpenSource(*target);
        LastOpening_ = trouble.Error;
        Trouble_ = trouble.Why;
    } else {
        LastOpening_ = OpenSimulatedPort();
    }
    Open_ = LastOpening_ == NoError;
    if (Open_)
        Report(Step::Opened, {});
    else
        Report(Step::Failed, Trouble_.empty() ? modStringTools::ToBytes(ErrorText(LastOpening_)) : Trouble_);
    return LastOpening_;
}

void DeviceSerial::Report(Step step, const std::string& why) const {
    if (Stepped)
        Stepped(step, why);
}

/// After a source has ended, one opening fails even if a listener or a command is available again at once: without that
/// the loss of the link would never be seen.
SourceTrouble DeviceSerial::OpenSource(const PortTarget& target) {
    Address_ = target.Address;
    if (Address_.empty())
        return {FileNotFound, {}};
    if (Source_ == nullptr || target.Address != AddressOfSource_)
        Ending_.clear();
    Source_ = target.Source;
    AddressOfSource_ = target.Address;
    if (Source_ == nullptr)
        return {NotAvailable, target.Refusal};
    if (!Ending_.empty())
        return {NotAvailable, std::exchange(Ending_, {})};
    return Source_->Open(Line_);
}

ErrorNumber DeviceSerial::OpenSimulatedPort() {
    Address_.clear();
    Trouble_.clear();
    if (FailuresLeft_ == 0)
        return NoError;
    if (FailuresLeft_ > 0)
        --FailuresLeft_;
    return NotAvailable;
}

/// Characters that a real source has received stay readable, even if none were read before the closing.
void DeviceSerial::ClosePort() {
    if (OnSource_) {
        TakeFromSource();
        Source_->Close();
        Decoder_.Reset();
        Ending_.clear();
    } else {
        Waiting_.clear();
    }
    Open_ = false;
}

std::int32_t DeviceSerial::InBufferCount() const {
    return Given_ < ShareOfAnEvent ? static_cast<std::int32_t>(Waiting_.size()) : 0;
}

Text DeviceSerial::ReadInput() {
    Text taken;
    taken.swap(Waiting_);
    Given_ += taken.size();
    return taken;
}

void DeviceSerial::Drop() {
    const bool wasOpen = Open_;
    ClosePort();
    if (wasOpen)
        Report(Step::Lost, {});
}

void DeviceSerial::Arrive(Text text) {
    if (BytesCame)
        BytesCame(modStringTools::ToBytes(text));
    modStringTools::BlankNuls(text);
    Waiting_ += text;
}

void DeviceSerial::TakeFromSource() {
    if (Source_ == nullptr)
        return;
    std::string bytes;
    const ReadState state = Source_->TakeAvailable(bytes);
    if (!bytes.empty()) {
        if (BytesCame)
            BytesCame(bytes);
        Waiting_ += Decoder_.Decode(bytes);
    }
    if (Open_ && OnSource_ && state == ReadState::Gone) {
        Open_ = false;
        Decoder_.Reset();
        Ending_ = Source_->Ending();
        Report(Step::Lost, Ending_);
    }
}

bool DeviceSerial::RaiseWhatIsPending() {
    TakeFromSource();
    if (Held && Held())
        return false;
    if (Threshold_ <= 0 || static_cast<std::int32_t>(Waiting_.size()) < Threshold_)
        return false;
    Given_ = 0;
    if (Received != nullptr)
        Received();
    Given_ = 0;
    return true;
}

} // namespace backends
