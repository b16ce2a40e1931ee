#!/usr/bin/python3
"""The program leaves people alone: with real windows in front, and with Do Not Disturb switched for real."""

import unittest

import dbus

from desktop import SOON, DesktopTest, Terminal, output, wait_for
from notification_servers import DUNST, NAME, Dunst, has_server


class PresenceTest(DesktopTest):
    def test_call_in_front_holds_the_break_until_it_is_left(self):
        call = self.spawn("xterm", "-class", "zoom", "-name", "zoom", "-title", "call", "-e", "cat")
        window = wait_for(lambda: output("xdotool", "search", "--onlyvisible", "--name", "^call$").split(), "the call")[0]
        wait_for(lambda: output("xdotool", "getactivewindow").strip() == window, "the call in front")
        self.start(dict(SOON, eyeBreakIntervalSec=8, preBreakToastLeadSec=0, breakSoonLeadSec=0))
        self.wait_running(lambda: output("xdotool", "search", "--onlyvisible", "--name", "^Your break waits"), "the toast")
        self.assertEqual(self.trace("due"), [])
        Terminal(self, "work", "white", 200)
        self.wait_running(lambda: self.trace("due"), "the held break to open")
        self.assertIsNone(call.poll())

    def test_do_not_disturb_pauses_and_ends_its_pause(self):
        Dunst(self).start()
        wait_for(has_server, "the server")
        self.start(dict(SOON, eyeBreakIntervalSec=1200))
        server = dbus.SessionBus().get_object(NAME, "/org/freedesktop/Notifications", introspect=False)
        for paused, reasons in ((True, ["focus"]), (False, [])):
            server.Set(DUNST, "paused", dbus.Boolean(paused, variant_level=1), dbus_interface=dbus.PROPERTIES_IFACE)
            self.wait_running(lambda wanted=reasons: self.pause_reasons() == wanted, f"the pause reasons {reasons}")

    def pause_reasons(self):
        path = self.documents / "ostrel.sessionState.v1.json"
        return self.document("sessionState")["pauseReasons"] if path.exists() else None


if __name__ == "__main__":
    unittest.main()
