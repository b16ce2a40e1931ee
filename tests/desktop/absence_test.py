#!/usr/bin/python3
"""An absence: nobody touches the keyboard, and somebody comes back."""

import time
import unittest

from desktop import UNANNOUNCED, DesktopTest, is_toast_shown, key, wait_for
from status_item import StatusItem, start_watcher


class AbsenceTest(DesktopTest):
    def test_nobody_there_holds_the_countdown_and_the_return_counts_as_the_break(self):
        start_watcher(self)
        # As short as an absence can be: 30 s, seen every 30 s. The break would be due before the second look.
        self.start(dict(UNANNOUNCED, eyeBreakIntervalSec=45, eyeBreakDurationSec=20, idleThresholdSec=1))
        item = StatusItem(self)
        counting = item.tooltip()
        self.wait_running(lambda: item.tooltip() != counting, "the countdown to run")
        self.wait_running(lambda: self.stands_still(item), "the countdown to be held", 60)
        held = item.tooltip()
        key("shift")
        self.wait_running(lambda: is_toast_shown("A minute away counts as an eye break"), "the toast of the return", 60)
        self.assertEqual(self.trace("due"), [])
        back = item.tooltip()
        self.assertNotEqual(back, held, "the countdown begins anew")
        self.wait_running(lambda: item.tooltip() != back, "the countdown to run again")

    @staticmethod
    def stands_still(item):
        """Whether the tooltip stays as it is for so long that two ticks would have changed it."""
        begin, text = time.monotonic(), item.tooltip()
        wait_for(lambda: item.tooltip() != text or time.monotonic() - begin > 3, "time to pass")
        return item.tooltip() == text


if __name__ == "__main__":
    unittest.main()
