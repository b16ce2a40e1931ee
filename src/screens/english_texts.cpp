// English. One line a text; %lld is a whole number, %@ a word or a time.

#include <array>

#include "screens/texts.h"

namespace ostrel::Texts {
namespace {

constexpr auto kEnglish = std::to_array<Entry>({
    // The break on the screen.
    {"overlay.kind.eye", "Eye break"},
    {"overlay.kind.body", "Body break"},
    {"overlay.title.eye", "Look into the distance"},
    {"overlay.title.body", "Get up and move"},
    {"overlay.title.ended", "That was your break"},
    {"overlay.window.eye", "Eye break"},
    {"overlay.window.body", "Body break"},
    {"overlay.banner.penalty %lld", "This break is %lld s longer for the skip before"},
    {"overlay.banner.close", "Close this note"},
    {"overlay.time.minutes_left %lld", "Up to %lld minutes left"},
    {"overlay.time.one_minute_left", "Up to a minute left"},
    {"overlay.time.seconds_left %lld", "Up to %lld seconds left"},
    {"overlay.time.ended", "The break is over"},

    // Its actions. The hints are read out by screen readers.
    {"action.done", "Done"},
    {"action.skip", "Skip"},
    {"action.postpone_5", "Postpone by five minutes"},
    {"action.done.hint", "Dismisses the overlay once the countdown reaches zero."},
    {"action.skip.hint", "Skips the current break and adds a penalty to the next one."},
    {"action.postpone_5.hint", "Postpones this break by five minutes."},
    {"key.return", "↩"},
    {"key.escape", "Esc"},
    {"key.p", "P"},

    // The status item.
    {"menubar.tooltip.on", "Ostrel is on"},
    {"menubar.tooltip.off", "Ostrel is off"},
    {"menubar.tooltip.default", "Ostrel"},
    {"menubar.status.next_eye %@", "Next eye break in %@"},
    {"menubar.status.next_body %@", "Next body break in %@"},
    {"menubar.status.off", "Ostrel is off"},
    {"menubar.status.away", "Away: the countdown waits for you"},
    {"menubar.status.held", "A break waits until you are free"},
    {"menubar.status.on_screen", "A break is on the screen"},
    {"notice.not_saved",
     "Your settings could not be saved. They are kept in memory, and saving is tried again."},
    {"state.paused", "Paused"},
    {"menubar.pause.indefinite_state", "Paused until you resume"},
    {"menubar.pause.focus", "Paused while notifications are silenced"},
    {"menubar.pause.schedule", "Paused outside work hours"},
    {"menubar.pause.until %@", "Paused until %@"},

    // Its menu.
    {"menubar.action.start_eye", "Start an eye break"},
    {"menubar.action.start_body", "Start a body break"},
    {"menubar.action.pause", "Pause"},
    {"menubar.action.pause_30_minutes", "For 30 minutes"},
    {"menubar.action.pause_1_hour", "For an hour"},
    {"menubar.action.pause_2_hours", "For two hours"},
    {"menubar.action.pause_until_morning", "Until tomorrow morning"},
    {"menubar.action.pause_indefinitely", "Until I resume"},
    {"menubar.action.resume", "Resume"},
    {"menubar.action.quit", "Quit Ostrel"},
});

}  // namespace

std::span<const Entry> english() {
    return kEnglish;
}

}  // namespace ostrel::Texts
