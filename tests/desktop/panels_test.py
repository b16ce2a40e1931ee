#!/usr/bin/python3
"""The status item on panels that people have, which are killed and started again."""

import re
import subprocess
import time
import unittest

import dbus

from desktop import OSTREL, SOON, DesktopTest, key, output, wait_for
from panels import LxqtPanel, OldTray, XfcePanel
from status_item import ITEM, StatusItem, start_watcher

LATER = dict(SOON, eyeBreakIntervalSec=1200)
LIGHT = "#f0f0f0"
DARK = "#202020"


class PanelTest(DesktopTest):
    def pauses(self):
        path = self.documents / "ostrel.sessionState.v1.json"
        return self.document("sessionState")["pauseReasons"] if path.exists() else []

    def label(self):
        """As a host reads it that does not ask for it by name."""
        service = StatusItem(self).service
        item = dbus.SessionBus().get_object(service, "/StatusNotifierItem", introspect=False)
        return str(item.GetAll(ITEM, dbus_interface=dbus.PROPERTIES_IFACE)["XAyatanaLabel"])


class EveryPanel:
    make_panel = None
    colour = LIGHT

    def test_item_is_shown_used_and_back_when_the_panel_is(self):
        panel = self.make_panel(self, self.colour, 24)
        panel.start()
        self.start(LATER)
        self.wait_running(panel.shows_icon, "the icon")
        self.assertEqual(self.label(), "", "the time is in the icon")

        panel.kill()
        wait_for(lambda: not panel.shows_icon(), "the icon to be gone")
        panel.start()
        self.wait_running(panel.shows_icon, "the icon on the panel that was started again")

        item = StatusItem(self)
        self.assertEqual(item.service, f"org.kde.StatusNotifierItem-{self.app.pid}-1")
        item.click("Pause", "For 30 minutes")
        wait_for(lambda: self.pauses() == ["user"], "the pause in the document")
        wait_for(lambda: not panel.shows_icon(), "the icon of the pause")
        item.click("Resume")
        wait_for(lambda: self.pauses() == [], "the end of the pause")
        wait_for(panel.shows_icon, "the icon of the countdown")


class XfceTest(EveryPanel, PanelTest):
    make_panel = XfcePanel


class LxqtTest(EveryPanel, PanelTest):
    make_panel = LxqtPanel
    colour = DARK


class OldTrayTest(PanelTest):
    def embedded(self):
        """The icons in the tray of the older protocol."""
        return output("xdotool", "search", "--onlyvisible", "--class", "^ostrel$").split()

    def test_old_tray_has_the_icon_just_when_nothing_newer_does(self):
        tray = OldTray(self, LIGHT, 24)
        tray.start()
        self.start(LATER)
        for _ in range(2):
            self.wait_running(tray.shows_icon, "the icon in the tray")
            self.assertEqual(len(self.embedded()), 1)
            watcher = start_watcher(self)
            self.assertIn("eye break", StatusItem(self).tooltip())
            wait_for(lambda: not self.embedded(), "the icon to leave the tray")
            self.end(watcher)
        self.wait_running(tray.shows_icon, "the icon in the tray")
        tray.kill()
        wait_for(lambda: not self.embedded(), "the tray to be gone")
        tray.start()
        self.wait_running(tray.shows_icon, "the icon in the tray that was started again")

    def test_panel_with_both_protocols_shows_one_icon(self):
        panel = XfcePanel(self, LIGHT, 24)
        panel.start()
        self.start(LATER)
        self.wait_running(panel.shows_icon, "the icon")
        self.assertEqual(self.embedded(), [])


class QuietTest(PanelTest):
    def test_a_minutes_end_is_one_icon_and_one_tooltip_and_nothing_else_is_sent(self):
        start_watcher(self)
        log = self.log.with_name("bus.log")
        self.start(dict(SOON, eyeBreakIntervalSec=126))
        item = StatusItem(self)
        wait_for(lambda: "break in 03:00" in item.tooltip(), "all that is sent at the start")
        sender = f"sender={dbus.SessionBus().get_name_owner(item.service)}"
        with log.open("w", encoding="utf-8") as out:
            self.spawn("dbus-monitor", sender, stdout=out)
        wait_for(lambda: "NameAcquired" in log.read_text(encoding="utf-8"), "the monitor")
        wait_for(lambda: "break in 02:00" in item.tooltip(), "the minute's end")
        end = time.monotonic() + 6
        wait_for(lambda: time.monotonic() > end, "some seconds to pass")
        words = re.findall(rf"(?:signal|method call) .*{sender} .*member=(\w+)", log.read_text(encoding="utf-8"))
        self.assertEqual(sorted(words), ["NewIcon", "NewToolTip"])


class KeyboardTest(PanelTest):
    def test_menu_opens_without_a_status_area_and_is_walked_with_the_keys(self):
        self.start(LATER)
        wait_for((self.documents / "ostrel.lock").exists, "the program")
        subprocess.run([OSTREL], env=self.environment(), check=True, capture_output=True)
        window = wait_for(lambda: self.windows(), "the window")
        wait_for(lambda: output("xdotool", "getactivewindow").split() == window, "its focus")
        key("Tab", "space")
        wait_for(lambda: len(self.windows()) == 2, "the menu")
        key("Up", "Return")
        self.assertEqual(self.app.wait(20), 0, "the last entry is to quit")

    @staticmethod
    def windows():
        return output("xdotool", "search", "--onlyvisible", "--class", "^ostrel$").split()


if __name__ == "__main__":
    unittest.main()
