#!/usr/bin/python3
"""./run without a display: what it hands to the program as it is, and what becomes a demo in memory."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

RUN = Path(__file__).resolve().parents[2] / "run"
PROGRAM = "build/release/ostrel"
TELLS = '#!/bin/sh\necho "{name} $*"\nexit {status}\n'


class RunTest(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp(prefix="ostrel-run-"))
        self.addCleanup(shutil.rmtree, self.root)
        shutil.copy(RUN, self.root)
        for name, status in (("scripts/setup", 0), ("scripts/build", 0), ("scripts/private-desktop", 0), (PROGRAM, 3)):
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(TELLS.format(name=name, status=status), encoding="utf-8")
            path.chmod(0o755)

    def run_with(self, *words):
        """The status, and the last program that was started with its arguments."""
        bare = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        done = subprocess.run([self.root / "run", *words], env=bare, capture_output=True, text=True, check=False)
        started = [line for line in done.stdout.splitlines() if line.startswith(("scripts/", PROGRAM))]
        return done.returncode, started[-1].strip()

    def test_commands_go_to_the_program_and_its_status_comes_back(self):
        for words in (["pause", "30m"], ["status"], ["simulate", "day.json"], ["report", "--json"], ["--help"], ["-h"],
                      ["--version"], ["nap"], ["--screenshots", "x"]):
            self.assertEqual(self.run_with(*words), (3, " ".join([PROGRAM, *words])), words)

    def test_only_a_demo_and_no_command_at_all_are_played_in_memory(self):
        played = f"scripts/private-desktop {PROGRAM} --demo"
        for words, arguments in (([], " --screenshots build/demo"), (["--demo"], " --screenshots build/demo"),
                                 (["--demo", "--screenshots", "x"], " --screenshots x")):
            self.assertEqual(self.run_with(*words), (0, played + arguments), words)


if __name__ == "__main__":
    unittest.main()
