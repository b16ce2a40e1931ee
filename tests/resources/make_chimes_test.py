#!/usr/bin/python3
"""The chimes that are shipped are those that make_chimes makes."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOUNDS = Path(__file__).resolve().parents[2] / "resources" / "sounds"


class MakeChimesTest(unittest.TestCase):
    def test_makes_the_shipped_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, SOUNDS / "make_chimes", folder], check=True)
            made = {path.name: path.read_bytes() for path in Path(folder).iterdir()}
        shipped = {path.name: path.read_bytes() for path in SOUNDS.glob("*.aiff")}
        self.assertEqual(sorted(shipped), ["chime-end.aiff", "chime-start.aiff"])
        self.assertTrue(made == shipped, "run resources/sounds/make_chimes and commit what it makes")


if __name__ == "__main__":
    unittest.main()
