#include "platform/macos/service_login_item.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/login_item_rule.h"

namespace ostrel {

bool ServiceLoginItem::isEnabled() const {
    if (@available(macOS 13.0, *)) {
        return [SMAppService mainAppService].status == SMAppServiceStatusEnabled;
    }
    return false;
}

bool ServiceLoginItem::setEnabled(bool isEnabled) {
    if (@available(macOS 13.0, *)) {
        SMAppService* service = [SMAppService mainAppService];
        if (isEnabled) {
            [service registerAndReturnError:nil];
        } else {
            [service unregisterAndReturnError:nil];
        }
        const LoginItemOutcome outcome =
            loginItemOutcome(static_cast<LoginItemStatus>(service.status), isEnabled);
        if (outcome.needsApproval) {
            [SMAppService openSystemSettingsLoginItems];
        }
        return outcome.isDone;
    }
    return false;
}

}  // namespace ostrel
