"""A login manager that sends the computer to sleep when a test wants it."""

import os
import select
import threading

import dbus
import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

from desktop import start_bus

NAME = "org.freedesktop.login1"
MANAGER = "org.freedesktop.login1.Manager"


def start_system_bus(test):
    """One of the test's own, with nothing on it; answers its address."""
    address = f"unix:path={test.folder}/system-bus"
    start_bus(test, address)
    return address


class LoginManager(dbus.service.Object):
    """Gives out locks, each the end of a pipe that closes when the lock is let go.

    Answers on a thread of its own; `at_release` is called at the very moment that the lock is let go.
    """

    def __init__(self, test, address, at_release):
        dbus.mainloop.glib.threads_init()
        self._at_release = at_release
        self._lock = None
        self.asked = []
        bus = dbus.bus.BusConnection(address, mainloop=dbus.mainloop.glib.DBusGMainLoop())
        super().__init__(dbus.service.BusName(NAME, bus), "/org/freedesktop/login1")
        loop = GLib.MainLoop()
        answering = threading.Thread(target=loop.run, daemon=True)
        answering.start()
        test.addCleanup(answering.join)
        test.addCleanup(loop.quit)

    @dbus.service.method(MANAGER, "ssss", "h")
    def Inhibit(self, what, _who, _why, mode):
        ours, theirs = os.pipe()
        self.asked.append((str(what), str(mode)))
        self._lock = ours
        threading.Thread(target=self._watch, args=(ours,), daemon=True).start()
        answer = dbus.types.UnixFd(theirs)
        os.close(theirs)
        return answer

    def _watch(self, lock):
        select.select([lock], [], [])
        self._at_release()
        if self._lock == lock:
            self._lock = None
        os.close(lock)

    def is_held_back(self):
        return self._lock is not None

    @dbus.service.signal(MANAGER, "b")
    def PrepareForSleep(self, _is_about_to):
        pass
