#!/usr/bin/python3
"""Notifications on real notification servers: shown, replaced, withdrawn, answered, and survived.

notify_probe (tests/platform/linux) stands for the program.
"""

import glob
import json
import os
import re
import signal
import subprocess
import time
import unittest
import warnings
from pathlib import Path

import dbus

from desktop import HERE, DesktopTest, wait_for

PROBE = os.environ.get("NOTIFY_PROBE", str(HERE.parents[1] / "build" / "dev" / "tests" / "notify_probe"))
NAME = "org.freedesktop.Notifications"
DUNST = "org.dunstproject.cmd0"
XFCONF = "org.xfce.Xfconf"
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
HARD = "<b>bold</b> &amp; \"5\""  # a text that is shown otherwise when it is taken for markup


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

    @staticmethod
    def _object():
        return dbus.SessionBus().get_object(NAME, "/org/freedesktop/Notifications", introspect=False)

    def count(self):
        return int(self._object().Get(DUNST, "displayedLength", dbus_interface=dbus.PROPERTIES_IFACE))

    def newest(self):
        """Title and body of what was shown last, as on the screen."""
        found = re.findall(r"\tformatted: '<b>(.*?)</b>\n(.*?)'\n", self._printed.read_text(encoding="utf-8"), re.DOTALL)
        return tuple(self._without_markup(text) for text in found[-1]) if found else None

    @staticmethod
    def _without_markup(text):
        text = re.sub("<[^>]*>", "", text)
        for entity, character in (("&lt;", "<"), ("&gt;", ">"), ("&quot;", '"'), ("&amp;", "&")):
            text = text.replace(entity, character)
        return text

    def press(self, label):
        self._wanted.write_text(label, encoding="utf-8")
        self._object().ContextMenuCall(dbus_interface=DUNST)

    def tap(self):
        self._object().NotificationAction(dbus.UInt32(0), dbus_interface=DUNST)


class Xfce:
    """Read and pressed as a screen reader does. Nothing goes by itself here either."""

    atspi = None

    def __init__(self, test):
        self.test = test
        self.test.spawn(*glob.glob("/usr/lib/*/xfce4/xfconf/xfconfd"))
        wait_for(lambda: dbus.SessionBus().name_has_owner(XFCONF), "the settings of the server")
        settings = dbus.SessionBus().get_object(XFCONF, "/org/xfce/Xfconf", introspect=False)
        settings.SetProperty("xfce4-notifyd", "/expire-timeout", dbus.Int32(3600, variant_level=1), dbus_interface=XFCONF)

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

    def _find(self, role):
        return [node for window in self._windows() for node in self._nodes(window) if node.getRole() == role]

    def count(self):
        return len(self._windows())

    def newest(self):
        texts = [label.name for label in self._find(self.atspi.ROLE_LABEL) if label.name]
        return tuple(texts[:2])

    def press(self, label):
        button = wait_for(lambda: [b for b in self._find(self.atspi.ROLE_PUSH_BUTTON) if b.name == label], label)[0]
        button.queryAction().doAction(0)

    def tap(self):
        """A click elsewhere than on a button closes the notification and tells nothing."""
        self.press("Ostrel")


class NotificationsTest(DesktopTest):
    make_server = Dunst

    def setUp(self):
        super().setUp()
        self.answers = Path(self.folder) / "answers"
        self.server = self.make_server(self)
        self.daemon = None
        self.probe = None

    def start_server(self):
        self.daemon = self.server.start()
        wait_for(self.has_server, "the server")

    @staticmethod
    def has_server():
        return dbus.SessionBus().name_has_owner(NAME)

    def kill(self, process):
        process.kill()
        process.wait()

    def kill_server(self):
        self.kill(self.daemon)
        wait_for(lambda: not self.has_server(), "the server to be gone")

    def start_probe(self):
        with self.answers.open("a", encoding="utf-8") as answers, self.log.open("a", encoding="utf-8") as log:
            self.probe = self.spawn(PROBE, str(self.documents), stdin=subprocess.PIPE, stdout=answers, stderr=log, text=True)

    def tell(self, what, **fields):
        self.probe.stdin.write(json.dumps({"do": what, "id": "a", **fields}) + "\n")
        self.probe.stdin.flush()

    def add(self, title, body="", **fields):
        self.tell("add", title=title, body=body, kind="eye", **fields)

    def wait_shown(self, *texts):
        wait_for(lambda: self.server.count() == 1 and self.server.newest() == texts, f"{texts} to be shown")

    def wait_nothing_shown(self):
        wait_for(lambda: self.server.count() == 0, "nothing to be shown")

    def wait_answers(self, *answers):
        wait_for(lambda: len(self.answers.read_text().splitlines()) >= len(answers), "the answer")
        self.assertEqual(self.answers.read_text().splitlines(), [f"response {answer} soon eye" for answer in answers])
        self.assertIsNone(self.probe.poll())

    def end_probe(self):
        self.probe.stdin.close()
        self.assertEqual(self.probe.wait(10), 0)


