"""The status item as a panel sees it: its tooltip, and its menu over com.canonical.dbusmenu."""

import time
from pathlib import Path

import dbus

from desktop import SOON, DesktopTest, wait_for

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
HERE = Path(__file__).resolve().parent


def start_watcher(test):
    process = test.spawn("/usr/bin/python3", str(HERE / "status_watcher.py"))
    wait_for(lambda: dbus.SessionBus().name_has_owner(WATCHER), "the status area")
    return process


class StatusItem:
    """The first item that is registered."""

    def __init__(self, test):
        self._bus = dbus.SessionBus()
        watcher = self._bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        items = test.wait_running(lambda: watcher.Get(WATCHER, "RegisteredStatusNotifierItems",
                                                      dbus_interface=dbus.PROPERTIES_IFACE), "the status item")
        self.service, path = str(items[0]).split("/", 1)
        self._item = self._bus.get_object(self.service, "/" + path, introspect=False)

    def property(self, name):
        return self._item.Get(ITEM, name, dbus_interface=dbus.PROPERTIES_IFACE)

    def tooltip(self):
        return str(self.property("ToolTip")[2])

    def _menu(self):
        return self._bus.get_object(self.service, self.property("Menu"), introspect=False)

    def _walk(self):
        """The visible entries as (number, enabled) by path: ("Pause", "For an hour")."""
        menu, found = self._menu(), {}
        menu.AboutToShow(0, dbus_interface=MENU)
        _revision, root = menu.GetLayout(0, -1, dbus.Array([], "s"), dbus_interface=MENU)

        def visit(node, path):
            for child in node[2]:
                number, properties = int(child[0]), child[1]
                if not properties.get("visible", True) or properties.get("type", "") == "separator":
                    continue
                here = (*path, str(properties.get("label", "")).replace("_", ""))
                found[here] = (number, bool(properties.get("enabled", True)))
                visit(child, here)

        visit(root, ())
        return found

    def click(self, *path):
        number, enabled = self._walk()[path]
        assert enabled, f"{path} is disabled"
        self._menu().Event(number, "clicked", dbus.Int32(0, variant_level=1), dbus.UInt32(int(time.time()) & 0xFFFFFFFF),
                           dbus_interface=MENU)


class StartedBreakTest(DesktopTest):
    """A test that starts its break from the menu, so that no other follows it while the test looks on."""

    def setUp(self):
        super().setUp()
        start_watcher(self)

    def start_break(self, environment=None, **settings):
        self.start({**SOON, "eyeBreakIntervalSec": 36000, **settings}, **(environment or {}))
        StatusItem(self).click("Start an eye break")
        self.wait_for_break()
