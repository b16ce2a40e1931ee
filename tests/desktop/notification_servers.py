"""Two real notification servers, read and pressed by a script."""

import glob
import re
from pathlib import Path

import dbus

from desktop import wait_for
from screen_reader import connect_as_screen_reader, of_one_moment

NAME = "org.freedesktop.Notifications"
DUNST = "org.dunstproject.cmd0"
XFCONF = "org.xfce.Xfconf"


def has_server():
    return dbus.SessionBus().name_has_owner(NAME)


def server_object():
    return dbus.SessionBus().get_object(NAME, "/org/freedesktop/Notifications", introspect=False)


def set_xfce(name, value):
    settings = dbus.SessionBus().get_object(XFCONF, "/org/xfce/Xfconf", introspect=False)
    settings.SetProperty("xfce4-notifyd", name, value, dbus_interface=XFCONF)


def pause_dunst(is_paused):
    server_object().Set(DUNST, "paused", dbus.Boolean(is_paused, variant_level=1), dbus_interface=dbus.PROPERTIES_IFACE)


def pause_xfce(is_paused):
    set_xfce("/do-not-disturb", dbus.Boolean(is_paused, variant_level=1))


class Dunst:
    """Its choice of actions is a menu program of our own, which picks what the test wants.

    Nothing goes by itself: what is gone was closed.
    """

    def __init__(self, test):
        self.test = test
        self._folder = Path(test.folder) / "dunst"
        self._folder.mkdir()
        self._wanted = self._folder / "wanted"
        menu = self._folder / "menu"
        menu.write_text(f'#!/bin/sh\ngrep "^#$(cat {self._wanted}) "\n', encoding="utf-8")
        menu.chmod(0o700)
        (self._folder / "dunstrc").write_text(
            f"[global]\nmarkup = full\ndmenu = {menu}\n[urgency_normal]\ntimeout = 0\n", encoding="utf-8")
        self._printed = self._folder / "printed"

    def start(self):
        with self._printed.open("a", encoding="utf-8") as printed:
            return self.test.spawn("dunst", "-print", "-config", str(self._folder / "dunstrc"), stdout=printed)

    def count(self):
        return int(server_object().Get(DUNST, "displayedLength", dbus_interface=dbus.PROPERTIES_IFACE))

    def newest_title(self):
        """Of what was shown last."""
        found = re.findall(r"\tformatted: '<b>(.*?)</b>\n", self._printed.read_text(encoding="utf-8"))
        return found[-1] if found else None

    def press(self, label):
        self._wanted.write_text(label, encoding="utf-8")
        server_object().ContextMenuCall(dbus_interface=DUNST)


class Xfce:
    """Read and pressed as a screen reader does. Nothing goes by itself here either."""

    atspi = None

    @classmethod
    def prepare(cls, test_class):
        """Once, before the first of them."""
        cls.atspi = connect_as_screen_reader(test_class)

    def __init__(self, test):
        self.test = test
        self.test.spawn(*glob.glob("/usr/lib/*/xfce4/xfconf/xfconfd"))
        wait_for(lambda: dbus.SessionBus().name_has_owner(XFCONF), "the settings of the server")
        set_xfce("/expire-timeout", dbus.Int32(3600, variant_level=1))

    def start(self):
        return self.test.spawn(*glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd"))

    def _nodes(self, node):
        yield node
        for child in node:
            if child:
                yield from self._nodes(child)

    def _windows(self):
        return [window for application in self.atspi.Registry.getDesktop(0)
                if application and application.name == "xfce4-notifyd" for window in application
                if window and window.getState().contains(self.atspi.STATE_SHOWING)]

    @of_one_moment
    def _find(self, role):
        return [node for window in self._windows() for node in self._nodes(window) if node.getRole() == role]

    def count(self):
        return len(self._windows())

    def newest_title(self):
        return next((label.name for label in self._find(self.atspi.ROLE_LABEL) if label.name), None)

    def press(self, label):
        button = wait_for(lambda: [b for b in self._find(self.atspi.ROLE_PUSH_BUTTON) if b.name == label], label)[0]
        button.queryAction().doAction(0)
