#include "app/desktop/stored_documents.h"

#include "app/control/control_report.h"
#include "app/shell/login_item_sync.h"
#include "core/settings/settings_store.h"
#include "platform/api/system_events.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/autostart_login_item.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/single_instance.h"
#include "platform/virtual/virtual_run_loop.h"
#include "records/break_log.h"
#include "records/daily_counter.h"
#include "records/presence_tally.h"
#include "records/streak_tracker.h"

namespace ostrel {
namespace {

using Access = FilePreferences::Access;

// Nothing is tried again later.
struct Preferences {
    Preferences(const std::filesystem::path& folder, Access access)
        : files(folder, runLoop, access) {}

    VirtualRunLoop runLoop{systemWallTime()};
    FilePreferences files;
};

}  // namespace

bool StoredDocuments::areInUse() const {
    return SingleInstance::isTaken(folder_);
}

SettingsModel StoredDocuments::settings() const {
    Preferences preferences(folder_, Access::readOnly);
    return *SettingsStore(preferences.files).settings();
}

ControlOutcome StoredDocuments::report(std::string_view range, std::string_view format) const {
    Preferences preferences(folder_, Access::readOnly);
    const ZonedCalendar calendar(systemTimeZone);
    const BreakLog log(preferences.files, calendar, systemWallTime);
    const PresenceTally tally(preferences.files, calendar, systemWallTime);
    const SettingsStore settings(preferences.files);
    const SystemEvents events;
    const DailyCounter counter(
        {preferences.files, calendar, preferences.runLoop, events, systemWallTime});
    const StreakTracker streak(
        {preferences.files, settings, log, counter, calendar, systemWallTime});
    return printReport({log, tally, calendar, systemWallTime, settings.settings()->dailyGoalBreaks,
                        *streak.streak()},
                       range, format);
}

ControlOutcome StoredDocuments::change(
    const std::function<ControlOutcome(SettingsStore&)>& change) const {
    const SingleInstance instance(folder_);
    if (instance.role() == SingleInstance::Role::second) {
        return ControlOutcome::refused("cli.error.no_answer");
    }
    Preferences preferences(folder_, Access::full);
    LocalizedText failure;
    const Subscription failures =
        preferences.files.persistenceWriteFailed.subscribe([&](const PersistenceError& error) {
            failure = {"cli.error.not_saved %@", {error.description}};
        });
    SettingsStore store(preferences.files);
    AutostartLoginItem loginItem(AutostartLoginItem::Places::ofThisSession());
    LoginItemSync loginItemSync(store, loginItem);
    const Subscription refusals =
        loginItemSync.refused.subscribe([&](const LocalizedText& text) { failure = text; });
    ControlOutcome outcome = change(store);
    if (outcome.isDone() && !failure.key.empty()) {
        return {ControlOutcome::Kind::refused, failure, {}};
    }
    return outcome;
}

}  // namespace ostrel
