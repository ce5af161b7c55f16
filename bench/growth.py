#!/usr/bin/env python3
"""What the size of a theater costs: processor time and most memory of vardenix-cli on theaters of
growing posts and of growing catalogues, and what level 2 takes by itself. The last row is a land of
2,000 large tiles, opened and painted with 40,000 posts in view.

usage: growth.py BIN [OLD]      folders with vardenix-cli, of now and of before; both take turns
"""
import os
import pathlib
import random
import resource
import statistics
import struct
import subprocess
import sys
import tempfile

POSTS = (256, 512, 1024, 2048, 4096, 8192)  # a side
TILES = (100, 1000, 10000)
ROUNDS = 5
SMALL, LARGE = 32, 512  # pixels of a tile


def catalogue(tiles):
    """A Texture.bin whose sets have 16 tiles, each with an area and a path."""
    sets = -(-tiles // 16)
    parts = [struct.pack("<ii", sets, tiles)]
    for first in range(0, tiles, 16):
        members = range(first, min(first + 16, tiles))
        parts.append(struct.pack("<iB", len(members), 4))
        for tile in members:
            parts.append(struct.pack("<20sii", b"T%05d.PCX" % tile, 1, 1))
            parts.append(struct.pack("<ifff", 7, 400, 1640, 1640))
            parts.append(struct.pack("<ifffff", 10, 100, 0, 1640, 3280, 1640))
    return b"".join(parts)


def tile_picture(seed, side):
    header = struct.pack("<4sIIIIIII44xIIIIIIIII16x", b"DDS ", 124, 0x81007, side, side,
                         side * side // 2, 0, 0, 32, 4, 0x31545844, 0, 0, 0, 0, 0, 0x1000)
    return header[:128] + random.Random(seed).randbytes(side * side // 2)


def write_level(terrain, posts, tiles):
    """Every segment has a block of its own, one of 64 kinds."""
    rand = random.Random(posts)
    blocks = [b"".join(struct.pack("<ihBBB", rand.randrange(tiles), rand.randrange(3000),
                                   rand.randrange(256), 0, 0) for _ in range(256))
              for _ in range(64)]
    segments = (posts // 16) ** 2
    with open(terrain / "theater.L2", "wb") as level:
        for begin in range(0, segments, 1024):
            level.write(b"".join(rand.choices(blocks, k=min(1024, segments - begin))))
    (terrain / "theater.O2").write_bytes(
        struct.pack(f"<{segments}i", *range(0, segments * 2304, 2304)))


def make_theater(folder, posts, tiles, side):
    terrain, pictures = folder / "terrain", folder / "texture/texture"
    terrain.mkdir(parents=True)
    pictures.mkdir(parents=True)
    write_level(terrain, posts, tiles)
    (terrain / "theater.map").write_bytes(bytes(1112))
    (folder / "texture/texture.bin").write_bytes(catalogue(tiles))
    for tile in range(tiles):
        (pictures / f"T{tile:05d}.dds").write_bytes(tile_picture(tile % 64, side))
    return folder


def run(command):
    """Processor milliseconds and the most memory, MiB."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{[str(word) for word in command]} ended with {status}")
    return (used.ru_utime + used.ru_stime) * 1000, used.ru_maxrss / 1024


def cell(programs, arguments):
    """The median of each program's milliseconds, and the most memory of the first."""
    taken = [[run([program, *arguments]) for program in programs] for _ in range(ROUNDS)]
    times = [f"{statistics.median(each[i][0] for each in taken):.1f}"
             for i in range(len(programs))]
    # A new process counts with what its parent had.
    own = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    most = max(each[0][1] for each in taken)
    memory = f"{most:.0f} MiB" if most > own * 1.1 else f"< {own * 1.1:.0f} MiB"
    return " before, ".join(reversed(times)) + f" ms, {memory}"


def row(programs, theater, posts, tiles, side):
    # Holes read as zeros, and take no room on the disk.
    heights = theater / "heights.elv"
    heights.touch()
    os.truncate(heights, (4 * posts) ** 2 * 2)
    commands = [["get", "5", "7"], ["elevation", "get", heights, "5", "7"], ["info"],
                ["render", theater / "view.bmp", "--zoom", "20", "--grid", "10"]]
    cells = [cell(programs, [*command, "--theater", theater]) for command in commands]
    print(f"| {posts} | {tiles} of {side} | {posts * posts * 9 / 2**20:.0f} MiB | "
          f"{' | '.join(cells)} |", flush=True)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    programs = [pathlib.Path(folder).resolve() / "vardenix-cli" for folder in sys.argv[1:]]
    print("| posts a side | tiles, pixels | level 2 | get | elevation get | info | "
          "render, 40,000 posts |")
    print("|---|---|---|---|---|---|---|")
    sizes = ([(posts, 1000, SMALL) for posts in POSTS] +
             [(1024, tiles, SMALL) for tiles in TILES] + [(2048, 2000, LARGE)])
    for size in sizes:
        with tempfile.TemporaryDirectory(prefix="vardenix bench ") as scratch:
            row(programs, make_theater(pathlib.Path(scratch) / "theater", *size), *size)


main()
