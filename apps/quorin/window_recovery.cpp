// SPDX-License-Identifier: MIT
#include "apps/quorin/window_recovery.h"

#include "backends/qt/recovery_bar.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <utility>

namespace quorin {

using backends::Drafts;
using backends::qt::RecoveryBar;

namespace {

/// The bar, and the loop in which it is answered.
class Recovery {
public:
    Recovery(Drafts& drafts, backends::qt::QtPlatform& device) : Drafts_(drafts), Device_(device) {
        Bar_.Chosen = [this](RecoveryBar::Choice choice) { Act(choice); };
        device.window.PutAbove(Bar_);
    }

    /// Returns false if the program is to end.
    bool Decide(const Drafts::Unsaved& draft) {
        Draft_ = draft;
        Offer();
        return Loop_.exec() == 0;
    }
    void End() { Loop_.exit(1); }

private:
    void Offer() {
        Device_.pump.HandlePending(); // ends the look into the files, which the window shows as work
        Bar_.Offer(Draft_.Content, Draft_.WhyNot, companion::DraftTime(Device_.clock.Now()));
    }
    void Act(RecoveryBar::Choice choice) {
        switch (choice) {
        case RecoveryBar::Choice::PutBack:
            Draft_.WhyNot = Drafts_.PutBack(Draft_);
            if (Draft_.WhyNot.empty())
                Loop_.exit();
            else
                Offer();
            break;
        case RecoveryBar::Choice::Show:
            Bar_.ShowFields(Draft_.Content);
            break;
        case RecoveryBar::Choice::Forget:
            if (Bar_.MayForget()) {
                Drafts_.Forget(Draft_);
                Loop_.exit();
            }
            break;
        }
    }

    Drafts& Drafts_;
    backends::qt::QtPlatform& Device_;
    RecoveryBar Bar_{nullptr};
    QEventLoop Loop_;
    Drafts::Unsaved Draft_;
};

} // namespace

bool RecoverRecords(Drafts& drafts, backends::qt::QtPlatform& device, backends::EndSignals& signals) {
    const std::vector<Drafts::Unsaved> unsaved = drafts.OfLastRuns(device);
    if (unsaved.empty())
        return true;
    Recovery recovery(drafts, device);
    const auto closing = std::exchange(device.window.CloseRequested, [&recovery] { recovery.End(); });
    signals.Raised = [&recovery](const std::string&) { recovery.End(); };
    QSocketNotifier signalled(signals.Descriptor(), QSocketNotifier::Read);
    QObject::connect(&signalled, &QSocketNotifier::activated, [&signals] { signals.RaiseWhatIsPending(); });
    device.ShowEmpty();
    bool goesOn = true;
    for (std::size_t i = 0; goesOn && i < unsaved.size(); ++i)
        goesOn = recovery.Decide(unsaved[i]);
    device.window.CloseRequested = closing;
    signals.Raised = nullptr;
    return goesOn;
}

} // namespace quorin
