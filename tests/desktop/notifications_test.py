#!/usr/bin/python3
"""Notifications on real notification servers: shown, replaced, withdrawn, answered, and survived.

notify_probe (tests/platform/linux) stands for the program, but in the last test.
"""

import json
import os
import signal
import subprocess
import time
import unittest
from pathlib import Path

from desktop import HERE, SOON, DesktopTest, wait_for
from notification_servers import Dunst, Xfce, has_server

PROBE = os.environ.get("NOTIFY_PROBE", str(HERE.parents[1] / "build" / "dev" / "tests" / "notify_probe"))
HARD = "<b>bold</b> &amp; \"5\""  # a text that is shown otherwise when it is taken for markup


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
        wait_for(has_server, "the server")

    def kill(self, process):
        process.kill()
        process.wait()

    def kill_server(self):
        self.kill(self.daemon)
        wait_for(lambda: not has_server(), "the server to be gone")

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
        Xfce.prepare(cls)


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


class ProgramTest(NotificationsTest):
    """The program itself."""

    def test_break_that_was_told_of_is_postponed(self):
        self.start_server()
        self.start(dict(SOON, eyeBreakIntervalSec=30, preBreakToastLeadSec=0, breakSoonLeadSec=29))
        self.wait_running(lambda: self.server.count() == 1 and self.server.newest()[0] == "Eye break soon", "the notification")
        self.server.press("In five minutes")
        wait_for((self.documents / "ostrel.postponeQuota.v1.json").exists, "the postpone")
        self.wait_nothing_shown()
        self.assertEqual(self.document("dailyCounter")["postponesToday"], 1)
        self.assertEqual(self.trace("due"), [])


if __name__ == "__main__":
    # The bindings warn of each other's age.
    unittest.main(warnings="ignore")
