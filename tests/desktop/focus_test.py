#!/usr/bin/python3
"""Do Not Disturb as real desktops have it: seen when it is there, and gone with whoever had it.

focus_probe (tests/platform/linux) stands for the program.
"""

import os
import subprocess
import unittest
from pathlib import Path

from desktop import HERE, DesktopTest, wait_for
from notification_servers import Dunst, Xfce, has_server, pause_dunst, pause_xfce, xfconf

PROBE = os.environ.get("FOCUS_PROBE", str(HERE.parents[1] / "build" / "dev" / "tests" / "focus_probe"))


class FocusTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.answers = Path(self.folder) / "answers"
        self.told = 0

    def start_probe(self):
        with self.answers.open("a", encoding="utf-8") as answers, self.log.open("a", encoding="utf-8") as log:
            self.probe = self.spawn(PROBE, stdin=subprocess.PIPE, stdout=answers, stderr=log)

    def start_server(self, server):
        process = server.start()
        wait_for(has_server, "the server")
        return process

    def kill(self, process):
        process.kill()
        process.wait()
        wait_for(lambda: not has_server(), "the server to be gone")

    def wait_told(self, *states):
        """These, since the last time; that there are no others shows the next time."""
        wanted = self.told + len(states)
        wait_for(lambda: len(self.answers.read_text().splitlines()) >= wanted, states)
        self.assertEqual(self.answers.read_text().splitlines()[self.told:], list(states))
        self.told = wanted

    def end_probe(self):
        self.probe.stdin.close()
        self.assertEqual(self.probe.wait(10), 0)
        self.wait_told()

    def test_dunst_paused_before_and_meanwhile_and_killed(self):
        daemon = self.start_server(Dunst(self))
        pause_dunst(True)
        self.start_probe()
        self.wait_told("on")
        pause_dunst(False)
        self.wait_told("off")
        pause_dunst(True)
        self.wait_told("on")
        self.kill(daemon)
        self.wait_told("off")
        self.end_probe()

    def test_xfce_is_heard_while_it_is_the_server(self):
        self.start_probe()
        self.wait_told("off")
        xfce = Xfce(self)
        daemon = self.start_server(xfce)
        pause_xfce(True)
        self.wait_told("on")
        xfconf().ResetProperty("xfce4-notifyd", "/do-not-disturb", False)
        self.wait_told("off")
        pause_xfce(True)
        self.wait_told("on")
        self.kill(daemon)
        self.wait_told("off")
        dunst = self.start_server(Dunst(self))
        pause_dunst(True)
        self.wait_told("on")
        pause_dunst(False)
        self.wait_told("off")
        self.kill(dunst)
        self.start_server(xfce)
        self.wait_told("on")
        self.end_probe()


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
