// SPDX-License-Identifier: MIT
#include "backends/host/end_signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace backends {

EndSignals::EndSignals() {
    sigset_t wanted;
    sigemptyset(&wanted);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&wanted, signal);
    if (sigprocmask(SIG_BLOCK, &wanted, nullptr) == 0)
        Signals_ = backends::Descriptor(::signalfd(-1, &wanted, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!Signals_.Valid())
        sigprocmask(SIG_UNBLOCK, &wanted, nullptr); // a signal that nobody reads must still end the program
}

bool EndSignals::RaiseWhatIsPending() {
    signalfd_siginfo signal{};
    if (!Signals_.Valid() || ::read(Signals_.Number(), &signal, sizeof signal) != sizeof signal)
        return false;
    const int number = static_cast<int>(signal.ssi_signo);
    if (Raised)
        Raised(number == SIGTERM ? "SIGTERM" : number == SIGINT ? "SIGINT" : "SIGHUP");
    return true;
}

} // namespace backends
