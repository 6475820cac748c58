// SPDX-License-Identifier: MIT
#include "backends/qt/pump.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDrag>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <utility>

namespace backends::qt {

QtPump::QtPump(std::function<int(const ProgramOver&)> over) : Over_(std::move(over)) {
    Alarm_.setSingleShot(true);
    Alarm_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&Alarm_, &QTimer::timeout, [this] { Woken(); });
}

void QtPump::CameBack() {
    Awake();
    if (WorkIsShown_ && WorkShown)
        WorkShown(false);
    WorkIsShown_ = false;
}

bool QtPump::HandlePending() {
    CameBack();
    Watch(Descriptors(Wake::ByEvents)); // a descriptor that was closed meanwhile must not be watched
    return QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
}

void QtPump::SleepOn(const std::vector<int>& descriptors, int milliseconds) {
    Watch(descriptors);
    if (milliseconds >= 0)
        Alarm_.start(milliseconds);
    else
        Alarm_.stop();
    CameBack();
    QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    Awake();
}

void QtPump::Working() {
    constexpr auto Patience = std::chrono::milliseconds(100); // how long a user waits without a report
    constexpr auto BetweenBreaths = std::chrono::milliseconds(50);
    const Moment now = std::chrono::steady_clock::now();
    if (IsBreathing_ || now - LastAlive_ < Patience || now - LastBreath_ < BetweenBreaths)
        return;
    if (!WorkIsShown_ && WorkShown)
        WorkShown(true);
    WorkIsShown_ = true;
    Breathe();
}

void QtPump::Rest(std::int32_t milliseconds) {
    constexpr auto BetweenLooks = std::chrono::milliseconds(20);
    const Moment end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (std::chrono::steady_clock::now() < end) {
        Working();
        std::this_thread::sleep_for(BetweenLooks);
    }
}

void QtPump::Watch(const std::vector<int>& descriptors) {
    for (auto& [descriptor, notifier] : Watched_) {
        if (std::find(descriptors.begin(), descriptors.end(), descriptor) == descriptors.end())
            notifier->setEnabled(false);
    }
    for (const int descriptor : descriptors) {
        auto& notifier = Watched_[descriptor];
        if (!notifier) {
            notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
            QObject::connect(notifier.get(), &QSocketNotifier::activated, [this, descriptor] {
                Watched_.at(descriptor)->setEnabled(false); // the next sleep enables it again
                Woken();
            });
        }
        notifier->setEnabled(true);
    }
}

/// Called when the alarm or a descriptor ends a sleep. A sleep of the event loop needs nothing more: the loop continues
/// by itself. A nested loop of Qt's continues to sleep, so the round of events is raised here.
void QtPump::Woken() {
    if (Loop_ == nullptr || IsBreathing_ || IsLeaving_ || QThread::currentThread()->loopLevel() == 0)
        return;
    Awake();
    Loop_->RaiseRound();
    if (Loop_->Ending())
        LeaveLoopsOfQt();
    Watch(Descriptors(Wake::ByEvents));
    if (const auto time = Loop_->TimeToNextTick())
        Alarm_.start(static_cast<int>(*time));
}

/// Ends the nested loops of Qt's: the user may have left while dragging text or with a widget's list open.
void QtPump::LeaveLoopsOfQt() {
    QDrag::cancel();
    while (QWidget* const popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            return;
    }
}

void QtPump::Breathe(Input input) {
    if (IsBreathing_)
        return;
    IsBreathing_ = true;
    QAbstractEventDispatcher::instance()->processEvents(
        QEventLoop::ExcludeSocketNotifiers |
        (input == Input::Too ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents));
    IsBreathing_ = false;
    LastBreath_ = std::chrono::steady_clock::now();
}

void QtPump::Leave(const ProgramOver& over) {
    IsLeaving_ = true;
    const int status = Over_(over);
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace backends::qt
