#include "core/settings/settings_defaults.h"

namespace ostrel {

std::vector<std::string> PresenceDefaults::deferAppBundleIDs() {
    return {"us.zoom.xos",
            "app.zoom.us",
            "us.zoom.ZoomClips",
            "com.microsoft.teams",
            "com.microsoft.teams2",
            "com.cisco.webexmeetingsapp",
            "com.cisco.webex.meetings",
            "com.tinyspeck.slackmacgap",
            "com.apple.FaceTime",
            "com.hnc.Discord",
            "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"};
}

std::set<std::int64_t> WorkHoursDefaults::workDays() {
    return {2, 3, 4, 5, 6};
}

}  // namespace ostrel
