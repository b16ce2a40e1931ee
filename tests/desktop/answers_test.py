#!/usr/bin/python3
"""What the user answers to the program's notifications, on real notification servers."""

import unittest

from desktop import SOON, DesktopTest, wait_for
from notification_servers import Dunst, Xfce, has_server

WARNED = dict(SOON, eyeBreakIntervalSec=30, preBreakToastLeadSec=0, breakSoonLeadSec=29)


class EveryAnswer:
    """What holds whoever the server is."""

    def setUp(self):
        super().setUp()
        self.server = self.make_server(self)
        self.server.start()
        wait_for(has_server, "the server")

    def wait_shown(self, title):
        self.wait_running(lambda: self.server.count() == 1 and self.server.newest()[0] == title, title)

    def wait_answered(self):
        wait_for(lambda: self.server.count() == 0, "the answered notification to go")

    def test_break_is_postponed(self):
        self.start(WARNED)
        self.wait_shown("Eye break soon")
        self.server.press("In five minutes")
        wait_for((self.documents / "ostrel.postponeQuota.v1.json").exists, "the postpone")
        self.wait_answered()
        self.assertEqual(self.document("dailyCounter")["postponesToday"], 1)
        self.assertEqual(self.trace("due"), [])


class DunstAnswersTest(EveryAnswer, DesktopTest):
    make_server = Dunst


class XfceAnswersTest(EveryAnswer, DesktopTest):
    make_server = Xfce

    @classmethod
    def setUpClass(cls):
        Xfce.prepare(cls)


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
