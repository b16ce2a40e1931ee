#!/usr/bin/python3
"""A break on a real desktop: what it covers, which keys end it, and that it lets the keyboard go."""

import unittest

from desktop import LEFT, RIGHT, Terminal, key, output, overlay_windows, pixel, plug, unplug, wait_for
from status_item import StartedBreakTest

INK = (16, 19, 26)


def dimmed(colour, tint=INK, opacity=0.7):
    return tuple(round(beneath * (1 - opacity) + over * opacity) for beneath, over in zip(colour, tint))


RED, GREEN = (170, 0, 0), (0, 170, 0)
# Two points of each display, clear of the texts and of the vignette's middle.
CORNERS = ((4, 4), (1915, 1075), (1924, 4), (3195, 1019))


class CoverTest(StartedBreakTest):
    def test_break_covers_both_displays_over_full_screen_programs(self):
        for terminal in Terminal(self, "red", "#aa0000", 100), Terminal(self, "green", "#00aa00", 2100):
            terminal.fill_display()
        wait_for(lambda: [pixel(*at) for at in CORNERS] == [RED, RED, GREEN, GREEN], "the full screens beneath")
        self.start_break()
        for at, beneath in zip(CORNERS, (RED, RED, GREEN, GREEN)):
            self.assert_near(pixel(*at), dimmed(beneath))
        key("Escape")
        self.wait_for_close()
        self.assertEqual([pixel(*at) for at in CORNERS], [RED, RED, GREEN, GREEN])

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
