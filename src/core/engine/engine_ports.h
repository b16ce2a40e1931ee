#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "base/clock.h"
#include "records/break_records.h"

// What the engine needs from those above it. Each may be absent: a missing watcher never holds a
// break, a missing announcer or toast shows nothing.
namespace ostrel {

class MeetingPresenceGuarding {
  public:
    virtual ~MeetingPresenceGuarding() = default;
    [[nodiscard]] virtual bool isMeetingActive() const = 0;
    // Runs `completion` once, later, when no meeting is in front.
    virtual void waitUntilClear(std::function<void()> completion) = 0;
};

class VideoPlaybackProbing {
  public:
    virtual ~VideoPlaybackProbing() = default;
    [[nodiscard]] virtual bool isVideoPlaying() const = 0;
};

// System notifications that belong to the schedule.
class BreakNotifying {
  public:
    virtual ~BreakNotifying() = default;
    virtual void postBreakSoon(BreakKind kind, std::int64_t leadSec, bool canPostpone) = 0;
    virtual void cancelBreakSoon() = 0;
    virtual void schedulePauseForgotten(WallTime fireAt) = 0;
    // After a relaunch: the system still holds the reminder that was scheduled before.
    virtual void restorePauseForgotten(WallTime fireAt) = 0;
    virtual void cancelPauseForgotten() = 0;
};

// The in-app cards that the engine raises.
class EngineToasts {
  public:
    enum class Message {
        merged,        // argument: minutes until the body break
        preBreakEye,   // seconds left, counted down
        preBreakBody,  // likewise
        pauseEnded,
        postponeNoneLeft,
        breakHeld,
        breakDropped,
        awayCreditBoth,  // minutes away
        awayCreditEye,
        awayCreditBody,
    };

    virtual ~EngineToasts() = default;
    [[nodiscard]] virtual bool isToastOnScreen() const = 0;
    // What the buttons of the toast do; without a handler there is no button.
    struct Handlers {
        std::function<void()> startNow;
        std::function<void()> later;
    };
    virtual void show(Message message, std::optional<std::int64_t> argument,
                      const Handlers& handlers) = 0;
    virtual void dismiss() = 0;
    // The same for one that counts down to a break, if such a one is on screen.
    virtual void dismissCounting() = 0;
};

struct EngineCollaborators {
    SkipPenalties* penaltyEngine = nullptr;
    PostponeRation* postponeService = nullptr;
    BreakLogging* breakLog = nullptr;
    MeetingPresenceGuarding* meetingWatcher = nullptr;
    VideoPlaybackProbing* videoPlaybackDetector = nullptr;
    BreakNotifying* notificationCenter = nullptr;
    EngineToasts* toastDispatcher = nullptr;
};

}  // namespace ostrel
