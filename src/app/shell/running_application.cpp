#include "app/shell/running_application.h"

#include <QApplication>
#include <QEvent>
#include <cstdio>
#include <memory>
#include <utility>

#include "screens/texts/texts.h"
#include "screens/texts/toolkit_texts.h"

namespace ostrel {
namespace {

using Shade = ToastCard::Shade;

// The language of the texts, and the direction of everything with it.
Subscription followLanguage(SettingsStore& settingsStore) {
    auto adopt = [current = std::string(), toolkit = std::make_shared<Texts::ToolkitTexts>()](
                     const SettingsModel& settings) mutable {
        if (settings.languageRaw == current) {
            return;
        }
        current = settings.languageRaw;
        Texts::setLanguage(settings.languageRaw);
        toolkit->setLanguage(Texts::language());
        QApplication::setLayoutDirection(Texts::isRightToLeft() ? Qt::RightToLeft
                                                                : Qt::LeftToRight);
        // Not at once: what is made anew may be what changed the language.
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QCoreApplication::postEvent(window, new QEvent(QEvent::LanguageChange));
        }
    };
    adopt(*settingsStore.settings());
    return settingsStore.settings().onChange(std::move(adopt));
}

}  // namespace

RunningApplication::RunningApplication(DesktopSystem& desktop, PreferencesStore& preferences,
                                       const std::string& dataFolder)
    : desktop_(desktop),
      notifications_(desktop.makeNotifications(preferences)),
      environment_(desktop.platform(preferences, *notifications_,
                                    [this](AppWindow window) { open(window); })),
      failures_(preferences.persistenceWriteFailed.subscribe(
          [this](const PersistenceError& error) { tellFailure(error); })),
      trace_(environment_),
      language_(followLanguage(environment_.settingsStore())),
      appearance_(environment_.settingsStore(), desktop.appearance()),
      toastSurface_(environment_.toastDispatcher(), desktop.motion(),
                    [this] { return appearance_.isDark() ? Shade::dark : Shade::light; }),
      windows_(environment_, desktop, dataFolder, [this] { status_->popUpMenu(); }),
      support_(environment_, desktop, dataFolder) {
    putUpStatusPresence();
    subscriptions_.push_back(desktop.systemEvents().isSessionOnScreen.onChange(
        [this](const bool& isOnScreen) { toastSurface_.setCovered(!isOnScreen); }));
    subscriptions_.push_back(
        desktop.statusPresenceIsVoid.subscribe([this] { putUpStatusPresence(); }));
}

RunningApplication::~RunningApplication() = default;

int RunningApplication::run() {
    environment_.launch();
    const int status = QApplication::exec();
    environment_.quit();
    return status;
}

void RunningApplication::open(AppWindow window) {
    window == AppWindow::report ? windows_.showReport() : windows_.showSettings();
}

// The very first record may fail, before there is anything in the status area to tell it.
void RunningApplication::tellFailure(const PersistenceError& error) {
    std::fprintf(stderr, "ostrel: %s could not be saved: %s\n", error.key.c_str(),
                 error.description.c_str());
    hasFailed_ = true;
    if (status_) {
        status_->tellNotSaved();
    }
}

void RunningApplication::putUpStatusPresence() {
    status_.reset();
    status_ = desktop_.makeStatusPresence(
        {environment_.timerEngine(), environment_.sessionStateStore(), environment_.settingsStore(),
         environment_.overlayManager(), environment_.dailyCounter(),
         [this] { return environment_.workHoursGate().workUntil(); },
         [this] { windows_.showSettings(); }, [this] { windows_.showReport(); },
         [this] { support_.showAbout(); }, [] { QApplication::quit(); }});
    if (hasFailed_) {
        status_->tellNotSaved();
    }
}

}  // namespace ostrel
