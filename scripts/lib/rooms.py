#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Compares the includes and QML imports of src/ with the table of folders in docs/architecture.md:
each folder includes what its row lists, all of which comes above it, and nothing else. A folder
without a row belongs to the nearest one above it that has one."""
import pathlib
import re
import sys

ROW = re.compile(r"^\| `src/(\S+)/` \|.*\| ([^|]+) \|$", re.MULTILINE)
INCLUDE = re.compile(r'^#include "([^"]+)/[^"/]+"', re.MULTILINE)
IMPORT = re.compile(r"^import (Vellumo\.\w+)", re.MULTILINE)
MODULE = re.compile(r"URI (Vellumo\.\w+)")

rows = dict(ROW.findall(pathlib.Path("docs/architecture.md").read_text()))
order = list(rows)
faults = []


def room_of(folder):
    while folder not in rows and "/" in folder:
        folder = folder.rsplit("/", 1)[0]
    return folder


modules = {}
for listing in pathlib.Path("src").rglob("CMakeLists.txt"):
    for module in MODULE.findall(listing.read_text()):
        modules[module] = room_of(str(listing.parent.relative_to("src")))

used = {}  # (room, included room): an example
for source in sorted(pathlib.Path("src").rglob("*")):
    if source.suffix not in (".h", ".cpp", ".qml") or source.parent == pathlib.Path("src"):
        continue
    room = room_of(str(source.parent.relative_to("src")))
    if room not in rows:
        faults.append(f"{source}: its folder has no row in docs/architecture.md")
        continue
    text = source.read_text()
    for target in map(room_of, INCLUDE.findall(text)):
        used.setdefault((room, target), source)
    for module in IMPORT.findall(text):
        used.setdefault((room, modules.get(module, module)), source)

for room, listed in rows.items():
    allowed = order if listed == "all" else re.findall(r"`(\S+)/`", listed)
    for target in allowed:
        if target not in rows:
            faults.append(f"src/{room}/: the table lists {target}/, which has no row")
        elif listed != "all" and order.index(target) >= order.index(room):
            faults.append(f"src/{room}/: {target}/ does not come above it in the table")
        elif listed != "all" and (room, target) not in used:
            faults.append(f"src/{room}/: the table lists {target}/, which nothing includes")
    for (user, target), source in used.items():
        if user == room and target != room and target not in allowed:
            faults.append(f"{source}: includes {target}/, which the table does not list")

if not rows:
    faults.append("docs/architecture.md: no table of folders")
print("\n".join(faults), end="\n" if faults else "")
sys.exit(bool(faults))
