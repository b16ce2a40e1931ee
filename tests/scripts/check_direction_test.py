#!/usr/bin/python3
"""scripts/check-direction finds each way around the direction and leaves right code alone."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(__file__).resolve().parents[2] / "scripts" / "check-direction"

CMAKE = """
ostrel_subsystem(base)
ostrel_subsystem(records USES base)
ostrel_subsystem(screens USES records LIBRARIES Qt6::Widgets QT)
ostrel_subsystem(platform/virtual USES base)
ostrel_subsystem(app/desktop USES screens platform/virtual QT)
"""


def check(lines, cmake=CMAKE):
    """What the check says about a tree with these include lines, by file under src/."""
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        (root / "CMakeLists.txt").write_text(cmake)
        for name in ("base/clock.h", "records/log.h", "screens/ring.h", "platform/virtual/loop.h"):
            lines.setdefault(name, "#pragma once")
        for name, text in lines.items():
            path = root / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text + "\n")
        done = subprocess.run([sys.executable, CHECK, root], capture_output=True, text=True, check=False)
        return done.returncode, done.stdout


class CheckDirectionTest(unittest.TestCase):
    def test_wrong_includes_are_named_with_their_line(self):
        for name, line, fault in (
            ("base/clock.cpp", '#include "records/log.h"', "includes upwards"),
            ("records/log.cpp", '#include "platform/virtual/loop.h"', "includes upwards"),
            ("records/log.cpp", '#include "../screens/ring.h"', "path of its own making"),
            ("records/log.cpp", "#include <screens/ring.h>", "as <screens/ring.h>"),
            ("records/log.cpp", "#  include <QString>", "includes Qt"),
            ("records/log.cpp", '#include "log.h"', "without its folder"),
            ("records/log.cpp", "#include RECORDS_HEADER", "through a macro"),
            ("stray/new.cpp", "", "belongs to no subsystem"),
        ):
            with self.subTest(line):
                status, said = check({name: f"// first\n{line}"})
                self.assertEqual(status, 1)
                self.assertIn(fault, said)
                self.assertIn(f"src/{name}:" + ("2" if line else ""), said)

    def test_wrong_edges_are_refused(self):
        for cmake, fault in (
            ("ostrel_subsystem(base USES records)\nostrel_subsystem(records)", "does not stand above"),
            ("ostrel_subsystem(base LIBRARIES Qt6::Core)", "base uses Qt"),
            ("ostrel_subsystem(platform/virtual)\nostrel_subsystem(records USES platform/virtual)", "knows platform/virtual"),
            ("", "no ostrel_subsystem() found"),
        ):
            with self.subTest(fault):
                status, said = check({}, cmake)
                self.assertEqual(status, 1)
                self.assertIn(fault, said)


if __name__ == "__main__":
    unittest.main()
