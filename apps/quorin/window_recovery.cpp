// SPDX-License-Identifier: MIT
#include "apps/quorin/window_recovery.h"

#include "backends/loop/acts.h"
#include "backends/qt/recovery_bar.h"

#include <QApplication>
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
    Recovery(Drafts& drafts, backends::qt::QtPlatform& device, backends::EndSignals& signals)
        : Drafts_(drafts), Device_(device), Signals_(signals), Signalled_(signals.Descriptor(), QSocketNotifier::Read) {
        Bar_.Chosen = [this](RecoveryBar::Choice choice) { Act(choice); };
        Bar_.setEnabled(false); // until it offers something
        device.window.PutAbove(Bar_);
        Closing_ = std::exchange(device.window.CloseRequested, [this] { End(); });
        SessionEnds_ = std::exchange(device.SessionEnds, [this] { End(); });
        Raised_ = std::exchange(signals.Raised, [this](const std::string&) { End(); });
        QObject::connect(&Signalled_, &QSocketNotifier::activated, [&signals] { signals.RaiseWhatIsPending(); });
        device.ShowEmpty();
    }
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;
    ~Recovery() {
        Device_.window.CloseRequested = Closing_;
        Device_.SessionEnds = SessionEnds_;
        Signals_.Raised = Raised_;
        Device_.window.hide(); // the form opens it at its own size
    }

    /// Returns false if the program is to end.
    bool Decide(const Drafts::Kept& draft, const Text& place) {
        Draft_ = &draft;
        Place_ = place;
        if (!Offer())
            return !HasEnded_; // it is in its file
        if (!HasEnded_)
            Loop_.exec();
        Bar_.setEnabled(false);
        return !HasEnded_;
    }

private:
    /// Returns false if there is nothing to decide.
    bool Offer() {
        Text whyNot;
        const bool isUnsaved = Drafts_.IsUnsaved(*Draft_, whyNot);
        if (isUnsaved)
            Show(whyNot);
        return isUnsaved;
    }

    void Show(const Text& whyNot) {
        Device_.pump.HandlePending(); // ends the look into the files, which the window shows as work
        Bar_.Offer(Draft_->Content, whyNot, companion::DraftTime(Device_.clock.Now()), Place_);
    }

    void PutBack() {
        const Text why = Drafts_.PutBack(*Draft_);
        if (why.empty())
            Loop_.exit();
        else
            Show(why);
    }

    void Act(RecoveryBar::Choice choice) {
        switch (choice) {
        case RecoveryBar::Choice::PutBack:
            PutBack();
            break;
        case RecoveryBar::Choice::Show:
            Bar_.ShowFields(Draft_->Content);
            break;
        case RecoveryBar::Choice::Forget:
            if (!Bar_.MayForget() || HasEnded_)
                break;
            Drafts_.Forget(*Draft_);
            Loop_.exit();
            break;
        case RecoveryBar::Choice::Later:
            backends::ReportAct({.Word = "recover", .Arguments = "later"});
            Loop_.exit();
            break;
        }
    }

    /// Also from within a box of the bar.
    void End() {
        HasEnded_ = true;
        while (QWidget* const box = QApplication::activeModalWidget()) {
            if (!box->close())
                break;
        }
        Loop_.exit();
    }

    Drafts& Drafts_;
    backends::qt::QtPlatform& Device_;
    backends::EndSignals& Signals_;
    QSocketNotifier Signalled_;
    std::function<void()> Closing_, SessionEnds_;
    std::function<void(const std::string&)> Raised_;
    RecoveryBar Bar_{nullptr};
    QEventLoop Loop_;
    const Drafts::Kept* Draft_ = nullptr;
    Text Place_; ///< "1 of 2: "
    bool HasEnded_ = false;
};

} // namespace

bool RecoverRecords(Drafts& drafts, backends::qt::QtPlatform& device, backends::EndSignals& signals) {
    device.Serve();
    const std::vector<Drafts::Kept> unsaved = drafts.Unsaved();
    if (unsaved.empty())
        return true;
    Recovery recovery(drafts, device, signals);
    const auto text = [](std::size_t number) { return modStringTools::NumberText(static_cast<std::int32_t>(number)); };
    for (std::size_t i = 0; i < unsaved.size(); ++i) {
        const Text place = unsaved.size() > 1 ? text(i + 1) + u" of " + text(unsaved.size()) + u": " : Text();
        if (!recovery.Decide(unsaved[i], place))
            return false;
    }
    return true;
}

} // namespace quorin
