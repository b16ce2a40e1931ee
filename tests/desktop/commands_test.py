#!/usr/bin/python3
"""The command line: against a running instance, against none, and against one that cannot be asked."""

import csv
import fcntl
import io
import json
import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from completions import CompletionTest
from desktop import OSTREL, UNANNOUNCED, DesktopTest, key, start_bus, wait_for

LATER = {**UNANNOUNCED, "eyeBreakIntervalSec": 1200, "dailyGoalBreaks": 4}
DONE, FAILED, USAGE, NOT_RUNNING, UNREACHABLE = range(5)
NOBODY = 65534


class Commands(DesktopTest):
    def ostrel(self, *words, given="", **environment):
        return subprocess.run([OSTREL, *words], input=given, capture_output=True, text=True, check=False,
                              env=self.environment(**environment), timeout=30)

    def told(self, *words, **more):
        """What a command that succeeds prints."""
        done = self.ostrel(*words, **more)
        self.assertEqual((done.returncode, done.stderr), (DONE, ""), words)
        return done.stdout

    def assert_refused(self, status, reason, *words, **more):
        done = self.ostrel(*words, **more)
        self.assertEqual((done.returncode, done.stdout), (status, ""), words)
        self.assertRegex(done.stderr, rf"\Aostrel: [^\n]*{reason}[^\n]*\n\Z", words)

    def launch(self, settings=None, **environment):
        self.start(settings or LATER, **environment)
        self.wait_running(lambda: self.ostrel("status", **environment).returncode == DONE, "the instance to answer")

    def status(self, **more):
        return json.loads(self.told("status", "--json", **more))


class RunningTest(Commands):
    def test_status_in_lines_in_json_and_for_a_status_bar(self):
        self.launch()
        lines = self.told("status").splitlines()
        self.assertEqual(lines[0], "Ostrel is on")
        self.assertRegex(lines[1], r"^Next eye break in (20:00|1\d:\d\d)$")
        self.assertRegex(self.told("status", "--compact"), r"^(20:00|1\d:\d\d)\n$")
        status = self.status()
        self.assertEqual((status["state"], status["next"], status["dailyGoalBreaks"]), ("running", "eye", 4))

    def test_pause_and_resume(self):
        self.launch()
        self.assertEqual(self.told("pause", "30m"), "")
        self.assertEqual(self.pause_reasons(), ["user"])
        self.assertEqual(self.told("status", "--compact"), "paused\n")
        self.assertRegex(self.told("status"), r"\APaused\nUntil \d\d?:\d\d")
        self.assertEqual(self.told("pause"), "")
        self.assertNotIn("pausedUntil", self.status())
        self.assertEqual(self.told("resume"), "")
        self.assertEqual(self.status()["state"], "running")

    def test_break_skip_and_postpone(self):
        self.launch()
        self.assert_refused(FAILED, "no break is on the screen", "skip")
        self.assertEqual(self.told("break", "eye"), "")
        self.wait_for_break()
        self.assertRegex(self.told("status"), r"\AEye break on the screen: 01:\d\d left\n")
        self.assertRegex(self.told("status", "--compact"), r"^break 01:\d\d\n$")
        self.assert_refused(FAILED, "on the screen already", "break", "body")
        self.assertEqual(self.told("skip"), "")
        self.assertEqual(self.wait_for_close(), "skipped")
        self.assertEqual(self.told("postpone"), "")
        self.assertGreater(self.status()["eye"]["remainingSec"], 1400)
        self.assert_refused(FAILED, "no postpone is left", "postpone")

    def test_report_and_settings_come_from_the_instance_and_go_to_it(self):
        self.launch()
        self.told("break", "eye")
        self.wait_for_break()
        key("Escape")
        self.wait_for_close()
        rows = list(csv.DictReader(io.StringIO(self.told("report", "--csv"))))
        self.assertEqual([(row["kind"], row["outcome"]) for row in rows], [("eye", "skipped")])
        report = json.loads(self.told("report", "--range", "monthly", "--json"))
        self.assertEqual((report["skipRate"], len(report["days"])), (1.0, 30))
        self.assertEqual(self.told("settings", "set", "dailyGoalBreaks", "9"), "")
        self.assertEqual(self.told("settings", "get", "dailyGoalBreaks"), "9\n")
        document = json.loads(self.told("settings", "export"))
        self.assertEqual(document, self.document("settings"))
        self.told("settings", "set", "activePresetID", "light")
        self.assertEqual(self.status()["eye"]["intervalSec"], 1800)
        self.told("settings", "import", "-", given=json.dumps(document))
        self.assertEqual(self.document("settings"), document)

    def watch(self, *words):
        watch = self.spawn(OSTREL, "status", "--watch", *words, env=self.environment(), text=True, stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE)
        self.addCleanup(watch.stdout.close)
        self.addCleanup(watch.stderr.close)
        return watch

    def test_watch_tells_each_change_and_ends_quietly_with_its_reader_and_with_the_instance(self):
        self.launch()
        watch = self.watch("--compact")
        lines = [watch.stdout.readline() for _ in range(3)]
        self.assertEqual(len(set(lines)), 3, lines)
        for line in lines:
            self.assertRegex(line, r"^\d\d:\d\d\n$")
        self.told("pause")
        wait_for(lambda: watch.stdout.readline() == "paused\n", "the pause to be told")
        unread = self.watch()
        self.assertEqual(unread.stdout.readline(), "Paused\n")
        unread.stdout.close()
        self.assertEqual((unread.wait(20), unread.stderr.read()), (DONE, ""))
        self.app.terminate()
        self.assertEqual(watch.wait(20), DONE)


