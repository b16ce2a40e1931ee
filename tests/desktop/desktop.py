"""What the desktop tests share: the application under test, the screen, the keyboard, the buttons.

The tests run on a desktop of their own (scripts/private-desktop) with a display of 1920x1080 and one
of 1280x1024 to its right. Each test starts the program that OSTREL names, with settings of its own.
"""

import json
import os
import re
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
OSTREL = os.environ.get("OSTREL", str(HERE.parents[1] / "build" / "dev" / "ostrel"))

LEFT = (0, 0, 1920, 1080)
RIGHT = (1920, 0, 1280, 1024)

# Eye breaks only, and the first of them soon.
SOON = {"activePresetID": "custom", "mergeNearbyBreaks": False, "hasOnboarded": True,
        "eyeBreakIntervalSec": 2, "eyeBreakDurationSec": 100, "bodyBreakIntervalSec": 36000}
# The same, and nothing on the screen before it.
UNANNOUNCED = {**SOON, "preBreakToastLeadSec": 0, "breakSoonLeadSec": 0}

# A held break is looked at every half minute.
UNTIL_LOOKED_AT_SEC = 60


def wait_for(condition, what, seconds=30):
    """Waits until condition() answers something true, and answers that."""
    end = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain for {what}")
        time.sleep(0.05)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout


def key(*names):
    subprocess.run(["xdotool", "key", *names], check=True)


