#!/usr/bin/python3
"""The completions of the shells that are not there anyway."""

import unittest

from completions import CompletionTest


class ShellsTest(CompletionTest):
    def test_zsh_completes(self):
        self.assert_completes("zsh")

    def test_fish_completes(self):
        self.assert_completes("fish")


if __name__ == "__main__":
    unittest.main()
