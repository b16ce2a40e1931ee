#!/usr/bin/python3
"""Every control of the settings window, by the screen reader's tree: set, stored, acting; and back."""

import json
import os
import subprocess
import unittest
from pathlib import Path

from desktop import OSTREL, DesktopTest, Terminal, key, overlay_windows, wait_for
from screen_reader import ACCESSIBLE, ScreenReader, connect_as_screen_reader

# What has to be repaired is written whole at once.
SETTINGS = {"hasOnboarded": True, "remindersMigrated": False, "notifyBreakSoon": True}

# By page: what stands in the document, and the name of its switch, a list's choice, or what a slider is set to.
SWITCHES = {
    "Timing": [("mergeNearbyBreaks", "Join breaks that are close together")],
    "Breaks": [("strictMode", "Strict mode"), ("disableSkipPenalty", "Skipping has a price")],
    "Presence": [("detectUserIdle", "Wait while you are away"),
                 ("creditAwayAsBreak", "Count an absence as a break"),
                 ("delayBreakOnFullscreenVideo", "Hold breaks while a film plays"),
                 ("detectVideoPlayback", "You are not away while a film plays"),
                 ("pauseDuringDND", "Pause while Do Not Disturb is on")],
    "Work hours": [("workHoursEnabled", "Only remind me during my work hours")],
    "Reminders": [("notifyConsecutiveSkips", "After several skipped breaks"),
                  ("notifyPauseForgotten", "When a pause was forgotten"),
                  ("notifyWeeklySummary", "A summary of the week"),
                  ("notifyDayEnd", "At the end of the working day")],
    "General": [("ostrelEnabled", "Remind me of breaks"), ("launchAtLogin", "Start when you log in")],
}
LISTS = {
    "Breaks": [("overlayStyle", "Style", "Only the time", "minimal"),
               ("overlayTint", "Colour", "Sage", "sage"),
               ("eyePresentation", "Eye breaks appear", "On a small card", "gentle"),
               ("bodyPresentation", "Body breaks appear", "On a small card", "gentle"),
               ("chimeMode", "A chime sounds", "Never", "off")],
    "Presence": [("idleThresholdSec", "You are away after", "2 min", 120),
                 ("maxDeferralSec", "Drop a break that has waited for", "30 min", 1800)],
    "Reminders": [("preBreakToastLeadSec", "Show a card ahead of it", "20 s", 20),
                  ("breakSoonLeadSec", "Send a notification ahead of it", "Never", 0)],
    "General": [("appearance", "Appearance", "Dark", "dark")],
}
SLIDERS = {
    "Timing": [("eyeBreakIntervalSec", "Time between eye breaks", 900),
               ("eyeBreakDurationSec", "Length of an eye break", 60),
               ("bodyBreakIntervalSec", "Time between body breaks", 3600),
               ("bodyBreakDurationSec", "Length of a body break", 600)],
    "Breaks": [("overlayDimOpacity", "Darkness", 90)],
    "General": [("dailyGoalBreaks", "Breaks a day as a goal", 9)],
}


class SettingsTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.atspi = connect_as_screen_reader(cls)

    def setUp(self):
        super().setUp()
        self.reader = ScreenReader(self.atspi)
        # What opens folders on this desktop.
        (opener := Path(self.folder) / "bin" / "xdg-open").parent.mkdir(parents=True)
        opener.write_text('#!/bin/sh\necho "$1" >"$0.asked"\n', encoding="utf-8")
        opener.chmod(0o755)
        self.opened = opener.with_suffix(".asked")
        self.start(SETTINGS, PATH=f"{opener.parent}:{os.environ['PATH']}", **ACCESSIBLE)
        self.open_window()

    def status(self):
        told = subprocess.run([OSTREL, "status", "--json"], env=self.environment(), capture_output=True, check=True)
        return json.loads(told.stdout)

    def wait_interval(self, kind, seconds):
        wait_for(lambda: self.status()[kind]["intervalSec"] == seconds, f"the {kind} countdown of {seconds}")

    def part(self, role, name):
        return wait_for(lambda: self.reader.named(role).get(name), f"{name}")

    def open(self, page):
        self.reader.press(self.part(self.atspi.ROLE_LIST_ITEM, page))
        wait_for(lambda: page in self.reader.named(self.atspi.ROLE_LABEL), f"the page {page}")

    def wait_stored(self, field, value):
        wait_for(lambda: self.document("settings")[field] == value, f"{field} {value}")

    def choose(self, name, choice):
        """Opens the list by the tree; what is in it is chosen with the keyboard, as with a screen reader."""
        box = wait_for(lambda: self.box(name), name)
        choices = [item.name for item in self.reader.walk(box) if item.getRole() == self.atspi.ROLE_LIST_ITEM]
        self.reader.press(box)
        wait_for(lambda: self.reader.has(box, self.atspi.STATE_EXPANDED), f"the list of {name}")
        key("Home", *["Down"] * choices.index(choice), "Return")

    def box(self, name):
        """The list with this label: its own name is what is chosen."""
        for box in self.reader.parts(self.atspi.ROLE_COMBO_BOX):
            for relation in box.getRelationSet():
                labels = [relation.getTarget(i).name for i in range(relation.getNTargets())]
                if name in labels:
                    return box
        return None

    def test_switches_are_stored_and_go_back(self):
        for page, switches in SWITCHES.items():
            self.open(page)
            for field, name in switches:
                before = self.document("settings")[field]
                for value in (not before, before):
                    self.reader.press(self.part(self.atspi.ROLE_CHECK_BOX, name))
                    self.wait_stored(field, value)

    def test_sliders_and_numbers_are_stored(self):
        for page, sliders in SLIDERS.items():
            self.open(page)
            for field, name, value in sliders:
                role = self.atspi.ROLE_SPIN_BUTTON if field == "dailyGoalBreaks" else self.atspi.ROLE_SLIDER
                before = self.part(role, name).queryValue().currentValue
                for wanted in (value, before):
                    self.part(role, name).queryValue().currentValue = wanted
                    self.wait_stored(field, wanted / 100 if field == "overlayDimOpacity" else wanted)
                    if field.endswith("IntervalSec"):
                        self.wait_interval(field.removesuffix("BreakIntervalSec"), wanted)
        self.assertEqual(self.document("settings")["activePresetID"], "custom")

    def choose_preset(self, name):
        self.reader.press(self.part(self.atspi.ROLE_RADIO_BUTTON, name))

    def test_presets_act_at_once_and_ask_first_while_a_break_is_on_the_screen(self):
        for name, seconds in (("Light", 1800), ("Strict", 900), ("Standard", 1200)):
            self.choose_preset(name)
            self.wait_stored("eyeBreakIntervalSec", seconds)
            slider = self.part(self.atspi.ROLE_SLIDER, "Time between eye breaks")
            self.assertEqual(slider.queryValue().currentValue, seconds)
            self.wait_interval("eye", seconds)
        subprocess.run([OSTREL, "break", "eye"], env=self.environment(), check=True)
        self.wait_for_break()
        for answer, seconds in (("Cancel", 1200), ("Switch", 900)):
            self.choose_preset("Strict")
            self.part(self.atspi.ROLE_LABEL,
                      "A break is near or on the screen. Switching now starts both countdowns anew.")
            self.assertEqual(self.document("settings")["eyeBreakIntervalSec"], 1200)
            self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, answer))
            self.wait_stored("eyeBreakIntervalSec", seconds)
            chosen = self.part(self.atspi.ROLE_RADIO_BUTTON, "Strict" if answer == "Switch" else "Standard")
            wait_for(lambda card=chosen: self.reader.has(card, self.atspi.STATE_CHECKED), f"the card after {answer}")

    def test_days_and_programs(self):
        self.open("Work hours")
        self.reader.press(self.part(self.atspi.ROLE_CHECK_BOX, "Only remind me during my work hours"))
        self.reader.press(self.part(self.atspi.ROLE_CHECK_BOX, "Saturday"))
        self.wait_stored("workDays", [2, 3, 4, 5, 6, 7])
        self.open("Presence")
        typed = self.part(self.atspi.ROLE_TEXT, "Identifier of a program, such as org.example.Call")
        typed.queryEditableText().setTextContents("org.example.Call")
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Add"))
        wait_for(lambda: self.document("settings")["deferAppBundleIDs"][-1] == "org.example.Call", "the program")

        first, *others = self.document("settings")["deferAppBundleIDs"]
        self.reader.press(self.part(self.atspi.ROLE_LIST, "Programs for calls").getChildAtIndex(0))
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Remove"))
        self.wait_stored("deferAppBundleIDs", others)
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Restore the list"))
        self.wait_stored("deferAppBundleIDs", [first, *others[:-1]])

        Terminal(self, "elsewhere", "navy", 0)
        self.open_window()
        # By the keyboard: the toolkit answers a press by the tree only when the menu is gone.
        self.part(self.atspi.ROLE_PUSH_BUTTON, "Choose a running program").queryComponent().grabFocus()
        key("space")
        self.reader.press(self.part(self.atspi.ROLE_MENU_ITEM, "XTerm"))
        wait_for(lambda: "term" in self.document("settings")["deferAppBundleIDs"][-1].lower(), "its identifier")

    def test_hours_are_set_with_the_arrow_keys(self):
        self.open("Work hours")
        self.reader.press(self.part(self.atspi.ROLE_CHECK_BOX, "Only remind me during my work hours"))
        for field, name in (("workHoursStartMinute", "From"), ("workHoursEndMinute", "Until")):
            before = self.document("settings")[field]
            self.part(self.atspi.ROLE_SPIN_BUTTON, name).queryComponent().grabFocus()
            key("Home", "Up")
            self.wait_stored(field, before + 60)
            key("Down")
            self.wait_stored(field, before)

    def test_own_messages(self):
        self.open("Breaks")
        for words, stored in (("Look far away\n\nDrink some water", ["Look far away", "Drink some water"]), ("", [])):
            self.part(self.atspi.ROLE_TEXT, "Your own messages").queryEditableText().setTextContents(words)
            self.wait_stored("customBreakMessages", stored)

    def test_shortcuts_are_recorded_refused_and_restored(self):
        self.open("Shortcuts")
        first = self.document("settings")["startBreakHotkey"]
        for keys, says in (("b", "A shortcut needs a key together with Ctrl, Alt, Shift or Super."), ("ctrl+alt+j", None)):
            recorder = self.part(self.atspi.ROLE_PUSH_BUTTON, "Start an eye break")
            self.reader.press(recorder)
            wait_for(lambda shown=recorder: shown.description == "Press the keys", "the recorder to listen")
            key(keys)
            if says:
                self.part(self.atspi.ROLE_LABEL, says)
                key("Escape")
        wait_for(lambda: self.document("settings")["startBreakHotkey"] != first, "the new keys")
        key("ctrl+alt+j")
        self.wait_for_break()
        key("Escape")
        wait_for(lambda: not overlay_windows(), "its end")
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Restore the default"))
        self.wait_stored("startBreakHotkey", first)
        recorder = self.part(self.atspi.ROLE_PUSH_BUTTON, "Pause or resume")
        self.reader.press(recorder)
        wait_for(lambda: recorder.description == "Press the keys", "the recorder to listen")
        key("ctrl+alt+k")
        wait_for(lambda: self.document("settings")["togglePauseHotkey"]["displayString"] == "⌃⌥K", "the keys to pause")
        key("ctrl+alt+k")
        wait_for(lambda: self.status()["state"] == "paused", "the pause")

    def test_settings_are_exported_reset_and_imported(self):
        self.open("Breaks")
        self.choose("Colour", "Sage")
        self.wait_stored("overlayTint", "sage")
        self.open("General")
        file = self.documents / "kept.json"
        self.answer("Export the settings", file, "Save")
        wait_for(file.exists, "the export")
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Reset"))
        self.part(self.atspi.ROLE_LABEL, "All settings go back to what they were at first.")
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Reset"))
        wait_for(lambda: self.document("settings")["overlayTint"] != "sage", "the reset")
        self.answer("Import settings", file, "Open")
        self.wait_stored("overlayTint", "sage")

    def test_the_folder_is_opened(self):
        self.open("General")
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, "Where it is"))
        wait_for(self.opened.exists, "the folder to be asked for")
        self.assertEqual(self.opened.read_text(encoding="utf-8").strip().removeprefix("file://"), str(self.documents))

    def answer(self, name, path, button):
        """Opens a dialog for a file and answers it."""
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, name))
        self.part(self.atspi.ROLE_TEXT, "File name:").queryEditableText().setTextContents(str(path))
        self.reader.press(self.part(self.atspi.ROLE_PUSH_BUTTON, button))

    def test_another_language_is_there_at_once(self):
        self.open("General")
        self.choose("Language", "Deutsch")
        self.wait_stored("languageRaw", "de")
        wait_for(lambda: "Allgemein" in self.reader.named(self.atspi.ROLE_LIST_ITEM), "German")
        self.choose("Sprache", "English")
        wait_for(lambda: "General" in self.reader.named(self.atspi.ROLE_LIST_ITEM), "English")

    def test_lists_are_stored(self):
        for page, lists in LISTS.items():
            self.open(page)
            for field, name, choice, value in lists:
                before, chosen = self.document("settings")[field], self.box(name).name
                self.choose(name, choice)
                self.wait_stored(field, value)
                self.choose(name, chosen)
                self.wait_stored(field, before)


if __name__ == "__main__":
    unittest.main(warnings="ignore")
