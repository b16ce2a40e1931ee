#!/usr/bin/python3
"""measure.py OSTREL: prints the budget table, measured on the desktop at hand (two displays)."""

import json
import os
import platform
import re
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import dbus
import dbus.mainloop.glib
from gi.repository import GLib

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "desktop"))
os.environ["OSTREL"] = str(Path(sys.argv[1]).resolve())
# pylint: disable=wrong-import-position
from desktop import OSTREL, SOON, DesktopTest, key, output, wait_for  # noqa: E402
from status_item import StatusItem, start_watcher  # noqa: E402

REST_SEC = 60
STARTS = 15
BREAKS = 10
DISPLAYS = 2
AT_REST = dict(SOON, eyeBreakIntervalSec=36000)


class Bench(DesktopTest):
    """The tests' way of starting and ending the program, for measuring."""

    def runTest(self):
        pass


def started(bench, settings):
    bench.setUp()
    start_watcher(bench)
    bench.start(settings)
    return StatusItem(bench)


def memory_mb(pid):
    """Resident, unshared and anonymous."""
    fields = dict(re.findall(r"^(\w+):\s+(\d+) kB", Path(f"/proc/{pid}/smaps_rollup").read_text(), re.MULTILINE))
    kb = [int(fields["Rss"]), int(fields["Private_Clean"]) + int(fields["Private_Dirty"]), int(fields["Anonymous"])]
    return [value / 1024 for value in kb]


def usage(pid):
    """Voluntary context switches and CPU milliseconds of all threads so far."""
    switches, nanoseconds = 0, 0
    for task in Path(f"/proc/{pid}/task").iterdir():
        switches += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text(), re.MULTILINE)[1])
        nanoseconds += int((task / "schedstat").read_text().split()[0])
    return switches, nanoseconds / 1e6


def usage_over(pid, seconds):
    """Wake-ups a second, and CPU milliseconds a second."""
    began, (switches, cpu) = time.monotonic(), usage(pid)
    time.sleep(seconds)
    passed, (more_switches, more_cpu) = time.monotonic() - began, usage(pid)
    return (more_switches - switches) / passed, (more_cpu - cpu) / passed


def measure_start():
    """Milliseconds from the exec to the item's registration; the median of warm starts."""
    bench, loop, arrived = Bench(), GLib.MainLoop(), []
    bench.setUp()
    start_watcher(bench)

    def registered(_item):
        arrived.append(time.monotonic())
        loop.quit()

    dbus.SessionBus().add_signal_receiver(registered, "StatusNotifierItemRegistered", "org.kde.StatusNotifierWatcher")
    times = []
    for _ in range(STARTS + 2):
        began = time.monotonic()
        app = bench.start(AT_REST)
        GLib.timeout_add_seconds(20, loop.quit)
        loop.run()
        times.append((arrived[-1] - began) * 1000)
        bench.end(app)
    bench.doCleanups()
    return statistics.median(times[2:])


def measure_rest():
    bench = Bench()
    item = started(bench, AT_REST)
    time.sleep(REST_SEC)
    memory = memory_mb(bench.app.pid)
    wakeups, cpu = usage_over(bench.app.pid, REST_SEC)
    assert item.tooltip()
    bench.doCleanups()
    return memory, wakeups, cpu * 60


def open_windows(item):
    """Opens each window and closes it again; of the settings, each page."""
    for entry, title, keys in (("Settings", "^Settings", ["Down"] * 6), ("Report", "^Report", []),
                               ("About Ostrel", "^About Ostrel", [])):
        item.click(entry)
        window = ["xdotool", "search", "--onlyvisible", "--name", title]
        wait_for(lambda search=window: output(*search), title)
        for name in [*keys, "Escape"]:
            time.sleep(1)
            key(name)
        wait_for(lambda search=window: not output(*search), f"the end of {title}")


