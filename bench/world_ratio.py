#!/usr/bin/env python3
"""Heights of a theater of 1024 posts from a map of 10,000 by 10,000 pixels, side by side with what
the field's own program takes for the same: the least of some turns of each, and the most memory that
a process of each took.

    bench/world_ratio.py BIN [FOLDER]

BIN holds vardenix-cli, make_sample_theater and make_sample_world. What FOLDER (build/world-ratio)
holds already is not made again."""
import os
import subprocess
import sys
import time

TURNS = 3
BUDGET_RATIO = 1.5
BUDGET_MEMORY = 600  # MiB
PLACE = {"left": 300000, "bottom": 4150000, "post": 250, "system": "EPSG:32624"}
POSTS = 1024


def run(line, **more):
    begin = time.monotonic()
    process = subprocess.Popen(line, stdout=subprocess.DEVNULL, **more)
    _, status, used = os.wait4(process.pid, 0)
    if status:
        sys.exit(f"{line[0]} ended with {status}")
    return time.monotonic() - begin, used.ru_maxrss / 1024


def main():
    binaries = sys.argv[1]
    folder = os.path.abspath((sys.argv + ["build/world-ratio"])[2])
    cli = f"{binaries}/vardenix-cli"
    theater = f"{folder}/install/terrdata/sorrelund"
    big = f"{folder}/big.tif"
    if not os.path.exists(theater):
        run([f"{binaries}/make_sample_theater", f"{folder}/install", "--posts", str(POSTS)])
    if not os.path.exists(big):
        run([f"{binaries}/make_sample_world", f"{folder}/world"])
        run(["gdal_translate", "-q", "-outsize", "10000", "10000", "-r", "bilinear",
             f"{folder}/world/elevations.tif", big])
    user = dict(os.environ, XDG_DATA_HOME=f"{folder}/data")
    run([cli, "place", "set", "--system", PLACE["system"], "--left", str(PLACE["left"]),
         "--bottom", str(PLACE["bottom"]), "--post", str(PLACE["post"]), "--theater", theater],
        env=user)
    span = PLACE["post"] * POSTS
    edges = [PLACE["left"], PLACE["bottom"], PLACE["left"] + span, PLACE["bottom"] + span]
    for how in ("bilinear", "cubic", "average"):
        ours = [cli, "heights", "import", big, "--resample", how, "--theater", theater]
        theirs = ["gdalwarp", "-q", "-overwrite", "-t_srs", PLACE["system"], "-te",
                  *map(str, edges), "-ts", str(POSTS), str(POSTS), "-r", how, "-ot", "Float32",
                  big, f"{folder}/warped.tif"]
        pairs = [(run(theirs), run(ours, env=user)) for _ in range(TURNS)]
        warp = min(pair[0][0] for pair in pairs)
        import_ = min(pair[1][0] for pair in pairs)
        memory = max(pair[1][1] for pair in pairs)
        fits = import_ <= BUDGET_RATIO * warp and memory <= BUDGET_MEMORY
        print(f"{how}: gdalwarp {warp:.2f} s, heights import {import_:.2f} s, ratio "
              f"{import_ / warp:.2f}, {memory:.0f} MiB{'' if fits else '  beyond the budget'}")


main()
