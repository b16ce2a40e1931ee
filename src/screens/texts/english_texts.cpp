// English. One line a text; %lld is a whole number, %@ a word or a time.

#include <array>

#include "screens/texts/languages.h"

namespace ostrel::Texts {
namespace {

constexpr auto kEnglish = std::to_array<Entry>({
    // The break on the screen.
    {"overlay.kind.eye", "Eye break"},
    {"overlay.kind.body", "Body break"},
    {"overlay.title.eye", "Rest your eyes"},
    {"overlay.title.body", "Get up and move"},
    {"overlay.title.ended", "That was your break"},
    {"overlay.window.eye", "Eye break"},
    {"overlay.window.body", "Body break"},
    {"overlay.banner.penalty %lld %lld",
     "You skipped %lld breaks: this one is %lld seconds longer"},
    {"overlay.banner.penalty %lld %lld#one",
     "You skipped a break: this one is %2$lld seconds longer"},
    {"overlay.skip.cost %lld", "Skipping makes your next eye break %lld seconds longer"},
    {"overlay.banner.close", "Close this note"},
    {"overlay.time.minutes_left %lld", "Up to %lld minutes left"},
    {"overlay.time.one_minute_left", "Up to a minute left"},
    {"overlay.time.seconds_left %lld", "Up to %lld seconds left"},
    {"overlay.time.ended", "The break is over"},

    // Its actions. The hints are read out by screen readers.
    {"action.done", "Done"},
    {"action.skip", "Skip"},
    {"action.skip.cost %lld", "Skip (next eye break +%lld s)"},
    {"action.postpone_5", "Postpone by five minutes"},
    {"action.done.hint", "Dismisses the overlay once the countdown reaches zero."},
    {"action.skip.hint", "Skips the current break and adds a penalty to the next one."},
    {"action.postpone_5.hint", "Postpones this break by five minutes."},
    {"key.return", "↩"},
    {"key.escape", "Esc"},
    {"key.p", "P"},

    // The guided moves of a body break, a minute each.
    {"guide.body.neck_rolls.title", "Neck rolls"},
    {"guide.body.neck_rolls.instruction",
     "Let your chin sink and roll your head slowly from one shoulder to the other, always across "
     "the front. Five times each way, never into pain."},
    {"guide.body.shoulder_rolls.title", "Shoulder rolls"},
    {"guide.body.shoulder_rolls.instruction",
     "Draw both shoulders up, back and down in large, slow circles. Ten times, then ten times the "
     "other way round."},
    {"guide.body.chest_opener.title", "Chest opener"},
    {"guide.body.chest_opener.instruction",
     "Open your arms wide at shoulder height, palms forward, and lift your breastbone. Stay for "
     "three breaths, let go, and repeat."},
    {"guide.body.side_stretch.title", "Side stretch"},
    {"guide.body.side_stretch.instruction",
     "Reach one arm over your head and lean to the side without turning. Stay for three breaths, "
     "then change sides."},
    {"guide.body.calf_raises.title", "Calf raises"},
    {"guide.body.calf_raises.instruction",
     "Hold on to something steady, rise onto your toes and lower your heels slowly. Fifteen times "
     "at an even pace."},
    {"guide.body.hip_circles.title", "Hip circles"},
    {"guide.body.hip_circles.instruction",
     "Stand with your feet apart, hands on your hips, and draw slow circles with your pelvis. Ten "
     "times each way."},
    {"guide.body.wrist_stretch.title", "Wrist stretch"},
    {"guide.body.wrist_stretch.instruction",
     "Put your palms together in front of your chest and lower them slowly until the wrists "
     "stretch. "
     "Stay for three breaths, let go, and repeat."},
    {"guide.body.water_walk.title", "Water walk"},
    {"guide.body.water_walk.instruction",
     "Walk to the kitchen, fill a glass of water and drink it in small sips. Take the long way "
     "back."},
    {"guide.body.quad_stretch.title", "Thigh stretch"},
    {"guide.body.quad_stretch.instruction",
     "Hold on to something steady, take one foot and draw the heel gently towards your bottom, "
     "knees "
     "together. Half a minute each side."},
    {"guide.body.deep_breaths.title", "Deep breaths"},
    {"guide.body.deep_breaths.instruction",
     "Stand tall and breathe in through the nose for four seconds, then out for six. Six times, "
     "with loose shoulders."},

    // Those of an eye break, one for its whole length.
    {"guide.eye.far_focus.title", "Far focus"},
    {"guide.eye.far_focus.instruction",
     "Look at the farthest thing you can see, best of all out of the window. Let your eyes rest on "
     "it until the time is up."},
    {"guide.eye.palming.title", "Palming"},
    {"guide.eye.palming.instruction",
     "Close your eyes and cup your palms over them without pressing on the lids. Breathe slowly "
     "and let it be dark."},
    {"guide.eye.figure_eight.title", "Figure eight"},
    {"guide.eye.figure_eight.instruction",
     "Imagine a large eight lying on its side, three metres away. Follow its line slowly with your "
     "eyes, the head still, and change direction now and then."},
    {"guide.eye.slow_blinks.title", "Slow blinks"},
    {"guide.eye.slow_blinks.instruction",
     "Let your eyes fall shut, keep them closed for two seconds, and open them again. Repeat it "
     "lightly, without squeezing."},
    {"guide.eye.near_far.title", "Near and far"},
    {"guide.eye.near_far.instruction",
     "Hold up your thumb and look at it for a few seconds, then at something far behind it. Keep "
     "changing slowly, without straining."},
    {"guide.eye.daylight.title", "Daylight"},
    {"guide.eye.daylight.instruction",
     "Go to a window and let your eyes wander over what is outside. Look at the sky, never into "
     "the sun."},

    // The gentle card.
    {"gentle.card.eye", "Look into the distance"},
    {"gentle.card.body", "Get up and move"},
    {"gentle.card.ended", "Did you rest?"},
    {"gentle.card.rested", "Well rested"},
    {"gentle.answer.done", "Yes, I did"},
    {"gentle.answer.skip", "Not this time"},

    // Toasts.
    {"toast.merged %lld", "Your eye break joins the body break in %lld minutes"},
    {"toast.merged %lld#one", "Your eye break joins the body break in a minute"},
    {"toast.pre_break.eye %lld", "Eye break in %lld seconds"},
    {"toast.pre_break.eye %lld#one", "Eye break in a second"},
    {"toast.pre_break.body %lld", "Body break in %lld seconds"},
    {"toast.pre_break.body %lld#one", "Body break in a second"},
    {"toast.pause_ended", "The pause is over"},
    {"toast.postpone.none_left", "No postpones left this hour"},
    {"toast.hotkey_refused %@", "The shortcut %@ belongs to another program"},
    {"toast.break_held", "Your break waits until you are free"},
    {"toast.break_dropped", "You were busy too long, so this break was dropped"},
    {"toast.away_credit.both %lld", "%lld minutes away count as both of your breaks"},
    {"toast.away_credit.both %lld#one", "A minute away counts as both of your breaks"},
    {"toast.away_credit.eye %lld", "%lld minutes away count as an eye break"},
    {"toast.away_credit.eye %lld#one", "A minute away counts as an eye break"},
    {"toast.away_credit.body %lld", "%lld minutes away count as a body break"},
    {"toast.away_credit.body %lld#one", "A minute away counts as a body break"},
    {"toast.action.start_now", "Start now"},
    {"toast.action.later", "In five minutes"},

    // System notifications.
    {"notification.break_soon.eye.title", "Eye break soon"},
    {"notification.break_soon.body.title", "Body break soon"},
    {"notification.break_soon.seconds %lld", "It starts in %lld seconds."},
    {"notification.break_soon.seconds %lld#one", "It starts in a second."},
    {"notification.break_soon.minutes %lld", "It starts in %lld minutes."},
    {"notification.break_soon.minutes %lld#one", "It starts in a minute."},
    {"notification.still_paused.title", "Your breaks are still paused"},
    {"notification.still_paused.body",
     "They have been for an hour or more. Resume when you are ready."},
    {"notification.skip_streak.title", "You could use a break"},
    {"notification.skip_streak.body %lld", "You skipped %lld breaks within an hour."},
    {"notification.skip_streak.body %lld#one", "You skipped a break within an hour."},
    {"notification.weekly_report.title", "Your week in breaks"},
    {"notification.weekly_report.body", "See how the last seven days went."},
    {"notification.weekly_report.action", "Open the report"},
    {"notification.day_end.title", "Your working day is over"},
    {"notification.day_end.body %lld %lld", "You took %lld breaks; your goal is %lld."},
    {"notification.day_end.body %lld %lld#one", "You took %lld break; your goal is %lld."},
    {"notification.action.start_now", "Start now"},
    {"notification.action.postpone", "In five minutes"},
    {"action.open_ostrel", "Open Ostrel"},

    // The status item.
    {"menubar.tooltip.on", "Ostrel is on"},
    {"menubar.tooltip.off", "Ostrel is off"},
    {"menubar.tooltip.default", "Ostrel"},
    {"menubar.status.next_eye %@", "Next eye break in %@"},
    {"menubar.status.next_body %@", "Next body break in %@"},
    {"menubar.status.on_until %@", "On until %@"},
    {"menubar.status.disabled", "Breaks are switched off"},
    {"menubar.status.off", "Off for now"},
    {"menubar.status.strict_active", "Strict mode is on"},
    {"menubar.status.away", "Away: the countdown waits for you"},
    {"menubar.status.eye_joins_body", "Next eye break joins the body break"},
    {"menubar.status.held", "A break waits until you are free"},
    {"menubar.status.on_screen", "A break is on the screen"},
    {"notice.not_saved",
     "Your settings could not be saved. They are kept in memory, and saving is tried again."},
    {"state.paused", "Paused"},
    {"menubar.pause.indefinite_state", "Until you resume"},
    {"menubar.pause.focus", "While notifications are silenced"},
    {"menubar.pause.schedule", "Outside your work hours"},
    {"menubar.pause.until %@", "Until %@"},
    {"menubar.next.until_resume", "No break until then"},
    {"menubar.next.penalty_reason", "Longer because you skipped a break"},
    {"menubar.today.none", "No break yet today"},
    {"menubar.today.completed %lld %lld", "Today: %lld breaks taken, the goal is %lld"},
    {"menubar.today.completed %lld %lld#one", "Today: %lld break taken, the goal is %lld"},
    {"menubar.today.skipped %lld", "Skipped today: %lld"},

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

    // What works on this desktop.
    {"capability.topic.away", "Knowing when you are away"},
    {"capability.topic.calls", "Holding breaks while you are in a call"},
    {"capability.topic.films", "Holding breaks while a film plays in full screen"},
    {"capability.topic.do_not_disturb", "Following Do Not Disturb"},
    {"capability.topic.sleep", "Ending a break before the computer sleeps"},
    {"capability.topic.lock", "Leaving the screen to the lock"},
    {"capability.topic.hotkeys", "Keyboard shortcuts"},
    {"capability.topic.notifications", "Notifications"},
    {"capability.topic.status_item", "The icon in the panel"},
    {"capability.topic.chimes", "Chimes"},
    {"capability.state.works", "works"},
    {"capability.state.partly", "works in part"},
    {"capability.state.missing", "does not work"},
    {"capability.reason.x11", "It needs an X11 session: choose one when you log in."},
    {"capability.reason.idle_time",
     "The X server does not tell how long there was no input (MIT-SCREEN-SAVER)."},
    {"capability.reason.window_manager",
     "No window manager tells which window is in front: run one that knows the desktop standards."},
    {"capability.reason.power_services",
     "Only players that hold back the X server's own screen saver are seen: run a login manager "
     "such as systemd-logind or elogind."},
    {"capability.reason.notification_server",
     "No notification server is running: start that of your desktop, or dunst."},
    {"capability.reason.no_server_yet",
     "The notification server starts with the first notification, and is followed from then on."},
    {"capability.reason.locker",
     "Lockers that tell nobody are not noticed. Those of GNOME, KDE, Xfce, MATE and Cinnamon "
     "tell."},
    {"capability.reason.no_switch",
     "This notification server does not tell whether it is silenced. Those of GNOME, KDE and Xfce "
     "do, and dunst."},
    {"capability.reason.login_manager_sleep",
     "A sleep is noticed only when it is over: run a login manager such as systemd-logind or "
     "elogind."},
    {"capability.reason.login_manager_lock",
     "Only the screen savers of the desktops are noticed: run a login manager such as "
     "systemd-logind or elogind."},
    {"capability.reason.status_area",
     "No panel with a status area is running. Start Ostrel again to open its menu."},
    {"capability.reason.sound_server", "No sound server is running: start PipeWire or PulseAudio."},
});

}  // namespace

std::span<const Entry> english() {
    return kEnglish;
}

}  // namespace ostrel::Texts
