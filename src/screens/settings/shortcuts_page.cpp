#include <QLabel>
#include <QPushButton>

#include "presence/hotkey_router.h"
#include "screens/settings/bound_controls.h"
#include "screens/settings/chord_recorder.h"
#include "screens/settings/pages.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using S = SettingsModel;

void addRecorder(Card& card, const SettingsServices& services, std::string_view label,
                 HotkeyRouter::Action action) {
    auto* recorder = new ChordRecorder(services, action);
    card.addRow(Texts::of(label), {}, recorder);
    QWidget* row = card.addWide(recorder->remark());
    row->setHidden(recorder->remark()->isHidden());
}

QPushButton* makeRestore(SettingsStore& store) {
    auto* button = new QPushButton(Texts::of("settings.shortcuts.restore"));
    Bound::setName(button, "shortcuts.restore");
    QObject::connect(button, &QPushButton::clicked, button, [&store] {
        store.update([](S& settings) {
            settings.startBreakHotkey = S{}.startBreakHotkey;
            settings.togglePauseHotkey = S{}.togglePauseHotkey;
        });
    });
    return button;
}

}  // namespace

Page* makeShortcutsPage(const SettingsServices& services) {
    auto* page = new Page(Texts::of("settings.page.shortcuts"));
    if (services.hotkeyRouter == nullptr) {
        page->addText(Texts::of("settings.shortcuts.unavailable"));
        return page;
    }
    Card* everywhere = page->addCard(Texts::of("settings.shortcuts.everywhere"));
    addRecorder(*everywhere, services, "settings.shortcuts.start_break",
                HotkeyRouter::Action::startBreak);
    addRecorder(*everywhere, services, "settings.shortcuts.toggle_pause",
                HotkeyRouter::Action::togglePause);
    page->addText(Texts::of("settings.shortcuts.record.hint"));
    page->addWidget(makeRestore(services.settingsStore), Qt::AlignLeading);
    return page;
}

}  // namespace ostrel
