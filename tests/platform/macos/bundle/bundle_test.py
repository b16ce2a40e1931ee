#!/usr/bin/python3
"""What CMake makes of cmake/macos.cmake for a Mac: the bundle's description, its resources, the link line."""

import plistlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[3]


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.build = Path(cls.folder.name)
        compilers = [f"-DCMAKE_{language}_COMPILER={shutil.which('clang++')}" for language in ("CXX", "OBJCXX")]
        works = [f"-DCMAKE_{language}_COMPILER_WORKS=1" for language in ("CXX", "OBJCXX")]
        done = subprocess.run(
            ["cmake", "-G", "Ninja", "-S", str(HERE), "-B", str(cls.build), f"-DOSTREL_SOURCE_DIR={ROOT}",
             "-DCMAKE_SYSTEM_NAME=Darwin", "-DCMAKE_OSX_SYSROOT=", "-DCMAKE_INSTALL_NAME_TOOL=/bin/true",
             "-DCMAKE_CXX_FLAGS=-target x86_64-apple-macos12", "-DCMAKE_OBJCXX_FLAGS=-target x86_64-apple-macos12",
             *compilers, *works], check=False, capture_output=True, text=True)
        assert done.returncode == 0, done.stdout + done.stderr
        cls.ninja = (cls.build / "build.ninja").read_text(encoding="utf-8")
        with (cls.build / "Ostrel.app/Contents/Info.plist").open("rb") as plist:
            cls.info = plistlib.load(plist)

    def test_it_is_an_agent_of_its_own_identifier_and_version(self):
        expected = {"CFBundleIdentifier": "org.ostrel.Ostrel", "CFBundleExecutable": "Ostrel",
                    "CFBundlePackageType": "APPL", "LSUIElement": True, "LSMinimumSystemVersion": "12.0",
                    "CFBundleShortVersionString": "7.8.9", "CFBundleVersion": "7.8.9"}
        self.assertEqual({key: self.info.get(key) for key in expected}, expected)
        self.assertNotIn("@", "".join(str(value) for value in self.info.values()))

    def test_the_oldest_system_is_that_of_the_project(self):
        project = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
        self.assertIn(f"CMAKE_OSX_DEPLOYMENT_TARGET {self.info['LSMinimumSystemVersion']} ", project)

    def test_it_names_every_language_that_has_texts(self):
        languages = sorted(path.stem for path in (ROOT / "resources/texts").glob("*.json"))
        self.assertEqual(self.info["CFBundleLocalizations"], languages)

    def test_sounds_and_icon_lie_in_its_resources(self):
        copied = set(re.findall(r"^build Ostrel\.app/Contents/Resources/(\S+): COPY_OSX_CONTENT", self.ninja, re.M))
        self.assertEqual(copied, {"chime-start.aiff", "chime-end.aiff", self.info["CFBundleIconFile"] + ".icns"})

    def test_every_objective_c_source_is_compiled_under_reference_counting(self):
        sources = {path.name for path in (ROOT / "src/platform/macos").glob("*.mm")}
        steps = re.findall(r"^build \S+/(\w+\.mm)\.o: OBJCXX_.*\n(?:  .*\n)*?  FLAGS = (.*)$", self.ninja, re.M)
        self.assertEqual({name for name, _ in steps}, sources)
        for name, flags in steps:
            self.assertIn(" -fobjc-arc ", flags + " ", name)
            self.assertIn(" -std=c++20 ", flags + " ", name)

    def test_the_program_is_linked_with_the_frameworks(self):
        line = re.search(r"^build Ostrel\.app/Contents/MacOS/Ostrel: .*\n(?:  .*\n)*?  LINK_LIBRARIES = (.*)$",
                         self.ninja, re.M)[1]
        for framework in ("AppKit", "Carbon", "UserNotifications"):
            self.assertIn(f"-framework {framework}", line)


if __name__ == "__main__":
    if not shutil.which("clang++"):
        print("needs clang++, which speaks Objective-C for a Mac: SKIPPED")
        sys.exit(0)
    unittest.main()