def measure_breaks():
    """Milliseconds from due to the last window painted, per break; the memory after them and the windows."""
    bench = Bench()
    item = started(bench, dict(SOON, eyeBreakIntervalSec=6, eyeBreakDurationSec=2))
    wait_for(lambda: len(bench.trace("closed")) >= BREAKS, "ten breaks", seconds=BREAKS * 12)
    item.click("Pause", "Until I resume")
    open_windows(item)
    time.sleep(10)
    memory = memory_mb(bench.app.pid)
    due = [float(words[0]) for words in bench.trace("due")[:BREAKS]]
    painted = [float(words[1]) for words in bench.trace("painted")]
    delays = [max(painted[i * DISPLAYS:(i + 1) * DISPLAYS]) - at for i, at in enumerate(due)]
    bench.doCleanups()
    return delays, memory


def measure_ring():
    """Per cent of a core while a break is on the screen."""
    bench = Bench()
    started(bench, SOON)
    bench.wait_for_break()
    time.sleep(3)
    _, cpu = usage_over(bench.app.pid, 30)
    bench.doCleanups()
    return cpu / 10


def measure_simulation(seconds):
    with tempfile.NamedTemporaryFile("w", suffix=".json") as scenario:
        json.dump({"timeZone": "Europe/Berlin", "durationSec": seconds}, scenario)
        scenario.flush()
        times = []
        for _ in range(5):
            began = time.monotonic()
            subprocess.run([OSTREL, "simulate", scenario.name], stdout=subprocess.DEVNULL, check=True)
            times.append((time.monotonic() - began) * 1000)
    return statistics.median(times)


def measure_append():
    """Milliseconds for one more entry in a log of 3,600, written to a file system in memory."""
    program = Path(sys.argv[1]).resolve().parent / "bench" / "bench_micro"
    result = output(program, "--benchmark_filter=logAppendToFile", "--benchmark_format=json")
    return json.loads(result)["benchmarks"][0]["real_time"] / 1000


def machine():
    cpu = re.search(r"^model name\s*:\s*(.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    release = dict(re.findall(r'^(\w+)="?([^"\n]*)', Path("/etc/os-release").read_text(), re.MULTILINE))
    qt = output("dpkg-query", "-W", "-f", "${Version}", "libqt6core6", "libqt6core6t64").strip()
    return (f"{cpu[1] if cpu else platform.machine()}, {os.cpu_count()} cores; {release.get('PRETTY_NAME', 'Linux')} "
            f"{Path('/etc/debian_version').read_text().strip() if Path('/etc/debian_version').exists() else ''}, "
            f"Linux {platform.release()}; Qt {qt}; {output('g++', '--version').splitlines()[0]}; "
            f"Xvfb and openbox, displays of 1920x1080 and 1280x1024")


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    start = measure_start()
    rest, wakeups, cpu = measure_rest()
    delays, after = measure_breaks()
    ring = measure_ring()
    day, year = measure_simulation(8 * 3600), measure_simulation(365 * 86400)

    append = measure_append()

    def megabytes(values):
        return " / ".join(f"{value:.1f}" for value in values) + " MB"

    rows = [
        ("memory at rest: resident / unshared / anonymous", "32 / 20 / 8 MB", megabytes(rest)),
        ("the same after ten breaks and each window", "at most 10 % more", megabytes(after)),
        ("wake-ups a second at rest", "1.1", f"{wakeups:.2f}"),
        ("CPU time a minute at rest", "10 ms", f"{cpu:.1f} ms"),
        ("start to status item registered, warm", "60 ms", f"{start:.0f} ms"),
        ("break due to every window painted", "60 ms",
         f"{statistics.median(delays):.0f} ms (worst of {len(delays)}: {max(delays):.0f} ms)"),
        ("CPU during a break, drawing the ring", "2 % of a core", f"{ring:.1f} %"),
        ("simulated eight-hour day / year", "50 ms / 5 s", f"{day:.0f} ms / {year / 1000:.2f} s"),
        ("appending to a log of 3,600 entries, without the disk's flush", "2 ms", f"{append:.2f} ms"),
    ]
    print(f"Release build on {machine()}.\n")
    print("| what | budget | measured |\n|---|---|---|")
    for row in rows:
        print("| " + " | ".join(row) + " |")


if __name__ == "__main__":
    main()
