#include "app/desktop/session/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace {

sigset_t terminationSignals() {
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGTERM);
    ::sigaddset(&signals, SIGINT);
    ::sigaddset(&signals, SIGHUP);
    return signals;
}

int listen() {
    const sigset_t signals = terminationSignals();
    return ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

}  // namespace

void TerminationSignals::block() {
    const sigset_t signals = terminationSignals();
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent), file_(listen()), notifier_(file_.number(), QSocketNotifier::Read) {
    connect(&notifier_, &QSocketNotifier::activated, this, &TerminationSignals::read);
}

void TerminationSignals::read() {
    signalfd_siginfo signal{};
    while (::read(file_.number(), &signal, sizeof signal) > 0) {
        Q_EMIT received();
    }
}
