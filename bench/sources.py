#!/usr/bin/python3
"""sources.py OSTREL: what it costs at rest to know of the user, source by source, counted over a minute."""

import os
import re
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

import dbus
import dbus.bus

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "desktop"))
sys.path.insert(0, str(Path(__file__).resolve().parent))
os.environ["OSTREL"] = str(Path(sys.argv[1]).resolve())
# pylint: disable=wrong-import-position
from desktop import OSTREL, Terminal, wait_for  # noqa: E402
from login_manager import LoginManager, start_system_bus  # noqa: E402
from measure import AT_REST, Bench, usage_over  # noqa: E402
from status_item import start_watcher  # noqa: E402

SETTLE_SEC = 15
MINUTE_SEC = 60
OFF = dict(AT_REST, detectUserIdle=False, detectVideoPlayback=False, deferAppBundleIDs=[])
CASES = [
    ("none", OFF, False),
    ("input idle time", dict(OFF, detectUserIdle=True), False),
    ("program in front, for calls", dict(OFF, deferAppBundleIDs=["us.zoom.xos"]), False),
    ("films, a window in front", dict(OFF, detectVideoPlayback=True), False),
    ("films, a full screen in front", dict(OFF, detectVideoPlayback=True), True),
    ("all, a full screen in front", AT_REST, True),
]


class Calls:
    """The method calls on a bus, as a monitor sees them."""

    def __init__(self, bench, address, name):
        self._bus = dbus.bus.BusConnection(address).get_object("org.freedesktop.DBus", "/org/freedesktop/DBus")
        self._said = Path(bench.folder) / f"{name}.calls"
        with self._said.open("w", encoding="utf-8") as out:
            bench.spawn("dbus-monitor", "--address", address, "--profile", "type='method_call'", stdout=out)

    def of(self, pid):
        """By the name of the method, those of one process."""
        counts = Counter()
        for line in self._said.read_text(encoding="utf-8").splitlines():
            words = line.split("\t")
            if words[0] == "mc" and self._is_of(words[3], pid):
                counts[words[-1]] += 1
        return counts

    def _is_of(self, sender, pid):
        try:
            return self._bus.GetConnectionUnixProcessID(sender) == pid
        except dbus.DBusException:
            return False


def requests(trace):
    return Counter(re.findall(r"^\d+:<:.*Request\([\d,]+\): (\S+)", trace.read_text(errors="replace"), re.MULTILINE))


def started(settings, fills, *before):
    """The program with a window in front of it, started by way of another one if there is one `before` it."""
    bench = Bench()
    bench.setUp()
    front = Terminal(bench, "front", "white", 100)
    if fills:
        front.fill_display()
    address = start_system_bus(bench)
    LoginManager(bench, address, lambda: None)
    start_watcher(bench)
    calls = [Calls(bench, os.environ["DBUS_SESSION_BUS_ADDRESS"], "session"), Calls(bench, address, "system")]
    bench.program = (*before, OSTREL)
    bench.start(settings, DBUS_SYSTEM_BUS_ADDRESS=address)
    pid = bench.app.pid
    if before:
        children = Path(f"/proc/{pid}/task/{pid}/children")
        pid = int(wait_for(lambda: children.read_text(encoding="ascii").split(), "the program")[0])
    time.sleep(SETTLE_SEC)
    return bench, pid, calls


def measure(settings, fills):
    bench, pid, calls = started(settings, fills)
    before = sum((bus.of(pid) for bus in calls), Counter())
    wakeups, _ = usage_over(pid, MINUTE_SEC)
    asked = sum((bus.of(pid) for bus in calls), Counter()) - before
    bench.doCleanups()

    trace = Path(tempfile.gettempdir()) / f"ostrel-x-{os.getpid()}.trace"
    bench, pid, _ = started(settings, fills, "xtrace", "-n", "-o", str(trace), "--")
    before = requests(trace)
    time.sleep(MINUTE_SEC)
    sent = requests(trace) - before
    subprocess.run(["kill", str(pid)], check=False)
    bench.doCleanups()
    trace.unlink()
    return wakeups * MINUTE_SEC, asked, sent


def listed(counts):
    names = ", ".join(f"{name} {count}" for name, count in counts.most_common())
    return f"{counts.total()}" + (f" ({names})" if names else "")


def main():
    print("| source | wake-ups a minute | D-Bus calls a minute | X requests a minute |\n|---|---|---|---|")
    for name, settings, fills in CASES:
        wakeups, asked, sent = measure(settings, fills)
        print(f"| {name} | {wakeups:.0f} | {listed(asked)} | {listed(sent)} |", flush=True)


if __name__ == "__main__":
    main()
