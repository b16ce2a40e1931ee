#!/usr/bin/python3
"""How the program begins and ends: once per user, and leaving everything in order."""

import signal
import subprocess
import unittest
from pathlib import Path

from desktop import OSTREL, SOON, DesktopTest, Terminal, key, overlay_windows, pixel, wait_for, windows


class LifetimeTest(DesktopTest):
    def test_second_launch_opens_the_window_of_the_first_also_without_a_display(self):
        first = self.start(dict(SOON, eyeBreakIntervalSec=1200))
        self.assertIn("running already", self.launch_again().stdout)
        self.open_window(DISPLAY=":9999")
        self.assertIsNone(first.poll())

    def test_end_in_a_break_leaves_the_documents_in_order_and_lets_the_keyboard_go(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL):
            with self.subTest(number.name):
                self.log.unlink(missing_ok=True)
                terminal = Terminal(self, f"beneath-{number}", "#202020", 100)
                app = self.start()
                self.wait_for_break()
                wait_for(lambda beneath=terminal: self.keyboard_is_taken(beneath), "the keyboard to be the overlay's")
                app.send_signal(number)
                self.assertEqual(app.wait(20), -number if number == signal.SIGKILL else 0)
                self.assertEqual(self.document("settings")["eyeBreakDurationSec"], SOON["eyeBreakDurationSec"])
                if number != signal.SIGKILL:
                    self.assertIsNotNone(self.document("sessionState")["lastQuitAt"])
                wait_for(lambda: not overlay_windows(), "the windows to be gone")
                before = terminal.typed()
                key("z")
                wait_for(lambda beneath=terminal, typed=before + "z": beneath.typed() == typed, "the key after the end")

    @staticmethod
    def keyboard_is_taken(terminal):
        before = terminal.typed()
        key("b")
        # A key that would reach the terminal is there before the answer to a later question.
        pixel(0, 0)
        return terminal.typed() == before

    def test_without_a_session_bus_the_breaks_come_all_the_same(self):
        self.start(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.wait_for_break()
        key("Escape")
        self.wait_running(lambda: self.trace("closed"), "the break to close")

    def test_without_a_place_for_documents_it_says_so_and_goes_on(self):
        (Path(self.folder) / "no-folder").write_text("", encoding="utf-8")
        self.start(XDG_CONFIG_HOME=str(Path(self.folder) / "no-folder"))
        self.wait_running(lambda: "ostrel.settings.v1 could not be saved" in self.log.read_text(encoding="utf-8"),
                          "the complaint")
        self.wait_running(lambda: windows("^Welcome to Ostrel$"), "the welcome by a program without a memory")

    def test_without_a_display_it_says_so_and_ends(self):
        done = subprocess.run([OSTREL], env=self.environment(DISPLAY=":9999"), capture_output=True, text=True,
                              timeout=30, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, "ostrel: there is no display here; start Ostrel in your desktop session\n")


if __name__ == "__main__":
    unittest.main()
