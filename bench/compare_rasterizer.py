#!/usr/bin/env python3
"""Times `vardenix-cli render` beside the rasterizer of a tile map editor, on maps of the same size:
as many cells, as many distinct tiles of the same side, the same picture. Both start, read their
files, paint without smoothing and write the picture, as a bitmap and as PNG.

usage: compare_rasterizer.py BIN [OLD]      the folder with vardenix-cli and make_sample_theater, and
                                            one with the vardenix-cli of before, to be timed too
"""
import array
import os
import pathlib
import random
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time
import zlib

RASTERIZER = "tmxrasterizer"  # of the Debian package "tiled"
POSTS = 256                   # of the theater, a side
GRID = 10                     # cells of the view, a side
CELL = 128                    # pixels
TILE = 128                    # pixels along a side of the sample's tiles
ROUNDS = 7


def tile_numbers(theater, left, bottom, side):
    """Rows of the view's tile numbers, the top one first."""
    level = (theater / "terrain/theater.L2").read_bytes()
    offsets = array.array("i", (theater / "terrain/theater.O2").read_bytes())
    segments = POSTS // 16

    def number(x, y):
        block = offsets[y // 16 * segments + x // 16]
        return struct.unpack_from("<i", level, block + (y % 16 * 16 + x % 16) * 9)[0]

    return [[number(left + x, bottom + y) for x in range(side)]
            for y in reversed(range(side))]


def png(seed):
    """A noisy tile; noise packs badly, as photographs do."""
    noise = random.Random(seed)
    rows = b"".join(b"\0" + noise.randbytes(TILE * 3) for _ in range(TILE))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", TILE, TILE, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))


def write_map(folder, rows):
    """The same cells as a map of the other program; its tile numbers count from 1."""
    folder.mkdir()
    ids = {}
    for row in rows:
        for number in row:
            ids.setdefault(number, len(ids))
    tiles = ""
    for number, tile in ids.items():
        (folder / f"{tile}.png").write_bytes(png(number))
        tiles += f'<tile id="{tile}"><image width="{TILE}" height="{TILE}" ' \
                 f'source="{tile}.png"/></tile>'
    cells = ",\n".join(",".join(str(ids[number] + 1) for number in row) for row in rows)
    side = len(rows)
    path = folder / "map.tmx"
    path.write_text(
        '<?xml version="1.0" encoding="UTF-8"?>\n'
        f'<map version="1.8" orientation="orthogonal" renderorder="right-down" '
        f'width="{side}" height="{side}" tilewidth="{TILE}" tileheight="{TILE}" '
        f'infinite="0"><tileset firstgid="1" name="tiles" tilewidth="{TILE}" '
        f'tileheight="{TILE}" tilecount="{len(ids)}" columns="0">{tiles}</tileset>'
        f'<layer id="1" name="posts" width="{side}" height="{side}">'
        f'<data encoding="csv">{cells}</data></layer></map>\n')
    return path, len(ids)


def picture_side(path):
    """The width that the header of a bitmap or a PNG file tells."""
    head = path.read_bytes()[:26]
    return (struct.unpack_from("<i", head, 18) if head[:2] == b"BM"
            else struct.unpack_from(">i", head, 16))[0]


class Taken:
    """What runs of a command take: processor time, and from start to end, in seconds."""

    def __init__(self):
        self.processor = []
        self.wall = []

    def run(self, command, environment):
        begin = time.perf_counter()
        child = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL)
        _, status, used = os.wait4(child.pid, 0)
        child.returncode = os.waitstatus_to_exitcode(status)
        if child.returncode != 0:
            sys.exit(f"exit code {child.returncode}: {command}")
        self.wall.append(time.perf_counter() - begin)
        self.processor.append(used.ru_utime + used.ru_stime)

    def of_processor(self):
        return 1000 * statistics.median(self.processor)

    def of_wall(self):
        return 1000 * statistics.median(self.wall)


def medians(commands):
    """What each command takes; they take turns."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_LOGGING_RULES="*=false")
    times = [Taken() for _ in commands]
    for _ in range(ROUNDS):
        for command, taken in zip(commands, times):
            taken.run(command, environment)
    return times


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    if shutil.which(RASTERIZER) is None:
        print(f"There is nothing to compare with: the program {RASTERIZER} is not installed.")
        return
    programs = pathlib.Path(sys.argv[1]).resolve()
    ours_before = [pathlib.Path(folder).resolve() / "vardenix-cli" for folder in sys.argv[2:]]
    with tempfile.TemporaryDirectory(prefix="vardenix bench ") as scratch:
        scratch = pathlib.Path(scratch)
        subprocess.run([programs / "make_sample_theater", scratch / "sample",
                        "--posts", str(POSTS)], check=True, capture_output=True)
        theater = scratch / "sample/terrdata/sorrelund"
        print("| posts | distinct tiles | picture | rasterizer, ms | vardenix-cli render, ms "
              "| ratio | before, ms | start to end, theirs and ours, ms "
              "| bytes, theirs and ours |")
        print("|---|---|---|---|---|---|---|---|---|")
        for zoom in (1, 5, 20):
            side = GRID * zoom
            left = bottom = (POSTS - side) // 2
            path, distinct = write_map(scratch / f"map {zoom}",
                                       tile_numbers(theater, left, bottom, side))
            for kind in ("bmp", "png"):
                theirs, ours = scratch / f"theirs.{kind}", scratch / f"ours.{kind}"
                view = ["--theater", theater, "--x", str(left), "--y", str(bottom), "--zoom",
                        str(zoom), "--grid", str(GRID), "--tile-pixels", str(CELL)]
                other, own, *before = medians(
                    [[RASTERIZER, "--no-smoothing", "--size", str(GRID * CELL), path, theirs]] +
                    [[programs / "vardenix-cli", "render", ours, *view]] +
                    [[program, "render", scratch / f"before.{kind}", *view]
                     for program in ours_before])
                if picture_side(theirs) != picture_side(ours):
                    sys.exit(f"{picture_side(theirs)} pixels a side against "
                             f"{picture_side(ours)}")
                print(f"| {side * side} | {distinct} | {kind} | {other.of_processor():.0f} "
                      f"| {own.of_processor():.0f} "
                      f"| {own.of_processor() / other.of_processor():.2f} "
                      f"| {before[0].of_processor() if before else float('nan'):.0f} "
                      f"| {other.of_wall():.0f} and {own.of_wall():.0f} "
                      f"| {theirs.stat().st_size >> 10} and {ours.stat().st_size >> 10} KiB |")


main()