class BusTest(Commands):
    """Buses of the test's own."""

    def setUp(self):
        super().setUp()
        self.address = f"unix:path={self.folder}/bus"
        self.bus = {"DBUS_SESSION_BUS_ADDRESS": self.address}

    def test_instance_is_back_with_a_bus_that_was_restarted(self):
        daemon = start_bus(self, self.address)
        self.launch(**self.bus)
        self.told("pause", **self.bus)
        daemon.kill()
        daemon.wait()
        self.assert_refused(UNREACHABLE, "DBUS_SESSION_BUS_ADDRESS", "resume", **self.bus)
        self.assert_refused(UNREACHABLE, "DBUS_SESSION_BUS_ADDRESS", "settings", "get", **self.bus)
        start_bus(self, self.address)
        self.wait_running(lambda: self.ostrel("status", **self.bus).returncode == DONE, "the instance to be back")
        self.assertEqual(self.status(**self.bus)["state"], "paused")
        self.told("resume", **self.bus)
        self.told("settings", "set", "pauseDuringDND", "true", **self.bus)
        self.spawn("dunst", env=self.environment(**self.bus))
        wait_for(lambda: self.pause_dunst() and self.status(**self.bus)["state"] == "paused", "Do Not Disturb to count")

    def pause_dunst(self):
        return subprocess.run(
            ["dbus-send", f"--bus={self.address}", "--print-reply", "--dest=org.freedesktop.Notifications",
             "/org/freedesktop/Notifications", "org.freedesktop.DBus.Properties.Set", "string:org.dunstproject.cmd0",
             "string:paused", "variant:boolean:true"], capture_output=True, check=False).returncode == 0

    @unittest.skipUnless(os.getuid() == 0, "only root can be somebody else")
    def test_other_users_are_refused_also_where_the_bus_lets_them_in(self):
        os.chmod(self.folder, 0o711)
        start_bus(self, self.address)
        self.launch(**self.bus)
        for member in ("Status", "Watch", "Resume", "GetSettings"):
            done = subprocess.run(
                ["setpriv", f"--reuid={NOBODY}", "--clear-groups", "dbus-send", f"--bus={self.address}", "--print-reply",
                 "--dest=org.ostrel.Ostrel", "/org/ostrel/Ostrel", f"org.ostrel.Ostrel1.{member}"],
                capture_output=True, text=True, check=False, timeout=20)
            self.assertIn("AccessDenied", done.stderr, member)
            self.assertIn("only the user who runs Ostrel", done.stderr, member)

    def test_without_a_bus_what_is_stored_can_still_be_had(self):
        self.assert_refused(UNREACHABLE, "DBUS_SESSION_BUS_ADDRESS", "status", **self.bus)
        self.assertEqual(self.told("settings", "get", "dailyGoalBreaks", **self.bus), "6\n")


