#!/usr/bin/python3
"""The program's notification on real notification servers: shown, answered with its button, and taken down."""

import unittest

from desktop import SOON, DesktopTest, wait_for
from notification_servers import Dunst, Xfce, has_server


class EveryServer:
    """What holds whoever the server is."""

    make_server = None

    def test_break_that_was_told_of_is_postponed(self):
        server = self.make_server(self)
        server.start()
        wait_for(has_server, "the server")
        self.start(dict(SOON, eyeBreakIntervalSec=30, preBreakToastLeadSec=0, breakSoonLeadSec=29))
        self.wait_running(lambda: server.count() == 1 and server.newest_title() == "Eye break soon", "the notification")
        server.press("In five minutes")
        wait_for((self.documents / "ostrel.postponeQuota.v1.json").exists, "the postpone")
        wait_for(lambda: server.count() == 0, "nothing to be shown")
        self.assertEqual(self.document("dailyCounter")["postponesToday"], 1)
        self.assertEqual(self.trace("due"), [])


class DunstTest(EveryServer, DesktopTest):
    make_server = Dunst


class XfceTest(EveryServer, DesktopTest):
    make_server = Xfce

    @classmethod
    def setUpClass(cls):
        Xfce.prepare(cls)


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
