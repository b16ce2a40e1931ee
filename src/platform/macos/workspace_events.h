#pragma once

#include <memory>

#include "platform/macos/system_event_feed.h"

namespace ostrel {

// Hears what the system announces (sleep, screens, the session, the lock, clock, zone and day, the
// user turning to this program) and hands it to a feed, which outlives it.
class WorkspaceEvents {
  public:
    explicit WorkspaceEvents(SystemEventFeed& feed);
    WorkspaceEvents(const WorkspaceEvents&) = delete;
    WorkspaceEvents& operator=(const WorkspaceEvents&) = delete;
    ~WorkspaceEvents();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
