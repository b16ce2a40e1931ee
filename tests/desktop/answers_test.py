#!/usr/bin/python3
"""What the user answers to the program's notifications, on real notification servers."""

import json
import unittest

from desktop import SOON, DesktopTest, key, output, wait_for
from notification_servers import Dunst, Xfce, has_server
from status_item import StatusItem, start_watcher

CALM = dict(SOON, eyeBreakIntervalSec=1200, preBreakToastLeadSec=0, breakSoonLeadSec=0)
WARNED = dict(CALM, eyeBreakIntervalSec=30, breakSoonLeadSec=29)
WEEK = 7 * 24 * 3600


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

    def store(self, name, document):
        (self.documents / f"ostrel.{name}.v1.json").write_text(json.dumps(document), encoding="utf-8")

    def menu_is_open(self):
        return output("xdotool", "search", "--onlyvisible", "--class", "^ostrel$").split()

    def test_break_is_started_now(self):
        self.start(WARNED)
        self.wait_shown("Eye break soon")
        self.server.press("Start now")
        self.wait_for_break()
        self.wait_answered()

    def test_break_is_postponed(self):
        self.start(WARNED)
        self.wait_shown("Eye break soon")
        self.server.press("In five minutes")
        wait_for((self.documents / "ostrel.postponeQuota.v1.json").exists, "the postpone")
        self.wait_answered()
        self.assertEqual(self.document("dailyCounter")["postponesToday"], 1)
        self.assertEqual(self.trace("due"), [])

    def make_overdue(self, request):
        """As if the program had been off for a week."""
        def is_pending():
            path = self.documents / "ostrel.pendingNotifications.v1.json"
            return path.exists() and [one for one in json.loads(path.read_text())["pending"] if one["id"].endswith(request)]
        self.wait_running(is_pending, f"the pending {request}")
        self.end(self.app)
        pending = self.document("pendingNotifications")
        for one in pending["pending"]:
            one["since"] -= WEEK if one["id"].endswith(request) else 0
        self.store("pendingNotifications", pending)

    def test_forgotten_pause_is_resumed(self):
        start_watcher(self)
        self.start(CALM)
        StatusItem(self).click("Pause", "For two hours")
        self.make_overdue("pauseForgotten")
        self.start(CALM)
        self.wait_shown("Your breaks are still paused")
        self.assertEqual(self.document("sessionState")["pauseReasons"], ["user"])
        self.server.press("Resume")
        wait_for(lambda: self.document("sessionState")["pauseReasons"] == [], "the end of the pause")
        self.wait_answered()

    def test_third_skip_is_told_and_opens_the_application(self):
        self.start(dict(SOON, breakSoonLeadSec=0, preBreakToastLeadSec=0))
        for count in (1, 2, 3):
            self.wait_running(lambda: len(self.trace("painted")) >= 2 * count, "the break")
            key("Escape")
            self.wait_for_close(count)
        self.wait_shown("You could use a break")
        self.assertEqual(self.server.newest()[1], "You skipped 3 breaks within an hour.")
        self.server.press("Open Ostrel")
        wait_for(self.menu_is_open, "the menu")
        self.wait_answered()

    def test_weekly_summary_of_a_monday_that_the_program_was_off_comes_once(self):
        self.start(CALM)
        self.make_overdue("weeklySummary")
        self.start(CALM)
        self.wait_shown("Your week in breaks")
        self.server.press("Open the report")
        wait_for(self.menu_is_open, "the menu")
        self.wait_answered()
        self.end(self.app)
        self.start(WARNED)
        self.wait_shown("Eye break soon")  # and nothing else


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
