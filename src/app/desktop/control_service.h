#pragma once

#include <memory>
#include <vector>

#include "app/control/control.h"
#include "app/desktop/control_object.h"
#include "app/desktop/session_bus_keeper.h"
#include "base/subscription.h"

namespace ostrel {

// Lets the other programs of the user control this one over the session bus, under
// ControlNames::kService, also after the bus was restarted. Without a bus nobody can.
//
// Where another process has the name already, this one gets it when that is gone.
class ControlService {
  public:
    // What `services` refers to and the keeper outlive it.
    ControlService(Control::Services services, SessionBusKeeper& keeper);

  private:
    void appear();

    Control control_;
    SessionBusKeeper& keeper_;
    std::unique_ptr<ControlObject> object_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
