#include <QLabel>
#include <QPointer>

#include "screens/capability_words.h"
#include "screens/identifier.h"
#include "screens/settings/bound_controls.h"
#include "screens/settings/pages.h"
#include "screens/settings/program_list.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using S = SettingsModel;

void addAway(Page& page, SettingsStore& store) {
    Card* away = page.addCard(Texts::of("settings.presence.away"));
    away->addRow(Texts::of("settings.presence.detect_idle"),
                 Texts::of("settings.presence.detect_idle.hint"),
                 Bound::makeSwitch(store, &S::detectUserIdle, "detectUserIdle"));
    QWidget* after = away->addRow(
        Texts::of("settings.presence.idle_after"), {},
        Bound::makeSecondsChoice(store, &S::idleThresholdSec, IdleDefaults::kThresholdChoicesSec,
                                 "idleThresholdSec"));
    QWidget* credit = away->addRow(
        Texts::of("settings.presence.credit"), Texts::of("settings.presence.credit.hint"),
        Bound::makeSwitch(store, &S::creditAwayAsBreak, "creditAwayAsBreak"));
    Bound::follow(away, store, [after, credit](const SettingsModel& settings) {
        after->setEnabled(settings.detectUserIdle);
        credit->setEnabled(settings.detectUserIdle);
    });
}

void addCalls(Page& page, const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    Card* calls = page.addCard(Texts::of("settings.presence.calls"));
    calls->addWide(makeLabel(Texts::of("settings.presence.calls.hint"), "hint"));
    calls->addWide(new ProgramList(services));
    calls->addRow(
        Texts::of("settings.presence.max_deferral"), {},
        Bound::makeSecondsChoice(store, &S::maxDeferralSec, PresenceDefaults::kDeferralChoicesSec,
                                 "maxDeferralSec"));
}

// As the system answers; on a page that may be gone by then.
void addCapabilities(Page& page, const SettingsServices& services) {
    Card* works = page.addCard(Texts::of("settings.presence.works"));
    identify(works, QStringLiteral("ostrel.settings.capabilities"));
    services.findCapabilities(works, [works](const std::vector<Capability>& found) {
        for (const Capability& capability : found) {
            auto* state = makeLabel(CapabilityWords::state(capability), "hint");
            state->setWordWrap(false);
            works->addRow(CapabilityWords::topic(capability), CapabilityWords::reason(capability),
                          state);
        }
    });
}

}  // namespace

Page* makePresencePage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    auto* page = new Page(Texts::of("settings.page.presence"));
    addAway(*page, store);
    Card* films = page->addCard(Texts::of("settings.presence.films"));
    films->addRow(
        Texts::of("settings.presence.delay_video"), {},
        Bound::makeSwitch(store, &S::delayBreakOnFullscreenVideo, "delayBreakOnFullscreenVideo"));
    films->addRow(Texts::of("settings.presence.detect_video"),
                  Texts::of("settings.presence.detect_video.hint"),
                  Bound::makeSwitch(store, &S::detectVideoPlayback, "detectVideoPlayback"));
    addCalls(*page, services);
    Card* quiet = page->addCard(Texts::of("settings.presence.quiet"));
    quiet->addRow(Texts::of("settings.presence.dnd"), {},
                  Bound::makeSwitch(store, &S::pauseDuringDND, "pauseDuringDND"));
    addCapabilities(*page, services);
    return page;
}

}  // namespace ostrel
