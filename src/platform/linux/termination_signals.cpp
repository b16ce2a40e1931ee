#include "platform/linux/termination_signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QObject>
#include <QSocketNotifier>
#include <csignal>

namespace ostrel {
namespace {

sigset_t terminationSet() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGHUP);
    return set;
}

}  // namespace

// Where no descriptor is to be had the signals keep ending the program the hard way.
TerminationSignals::TerminationSignals() {
    const sigset_t set = terminationSet();
    descriptor_ = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor_ < 0) {
        return;
    }
    sigprocmask(SIG_BLOCK, &set, nullptr);
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        signalfd_siginfo info{};
        if (read(descriptor_, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
            received.send();
        }
    });
}

TerminationSignals::~TerminationSignals() {
    if (descriptor_ >= 0) {
        notifier_.reset();
        close(descriptor_);
        const sigset_t set = terminationSet();
        sigprocmask(SIG_UNBLOCK, &set, nullptr);
    }
}

}  // namespace ostrel
