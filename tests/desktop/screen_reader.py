"""The screen as a screen reader has it."""

import functools
import subprocess
import time
import warnings

import dbus
from gi.repository import GLib

from desktop import wait_for

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ACCESSIBLE = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}  # for the program under test


def connect_as_screen_reader(test_class):
    """Answers the bindings; what they need ends with the test class."""
    launcher = subprocess.Popen([LAUNCHER, "--launch-immediately"])
    test_class.addClassCleanup(launcher.wait)
    test_class.addClassCleanup(launcher.terminate)
    wait_for(lambda: dbus.SessionBus().name_has_owner("org.a11y.Bus"), "the accessibility bus")
    # They connect once and for all as they are imported, so there must be a bus by then.
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        import pyatspi  # pylint: disable=import-outside-toplevel
    return pyatspi


def of_one_moment(read):
    """Reads anew what has changed while it was read."""
    @functools.wraps(read)
    def read_anew(*arguments):
        for _ in range(20):
            try:
                return read(*arguments)
            except GLib.GError:
                time.sleep(0.05)
        return read(*arguments)
    return read_anew


class ScreenReader:
    """What Ostrel shows: its parts by role and name, and what can be done with them."""

    def __init__(self, atspi):
        self.atspi = atspi

    def walk(self, node):
        yield node
        for child in node:
            if child:
                yield from self.walk(child)

    @of_one_moment
    def parts(self, *roles):
        """What is showing and has one of these roles."""
        return [node for application in self.atspi.Registry.getDesktop(0)
                if application and application.name.lower() == "ostrel" for node in self.walk(application)
                if node.getRole() in roles and self.has(node, self.atspi.STATE_SHOWING)]

    def named(self, *roles):
        """The same by name, the first of each."""
        found = {}
        for node in self.parts(*roles):
            found.setdefault(node.name, node)
        return found

    def buttons(self):
        return self.named(self.atspi.ROLE_PUSH_BUTTON)

    @staticmethod
    def has(node, state):
        return node.getState().contains(state)

    @staticmethod
    def press(node):
        node.queryAction().doAction(0)
