"""What the shells offer when they complete the command line."""

import os
import re
import subprocess
from pathlib import Path

from desktop import HERE, OSTREL, DesktopTest

SCRIPTS = HERE.parents[1] / "packaging" / "completions"

# How each shell tells what it would offer in place of the last of the words.
SHELLS = {
    "bash": ("-c", f"source '{SCRIPTS}/ostrel.bash'; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); compopt() {{ wants=files; }};"
             " _ostrel; printf '%s\\n' \"${COMPREPLY[@]}\"; [ -z \"$wants\" ] || compgen -f \"${@: -1}\"", "bash"),
    "zsh": ("-fc", "words=(\"$@\"); CURRENT=$#; _files() { print -l -- ${words[-1]}*(N) }; _describe() { print -l -- ${(P)2} };"
            f" source '{SCRIPTS}/_ostrel'", "zsh"),
    "fish": ("-Nc", f"source '{SCRIPTS}/ostrel.fish'; complete -C \"$argv\""),
}


class CompletionTest(DesktopTest):
    def offered(self, shell, *words):
        """The words, sorted, without the purposes beside them."""
        done = subprocess.run([shell, *SHELLS[shell], "ostrel", *words], capture_output=True, text=True, check=False,
                              cwd=self.folder, timeout=20,
                              env=self.environment(PATH=f"{Path(OSTREL).parent}:{os.environ['PATH']}"))
        found = sorted(re.split("[\t:]", word)[0] for word in done.stdout.splitlines() if word)
        # Told that nothing was found, zsh tries something else.
        status = 1 if shell == "zsh" and not found else 0
        self.assertEqual((done.returncode, done.stderr), (status, ""), words)
        return found

    def assert_completes(self, shell):
        (Path(self.folder) / "day.json").touch()
        self.assertLessEqual({"status", "pause", "settings", "--help"}, set(self.offered(shell, "")))
        for words, offered in ((["break", ""], ["body", "eye"]), (["report", "--range", "w"], ["weekly"]),
                               (["settings", "set", "chimeMode", "b"], ["both"]), (["--demo", "--scr"], ["--screenshots"]),
                               (["settings", "import", "d"], ["day.json"]), (["break", "eye", ""], [])):
            self.assertEqual(self.offered(shell, *words), offered, (shell, words))
