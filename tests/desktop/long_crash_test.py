#!/usr/bin/python3
"""The start after a crash. A sanitizer reports crashes itself, so this wants a build without one."""

import signal
import unittest
from pathlib import Path

from desktop import DesktopTest, is_toast_shown


class CrashTest(DesktopTest):
    def is_offered(self):
        return is_toast_shown("Ostrel crashed last time")

    def test_leaves_a_report_that_the_next_start_tells_of_once(self):
        self.start()
        self.wait_for_break()
        self.app.send_signal(signal.SIGSEGV)
        self.assertEqual(self.app.wait(20), -signal.SIGSEGV)
        reports = list((Path(self.folder) / "state" / "ostrel").glob("crash-*.txt"))
        self.assertEqual(len(reports), 1)
        self.assertIn("SIGSEGV", reports[0].read_text(encoding="utf-8"))

        self.start()
        self.wait_running(self.is_offered, "the offer")
        self.assertIn(str(reports[0]), self.log.read_text(encoding="utf-8"))
        self.end(self.app)
        self.start()
        painted = len(self.trace("painted"))
        self.wait_running(lambda: len(self.trace("painted")) > painted, "a break")
        self.assertFalse(self.is_offered())


if __name__ == "__main__":
    unittest.main()
