#include "platform/linux/termination_signals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace ostrel {
namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

// Written to by the handler, which interrupts any thread: the toolkit has some of its own.
volatile std::sig_atomic_t wakeDescriptor = -1;

void wake(int) {
    const int errorBefore = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &one, sizeof one);
    errno = errorBefore;
}

void handleBy(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : kSignals) {
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

// Where no descriptor is to be had the signals keep ending the program the hard way.
TerminationSignals::TerminationSignals() : descriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        std::uint64_t count = 0;
        if (read(descriptor_, &count, sizeof count) == static_cast<ssize_t>(sizeof count)) {
            received.send();
        }
    });
    wakeDescriptor = descriptor_;
    handleBy(wake);
}

TerminationSignals::~TerminationSignals() {
    if (descriptor_ >= 0) {
        handleBy(SIG_DFL);
        wakeDescriptor = -1;
        notifier_.reset();
        close(descriptor_);
    }
}

}  // namespace ostrel
