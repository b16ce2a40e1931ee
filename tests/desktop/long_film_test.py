#!/usr/bin/python3
"""How a film in full screen comes to its end, with a real player."""

import unittest

from desktop import UNANNOUNCED, UNTIL_LOOKED_AT_SEC, DesktopTest
from player import PICTURE, Player


class FilmEndTest(DesktopTest):
    def test_break_opens_when_the_film_pauses_or_its_player_ends(self):
        for way, come_to_an_end in (("paused", lambda film: film.set("pause", True)),
                                    ("ended", lambda film: self.end(film.process)),
                                    ("killed", lambda film: film.process.kill())):
            with self.subTest(way):
                self.log.unlink(missing_ok=True)
                film = Player(self, PICTURE, "--fullscreen")
                film.wait_for_window(1920, 1080)
                app = self.start(dict(UNANNOUNCED, eyeBreakIntervalSec=3))
                self.wait_held()
                come_to_an_end(film)
                self.wait_opened(UNTIL_LOOKED_AT_SEC)
                self.end(app)
                self.end(film.process)


if __name__ == "__main__":
    unittest.main()
