#!/usr/bin/python3
"""The program leaves people alone: with real windows in front, and with Do Not Disturb switched for real."""

import unittest

from desktop import SOON, UNANNOUNCED, UNTIL_LOOKED_AT_SEC, DesktopTest, Terminal, output, wait_for
from notification_servers import Dunst, Xfce, has_server, pause_dunst, pause_xfce


class PresenceTest(DesktopTest):
    def test_call_in_front_holds_the_break_until_it_is_left(self):
        call = self.spawn("xterm", "-class", "zoom", "-name", "zoom", "-title", "call", "-e", "cat")
        window = wait_for(lambda: output("xdotool", "search", "--onlyvisible", "--name", "^call$").split(), "the call")[0]
        wait_for(lambda: output("xdotool", "getactivewindow").strip() == window, "the call in front")
        self.start(dict(UNANNOUNCED, eyeBreakIntervalSec=8))
        self.wait_held()
        Terminal(self, "work", "white", 200)
        self.wait_opened(UNTIL_LOOKED_AT_SEC)
        self.assertIsNone(call.poll())

    def test_do_not_disturb_pauses_and_ends_its_pause(self):
        for make, switch in ((Dunst, pause_dunst), (Xfce, pause_xfce)):
            with self.subTest(make.__name__):
                server = make(self).start()
                wait_for(has_server, "the server")
                app = self.start(dict(SOON, eyeBreakIntervalSec=1200))
                for paused, reasons in ((True, ["focus"]), (False, [])):
                    switch(paused)
                    self.wait_running(lambda wanted=reasons: self.pause_reasons() == wanted, f"the pause reasons {reasons}")
                self.end(app)
                self.end(server)
                wait_for(lambda: not has_server(), "the server to be gone")
                (self.documents / "ostrel.sessionState.v1.json").unlink()


if __name__ == "__main__":
    unittest.main()
