#!/usr/bin/env python3
"""Changes the program at one place at a time and tells which changes no test notices.

    tools/mutate.py --count 200 --seed 1 platform workspace mapeditor

A place is an operator or a number of a .cpp file of the folders named (src/FOLDER). Each is
changed alone, the folder's test program is built and run, and the file put back. What the
tests do not notice is printed at the end: either a test is missing, or the change is none
(an equivalent one, as `<` for `!=` in a loop that counts up).

All this happens in a copy of the last commit (--work, build/mutate by default), so the
checkout can be worked on meanwhile. What was tried is remembered: the same command goes on
where it was stopped, and --report prints what is known without trying anything. A file that
was changed since is tried anew, and so is what no test noticed once there are other tests.
"""
import argparse
import collections
import functools
import json
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# What each operator becomes. The formatter puts blanks round those with two operands, which
# tells them from pointers, references and templates.
SWAPS = {
    '<': ['<=', '>'], '<=': ['<', '=='], '>': ['>=', '<'], '>=': ['>', '=='],
    '==': ['!='], '!=': ['=='], '&&': ['||'], '||': ['&&'],
    '+': ['-'], '-': ['+'], '*': ['/'], '/': ['*'], '%': ['*'],
    '+=': ['-='], '-=': ['+='], '<<': ['>>'], '|': ['&'], '&': ['|'],
}
OPERATOR = re.compile(r'(?<= )(%s)(?= )' %
                      '|'.join(re.escape(op) for op in sorted(SWAPS, key=len, reverse=True)))
NUMBER = re.compile(r'(?<![\w.\'"])(0[xX][0-9a-fA-F]+|\d+)(?=[uUlL]*(?![\w.\']))')
WORD = re.compile(r'\b(true|false)\b')
TIME_FACTOR = 5  # of what the tests take unchanged; a change that hangs is noticed too

Place = collections.namedtuple('Place', 'file line column old new')


