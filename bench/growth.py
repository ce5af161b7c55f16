#!/usr/bin/env python3
"""What the size of a theater costs: processor time and most memory of vardenix-cli on theaters of
growing posts and of growing catalogues, and what level 2 takes by itself.

usage: growth.py BIN      the folder with vardenix-cli
"""
import os
import pathlib
import random
import statistics
import struct
import subprocess
import sys
import tempfile

POSTS = (256, 512, 1024, 2048, 4096, 8192)  # a side
TILES = (100, 1000, 10000)
ROUNDS = 5
SIDE = 32  # pixels of a tile


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


def tile_picture(seed):
    header = struct.pack("<4sIIIIIII44xIIIIIIIII16x", b"DDS ", 124, 0x81007, SIDE, SIDE,
                         SIDE * SIDE // 2, 0, 0, 32, 4, 0x31545844, 0, 0, 0, 0, 0, 0x1000)
    return header[:128] + random.Random(seed).randbytes(SIDE * SIDE // 2)


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


def make_theater(folder, posts, tiles):
    terrain, pictures = folder / "terrain", folder / "texture/texture"
    terrain.mkdir(parents=True)
    pictures.mkdir(parents=True)
    write_level(terrain, posts, tiles)
    (terrain / "theater.map").write_bytes(bytes(1112))
    (folder / "texture/texture.bin").write_bytes(catalogue(tiles))
    for tile in range(tiles):
        (pictures / f"T{tile:05d}.dds").write_bytes(tile_picture(tile % 64))
    return folder


def run(command):
    """Processor milliseconds and the most memory, MiB."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{command} ended with {status}")
    return (used.ru_utime + used.ru_stime) * 1000, used.ru_maxrss / 1024


def row(program, theater, posts, tiles):
    commands = {"get": ["get", "5", "7"], "info": ["info"],
                "render": ["render", theater / "view.bmp", "--zoom", "20", "--grid", "10"]}
    cells = []
    for command in commands.values():
        taken = [run([program, *command, "--theater", theater]) for _ in range(ROUNDS)]
        cells.append(f"{statistics.median(ms for ms, _ in taken):.1f} ms, "
                     f"{max(mib for _, mib in taken):.0f} MiB")
    print(f"| {posts} | {tiles} | {posts * posts * 9 / 2**20:.0f} MiB | {' | '.join(cells)} |",
          flush=True)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    program = pathlib.Path(sys.argv[1]).resolve() / "vardenix-cli"
    print("| posts a side | tiles | level 2 | get | info | render, 40,000 posts |")
    print("|---|---|---|---|---|---|")
    for posts, tiles in [(posts, 1000) for posts in POSTS] + [(1024, tiles) for tiles in TILES]:
        with tempfile.TemporaryDirectory(prefix="vardenix bench ") as scratch:
            row(program, make_theater(pathlib.Path(scratch) / "theater", posts, tiles), posts,
                tiles)


main()