class NotRunningTest(Commands):
    def test_what_asks_an_instance_says_that_none_runs(self):
        for words in (["status"], ["status", "--json"], ["status", "--watch"], ["pause", "30m"], ["resume"],
                      ["break", "eye"], ["skip"], ["postpone"]):
            self.assert_refused(NOT_RUNNING, "not running; start it with: ostrel", *words)
        self.assertFalse(self.documents.exists())

    def test_capabilities_are_those_of_the_desktop_at_hand_or_of_none(self):
        found = self.ostrel("status", "--capabilities").stdout
        for what in ("Knowing when you are away", "Holding breaks while you are in a call", "Keyboard shortcuts"):
            self.assertIn(f"{what}: works\n", found)
        found = self.ostrel("status", "--capabilities", DISPLAY=":987",
                            DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent").stdout
        self.assertRegex(found, "Knowing when you are away: .*X11 session")
        self.assertRegex(found, "Notifications: .*No notification server")

    def test_report_and_settings_work_on_what_is_stored(self):
        self.assertEqual(len(json.loads(self.told("report", "--range", "full", "--json"))["days"]), 60)
        self.assertTrue(self.told("report").startswith("The last seven days\n"))
        self.assertTrue(self.told("report", "--csv").startswith("id,startedAt,"))
        before = self.told("settings", "export")
        self.assertFalse(self.documents.exists(), "looking wrote something")
        self.assertEqual(self.told("settings", "set", "eyeBreakIntervalSec", "900"), "")
        self.assertEqual(self.told("settings", "get", "eyeBreakIntervalSec"), "900\n")
        self.told("settings", "import", "-", given=before)
        self.assertEqual(self.told("settings", "export"), before)
        self.told("settings", "set", "launchAtLogin", "true")
        self.assertTrue((Path(self.folder) / "config" / "autostart" / "ostrel.desktop").exists())

    def test_documents_of_an_instance_that_cannot_be_asked_are_left_alone(self):
        self.documents.mkdir(parents=True)
        with (self.documents / "ostrel.lock").open("w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            for words in (["status"], ["report"], ["settings", "get"], ["settings", "set", "strictMode", "true"]):
                self.assert_refused(UNREACHABLE, "does not answer", *words)
        self.assertEqual(os.listdir(self.documents), ["ostrel.lock"])

    def test_bad_arguments_are_a_line_and_status_2(self):
        damaged = Path(self.folder) / "damaged\n.json"
        damaged.write_text("[1]", encoding="utf-8")
        for words in (["nap"], ["status", "--json", "--compact"], ["pause", "soon"], ["break", "tea"], ["resume", "now"],
                      ["report", "--range", "never"], ["settings"], ["settings", "get", "nothing"],
                      ["settings", "set", "strictMode", "maybe"], ["settings", "import", str(damaged)],
                      ["simulate", "--seed", "x", str(damaged)], ["simulate", "/nonexistent"], ["--demo", "now"], [""],
                      ["na\np"], ["pause", "1\u2028m"], ["report", "--range", "a\x1b[2Jb"], ["settings", "get", "a\rb"]):
            self.assert_refused(USAGE, "", *words)
            self.assertNotRegex(self.ostrel(*words).stderr, "[\x00-\x09\x0b-\x1f\u2028]", words)
        self.assert_refused(USAGE, 'there is no command "na\\?p"', "na\np")
        done = self.ostrel("simulate", str(damaged))
        self.assertEqual((done.returncode, done.stdout, done.stderr.count("\n")), (USAGE, "", 1))
        self.assertTrue(done.stderr.startswith('"damaged?.json": '), done.stderr)
        self.assert_refused(FAILED, "cannot be read", "settings", "import", "/nonexistent")
        self.assertFalse(self.documents.exists())

    def write_to(self, out, *words):
        done = subprocess.run([OSTREL, *words], stdout=out, stderr=subprocess.PIPE, text=True, check=False,
                              env=self.environment())
        return done.returncode, len(done.stderr.splitlines())

    def test_output_that_cannot_be_written(self):
        day = Path(self.folder) / "day.json"
        day.write_text('{"durationSec": 28800}', encoding="utf-8")
        with open("/dev/full", "w", encoding="utf-8") as full:
            for words in (["--help"], ["status", "--capabilities"], ["simulate", str(day)]):
                self.assertEqual(self.write_to(full, *words), (FAILED, 1), words)
        unread, written = os.pipe()
        os.close(unread)
        for words in (["settings", "export"], ["simulate", str(day)]):
            self.assertEqual(self.write_to(written, *words), (DONE, 0), words)
        os.close(written)

    def test_language_is_that_of_the_settings(self):
        self.documents.mkdir(parents=True)
        (self.documents / "ostrel.settings.v1.json").write_text('{"languageRaw":"en-XA"}', encoding="utf-8")
        for words, english in ((["skip"], "not running"), (["--demo", "now"], "does not belong"),
                               (["--screenshots", "x"], "goes with"), (["simulate", "/nonexistent"], "cannot be read")):
            said = self.ostrel(*words).stderr
            self.assertTrue(said.startswith("ostrel: ") and english not in said, said)
        self.assertGreater(len(self.told("--help")), 1500)


class PapersTest(Commands, CompletionTest):
    """What is installed beside the program."""

    def commands(self):
        return [line.split()[1:] for line in self.told("--help").splitlines() if line.startswith("  ostrel ")]

    def test_help_and_version(self):
        self.assertRegex(self.told("--version"), r"^ostrel \d+\.\d+\.\d+\n$")
        for words in (["pause", "--help"], ["simulate", "-h"], ["simulate", "--help", "x"], ["--demo", "-h"]):
            self.assertEqual(self.told(*words), self.told("--help"), words)
        self.assertIn(["skip"], self.commands())

    @unittest.skipUnless(shutil.which("groff"), "no groff")
    def test_manual_page_is_sound_and_names_every_command(self):
        done = subprocess.run(["groff", "-man", "-ww", "-Tutf8", "-P-cbou", str(Path(OSTREL).parent / "ostrel.1")],
                              capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn(self.told("--version").replace("ostrel", "Ostrel").strip(), done.stdout)
        text = done.stdout.replace("\u2010", "-").replace("\u2212", "-")
        for words in self.commands():
            name = " ".join(words[:2] if words[0] == "settings" or words[-1] == "--capabilities" else words[:1])
            self.assertRegex(text, rf"(?m)^ {{7}}{re.escape(name)}\b", name)
        for name in ("-h", "XDG_STATE_HOME", "crash-*.txt", "autostart/ostrel.desktop"):
            self.assertIn(name, text)

    def test_bash_completes(self):
        self.assert_completes("bash")


if __name__ == "__main__":
    unittest.main()
