#!/usr/bin/python3
"""A film in full screen holds a due break, with a real player: that film, and nothing else."""

import unittest

from desktop import UNANNOUNCED, UNTIL_LOOKED_AT_SEC, DesktopTest, Terminal, is_break_held, unplug
from player import PICTURE, SOUND, Player

SETTINGS = dict(UNANNOUNCED, eyeBreakIntervalSec=3)


class FilmTest(DesktopTest):
    def test_film_holds_the_break_until_it_is_paused(self):
        film = Player(self, PICTURE, "--fullscreen")
        film.wait_for_window(1920, 1080)
        self.start(SETTINGS)
        self.wait_held()
        film.set("pause", True)
        self.wait_opened(UNTIL_LOOKED_AT_SEC)
        self.assertIsNone(film.process.poll())

    def test_window_counts_from_95_percent_of_the_width_and_the_height_on(self):
        # A window that is too small for this display would cover the other.
        unplug("RIGHT")
        for width, height, holds in ((1804, 1080, False), (1823, 1026, False), (1824, 1025, False), (1824, 1026, True)):
            with self.subTest(width=width, height=height):
                self.log.unlink(missing_ok=True)
                film = Player(self, PICTURE, f"--geometry={width}x{height}+0+0")
                film.wait_for_window(width, height)
                app = self.start(SETTINGS)
                if holds:
                    self.wait_held()
                else:
                    self.wait_opened()
                    self.assertFalse(is_break_held())
                self.end(app)
                self.end(film.process)

    def test_music_beneath_a_full_screen_program_holds_nothing(self):
        music = Player(self, SOUND, "--no-video")
        Terminal(self, "editor", "#202020", 100).fill_display()
        self.start(SETTINGS)
        self.wait_opened()
        self.assertFalse(is_break_held())
        self.assertIsNone(music.process.poll())


if __name__ == "__main__":
    unittest.main()
