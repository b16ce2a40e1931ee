#pragma once

#include <memory>

#include "base/signal.h"

class QSocketNotifier;

namespace ostrel {

// SIGINT, SIGTERM and SIGHUP as an event on the main thread, so that a program that is told to end
// can put its things in order. A second one of them while the first is being answered waits.
//
// Needs Qt's event loop. The default behaviour comes back when it is destroyed.
class TerminationSignals {
  public:
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    Signal<> received;

  private:
    int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ostrel