def pixel(x, y):
    """Red, green and blue of one pixel of the screen, 0 to 255."""
    text = output("import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "txt:-")
    return tuple(bytes.fromhex(re.search(r"#([0-9A-F]{6})", text)[1]))


def windows(name):
    """Those on the screen whose title matches."""
    return output("xdotool", "search", "--onlyvisible", "--name", name).split()


def active_window():
    return output("xdotool", "getactivewindow").strip()


def rectangle(window):
    """None when the window is gone."""
    lines = dict(line.split("=") for line in output("xdotool", "getwindowgeometry", "--shell", window).split())
    return tuple(int(lines[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")) if lines else None


def overlay_windows():
    """The rectangles of the overlay windows on the screen, from the left."""
    return sorted(found for found in map(rectangle, windows("^(Eye|Body) break")) if found)


def is_toast_shown(beginning):
    return bool(windows(f"^{beginning}"))


def is_break_held():
    return is_toast_shown("Your break waits")


def plug(name, x, y, width, height):
    subprocess.run(["xrandr", "--setmonitor", name, f"{width}/300x{height}/200+{x}+{y}", "none"],
                   check=True, capture_output=True)


def unplug(name):
    subprocess.run(["xrandr", "--delmonitor", name], check=False, capture_output=True)


BUS = """<busconfig><type>session</type><listen>{address}</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
</policy></busconfig>"""


def start_bus(test, address):
    """A bus of the test's own, with nothing on it."""
    config = Path(test.folder) / "bus.conf"
    config.write_text(BUS.format(address=address), encoding="utf-8")
    daemon = test.spawn("dbus-daemon", f"--config-file={config}", "--nofork", "--print-address", stdout=subprocess.PIPE)
    test.assertTrue(daemon.stdout.readline())
    daemon.stdout.close()
    return daemon


class Terminal:
    """A program beneath: an xterm that keeps what is typed into it."""

    def __init__(self, test, name, colour, x):
        self.name = name
        self._typed = Path(test.folder) / f"{name}.typed"
        command = f"stty -icanon; exec cat >'{self._typed}'"
        test.spawn("xterm", "-title", name, "-bg", colour, "-fg", colour, "-bw", "0",
                   "-geometry", f"80x24+{x}+100", "-e", "sh", "-c", command)
        self.window = wait_for(lambda: windows(f"^{name}$"), f"the terminal {name}")[0]
        wait_for(self._typed.exists, f"the shell of {name}")
        wait_for(self._focus, f"the focus on {name}")

    def _focus(self):
        subprocess.run(["xdotool", "windowactivate", self.window], check=False, capture_output=True)
        return active_window() == self.window

    def fill_display(self):
        subprocess.run(["wmctrl", "-i", "-r", self.window, "-b", "add,fullscreen"], check=True)
        wait_for(lambda: "_NET_WM_STATE_FULLSCREEN" in output("xprop", "-id", self.window, "_NET_WM_STATE"),
                 f"{self.name} in full screen")

    def typed(self):
        return self._typed.read_text(encoding="utf-8")


class DesktopTest(unittest.TestCase):
    """Starts and ends what a test needs."""

    program = (OSTREL,)

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="ostrel-test-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.log = Path(self.folder) / "ostrel.log"
        self.documents = Path(self.folder) / "config" / "ostrel"
        self.app = None
        self.processes = []
        self.addCleanup(self.check_sanitizers)

    def check_sanitizers(self):
        """Runs when the program has ended: what a sanitizer said of it fails the test."""
        said = self.log.read_text(encoding="utf-8", errors="replace") if self.log.exists() else ""
        self.assertNotRegex(said, "Sanitizer|runtime error:")

    def spawn(self, *command, **options):
        process = subprocess.Popen(command, **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options})
        self.processes.append(process)
        self.addCleanup(self.end, process)
        return process

    def end(self, process):
        if process.poll() is None:
            process.terminate()
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()

    def environment(self, **more):
        return {**os.environ, "XDG_CONFIG_HOME": str(Path(self.folder) / "config"),
                "XDG_STATE_HOME": str(Path(self.folder) / "state"), "OSTREL_TRACE": "1", **more}

    def start(self, settings=None, **environment):
        """Starts Ostrel with these fields in its settings document; it has been welcomed to before."""
        self.documents.mkdir(parents=True, exist_ok=True)
        (self.documents / "ostrel.settings.v1.json").write_text(json.dumps({"hasOnboarded": True, **(settings or SOON)}), encoding="utf-8")
        with self.log.open("a", encoding="utf-8") as log:
            self.app = self.spawn(*self.program, env=self.environment(**environment), stdout=log, stderr=log)
        return self.app

    def launch_again(self, **environment):
        """A second launch, once the first is up."""
        self.wait_running((self.documents / "ostrel.lock").exists, "the program")
        return subprocess.run([OSTREL], env=self.environment(**environment), capture_output=True, text=True, timeout=30,
                              check=True)

    def open_window(self, **environment):
        wait_for(lambda: "its window opens" in self.launch_again(**environment).stdout, "the window")

    def trace(self, what):
        """The trace lines of one kind, each without its first two words."""
        lines = self.log.read_text(encoding="utf-8").splitlines() if self.log.exists() else []
        return [line.split()[2:] for line in lines if line.startswith(f"trace {what} ")]

    def wait_for_break(self, displays=(LEFT, RIGHT)):
        self.wait_running(lambda: len(self.trace("painted")) >= len(displays), "the break to be painted")
        wait_for(lambda: overlay_windows() == sorted(displays), f"one window on each of {displays}")

    def wait_for_close(self, count=1):
        """Until that many breaks are over and off the screen; answers why the last of them closed."""
        self.wait_running(lambda: len(self.trace("closed")) >= count, "the break to close")
        wait_for(lambda: not overlay_windows(), "the windows to be gone")
        return self.trace("closed")[count - 1][0]

    def wait_running(self, condition, what, seconds=30):
        def look():
            if self.app.poll() is not None:
                raise AssertionError(f"ostrel ended with {self.app.returncode}:\n{self.log.read_text()[-3000:]}")
            return condition()
        return wait_for(look, what, seconds)

    def wait_held(self):
        self.wait_running(is_break_held, "the toast of the held break")
        self.assertEqual(self.trace("due"), [])

    def wait_opened(self, seconds=30):
        """Until a break, held or not, is no longer kept back."""
        self.wait_running(lambda: self.trace("due"), "the break to open", seconds)

    def pause_reasons(self):
        path = self.documents / "ostrel.sessionState.v1.json"
        return self.document("sessionState")["pauseReasons"] if path.exists() else []

    def document(self, name):
        return json.loads((self.documents / f"ostrel.{name}.v1.json").read_text(encoding="utf-8"))

    def assert_near(self, colour, wanted, tolerance=4):
        self.assertTrue(all(abs(a - b) <= tolerance for a, b in zip(colour, wanted)), f"{colour} is not {wanted}")
