#pragma once

#include <cstdint>

#include "core/engine/engine_ports.h"
#include "core/settings/session_state_store.h"
#include "platform/api/run_loop.h"

namespace ostrel {

// Reminds a user who has paused for an hour. The reminder waits with the system, also across a
// relaunch. It must not reach anybody who did not pause: when it falls due and the user does not
// hold the pause, it is withdrawn.
class PauseForgottenReminder {
  public:
    static constexpr std::int64_t kDelaySec = 3600;

    // Both outlive it, as does the center, which may be absent.
    PauseForgottenReminder(SessionStateStore& session, RunLoop& runLoop, BreakNotifying* center);

    // At the beginning of a pause, or when the user joins one; nothing that is already due is
    // scheduled.
    void schedule(WallTime now);

    // After a relaunch in a pause.
    void restore();

    void withdraw();
    // The pause is over; so is its time.
    void forget();

  private:
    void arm(WallTime fireAt);

    SessionStateStore& session_;
    RunLoop& runLoop_;
    BreakNotifying* center_;
    Timer timer_;
};

}  // namespace ostrel
