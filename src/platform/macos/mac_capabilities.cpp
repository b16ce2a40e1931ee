#include "platform/macos/mac_capabilities.h"

namespace ostrel {
namespace {

using Authorization = SystemNotifications::Authorization;
using State = Capability::State;
using Topic = Capability::Topic;

Capability notifications(const MacFacts& facts) {
    if (!facts.isInBundle) {
        return {Topic::notifications, State::missing, "capability.reason.mac_bundle"};
    }
    switch (facts.notifications) {
        case Authorization::granted:
            return {Topic::notifications};
        case Authorization::denied:
            return {Topic::notifications, State::missing, "capability.reason.mac_permission"};
        case Authorization::unknown:
            break;
    }
    return {Topic::notifications, State::partly, "capability.reason.mac_permission_asked"};
}

}  // namespace

std::vector<Capability> capabilitiesOnMac(const MacFacts& facts) {
    return {
        {Topic::away},
        {Topic::calls},
        {Topic::films},
        // What announces it is known, but nobody promises that every release does.
        {Topic::doNotDisturb, State::partly, "capability.reason.mac_focus"},
        {Topic::sleep},
        {Topic::lock},
        {Topic::hotkeys},
        notifications(facts),
        {Topic::statusItem},
        facts.isInBundle
            ? Capability{Topic::chimes}
            : Capability{Topic::chimes, State::missing, "capability.reason.mac_bundle"},
    };
}

}  // namespace ostrel
