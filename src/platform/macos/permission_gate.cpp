#include "platform/macos/permission_gate.h"

#include <utility>

namespace ostrel {

PermissionGate::PermissionGate(Centre centre, NowFunction now)
    : centre_(std::move(centre)), now_(std::move(now)) {}

void PermissionGate::add(const NotificationRequest& request) {
    if (authorization_ == Authorization::granted) {
        centre_.post(request);
        return;
    }
    held_.hold(request, now_());
    // Once refused it may have been granted since, in the settings of the system.
    if (std::exchange(isAsked_, true)) {
        centre_.read();
    } else {
        centre_.ask();
    }
}

void PermissionGate::settle(Authorization authorization) {
    authorization_ = authorization;
    if (authorization_ == Authorization::granted) {
        for (const NotificationRequest& request : held_.take(now_())) {
            centre_.post(request);
        }
    }
}

}  // namespace ostrel
