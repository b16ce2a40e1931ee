#!/usr/bin/python3
"""A break on a real desktop: what it covers, which keys end it, and that it lets the keyboard go."""

import signal
import unittest

from desktop import LEFT, RIGHT, SOON, Terminal, key, output, overlay_windows, pixel, plug, unplug, wait_for
from status_item import StartedBreakTest

INK = (16, 19, 26)


def dimmed(colour, tint=INK, opacity=0.7):
    return tuple(round(beneath * (1 - opacity) + over * opacity) for beneath, over in zip(colour, tint))


RED, GREEN = (170, 0, 0), (0, 170, 0)
# Two points of each display, clear of the texts and of the vignette's middle.
CORNERS = ((4, 4), (1915, 1075), (1924, 4), (3195, 1019))


class CoverTest(StartedBreakTest):
    def beneath(self):
        """A red terminal in full screen on the left display, a green one on the right."""
        terminals = Terminal(self, "red", "#aa0000", 100), Terminal(self, "green", "#00aa00", 2100)
        for terminal in terminals:
            terminal.fill_display()
        wait_for(lambda: [pixel(*at) for at in CORNERS] == [RED, RED, GREEN, GREEN], "the full screens beneath")

    def test_break_covers_both_displays_over_full_screen_programs(self):
        self.beneath()
        self.start_break()
        for at, beneath in zip(CORNERS, (RED, RED, GREEN, GREEN)):
            self.assert_near(pixel(*at), dimmed(beneath))
        key("Escape")
        self.wait_for_close()
        self.assertEqual([pixel(*at) for at in CORNERS], [RED, RED, GREEN, GREEN])

    def test_program_made_full_screen_later_stays_beneath(self):
        later = Terminal(self, "later", "#aa0000", 2100)
        self.start_break()
        before = [pixel(*at) for at in CORNERS]
        later.fill_display()
        self.assertEqual(overlay_windows(), [LEFT, RIGHT])
        self.assertEqual([pixel(*at) for at in CORNERS], before)
        key("Escape")
        self.wait_for_close()
        wait_for(lambda: pixel(1924, 4) == RED, "the program in full screen afterwards")

    def test_compositor_shows_the_live_desktop_dimmed(self):
        self.spawn("picom", "--backend", "xrender", "--config", "/dev/null")
        wait_for(lambda: '"picom"' in output("xwininfo", "-root", "-tree"), "the compositor")
        later = Terminal(self, "later", "#aa0000", 100)
        self.start_break()
        later.fill_display()
        wait_for(lambda: all(abs(a - b) <= 4 for a, b in zip(pixel(4, 4), dimmed(RED))), "the dimmed red beneath")
        key("Escape")
        self.wait_for_close()


class KeyTest(StartedBreakTest):
    def test_escape_skips(self):
        self.start_break()
        key("Escape")
        self.assertEqual(self.wait_for_close(), "skipped")

    def test_p_postpones_and_does_nothing_where_no_postpone_is_left(self):
        self.start_break()
        key("p")
        self.assertEqual(self.wait_for_close(), "postponed")
        self.end(self.app)
        self.log.unlink()
        self.start_break()
        key("p", "Escape")
        self.assertEqual(self.wait_for_close(), "skipped")

    def test_return_and_space_end_the_break_at_zero_and_not_before(self):
        for name in ("Return", "space"):
            with self.subTest(name):
                self.log.unlink(missing_ok=True)
                self.start_break(eyeBreakDurationSec=4)
                key(name, "a", name)
                self.assertEqual(self.trace("closed"), [])
                self.wait_running(lambda: self.trace("zero"), "the countdown's zero")
                key(name)
                self.assertEqual(self.wait_for_close(), "done")
                self.end(self.app)
                self.assertEqual(self.app.returncode, 0)

    def test_break_that_falls_due_and_is_left_alone_fades_out_by_itself(self):
        self.start(dict(SOON, eyeBreakDurationSec=1, eyeBreakIntervalSec=10))
        self.wait_for_break()
        self.assertEqual(self.wait_for_close(), "autoFade")

    def test_strict_mode_keeps_the_break_to_its_end(self):
        self.start_break(strictMode=True, eyeBreakDurationSec=4)
        key("Escape", "a", "Escape")
        self.assertEqual(self.trace("closed"), [])
        self.assertEqual(self.wait_for_close(), "autoFade")

    def test_keys_reach_the_program_beneath_before_and_after_but_not_during_the_break(self):
        terminal = Terminal(self, "beneath", "#202020", 100)
        key("a")
        wait_for(lambda: terminal.typed() == "a", "the first key")
        self.start_break()
        wait_for(lambda: self.keyboard_is_taken(terminal), "the keyboard to be the overlay's")
        key("Escape")
        self.wait_for_close()
        before = terminal.typed()
        key("z")
        wait_for(lambda: terminal.typed() == before + "z", "the key after the break")

    def keyboard_is_taken(self, terminal):
        before = terminal.typed()
        key("b")
        # A key that would reach the terminal is there before the answer to a later question.
        pixel(0, 0)
        return terminal.typed() == before

    def test_killed_in_a_break_it_leaves_no_grab_behind(self):
        terminal = Terminal(self, "beneath", "#202020", 100)
        self.start_break()
        wait_for(lambda: self.keyboard_is_taken(terminal), "the keyboard to be the overlay's")
        self.app.send_signal(signal.SIGKILL)
        self.app.wait(20)
        wait_for(lambda: not overlay_windows(), "the windows to be gone")
        before = terminal.typed()
        key("z")
        wait_for(lambda: terminal.typed() == before + "z", "the key after the end")


class DisplayTest(StartedBreakTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: (unplug("THIRD"), unplug("RIGHT"), plug("RIGHT", *RIGHT)))

    def test_displays_come_and_go_in_mid_break(self):
        third = (1920, 0, 640, 480)
        self.start_break(eyeBreakDurationSec=8)
        unplug("RIGHT")
        wait_for(lambda: overlay_windows() == [LEFT], "one window for the display that is left")
        plug("THIRD", *third)
        wait_for(lambda: overlay_windows() == [LEFT, third], "a window for the new display")
        self.assertEqual(self.trace("closed"), [])
        # The countdown went on all the while, and the keyboard is still the overlay's.
        self.wait_running(lambda: self.trace("zero"), "the countdown's zero")
        self.assertEqual(len(self.trace("due")), 1)
        key("Return")
        self.assertEqual(self.wait_for_close(), "done")


class ScaledTest(StartedBreakTest):
    def test_break_covers_both_displays_at_twice_the_size(self):
        self.start_break({"QT_SCALE_FACTOR": "2"})
        key("Escape")
        self.assertEqual(self.wait_for_close(), "skipped")


if __name__ == "__main__":
    unittest.main()
