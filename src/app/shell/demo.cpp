#include "app/shell/demo.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <chrono>
#include <cstdio>
#include <utility>

#include "app/environment/app_environment.h"
#include "core/settings/document.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

constexpr RunLoopClock::duration kUntilFadedIn = 900ms;
constexpr RunLoopClock::duration kUntilFadedOut = 1s;

const char* inWords(CloseReason reason) {
    switch (reason) {
        case CloseReason::skipped:
        case CloseReason::skippedGently:
            return "skipped";
        case CloseReason::done:
            return "done";
        case CloseReason::autoFade:
            return "over, it faded out by itself";
        case CloseReason::postponed:
            return "postponed";
        case CloseReason::forcedBySleep:
        case CloseReason::forcedByPause:
            break;
    }
    return "taken down";
}

}  // namespace

void Demo::writeSettings(PreferencesStore& preferences) {
    SettingsModel settings;
    settings.activePresetID = "demo";
    settings.eyeBreakIntervalSec = kEyeIntervalSec;
    settings.eyeBreakDurationSec = 6;
    settings.bodyBreakIntervalSec = 19;
    settings.bodyBreakDurationSec = 8;
    settings.mergeNearbyBreaks = false;
    Document<SettingsModel>(preferences, SettingsStore::kKey).save(settings);
}

Demo::Demo(AppEnvironment& environment, RunLoop& runLoop,
           std::optional<std::string> screenshotFolder)
    : environment_(environment),
      runLoop_(runLoop),
      screenshotFolder_(std::move(screenshotFolder)),
      startedAt_(runLoop.now()) {
    if (screenshotFolder_) {
        QDir().mkpath(QString::fromStdString(*screenshotFolder_));
    }
    OverlayManager& overlay = environment_.overlayManager();
    subscriptions_.push_back(overlay.didPresent.subscribe([this] { breakOpened(); }));
    subscriptions_.push_back(overlay.didReachZero.subscribe([this](BreakKind kind) {
        tell("the countdown of the " + std::string(nameOf(kind)) + " break is at zero");
        photographSoon(std::string(nameOf(kind)) + "-break-over");
    }));
    subscriptions_.push_back(overlay.didClose.subscribe(
        [this](BreakKind kind, CloseReason reason) { breakClosed(kind, reason); }));
    tell("a demonstration: an eye break comes after " + std::to_string(kEyeIntervalSec) +
         " seconds, a body break soon after it");
}

void Demo::tell(const std::string& what) const {
    const auto seconds = std::chrono::duration<double>(runLoop_.now() - startedAt_).count();
    std::printf("%5.1f s  %s\n", seconds, what.c_str());
    std::fflush(stdout);
}

void Demo::breakOpened() {
    const OverlayManager& overlay = environment_.overlayManager();
    const ActiveOverlaySession& session = **overlay.activeSession();
    const std::size_t displays = overlay.openWindows().size();
    const char* which = session.kind == BreakKind::eye ? "an eye break of " : "a body break of ";
    tell(which + std::to_string(session.totalSec()) + " seconds covers " +
         std::to_string(displays) + (displays == 1 ? " display" : " displays"));
    photographSoon(std::string(nameOf(session.kind)) + "-break");
}

void Demo::breakClosed(BreakKind kind, CloseReason reason) {
    photoTimer_.cancel();
    tell("the " + std::string(nameOf(kind)) + " break is " + inWords(reason));
    (kind == BreakKind::eye ? hadEyeBreak_ : hadBodyBreak_) = true;
    if (hadEyeBreak_ && hadBodyBreak_) {
        quitTimer_ = runLoop_.callAfter(kUntilFadedOut, [this] {
            tell("that was it");
            QApplication::quit();
        });
    }
}

void Demo::photographSoon(const std::string& name) {
    if (screenshotFolder_) {
        photoTimer_ = runLoop_.callAfter(kUntilFadedIn, [this, name] { photograph(name); });
    }
}

void Demo::photograph(const std::string& name) {
    int number = 0;
    for (QScreen* screen : QGuiApplication::screens()) {
        const QString path =
            QStringLiteral("%1/%2-display-%3.png")
                .arg(QString::fromStdString(*screenshotFolder_), QString::fromStdString(name))
                .arg(++number);
        const bool isSaved = screen->grabWindow(0).save(path);
        tell((isSaved ? "picture: " : "this picture could not be saved: ") + path.toStdString());
    }
}

}  // namespace ostrel
