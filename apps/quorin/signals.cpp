// SPDX-License-Identifier: MIT
#include "apps/quorin/signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace quorin {

EndSignals::EndSignals() {
    sigset_t wanted;
    sigemptyset(&wanted);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&wanted, signal);
    if (sigprocmask(SIG_BLOCK, &wanted, nullptr) == 0)
        Signals = platform::common::Descriptor(::signalfd(-1, &wanted, SFD_NONBLOCK | SFD_CLOEXEC));
}

bool EndSignals::RaiseWhatIsPending() {
    signalfd_siginfo signal{};
    if (!Signals.Valid() || ::read(Signals.Number(), &signal, sizeof signal) != sizeof signal)
        return false;
    if (Raised)
        Raised();
    return true;
}

} // namespace quorin
