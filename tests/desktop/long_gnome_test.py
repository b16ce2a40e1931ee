#!/usr/bin/python3
"""Do Not Disturb of a whole desktop: GNOME, whose shell draws on a screen in memory."""

import unittest

import dbus

from desktop import SOON, DesktopTest, wait_for
from login_manager import start_system_bus
from notification_servers import NAME, server_object

SHELL = "org.gnome.Shell"


def is_answered(call):
    try:
        call()
    except dbus.DBusException:
        return False
    return True


class GnomeTest(DesktopTest):
    def setUp(self):
        super().setUp()
        environment = self.environment(DBUS_SYSTEM_BUS_ADDRESS=start_system_bus(self), XDG_CURRENT_DESKTOP="GNOME",
                                       XDG_SESSION_TYPE="wayland")
        self.spawn("/usr/libexec/dconf-service", env=environment)
        # It lets itself be asked for its switches only if it is told so.
        self.spawn("gnome-shell", "--wayland", "--headless", "--no-x11", "--unsafe-mode", "--virtual-monitor", "1280x720",
                   "--wayland-display", "ostrel-test", env={**environment, "DISPLAY": ""})
        wait_for(lambda: is_answered(lambda: self.shell("1")), "the shell", 60)
        wait_for(lambda: self.shell("Main.layoutManager._startingUp") == "false", "the shell to have begun", 60)
        self.spawn("gjs", "/usr/share/gnome-shell/org.gnome.Shell.Notifications", env=environment)
        wait_for(lambda: is_answered(lambda: server_object().GetServerInformation(dbus_interface=NAME)), "the notifications")

    @staticmethod
    def shell(script):
        shell = dbus.SessionBus().get_object(SHELL, "/org/gnome/Shell", introspect=False)
        is_done, answer = shell.Eval(script, dbus_interface=SHELL)
        assert is_done, answer
        return str(answer)

    def test_switch_in_the_shell_pauses_and_ends_its_pause(self):
        self.start(dict(SOON, eyeBreakIntervalSec=1200))
        for reasons in (["focus"], []):
            self.shell("Main.panel.statusArea.dateMenu._messageList._dndSwitch.toggle()")
            self.wait_running(lambda wanted=reasons: self.pause_reasons() == wanted, f"the pause reasons {reasons}")


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
