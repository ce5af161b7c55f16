#!/usr/bin/env python3
"""tidy.py BUILD FILE...: clang-tidy over those files that BUILD compiles.

A file that was found good once is not looked at again: a stamp in the user's cache folder stands
for its preprocessed text, its own text, the configuration and the linter's version. Prints what
is found; exit 1 when anything is.
"""
import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# The analyzer takes minutes for the macros of a test and finds nothing there.
TESTS = ("tests/", "fuzz/", "bench/")
TESTS_CHECKS = "-clang-analyzer-*"


def without_precompiled(command):
    """The command as it is without precompiled headers, which are another compiler's."""
    words = shlex.split(command)
    kept = []
    skip = False
    for at, word in enumerate(words):
        if skip:
            skip = False
        elif word == "-include" and words[at + 1].endswith("cmake_pch.hxx"):
            skip = True
        elif word not in ("-Winvalid-pch", "ccache", "-Wno-stringop-overflow"):
            kept.append(word)
    return kept


class Linter:
    def __init__(self, build):
        commands = json.loads((build / "compile_commands.json").read_text())
        self.commands = {}
        for entry in commands:
            words = without_precompiled(entry.pop("command"))
            # Twins compile the same text again.
            if "sanitized" not in words[words.index("-o") + 1]:
                self.commands[os.path.realpath(entry["file"])] = entry | {"arguments": words}
        self.database = build / "lint"
        self.database.mkdir(exist_ok=True)
        (self.database / "compile_commands.json").write_text(json.dumps(list(self.commands.values())))
        cache = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache")
        self.stamps = cache / "vardenix-lint"
        self.stamps.mkdir(parents=True, exist_ok=True)
        version = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
        self.rules = version + Path(".clang-tidy").read_bytes() + TESTS_CHECKS.encode()

    def stamp(self, file):
        """Where the stamp of a file lies; its includes are named below the checkout."""
        entry = self.commands[os.path.realpath(file)]
        words = entry["arguments"]
        drop = {words.index("-o"), words.index("-o") + 1} if "-o" in words else set()
        words = [word for at, word in enumerate(words) if at not in drop]
        words = [word for word in words if word not in ("-MD", "-c")]
        for flag in ("-MT", "-MF"):
            if flag in words:
                del words[words.index(flag):words.index(flag) + 2]
        text = subprocess.run(words + ["-E", "-P"], cwd=entry["directory"], capture_output=True).stdout
        return self.stamps / hashlib.sha256(self.rules + text + Path(file).read_bytes()).hexdigest()

    def good(self, file):
        stamp = self.stamp(file)
        if stamp.exists():
            return True
        checks = [f"--checks={TESTS_CHECKS}"] if file.startswith(TESTS) else []
        run = subprocess.run(["clang-tidy", "-p", str(self.database), "--quiet", *checks, file],
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        if run.returncode == 0:
            stamp.touch()
        else:
            print(run.stdout or f"{file}: clang-tidy failed", flush=True)
        return run.returncode == 0


def main():
    linter = Linter(Path(sys.argv[1]))
    known = [file for file in sys.argv[2:] if os.path.realpath(file) in linter.commands]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        sys.exit(0 if all(list(pool.map(linter.good, known))) else 1)


if __name__ == "__main__":
    main()
