#!/usr/bin/python3
"""The status item and its menu, driven as a panel drives them."""

import unittest

from desktop import SOON, DesktopTest, key, wait_for
from status_item import StatusItem, start_watcher

LATER = dict(SOON, eyeBreakIntervalSec=1200)


class StatusItemTest(DesktopTest):
    def setUp(self):
        super().setUp()
        start_watcher(self)

    def test_pause_is_kept_and_resume_ends_it(self):
        self.start(LATER)
        item = StatusItem(self)
        self.assertNotIn(("Resume",), item.entries())
        item.click("Pause", "For 30 minutes")
        wait_for(lambda: self.pause_reasons() == ["user"], "the pause in the document")
        self.assertIsNotNone(self.document("sessionState")["userPauseUntil"])
        wait_for(lambda: ("Resume",) in item.entries(), "the menu to offer the resume")
        self.assertNotIn(("Pause",), item.entries())
        item.click("Resume")
        wait_for(lambda: self.pause_reasons() == [], "the end of the pause in the document")

    def test_paused_session_opens_no_break_until_it_is_resumed(self):
        self.start(dict(SOON, eyeBreakIntervalSec=6))
        item = StatusItem(self)
        item.click("Pause", "Until I resume")
        wait_for(lambda: self.pause_reasons() == ["user"], "the pause in the document")
        opened = len(self.trace("due"))
        # The countdown stands still: had it not, a break would be due within these tooltips' time.
        with self.assertRaises(AssertionError):
            wait_for(lambda: len(self.trace("due")) > opened, "nothing", seconds=8)
        item.click("Resume")
        self.wait_for_break()

    def test_break_started_from_the_menu_covers_the_screen(self):
        self.start(LATER)
        item = StatusItem(self)
        item.click("Start an eye break")
        self.wait_for_break()
        self.assertFalse(item.entries()[("Start a body break",)], "no second break beside the first")
        key("Escape")
        self.assertEqual(self.wait_for_close(), "skipped")

    def test_quit_ends_the_program_well(self):
        app = self.start(LATER)
        StatusItem(self).click("Quit Ostrel")
        self.assertEqual(app.wait(20), 0)
        self.assertIsNotNone(self.document("sessionState")["lastQuitAt"])

    def test_item_comes_when_the_status_area_does_and_again_when_it_was_restarted(self):
        for process in list(self.processes):
            self.end(process)
        self.start(LATER)
        self.wait_running(self.instance_is_up, "the program")
        for _ in range(2):
            watcher = start_watcher(self)
            self.assertIn("eye break", StatusItem(self).tooltip())
            self.end(watcher)

    def instance_is_up(self):
        return (self.documents / "ostrel.lock").exists()


if __name__ == "__main__":
    unittest.main()
