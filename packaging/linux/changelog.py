#!/usr/bin/env python3
"""changelog.py CHANGELOG.md: the change log in the form that Debian's packages have."""
import re
import sys
import textwrap
from datetime import datetime, timezone
from email.utils import format_datetime

CHAPTER = re.compile(r"^## ([0-9.]+), ([0-9-]+)\n(.*?)(?=^## |\Z)", re.M | re.S)

for version, day, text in CHAPTER.findall(open(sys.argv[1], encoding="utf-8").read()):
    entries = re.split(r"^\* ", text, flags=re.M)[1:]
    at = datetime.strptime(day, "%Y-%m-%d").replace(hour=12, tzinfo=timezone.utc)
    print(f"vardenix ({version}) stable; urgency=medium\n")
    for entry in entries:
        print(textwrap.fill(" ".join(entry.split()), 78, initial_indent="  * ", subsequent_indent="    "))
    print(f"\n -- The makers of Vardenix <makers@vardenix.example>  {format_datetime(at)}\n")
