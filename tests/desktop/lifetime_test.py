#!/usr/bin/python3
"""How the program begins and ends: once per user, and leaving everything in order."""

import signal
import subprocess
import unittest

from desktop import OSTREL, SOON, DesktopTest, Terminal, key, overlay_windows, wait_for

LATER = dict(SOON, eyeBreakIntervalSec=1200)


class LifetimeTest(DesktopTest):
    def test_second_launch_says_so_and_leaves_the_first_alone(self):
        first = self.start(LATER)
        self.wait_running((self.documents / "ostrel.lock").exists, "the first to be up")
        second = subprocess.run([OSTREL], env=self.environment(), capture_output=True, text=True, timeout=30, check=False)
        self.assertEqual(second.returncode, 0, second.stderr)
        self.assertIn("running already", second.stdout)
        self.assertIsNone(first.poll())

    def test_end_of_the_session_in_a_break_leaves_the_documents_and_the_keyboard_in_order(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                self.log.unlink(missing_ok=True)
                terminal = Terminal(self, f"beneath-{number}", "#202020", 100)
                app = self.start()
                self.wait_for_break()
                app.send_signal(number)
                self.assertEqual(app.wait(20), 0)
                self.assertIsNotNone(self.document("sessionState")["lastQuitAt"])
                self.assertEqual(self.document("settings")["eyeBreakDurationSec"], SOON["eyeBreakDurationSec"])
                wait_for(lambda: not overlay_windows(), "the windows to be gone")
                key("z")
                wait_for(lambda: terminal.typed() == "z", "the key after the end")

    def test_without_a_session_bus_the_breaks_come_all_the_same(self):
        self.start(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.wait_for_break()
        key("Escape")
        self.wait_running(lambda: self.trace("closed"), "the break to close")

    def test_without_a_display_it_says_so_and_ends(self):
        done = subprocess.run([OSTREL], env=self.environment(DISPLAY=":9999"), capture_output=True, text=True,
                              timeout=30, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, "ostrel: there is no display here; start Ostrel in your desktop session\n")

    def test_without_a_display_the_one_that_runs_comes_forward(self):
        self.start()
        wait_for((self.documents / "ostrel.lock").exists, "the program")
        wait_for(lambda: "its window opens" in subprocess.run(
            [OSTREL], env=self.environment(DISPLAY=":9999"), capture_output=True, text=True, check=True).stdout,
            "the window")


if __name__ == "__main__":
    unittest.main()
