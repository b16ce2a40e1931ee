#!/usr/bin/python3
"""A film in a real browser."""

import os
import subprocess
import unittest
from pathlib import Path

from desktop import (UNANNOUNCED, UNTIL_LOOKED_AT_SEC, DesktopTest, active_window, is_break_held, key, output, wait_for,
                     windows)
from player import PICTURE

PAGE = """<title>film</title><video src="film.webm" autoplay loop muted style="width: 640px"></video>
<script>document.onclick = () => document.querySelector("video").requestFullscreen()</script>"""


class BrowserTest(DesktopTest):
    def open_film(self):
        folder = Path(self.folder)
        subprocess.run(["mpv", "--no-config", "--really-quiet", "--length=5", f"--o={folder / 'film.webm'}",
                        "--ovc=libvpx", PICTURE], check=True, timeout=60)
        (folder / "film.html").write_text(PAGE, encoding="utf-8")
        # Its sandbox refuses to be set up by the superuser.
        options = ["--no-sandbox"] if os.geteuid() == 0 else []
        self.spawn("chromium", *options, f"--user-data-dir={folder / 'browser'}", "--no-first-run", "--disable-gpu",
                   "--password-store=basic", "--autoplay-policy=no-user-gesture-required", "--window-position=0,0",
                   "--window-size=1000,700", f"file://{folder / 'film.html'}")
        self.window = wait_for(lambda: windows("^film - "), "the browser with its page", 60)[0]
        wait_for(lambda: active_window() == self.window, "the browser in front")

    def is_full_screen(self):
        return "_NET_WM_STATE_FULLSCREEN" in output("xprop", "-id", self.window, "_NET_WM_STATE")

    def enter_full_screen(self):
        def is_there():
            subprocess.run(["xdotool", "mousemove", "300", "400", "click", "1"], check=True)
            return self.is_full_screen()
        wait_for(is_there, "the film in full screen")

    def test_film_in_full_screen_holds_the_break_and_on_its_page_it_does_not(self):
        settings = dict(UNANNOUNCED, eyeBreakIntervalSec=12)
        self.open_film()
        self.enter_full_screen()
        app = self.start(settings)
        self.wait_held()
        key("Escape")
        wait_for(lambda: not self.is_full_screen(), "the film on its page")
        self.wait_opened(UNTIL_LOOKED_AT_SEC)
        self.end(app)
        self.log.unlink()
        self.start(settings)
        self.wait_opened()
        self.assertFalse(is_break_held())


if __name__ == "__main__":
    unittest.main()
