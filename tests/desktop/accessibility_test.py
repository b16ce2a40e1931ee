#!/usr/bin/python3
"""The break as a screen reader has it: every control has a name, says what it does and can be pressed."""

import subprocess
import unittest
import warnings

import dbus

from desktop import wait_for
from status_item import StartedBreakTest

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ACCESSIBLE = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
HINTS = {
    "Done": "Dismisses the overlay once the countdown reaches zero.",
    "Skip": "Skips the current break and adds a penalty to the next one.",
}


class AccessibilityTest(StartedBreakTest):
    @classmethod
    def setUpClass(cls):
        launcher = subprocess.Popen([LAUNCHER, "--launch-immediately"])
        cls.addClassCleanup(launcher.wait)
        cls.addClassCleanup(launcher.terminate)
        wait_for(lambda: dbus.SessionBus().name_has_owner("org.a11y.Bus"), "the accessibility bus")
        # It connects once and for all as it is imported, so there must be a bus by then.
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            import pyatspi  # pylint: disable=import-outside-toplevel
        cls.atspi = pyatspi

    def walk(self, node):
        yield node
        for child in node:
            if child:
                yield from self.walk(child)

    def buttons(self):
        """The buttons on the screen by name."""
        found = {}
        for application in self.atspi.Registry.getDesktop(0):
            if application and application.name.lower() == "ostrel":
                for node in self.walk(application):
                    if node.getRole() == self.atspi.ROLE_PUSH_BUTTON and self.has(node, self.atspi.STATE_SHOWING):
                        found.setdefault(node.name, node)
        return found

    @staticmethod
    def has(node, state):
        return node.getState().contains(state)

    def test_actions_are_named_explained_and_pressed(self):
        self.start_break(ACCESSIBLE)
        buttons = wait_for(lambda: set(HINTS) <= set(self.buttons()) and self.buttons(), "the buttons")
        self.assertNotIn("", buttons)
        for name, hint in HINTS.items():
            self.assertEqual(buttons[name].description, hint)
        self.assertFalse(self.has(buttons["Done"], self.atspi.STATE_ENABLED))
        action = buttons["Skip"].queryAction()
        self.assertEqual(action.getName(0), "Press")
        action.doAction(0)
        self.assertEqual(self.wait_for_close(), "skipped")

    def test_done_can_be_pressed_once_the_countdown_is_at_zero(self):
        self.start_break(ACCESSIBLE, eyeBreakDurationSec=3)
        done = wait_for(lambda: self.buttons().get("Done"), "the button")
        self.wait_running(lambda: self.trace("zero"), "the countdown's zero")
        self.assertTrue(self.has(done, self.atspi.STATE_ENABLED))
        done.queryAction().doAction(0)
        self.assertEqual(self.wait_for_close(), "done")

    def test_strict_mode_offers_no_skip(self):
        self.start_break(ACCESSIBLE, strictMode=True)
        wait_for(lambda: "Done" in self.buttons(), "the button")
        self.assertNotIn("Skip", self.buttons())


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
