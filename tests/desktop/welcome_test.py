#!/usr/bin/python3
"""The first start, by mouse and by keyboard, as a screen reader has it."""

import subprocess
import unittest
from pathlib import Path

from desktop import LEFT, RIGHT, SOON, DesktopTest, active_window, key, overlay_windows, wait_for, windows
from screen_reader import ACCESSIBLE, ScreenReader, connect_as_screen_reader

# What has to be repaired is written whole at once.
FIRST = {"hasOnboarded": False, "remindersMigrated": False}


def welcome_window():
    return windows("^Welcome to Ostrel$")


class WelcomeTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.reader = ScreenReader(connect_as_screen_reader(cls))
        cls.atspi = cls.reader.atspi

    def setUp(self):
        super().setUp()
        self.autostart = Path(self.folder) / "config" / "autostart" / "ostrel.desktop"
        self.clicks = 0

    def start_for_the_first_time(self):
        self.start(FIRST, **ACCESSIBLE)
        self.wait_running(welcome_window, "the welcome")
        wait_for(lambda: [active_window()] == welcome_window(), "its focus")

    def part(self, name):
        roles = (self.atspi.ROLE_PUSH_BUTTON, self.atspi.ROLE_RADIO_BUTTON, self.atspi.ROLE_CHECK_BOX)
        return wait_for(lambda: self.reader.named(*roles).get(name), f"the control {name}")

    def click(self, name):
        place = self.part(name).queryComponent().getExtents(self.atspi.DESKTOP_COORDS)
        subprocess.run(["xdotool", "mousemove", str(place.x + place.width // 2), str(place.y + place.height // 2),
                        "click", "1"], check=True)
        self.clicks += 1

    def settings(self):
        return self.document("settings")

    def wait_over(self):
        self.wait_running(lambda: not welcome_window(), "the welcome to close")
        self.assertTrue(self.settings()["hasOnboarded"])

    def test_four_clicks_lead_through_and_each_choice_is_one_more(self):
        self.start_for_the_first_time()
        self.click("Continue")
        self.click("Light")
        wait_for(lambda: self.settings()["activePresetID"] == "light", "the preset")
        self.click("Continue")
        self.click("Pause while Do Not Disturb is on")
        wait_for(lambda: not self.settings()["pauseDuringDND"], "the switch")
        self.click("Continue")
        self.click("Start when I log in")
        wait_for(self.autostart.exists, "the file of the autostart")
        self.click("Begin")
        self.wait_over()
        self.assertEqual(self.clicks, 4 + 3)

    def test_return_four_times_leads_through_and_changes_nothing(self):
        self.start_for_the_first_time()
        before = self.settings()
        for title in ("Your rhythm", "When a break would disturb", "Ready"):
            key("Return")
            wait_for(lambda name=title: name in self.reader.named(self.atspi.ROLE_LABEL), f"the page {title}")
        key("Return")
        self.wait_over()
        self.assertEqual(self.settings(), {**before, "hasOnboarded": True})
        self.assertFalse(self.autostart.exists())

    def test_sample_counts_for_nothing_escape_ends_it_alone_and_a_welcome_that_was_skipped_comes_once(self):
        self.start_for_the_first_time()
        self.click("Show me a break")
        wait_for(lambda: overlay_windows() == [LEFT, RIGHT], "the sample")
        key("Escape")
        wait_for(lambda: not overlay_windows(), "its end", 1)
        self.assertTrue(welcome_window())
        self.assertEqual(self.trace("due"), [])
        self.assertFalse((self.documents / "ostrel.breakLog.v1.json").exists())
        self.click("Skip")
        self.wait_over()
        self.end(self.app)
        self.start({**self.settings(), **SOON})
        self.wait_for_break()
        self.assertFalse(welcome_window())


if __name__ == "__main__":
    unittest.main()
