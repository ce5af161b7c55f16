#!/usr/bin/env python3
"""floors.py: includes of src/ that look up, or at a neighbour on the same floor; exit 1 when there are any."""
import re
import sys
from pathlib import Path

LOGIC = [("companion", "texts"), "files", "platform", ("loader", "pictures/fast"), "pictures",
         "levels", "catalogue", "program", "mapview",
         ("workspace", "features", "search", "bineditor", "mapeditor", "builder", "updater")]
FLOORS = {room: floor for floor, rooms in enumerate(LOGIC)
          for room in ([rooms] if isinstance(rooms, str) else rooms)}
# Windows that serve those of other rooms.
SHARED_WINDOWS = ("platform/windows", "mapview/windows")


def floor_of(room):
    if room in ("app", "cli", "cli/toolkit"):
        return len(LOGIC) + 2
    if room.endswith("/windows"):
        return len(LOGIC) + (room not in SHARED_WINDOWS)
    return FLOORS[room]


faults = 0
for file in sorted(Path("src").rglob("*.*")):
    if file.suffix not in (".h", ".cpp"):
        continue
    room = str(file.parent.relative_to("src"))
    for header in re.findall(r'#include "([^"]+)/[^/"]+"', file.read_text()):
        known = header in FLOORS or header.endswith("/windows") or header in ("app", "cli")
        below = known and floor_of(header) < floor_of(room)
        # A surface of mapview/windows stands on platform/windows.
        shared = header == "platform/windows" and room == "mapview/windows"
        if header != room and not below and not shared:
            print(f"{file} includes {header}, which does not lie below it")
            faults += 1
sys.exit(faults > 0)