def without_texts(source):
    """The same text with comments, literals and preprocessor lines blanked out."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"'
                         r"|(?<![\w])'(?:\\.|[^'\\\n])+'|^[ \t]*#[^\n]*", re.S | re.M)
    return pattern.sub(lambda found: re.sub(r'[^\n]', ' ', found.group()), source)


def places_of(tree, path):
    source = (tree / path).read_text()
    for line, text in enumerate(without_texts(source).split('\n'), 1):
        for found in OPERATOR.finditer(text):
            # `= 0` of a pure routine and template brackets do not compile otherwise.
            for new in SWAPS[found.group()]:
                yield Place(str(path), line, found.start(), found.group(), new)
        for found in NUMBER.finditer(text):
            text_of_number = found.group()
            octal = text_of_number[0] == '0' and text_of_number.isdigit()
            value = int(text_of_number, 8 if octal else 0)
            for new in {value + 1, max(value - 1, 0)} - {value}:
                yield Place(str(path), line, found.start(), found.group(), str(new))
        for found in WORD.finditer(text):
            new = 'false' if found.group() == 'true' else 'true'
            yield Place(str(path), line, found.start(), found.group(), new)


def chosen_places(tree, folders, seed):
    """All places in an order that the seed alone gives; no two at one spot."""
    all_places = [place for folder in folders
                  for path in sorted((tree / 'src' / folder).glob('*.cpp'))
                  for place in places_of(tree, path.relative_to(tree))]
    random.Random(seed).shuffle(all_places)
    spots = set()
    for place in all_places:
        if (place.file, place.line, place.column) not in spots:
            spots.add((place.file, place.line, place.column))
            yield place


class Copy:
    """A checkout of its own with the test programs in it."""

    def __init__(self, folder, folders):
        self.folder = folder
        self.results_file = folder / 'mutations.jsonl'
        # Commits of the checkout meanwhile do not count.
        self.commit = subprocess.check_output(['git', 'rev-parse', 'HEAD'], cwd=ROOT,
                                              text=True).strip()
        self.tree = folder / 'tree'
        self.folders = folders
        # The changed files are of no use to anybody's cache.
        self.environment = dict(os.environ, CCACHE_READONLY='1', CCACHE_NOHASHDIR='1',
                                CCACHE_BASEDIR=str(self.tree), QT_QPA_PLATFORM='offscreen')

    def prepare(self):
        # What was found by a run that was killed is kept; its changed file is not.
        shutil.rmtree(self.tree / 'src', ignore_errors=True)
        shutil.rmtree(self.tree / 'tests', ignore_errors=True)
        self.tree.mkdir(parents=True, exist_ok=True)
        archive = subprocess.Popen(['git', 'archive', self.commit], cwd=ROOT,
                                   stdout=subprocess.PIPE)
        subprocess.run(['tar', 'x', '-C', str(self.tree)], stdin=archive.stdout, check=True)
        self.run(['cmake', '--preset', 'tests'], check=True)
        self.seconds = {}
        for folder in self.folders:
            if not self.build(folder):
                sys.exit(f'{folder}_tests cannot be built unchanged: see {self.log}')
            begin = time.monotonic()
            if not self.test(folder, None):
                sys.exit(f'{folder}_tests fail unchanged: see {self.log}')
            self.seconds[folder] = time.monotonic() - begin

    @property
    def log(self):
        return self.folder / 'log'

    def run(self, command, check=False, timeout=None):
        """Whether it ended well; the whole group is ended at the timeout."""
        with open(self.log, 'w') as log:
            process = subprocess.Popen(command, cwd=self.tree, env=self.environment,
                                       stdout=log, stderr=subprocess.STDOUT,
                                       stdin=subprocess.DEVNULL, start_new_session=True)
            try:
                code = process.wait(timeout)
            except subprocess.TimeoutExpired:
                code = -1
            finally:
                if process.poll() is None:
                    os.killpg(process.pid, signal.SIGKILL)
                    process.wait()
        if check and code != 0:
            sys.exit(f'{" ".join(command)}: see {self.log}')
        return code == 0

    def build(self, folder):
        return self.run(['cmake', '--build', 'build/tests', '-j1', '--target',
                         f'{folder}_tests'])

    def test(self, folder, timeout):
        return self.run([f'build/tests/bin/{folder}_tests', '--gtest_fail_fast',
                         '--gtest_brief=1'], timeout=timeout)

    @functools.cache
    def version_of(self, path):
        """Of a file or folder; none where it is not there."""
        found = subprocess.run(['git', 'rev-parse', '--quiet', '--verify',
                                f'{self.commit}:{path}'],
                               cwd=ROOT, text=True, capture_output=True)
        return found.stdout.strip()

    def results(self):
        """What was tried on files that are still the same, by place."""
        known = {}
        if self.results_file.exists():
            for line in self.results_file.read_text().splitlines():
                entry = json.loads(line)
                place = Place(*entry['place'])
                known.pop(place, None)
                if entry['file'] == self.version_of(place.file) and (
                        entry['outcome'] != 'survived' or
                        entry['tests'] == self.version_of('tests')):
                    known[place] = entry['outcome']
        return known

    def try_place(self, place):
        path = self.tree / place.file
        original = path.read_text()
        lines = original.split('\n')
        text = lines[place.line - 1]
        lines[place.line - 1] = (text[:place.column] + place.new +
                                 text[place.column + len(place.old):])
        folder = Path(place.file).parts[1]
        try:
            path.write_text('\n'.join(lines))
            if not self.build(folder):
                return 'does not compile'
            limit = 20 + TIME_FACTOR * self.seconds[folder]
            return 'survived' if self.test(folder, limit) else 'noticed'
        finally:
            path.write_text(original)

    def remember(self, place, outcome):
        with open(self.results_file, 'a') as results:
            results.write(json.dumps({'place': place, 'outcome': outcome,
                                      'file': self.version_of(place.file),
                                      'tests': self.version_of('tests')}) + '\n')


def shown(tree, place):
    line = (tree / place.file).read_text().split('\n')[place.line - 1]
    return f'{place.file}:{place.line}:{place.column + 1}: {place.old} -> {place.new}: ' \
           f'{line.strip()}'


def report(tree, results):
    outcomes = collections.Counter(results.values())
    for place in sorted(results):
        if results[place] == 'survived':
            print(shown(tree, place))
    tried = outcomes['noticed'] + outcomes['survived']
    print(f'{tried} places tried, {outcomes["survived"]} of them unnoticed; '
          f'{outcomes["does not compile"]} more did not compile')


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('folders', nargs='+', help='folders of src/ with a test program')
    parser.add_argument('--count', type=int, default=200, help='places that compile')
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--work', type=Path, default=ROOT / 'build/mutate')
    parser.add_argument('--list', action='store_true', help='print the places alone')
    parser.add_argument('--report', action='store_true', help='print what is known')
    arguments = parser.parse_args()

    if arguments.list:
        places = chosen_places(ROOT, arguments.folders, arguments.seed)
        for place, _ in zip(places, range(arguments.count)):
            print(shown(ROOT, place))
        return 0
    arguments.work.mkdir(parents=True, exist_ok=True)
    copy = Copy(arguments.work.resolve(), arguments.folders)
    results = copy.results()
    if not arguments.report:
        copy.prepare()
        tried = 0
        for place in chosen_places(copy.tree, arguments.folders, arguments.seed):
            if tried >= arguments.count:
                break
            if place not in results:
                results[place] = copy.try_place(place)
                copy.remember(place, results[place])
                print(f'{results[place]}: {shown(copy.tree, place)}', flush=True)
            tried += results[place] != 'does not compile'
    report(copy.tree, results)
    return int('survived' in results.values())


if __name__ == '__main__':
    sys.exit(main())
