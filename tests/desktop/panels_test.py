#!/usr/bin/python3
"""The status item on panels that people have, which are killed and started again."""

import unittest

import dbus

from desktop import SOON, DesktopTest, key, output, wait_for
from panels import LxqtPanel, OldTray, XfcePanel
from status_item import ITEM, StatusItem, start_watcher

LATER = dict(SOON, eyeBreakIntervalSec=1200)


class PanelTest(DesktopTest):
    @staticmethod
    def own_windows():
        """The icon in the tray of the older protocol, the window, and its menu."""
        return output("xdotool", "search", "--onlyvisible", "--class", "^ostrel$").split()

    def label(self):
        """As a host reads it that does not ask for it by name."""
        service = StatusItem(self).service
        item = dbus.SessionBus().get_object(service, "/StatusNotifierItem", introspect=False)
        return str(item.GetAll(ITEM, dbus_interface=dbus.PROPERTIES_IFACE)["XAyatanaLabel"])


class EveryPanel:
    make_panel = None

    def test_item_is_shown_used_and_back_when_the_panel_is(self):
        panel = self.make_panel(self)
        panel.start()
        self.start(LATER)
        self.wait_running(panel.shows_icon, "the icon")
        self.assertEqual(self.label(), "", "the time is in the icon")
        self.assertEqual(self.own_windows(), [], "no second icon by the older protocol")

        panel.kill()
        wait_for(lambda: not panel.shows_icon(), "the icon to be gone")
        panel.start()
        self.wait_running(panel.shows_icon, "the icon on the panel that was started again")

        item = StatusItem(self)
        self.assertEqual(item.service, f"org.kde.StatusNotifierItem-{self.app.pid}-1")
        item.click("Pause", "For 30 minutes")
        wait_for(lambda: self.pause_reasons() == ["user"], "the pause in the document")
        wait_for(lambda: not panel.shows_icon(), "the icon of the pause")
        item.click("Resume")
        wait_for(lambda: self.pause_reasons() == [], "the end of the pause")
        wait_for(panel.shows_icon, "the icon of the countdown")


class XfceTest(EveryPanel, PanelTest):
    make_panel = XfcePanel


class LxqtTest(EveryPanel, PanelTest):
    make_panel = LxqtPanel


class OldTrayTest(PanelTest):
    def test_old_tray_has_the_icon_just_when_nothing_newer_does(self):
        tray = OldTray(self)
        tray.start()
        self.start(LATER)
        for _ in range(2):
            self.wait_running(tray.shows_icon, "the icon in the tray")
            self.assertEqual(len(self.own_windows()), 1)
            watcher = start_watcher(self)
            self.assertIn("eye break", StatusItem(self).tooltip())
            wait_for(lambda: not self.own_windows(), "the icon to leave the tray")
            self.end(watcher)
        self.wait_running(tray.shows_icon, "the icon in the tray")
        tray.kill()
        wait_for(lambda: not self.own_windows(), "the tray to be gone")
        tray.start()
        self.wait_running(tray.shows_icon, "the icon in the tray that was started again")


class KeyboardTest(PanelTest):
    def test_menu_opens_without_a_status_area_and_is_walked_with_the_keys(self):
        self.start(LATER)
        self.launch_again()
        window = wait_for(self.own_windows, "the window")
        wait_for(lambda: output("xdotool", "getactivewindow").split() == window, "its focus")
        key("Tab", "space")
        wait_for(lambda: len(self.own_windows()) == 2, "the menu")
        key("Up", "Return")
        self.assertEqual(self.app.wait(20), 0, "the last entry is to quit")


if __name__ == "__main__":
    unittest.main()
