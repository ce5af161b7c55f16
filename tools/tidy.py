#!/usr/bin/env python3
"""tidy.py BUILD FILE...: clang-tidy over those files that BUILD compiles.

Most of the linter's work is the headers, so files that are compiled in one way are looked at together,
one text that includes them all; those that do not go together, since they give two things one name, are
kept apart. A text that was found good once is not looked at again: a stamp in the user's cache folder
stands for what the preprocessor makes of it, the files' own text, the configuration and the linter's
version. Prints what is found; exit 1 when anything is.
"""
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# The analyzer takes minutes for the macros of a test and finds nothing there.
TESTS = ("tests/", "fuzz/", "bench/")
TESTS_CHECKS = ",-clang-analyzer-*"
# The texts that are made here include files; that the files do not is for lint.sh to see.
CHECKS = "-bugprone-suspicious-include"
# Deeper into what a routine calls the analyzer takes twenty times as long; it found nothing more there.
ANALYZER = ("-Xclang", "-analyzer-config", "-Xclang", "mode=shallow")
MOST_TOGETHER = 16
# Names that begin so tell the analyzer that what they include is code, and no header.
MADE = "UnifiedSource"

UNNAMED = re.compile(r"^namespace \{\n(.*?)^\}", re.S | re.M)
# Of a type, a constant or a function that begins its line.
DEFINED = re.compile(r"^(?:(?:struct|class|enum class|enum)\s+(\w+)|using\s+(\w+)\s*="
                     r"|[A-Za-z][\w:<>,&*\s]*?[\s&*](\w+)\s*[(={\[;])", re.M)
TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.M)
OUTSIDE = re.compile(r"^(?:extern \"C\" )?int (main|LLVMFuzzerTestOneInput)\(", re.M)


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


def without_output(words):
    """The command without what it is about: no output, no list of includes, no file."""
    kept = []
    skip = False
    for word in words:
        if skip:
            skip = False
        elif word in ("-o", "-MT", "-MF", "-c"):
            skip = True
        elif word != "-MD":
            kept.append(word)
    return kept


def names_of(text):
    """What a file gives a name that another file of the same text must not give."""
    names = {"".join(found) for part in UNNAMED.findall(text) for found in DEFINED.findall(part)}
    names |= {f"{suite} {name}" for suite, name in TEST.findall(text)}
    return names | set(OUTSIDE.findall(text))


class Linter:
    def __init__(self, build):
        commands = json.loads((build / "compile_commands.json").read_text())
        self.commands = {}
        for entry in commands:
            words = without_precompiled(entry["command"])
            # Twins compile the same text again.
            if "sanitized" not in words[words.index("-o") + 1]:
                self.commands[os.path.realpath(entry["file"])] = (entry["directory"], without_output(words))
        self.database = build / "lint"
        self.database.mkdir(exist_ok=True)
        for old in self.database.glob(MADE + "*"):
            old.unlink()
        cache = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache")
        self.stamps = cache / "vardenix-lint"
        self.stamps.mkdir(parents=True, exist_ok=True)
        version = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
        self.rules = version + Path(".clang-tidy").read_bytes() + (CHECKS + TESTS_CHECKS + str(ANALYZER)).encode()

    def groups(self, files):
        """The files that are looked at together, the larger groups first."""
        ways = defaultdict(list)
        for file in files:
            directory, words = self.commands[os.path.realpath(file)]
            ways[os.path.dirname(file), directory, *words].append(file)
        groups = []
        for together in ways.values():
            parts = []  # (files, their names)
            for file in sorted(together):
                names = names_of(Path(file).read_text())
                part = next((part for part in parts
                             if len(part[0]) < MOST_TOGETHER and not part[1] & names), None)
                if part is None:
                    part = ([], set())
                    parts.append(part)
                part[0].append(file)
                part[1].update(names)
            groups += [part[0] for part in parts]
        return sorted(groups, key=len, reverse=True)

    def made(self, files):
        """Path of the one text of some files."""
        name = re.sub(r"\W", "_", os.path.splitext(files[0])[0])
        path = self.database / f"{MADE}_{len(files)}_{name}.cpp"
        path.write_text("".join(f'#include "{os.path.realpath(file)}"\n' for file in files))
        return path

    def stamp(self, path, files):
        """Where the stamp of a text lies; its includes are named below the checkout."""
        directory, words = self.commands[os.path.realpath(files[0])]
        text = subprocess.run([*words, str(path.resolve()), "-E", "-P"], cwd=directory,
                              capture_output=True).stdout
        own = b"".join(Path(file).read_bytes() for file in files)
        return self.stamps / hashlib.sha256(self.rules + text + own).hexdigest()

    def good(self, files):
        path = self.made(files)
        stamp = self.stamp(path, files)
        if stamp.exists():
            return True
        directory, words = self.commands[os.path.realpath(files[0])]
        checks = CHECKS + (TESTS_CHECKS if files[0].startswith(TESTS) else "")
        # What the linter's compiler is given: all but the compiler's own name.
        run = subprocess.run(["clang-tidy", "--quiet", f"--checks={checks}", str(path),
                              "--", *words[1:], *ANALYZER],
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, cwd=os.getcwd())
        if run.returncode == 0:
            stamp.touch()
            return True
        if len(files) > 1 and "[clang-diagnostic-error]" in run.stdout:
            return all([self.good([file]) for file in files])
        print(run.stdout or f"{files}: clang-tidy failed", flush=True)
        return False


def main():
    linter = Linter(Path(sys.argv[1]))
    known = [file for file in sys.argv[2:] if os.path.realpath(file) in linter.commands]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        sys.exit(0 if all(list(pool.map(linter.good, linter.groups(known)))) else 1)


if __name__ == "__main__":
    main()
