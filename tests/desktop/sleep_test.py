#!/usr/bin/python3
"""The computer goes to sleep and wakes, as the login manager announces it."""

import re
import signal
import time
import unittest

from desktop import overlay_windows, wait_for
from login_manager import LoginManager, start_system_bus
from status_item import StartedBreakTest, StatusItem

ASLEEP_SEC = 6


class SleepingTest(StartedBreakTest):
    """A computer whose sleep the test announces."""

    def setUp(self):
        super().setUp()
        self.at_release = []
        address = start_system_bus(self)
        self.login = LoginManager(self, address, lambda: self.at_release.append(self.noted()))
        self.system = {"DBUS_SYSTEM_BUS_ADDRESS": address}

    def noted(self):
        """What is on the disk of this sleep, and which breaks are over."""
        path = self.documents / "ostrel.sessionState.v1.json"
        marker = self.document("sessionState").get("systemSleepWakeMarker") if path.exists() else None
        return marker is not None, [closed[0] for closed in self.trace("closed")]

    def seconds_left(self):
        minutes, seconds = re.search(r"eye break in (\d+):(\d+)", StatusItem(self).tooltip()).groups()
        return int(minutes) * 60 + int(seconds)

    def sleep(self, count):
        self.login.PrepareForSleep(True)
        self.wait_running(lambda: len(self.at_release) == count, "the computer to be let asleep")
        return self.at_release[-1]

    def wake(self, count):
        self.login.PrepareForSleep(False)
        self.wait_running(lambda: len(self.login.asked) == count + 1, "the next sleep to be held back")
        self.wait_running(lambda: not self.noted()[0], "the sleep to be over in the documents")


class SleepTest(SleepingTest):
    def test_sleep_waits_for_the_break_and_the_documents_and_the_countdowns_for_the_wake(self):
        # Below a minute the tooltip counts the seconds.
        self.start_break(self.system, eyeBreakIntervalSec=58)
        wait_for(self.login.is_held_back, "the lock at rest")
        self.assertEqual(self.login.asked, [("sleep", "delay")])
        self.assertEqual(self.sleep(1), (True, ["forcedBySleep"]))
        wait_for(lambda: not overlay_windows(), "the windows to be gone")
        # A sleeping computer runs nothing.
        seconds, begin = self.seconds_left(), time.monotonic()
        self.app.send_signal(signal.SIGSTOP)
        wait_for(lambda: time.monotonic() - begin > ASLEEP_SEC, "the sleep to last")
        self.app.send_signal(signal.SIGCONT)
        self.wake(1)
        self.wait_running(lambda: self.seconds_left() < seconds, "the countdown to run")
        self.assertLessEqual(seconds - self.seconds_left(), time.monotonic() - begin - ASLEEP_SEC + 2)
        self.assertEqual(self.sleep(2), (True, ["forcedBySleep"]))
        self.wake(2)


if __name__ == "__main__":
    unittest.main()
