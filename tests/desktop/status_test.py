#!/usr/bin/python3
"""`ostrel status` tells what works on the desktop at hand, and on none."""

import subprocess
import unittest

from desktop import OSTREL, DesktopTest, wait_for
from notification_servers import Dunst, has_server


class StatusTest(DesktopTest):
    def capabilities(self, **environment):
        done = subprocess.run([OSTREL, "status", "--capabilities"], capture_output=True, text=True, check=True,
                              env=self.environment(**environment), timeout=20)
        return dict(line.split(": ", 1) for line in done.stdout.splitlines())

    def test_tells_what_works_on_this_desktop(self):
        Dunst(self).start()
        wait_for(has_server, "the notification server")
        found = self.capabilities()
        for what in ("Knowing when you are away", "Holding breaks while you are in a call",
                     "Following Do Not Disturb", "Keyboard shortcuts", "Notifications"):
            self.assertEqual(found[what], "works")

    def test_says_what_is_lacking_where_there_is_no_desktop(self):
        found = self.capabilities(DISPLAY=":987", DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.assertIn("X11 session", found["Knowing when you are away"])
        self.assertIn("No notification server", found["Notifications"])

    def test_argument_that_it_does_not_know_is_a_line_and_status_2(self):
        done = subprocess.run([OSTREL, "status", "--nonsense"], capture_output=True, text=True, check=False, timeout=20)
        self.assertEqual((done.returncode, done.stdout, len(done.stderr.splitlines())), (2, "", 1))


if __name__ == "__main__":
    unittest.main()
