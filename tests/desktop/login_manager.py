"""A login manager that sends the computer to sleep when a test wants it."""

import os
import select
import threading
from pathlib import Path

import dbus
import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

from desktop import wait_for

NAME = "org.freedesktop.login1"
MANAGER = "org.freedesktop.login1.Manager"

BUS = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy></busconfig>"""


def start_system_bus(test):
    """One of the test's own, with nothing on it; answers its address."""
    configuration, address = Path(test.folder) / "system.conf", Path(test.folder) / "system.address"
    configuration.write_text(BUS, encoding="utf-8")
    with address.open("w", encoding="utf-8") as file:
        test.spawn("dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address=1", stdout=file)
    wait_for(lambda: address.read_text(encoding="utf-8").endswith("\n"), "the system bus")
    return address.read_text(encoding="utf-8").strip()


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
