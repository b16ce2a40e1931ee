#!/usr/bin/python3
"""A sleep of an hour, for which the wall clock of the program alone is put forward."""

import glob
import unittest
from pathlib import Path

from sleep_test import SleepingTest


class LongSleepTest(SleepingTest):
    def test_countdown_begins_anew_after_more_than_an_hour(self):
        offset = Path(self.folder) / "offset"
        offset.write_text("+0", encoding="utf-8")
        clock = {"LD_PRELOAD": glob.glob("/usr/lib/*/faketime/libfaketime.so.1")[0], "FAKETIME_NO_CACHE": "1",
                 "FAKETIME_DONT_FAKE_MONOTONIC": "1", "FAKETIME_TIMESTAMP_FILE": str(offset)}
        self.start_break({**self.system, **clock}, eyeBreakIntervalSec=58)
        ahead_sec = 0
        for count, (asleep_sec, is_anew) in enumerate(((3500, False), (3660, True)), start=1):
            with self.subTest(asleep_sec=asleep_sec):
                self.sleep(count)
                self.wait_running(lambda: self.seconds_left() < 50, "the countdown to run")
                ahead_sec += asleep_sec
                offset.write_text(f"+{ahead_sec}", encoding="utf-8")
                self.wake(count)
                self.assertEqual(self.seconds_left() > 50, is_anew)


if __name__ == "__main__":
    unittest.main()
