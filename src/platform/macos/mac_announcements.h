#pragma once

#include <memory>

#include "platform/api/distributed_announcements.h"

namespace ostrel {

// The system's announcements of Do Not Disturb, by the names of system_names.h. Until the first
// one nothing is known: there is no state to be asked for.
class MacAnnouncements : public DistributedAnnouncements {
  public:
    MacAnnouncements();
    MacAnnouncements(const MacAnnouncements&) = delete;
    MacAnnouncements& operator=(const MacAnnouncements&) = delete;
    ~MacAnnouncements() override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
