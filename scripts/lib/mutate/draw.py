# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Draws places for faults, each file by its length."""
import collections
import pathlib
import random
import re

import places
import tree

# How often each kind is drawn, where a file has it.
WEIGHTS = {"call left out": 20, "assignment left out": 10, "return left out": 12,
           "continue left out": 2, "break left out": 1, "condition negated": 8,
           "comparison negated": 5, "! left out": 5, "&& and || exchanged": 10,
           "boundary moved": 10, "second of two taken": 7, "true and false exchanged": 5,
           "constant doubled": 4, "constant zeroed": 3, "0 made 1": 2}


class Draw:
    """Draws places, always the same ones from the same sources and seed."""

    def __init__(self, seed, only):
        self.random = random.Random(seed)
        self.files, self.lengths = {}, []
        for name in tree.source_files():
            if re.match(r"src/(?!platform/fake/).*\.cpp$", name) and re.search(only, name):
                source = pathlib.Path(name).read_text()
                found = collections.defaultdict(list)
                for place in places.places_of(source):
                    found[place.kind].append(place)
                if found:
                    self.files[name] = (source, found)
                    self.lengths.append(len(re.findall(r"^ *[^/\s]", source, re.MULTILINE)))

    def next(self, faults):
        """Returns a fault that overlaps none of these."""
        for _ in range(1000):
            name = self.random.choices(list(self.files), self.lengths)[0]
            source, found = self.files[name]
            kind = self.random.choices(list(found), [WEIGHTS[kind] for kind in found])[0]
            place = self.random.choice(found[kind])
            first = source.rfind("\n", 0, place.start) + 1
            last = source.find("\n", place.end)
            if any(fault["file"] == name and fault["start"] < last and first < fault["end"]
                   for fault in faults):
                continue
            after = source[first:place.start] + place.after + source[place.end:last]
            return {"file": name, "line": source.count("\n", 0, place.start) + 1, "kind": kind,
                    "start": place.start, "end": place.end, "text": place.text,
                    "before": " ".join(source[first:last].split()),
                    "after": " ".join(after.split())}
        raise SystemExit("There are not so many places.")
