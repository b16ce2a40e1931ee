"""A real player of films, mpv, and what it is asked while it plays."""

import json
import socket
import tempfile
from pathlib import Path

from desktop import active_window, rectangle, wait_for, windows

PICTURE = "av://lavfi:testsrc=size=320x180:rate=2"
SOUND = "av://lavfi:sine=frequency=440"


class Player:
    """Plays from its start on; with a window of its own unless `options` do without."""

    TITLE = "film"

    def __init__(self, test, source, *options):
        # Short: the path of a socket has little room.
        folder = tempfile.TemporaryDirectory(prefix="mpv-")
        test.addCleanup(folder.cleanup)
        path = str(Path(folder.name) / "socket")
        self.process = test.spawn("mpv", "--no-config", "--no-terminal", "--ao=null", "--vo=x11", "--no-border",
                                  "--no-keepaspect-window", f"--title={self.TITLE}", f"--input-ipc-server={path}",
                                  *options, source)
        self._socket = socket.socket(socket.AF_UNIX)
        test.addCleanup(self._socket.close)
        wait_for(lambda: self._socket.connect_ex(path) == 0, "the player")
        self._answers = self._socket.makefile("r", encoding="utf-8")
        test.addCleanup(self._answers.close)
        wait_for(lambda: (self._ask("get_property", "time-pos") or 0) > 0.5, "the player to play")

    def _ask(self, *command):
        self._socket.sendall(json.dumps({"command": command, "request_id": 1}).encode() + b"\n")
        while True:
            answer = json.loads(self._answers.readline())
            if answer.get("request_id") == 1 and "error" in answer:
                return answer.get("data")

    def set(self, name, value):
        self._ask("set_property", name, value)

    def wait_for_window(self, width, height):
        """Until its window is in front and of that size."""
        def is_there():
            found = windows(f"^{self.TITLE}$")
            return found and active_window() == found[0] and (rectangle(found[0]) or ())[2:] == (width, height)
        wait_for(is_there, f"the film in front, {width} by {height}")