class EveryServer:
    """What holds whoever the server is."""

    def test_shown_to_the_letter_replaced_and_withdrawn(self):
        self.start_server()
        self.start_probe()
        self.add("First " + HARD, HARD)
        self.wait_shown("First " + HARD, HARD)
        self.add("Second", "body")
        self.wait_shown("Second", "body")
        self.tell("removeDelivered")
        self.wait_nothing_shown()
        self.end_probe()

    def test_every_action_is_told_once_and_closes(self):
        self.start_server()
        self.start_probe()
        done = []
        for label, action in (("Start now", "start"), ("Postpone", "postpone"), (None, "tap")):
            self.add(f"For {action}", "body")
            self.wait_shown(f"For {action}", "body")
            if label:
                self.server.press(label)
            else:
                self.server.tap()
            done.append(action)
            self.wait_answers(*done)
            self.wait_nothing_shown()
        self.end_probe()

    def test_killed_server_is_followed_by_the_next(self):
        self.start_server()
        self.start_probe()
        self.add("Before", "body")
        self.wait_shown("Before", "body")
        self.kill_server()
        self.add("In between", "lost")
        self.tell("removeDelivered")
        self.start_server()
        self.add("After", "body")
        self.wait_shown("After", "body")
        self.server.press("Postpone")
        self.wait_answers("postpone")
        self.wait_nothing_shown()
        self.end_probe()


class DunstTest(EveryServer, NotificationsTest):
    pass


class XfceTest(EveryServer, NotificationsTest):
    make_server = Xfce

    @classmethod
    def setUpClass(cls):
        launcher = subprocess.Popen([LAUNCHER, "--launch-immediately"])
        cls.addClassCleanup(launcher.wait)
        cls.addClassCleanup(launcher.terminate)
        wait_for(lambda: dbus.SessionBus().name_has_owner("org.a11y.Bus"), "the accessibility bus")
        # It connects once and for all as it is imported, so there must be a bus by then.
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            import pyatspi  # pylint: disable=import-outside-toplevel
        Xfce.atspi = pyatspi


class TroubledServerTest(NotificationsTest):
    """A server, or a program, that is not there when it should be."""

    def test_what_fell_due_waits_for_a_server_that_starts_late(self):
        self.start_probe()
        self.add("Due", "body", afterSeconds=1)
        wait_for(self.pending, "the request")
        wait_for(lambda: not self.pending(), "it to fall due")
        self.start_server()
        self.wait_shown("Due", "body")

    def test_what_waits_survives_a_killed_program(self):
        self.start_server()
        self.start_probe()
        self.add("Overdue", "body", afterSeconds=1)
        due = wait_for(self.pending, "the document")[0]["since"] + 1
        self.kill(self.probe)
        wait_for(lambda: self.seconds_since_reference() > due, "the time")
        self.assertEqual(self.server.count(), 0)
        self.start_probe()
        self.wait_shown("Overdue", "body")
        self.assertEqual(self.pending(), [])

    def test_hanging_server_is_not_waited_for_and_shows_nothing_stale_when_it_wakes_up(self):
        self.start_server()
        self.start_probe()
        self.add("Shown", "body")
        self.wait_shown("Shown", "body")
        self.daemon.send_signal(signal.SIGSTOP)
        self.add("Stale", "body")
        self.tell("removeDelivered")
        self.tell("add", id="b", title="Later", body="body", kind="eye", afterSeconds=60)
        wait_for(self.pending, "the program to go on")
        self.daemon.send_signal(signal.SIGCONT)
        self.wait_nothing_shown()
        self.end_probe()

    def pending(self):
        path = self.documents / "ostrel.pendingNotifications.v1.json"
        return json.loads(path.read_text(encoding="utf-8"))["pending"] if path.exists() else []

    @staticmethod
    def seconds_since_reference():
        return time.time() - 978307200


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
