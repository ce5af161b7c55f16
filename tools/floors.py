#!/usr/bin/env python3
"""floors.py: includes of src/ that look up, or at a neighbour on the same floor, and rooms whose links in
CMake are not what they include; exit 1 when there are any."""
import re
import sys
from collections import defaultdict
from pathlib import Path

LOGIC = [("companion", "texts"), "files", "platform", ("loader", "pictures/fast"), "pictures",
         "levels", "catalogue", "program", ("grounds", "mapview", "recovery"),
         ("workspace", "features", "search", "bineditor", "mapeditor", "builder", "updater", "world")]
FLOORS = {room: floor for floor, rooms in enumerate(LOGIC)
          for room in ([rooms] if isinstance(rooms, str) else rooms)}
# Windows that serve those of other rooms.
SHARED_WINDOWS = ("platform/windows", "mapview/windows")


def floor_of(room):
    if room in ("app", "cli", "cli/toolkit", "world/gdal"):
        return len(LOGIC) + 2
    if room.endswith("/windows"):
        return len(LOGIC) + (room not in SHARED_WINDOWS)
    return FLOORS[room]


def named_links():
    """The rooms that each room links, for what includes its headers and for itself alone."""
    links = {}
    for file in (Path("src/CMakeLists.txt"), Path("src/app/CMakeLists.txt"), Path("src/cli/CMakeLists.txt")):
        for words in re.findall(r"^house_folder\(([^)]*)\)", file.read_text(), re.M):
            room, *rest = words.split()
            kinds = {"LINKS": set(), "PRIVATE_LINKS": set(), "WITHOUT": set()}
            for word in rest:
                if word in kinds:
                    kind = kinds[word]
                else:
                    kind.add(word)
            links[room] = (kinds["LINKS"], kinds["PRIVATE_LINKS"])
    rooms = {room.replace("/", "_"): room for room in [*links, "companion"]}
    return {room: [{rooms[name] for name in kind if name in rooms} for kind in kinds]
            for room, kinds in links.items()}


faults = 0
included = defaultdict(lambda: (set(), set()))
for file in sorted(Path("src").rglob("*.*")):
    if file.suffix not in (".h", ".cpp"):
        continue
    room = str(file.parent.relative_to("src"))
    for header in re.findall(r'#include "([^"]+)/[^/"]+"', file.read_text()):
        known = header in FLOORS or header.endswith("/windows") or header in ("app", "cli")
        below = known and floor_of(header) < floor_of(room)
        # A surface of mapview/windows stands on platform/windows.
        shared = header == "platform/windows" and room == "mapview/windows"
        if header != room and file.name != "Main.cpp":
            included[room][file.suffix == ".cpp"].add(header)
        if header != room and not below and not shared:
            print(f"{file} includes {header}, which does not lie below it")
            faults += 1
for room, (public, private) in named_links().items():
    headers, files = included[room]
    for kind, named, wanted in (("LINKS", public, headers), ("PRIVATE_LINKS", private, files - headers)):
        if named != wanted:
            print(f"src/{room}: {kind} should be {' '.join(sorted(wanted))}; "
                  f"missing {sorted(wanted - named)}, too many {sorted(named - wanted)}")
            faults += 1
sys.exit(faults > 0)
