#include "screens/settings/bound_controls.h"
#include "screens/settings/pages.h"
#include "screens/texts/texts.h"

namespace ostrel {

Page* makeRemindersPage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    using S = SettingsModel;
    auto* page = new Page(Texts::of("settings.page.reminders"));
    Card* before = page->addCard(Texts::of("settings.reminders.before"));
    before->addRow(
        Texts::of("settings.reminders.toast"), {},
        Bound::makeSecondsChoice(store, &S::preBreakToastLeadSec,
                                 PreBreakDefaults::kToastChoicesSec, "preBreakToastLeadSec"));
    before->addRow(
        Texts::of("settings.reminders.notification"), {},
        Bound::makeSecondsChoice(store, &S::breakSoonLeadSec,
                                 PreBreakDefaults::kBreakSoonChoicesSec, "breakSoonLeadSec"));
    Card* others = page->addCard(Texts::of("settings.reminders.others"));
    others->addRow(Texts::of("settings.reminders.skips"), {},
                   Bound::makeSwitch(store, &S::notifyConsecutiveSkips, "notifyConsecutiveSkips"));
    others->addRow(Texts::of("settings.reminders.pause"), {},
                   Bound::makeSwitch(store, &S::notifyPauseForgotten, "notifyPauseForgotten"));
    others->addRow(Texts::of("settings.reminders.weekly"), {},
                   Bound::makeSwitch(store, &S::notifyWeeklySummary, "notifyWeeklySummary"));
    others->addRow(Texts::of("settings.reminders.day_end"), {},
                   Bound::makeSwitch(store, &S::notifyDayEnd, "notifyDayEnd"));
    return page;
}

}  // namespace ostrel
