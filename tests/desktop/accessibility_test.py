#!/usr/bin/python3
"""The program by screen reader alone: every control has a name, says what it does and can be pressed."""

import subprocess
import unittest

from desktop import SOON, DesktopTest, wait_for
from screen_reader import ACCESSIBLE, ScreenReader, connect_as_screen_reader

HINTS = {
    "Done": "Dismisses the overlay once the countdown reaches zero.",
    "Skip": "Skips the current break and adds a penalty to the next one.",
}


class AccessibilityTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.reader = ScreenReader(connect_as_screen_reader(cls))
        cls.atspi = cls.reader.atspi

    def test_break_is_started_read_explained_and_finished(self):
        self.start(dict(SOON, eyeBreakIntervalSec=1200, eyeBreakDurationSec=12), **ACCESSIBLE)
        self.choose("Start an eye break")
        self.wait_for_break()
        buttons = wait_for(lambda: set(HINTS) <= set(self.reader.buttons()) and self.reader.buttons(), "the buttons")
        self.assertNotIn("", buttons)
        for name, hint in HINTS.items():
            self.assertEqual(buttons[name].description, hint)
        self.assertFalse(self.reader.has(buttons["Done"], self.atspi.STATE_ENABLED))
        for countdown in ("Up to 10 seconds left", "The break is over"):
            wait_for(lambda name=countdown: name in self.reader.named(*self.every_role()), countdown)
        self.reader.press(buttons["Done"])
        self.assertEqual(self.wait_for_close(), "done")

    def test_gentle_card_is_answered(self):
        self.start(dict(SOON, eyeBreakDurationSec=3, eyePresentation="gentle"), **ACCESSIBLE)
        self.work_on_until(lambda: "Look into the distance" in self.reader.named(self.atspi.ROLE_ALERT), "the card")
        answer = self.work_on_until(lambda: self.reader.buttons().get("Yes, I did"), "the question")
        self.assertIn("Not this time", self.reader.buttons())
        self.assertIn("Did you rest?", self.reader.named(*self.every_role()))
        self.reader.press(answer)
        self.assertEqual(self.wait_for_close(), "done")
        wait_for(lambda: not self.reader.buttons(), "the card to be gone")

    @staticmethod
    def work_on_until(condition, what):
        """Moves the pointer all the time: nobody rests here."""
        def look():
            for x in ("100", "110"):
                subprocess.run(["xdotool", "mousemove", x, "500"], check=True)
            return condition()
        return wait_for(look, what)

    def choose(self, label):
        """The foot of the window opens the menu."""
        self.open_window()
        for name in ("Breaks and pauses", label):
            self.reader.press(wait_for(lambda entry=name: self.reader.named(*self.every_role()).get(entry), name))

    def every_role(self):
        return (self.atspi.ROLE_LABEL, self.atspi.ROLE_PUSH_BUTTON, self.atspi.ROLE_MENU_ITEM, self.atspi.ROLE_MENU,
                self.atspi.ROLE_PROGRESS_BAR, self.atspi.ROLE_PANEL, self.atspi.ROLE_FILLER,
                self.atspi.ROLE_POPUP_MENU, self.atspi.ROLE_TIMER)


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
