#include "presence/meeting_watcher.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/api/frontmost_application.h"

namespace ostrel {

using std::chrono::seconds;

MeetingWatcher::MeetingWatcher(Services services) : services_(services) {
    pollTimer_ = services_.runLoop.repeat(seconds(0), seconds(kPollSec), [this] { refresh(); });
}

MeetingWatcher::~MeetingWatcher() = default;

bool MeetingWatcher::isDeferralAppFrontmost() const {
    const auto& identifiers = services_.settingsStore.settings()->deferAppBundleIDs;
    if (identifiers.empty()) {
        return false;
    }
    const auto application = services_.frontmost.current();
    return application && application->bundleIdentifier &&
           std::ranges::find(identifiers, *application->bundleIdentifier) != identifiers.end();
}

void MeetingWatcher::refresh() {
    meetingActive_.set(isDeferralAppFrontmost());
}

void MeetingWatcher::waitUntilClear(std::function<void()> completion) {
    armRecheck(waits_.insert(waits_.end(), Wait{{}, std::move(completion)}));
}

void MeetingWatcher::armRecheck(Waits::iterator wait) {
    wait->timer = services_.runLoop.callAfter(seconds(kRecheckSec), [this, wait] {
        refresh();
        if (isMeetingActive()) {
            armRecheck(wait);
            return;
        }
        const std::function<void()> completion = std::move(wait->completion);
        waits_.erase(wait);
        completion();
    });
}

}  // namespace ostrel
