#!/usr/bin/python3
"""The program leaves people alone: in a call, with Do Not Disturb switched for real, and while they are away."""

import time
import unittest

from desktop import (SOON, UNANNOUNCED, UNTIL_LOOKED_AT_SEC, DesktopTest, Terminal, active_window, is_toast_shown, key,
                     wait_for, windows)
from notification_servers import Dunst, Xfce, has_server, pause_dunst, pause_xfce
from status_item import StatusItem, start_watcher


class PresenceTest(DesktopTest):
    def test_call_in_front_holds_the_break_until_it_is_left(self):
        call = self.spawn("xterm", "-class", "zoom", "-name", "zoom", "-title", "call", "-e", "cat")
        window = wait_for(lambda: windows("^call$"), "the call")[0]
        wait_for(lambda: active_window() == window, "the call in front")
        self.start(dict(UNANNOUNCED, eyeBreakIntervalSec=8))
        self.wait_held()
        Terminal(self, "work", "white", 200)
        self.wait_opened(UNTIL_LOOKED_AT_SEC)
        self.assertIsNone(call.poll())

    def test_do_not_disturb_pauses_until_it_ends_or_its_server_does(self):
        for make, switch in ((Dunst, pause_dunst), (Xfce, pause_xfce)):
            with self.subTest(make.__name__):
                server = make(self).start()
                wait_for(has_server, "the server")
                app = self.start(dict(SOON, eyeBreakIntervalSec=1200))
                for paused, reasons in ((True, ["focus"]), (False, [])):
                    switch(paused)
                    self.wait_running(lambda wanted=reasons: self.pause_reasons() == wanted, f"the pause reasons {reasons}")
                switch(True)
                self.wait_running(lambda: self.pause_reasons() == ["focus"], "the pause once more")
                self.end(server)
                self.wait_running(lambda: self.pause_reasons() == [], "the pause to end with the server")
                self.end(app)
                (self.documents / "ostrel.sessionState.v1.json").unlink()

    def test_nobody_there_holds_the_countdown_and_the_return_counts_as_the_break(self):
        start_watcher(self)
        # As short as an absence can be: 30 s, seen every 30 s. The break would be due before the second look.
        self.start(dict(UNANNOUNCED, eyeBreakIntervalSec=45, eyeBreakDurationSec=20, idleThresholdSec=1))
        item = StatusItem(self)
        counting = item.tooltip()
        self.wait_running(lambda: item.tooltip() != counting, "the countdown to run")
        self.wait_running(lambda: self.stands_still(item), "the countdown to be held", 60)
        held = item.tooltip()
        key("shift")
        self.wait_running(lambda: is_toast_shown("A minute away counts as an eye break"), "the toast of the return", 60)
        self.assertEqual(self.trace("due"), [])
        back = item.tooltip()
        self.assertNotEqual(back, held, "the countdown begins anew")
        self.wait_running(lambda: item.tooltip() != back, "the countdown to run again")

    @staticmethod
    def stands_still(item):
        """Whether the tooltip stays as it is for so long that two ticks would have changed it."""
        begin, text = time.monotonic(), item.tooltip()
        wait_for(lambda: item.tooltip() != text or time.monotonic() - begin > 3, "time to pass")
        return item.tooltip() == text


if __name__ == "__main__":
    unittest.main()
