// The windows of OverlayManager: one per display, in step with the displays.

#include <algorithm>
#include <utility>

#include "core/settings/settings_store.h"
#include "overlay/overlay_manager.h"

namespace ostrel {
namespace {

using Windows = std::vector<std::unique_ptr<OverlayWindow>>;

Windows::iterator findWindow(Windows& windows, std::optional<std::uint32_t> displayID) {
    return std::find_if(windows.begin(), windows.end(), [displayID](const auto& window) {
        return window->displayID() == displayID;
    });
}

}  // namespace

// None while the screens do not show the session. Also settles which display is the primary one:
// the main display, or the first while displays are being reconfigured and the main one is not
// among them.
std::vector<ScreenSnapshot> OverlayManager::takeSnapshots() {
    std::vector<ScreenSnapshot> snapshots;
    const auto mainID = services_.displays.mainDisplayID();
    std::optional<std::uint32_t> primaryID;
    for (const Displays::Display& display : services_.displays.current()) {
        snapshots.push_back({display.displayID, display.frame});
        if (display.displayID == mainID) {
            primaryID = mainID;
        }
    }
    if (!primaryID && !snapshots.empty()) {
        primaryID = snapshots.front().displayID;
    }
    primaryDisplayID_.set(primaryID);
    if (!*services_.systemEvents.isSessionOnScreen) {
        snapshots.clear();
    }
    return snapshots;
}

void OverlayManager::rebuildWindows() {
    if (activeSession_->has_value() && !isGentle()) {
        syncWindows();
        didRebuildWindows.send();
    }
}

// A window whose display stayed is kept, so that nothing flickers there.
void OverlayManager::syncWindows() {
    Windows before = std::exchange(openWindows_, {});
    const std::vector<ScreenSnapshot> screens = takeSnapshots();
    if (!*services_.systemEvents.isSessionOnScreen) {
        firstPaintTimer_.cancel();
    } else if (!screens.empty() && std::ranges::none_of(screens, [this](const auto& screen) {
                   return hasPainted(screen.displayID);
               })) {
        awaitFirstPaint();
    }
    for (const ScreenSnapshot& screen : screens) {
        const Role role = screen.displayID == *primaryDisplayID_ ? Role::primary : Role::secondary;
        if (const auto kept = findWindow(before, screen.displayID); kept != before.end()) {
            (*kept)->cover(screen, role);
            openWindows_.push_back(std::move(*kept));
            before.erase(kept);
        } else {
            openWindows_.push_back(
                services_.windows.make(*this, (*activeSession_)->kind, screen, role));
        }
    }
    for (const auto& gone : before) {
        std::erase(paintedDisplayIDs_, gone->displayID());
        if (keyboardDisplayID_ == gone->displayID()) {
            keyboardDisplayID_.reset();
        }
    }
    before.clear();
    giveKeyboardToPrimary();
}

// The first window to paint disarms the watchdog.
void OverlayManager::awaitFirstPaint() {
    firstPaintTimer_ = services_.runLoop.callAfter(runLoopSec(kFirstPaintLimitSec),
                                                   [this] { close(CloseReason::forcedBySleep); });
}

void OverlayManager::didPaint(OverlayWindow& window) {
    if (activeSession_->has_value() && !hasPainted(window.displayID())) {
        firstPaintTimer_.cancel();
        paintedDisplayIDs_.push_back(window.displayID());
        didPaintWindow.send(window.displayID());
        giveKeyboardToPrimary();
    }
}

bool OverlayManager::hasPainted(std::optional<std::uint32_t> displayID) const {
    return displayID && std::find(paintedDisplayIDs_.begin(), paintedDisplayIDs_.end(),
                                  *displayID) != paintedDisplayIDs_.end();
}

// Until the primary window has painted the keyboard stays where it is.
void OverlayManager::giveKeyboardToPrimary() {
    const auto primaryID = *primaryDisplayID_;
    const auto primary = findWindow(openWindows_, primaryID);
    if (!hasPainted(primaryID) || primary == openWindows_.end() ||
        keyboardDisplayID_ == primaryID) {
        return;
    }
    if (const auto holder = findWindow(openWindows_, keyboardDisplayID_);
        keyboardDisplayID_ && holder != openWindows_.end()) {
        (*holder)->releaseKeyboard();
    }
    keyboardDisplayID_ = primaryID;
    (*primary)->takeKeyboard();
}

void OverlayManager::closeWindows() {
    keyboardDisplayID_.reset();
    paintedDisplayIDs_.clear();
    if (services_.motion.reduceMotion()) {
        openWindows_.clear();
        return;
    }
    fadingWindows_ = std::exchange(openWindows_, {});
    for (const auto& window : fadingWindows_) {
        window->fadeOut(timing_.fadeOutDurationSec);
    }
    fadeOutTimer_ = services_.runLoop.callAfter(runLoopSec(timing_.fadeOutDurationSec),
                                                [this] { fadingWindows_.clear(); });
}

}  // namespace ostrel
