#!/usr/bin/python3
"""The two global chords, pressed while another program has the focus."""

import subprocess
import unittest

from desktop import SOON, DesktopTest, Terminal, active_window, key, wait_for, windows

CALM = dict(SOON, eyeBreakIntervalSec=1200)
START = "super+shift+56"  # the key that types b on most layouts, by its place
TOGGLE = "ctrl+super+33"  # p


class HotkeysTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(subprocess.run, ["setxkbmap", "us"], check=False)

    def start_beside(self, settings=CALM):
        self.terminal = Terminal(self, "beside", "white", 200)
        self.start(settings)
        self.wait_running(lambda: active_window() == self.terminal.window, "the focus")
        self.wait_running((self.documents / "ostrel.lock").exists, "the program")

    def toggle_until(self, reasons):
        """The chords are bound a moment after the start."""
        def toggled():
            if self.pause_reasons() != reasons:
                key(TOGGLE)
            return self.pause_reasons() == reasons
        wait_for(toggled, f"the pause reasons {reasons}")

    def test_chords_start_a_break_and_toggle_the_pause_over_another_program(self):
        self.start_beside()
        self.toggle_until(["user"])
        typed = self.terminal.typed()  # before they were bound
        key(TOGGLE)
        wait_for(lambda: self.pause_reasons() == [], "the end of the pause")
        key(START)
        self.wait_for_break()
        key(TOGGLE)
        self.assertEqual(self.wait_for_close(), "forcedByPause")
        self.assertEqual(self.terminal.typed(), typed)

    def test_locks_and_another_layout_change_nothing(self):
        self.start_beside()
        self.toggle_until(["user"])
        wanted = []
        for change in (["xdotool", "key", "Caps_Lock"], ["xdotool", "key", "Num_Lock"], ["setxkbmap", "fr"],
                       ["setxkbmap", "ru"]):
            subprocess.run(change, check=True)
            key(TOGGLE)
            wait_for(lambda reasons=wanted: self.pause_reasons() == reasons, f"the chord after {change}")
            wanted = [] if wanted else ["user"]
        for lock in ("Caps_Lock", "Num_Lock"):
            key(lock)

    def test_chord_of_another_program_is_told(self):
        show_desktop = {"keyCode": 2, "modifiers": 256, "displayString": "⌘D"}  # the window manager's
        self.start_beside(dict(CALM, startBreakHotkey=show_desktop))
        wait_for(lambda: windows("Super[+]D belongs to another program"), "the toast")
        self.toggle_until(["user"])


if __name__ == "__main__":
    unittest.main()
