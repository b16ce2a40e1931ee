#!/usr/bin/python3
"""A lock gets the screen to itself, and the break is still there after it."""

import unittest

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

from desktop import LEFT, RIGHT, DesktopTest, key, overlay_windows

NAME = "org.xfce.ScreenSaver"


class ScreenSaver(dbus.service.Object):
    """What a desktop's screen saver tells of itself."""

    def __init__(self):
        self.loop = dbus.mainloop.glib.DBusGMainLoop()
        bus = dbus.SessionBus(mainloop=self.loop, private=True)
        super().__init__(dbus.service.BusName(NAME, bus, do_not_queue=True), "/org/xfce/ScreenSaver")
        self.active = False

    @dbus.service.method(NAME, out_signature="b")
    def GetActive(self):
        return self.active

    @dbus.service.signal(NAME, signature="b")
    def ActiveChanged(self, active):
        self.active = active


def serve(condition):
    """The condition's answer, after the calls to the screen saver have theirs."""
    while GLib.MainContext.default().iteration(False):
        pass
    return condition()


class LockTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.saver = ScreenSaver()

    def test_break_makes_room_for_the_lock_and_comes_back(self):
        self.start()
        self.wait_for_break()
        self.saver.ActiveChanged(True)
        self.wait_running(lambda: serve(lambda: not overlay_windows()), "the screen without the break")
        self.saver.ActiveChanged(False)
        self.wait_running(lambda: serve(overlay_windows) == [LEFT, RIGHT], "the break once more")
        self.assertEqual(len(self.trace("due")), 1, "it is the same one")
        # The keyboard is its own once it has been painted.
        self.wait_running(lambda: key("Escape") or self.trace("closed"), "the break to close")
        self.assertEqual(self.wait_for_close(), "skipped")


if __name__ == "__main__":
    unittest.main()
