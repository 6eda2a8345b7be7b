# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""scripts/mutate: draws faults, runs the tests against each, and reports which are noticed."""
import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shutil
import time

import tests
import tree
from draw import Draw
from report import report


class Session:
    """A draw and its results, saved after each step."""

    def __init__(self, arguments):
        self.arguments = arguments
        self.began = time.monotonic()
        digest = hashlib.sha256(f"{arguments.only}\0{arguments.tests}".encode())
        for name in tree.source_files():
            if name.startswith(("src/", "tests/", "tools/", "cmake/")):
                digest.update(name.encode() + b"\0" + pathlib.Path(name).read_bytes())
        self.path = pathlib.Path(f"build/mutate/{arguments.seed}-{arguments.count}.json")
        self.state = {"sources": digest.hexdigest(), "faults": [], "rejected": 0, "tests": {}}
        if self.path.exists():
            state = json.loads(self.path.read_text())
            if state["sources"] == self.state["sources"]:
                self.state = state
            else:
                print("Sources or options have changed: drawing again.")

    def save(self):
        self.path.parent.mkdir(parents=True, exist_ok=True)
        new = self.path.with_suffix(".new")
        new.write_text(json.dumps(self.state, indent=1))
        os.replace(new, self.path)

    def is_late(self):
        minutes = self.arguments.minutes
        return minutes and time.monotonic() - self.began > minutes * 60

    def pause_if_late(self):
        if self.is_late():
            print("Paused; the same command continues.", flush=True)
            raise SystemExit(75)

    def draw(self):
        """Draws until so many faults compile."""
        draw, faults, bad = Draw(self.arguments.seed, self.arguments.only), [], []
        while len(faults) < self.arguments.count:
            while len(faults) < self.arguments.count:
                faults.append(draw.next(faults + bad))
                faults[-1]["number"] = len(faults) + len(bad)
            lines = tree.write(faults)
            tree.configure()
            rejected = tree.uncompilable(faults, lines)
            bad += [fault for fault in faults if fault["number"] in rejected]
            faults = [fault for fault in faults if fault["number"] not in rejected]
            print(f"{len(faults)} of {self.arguments.count} faults compile", flush=True)
        for number, fault in enumerate(faults, 1):
            fault["number"] = number
        self.state.update(faults=faults, rejected=len(bad))

    def build(self):
        if not self.state["faults"]:
            self.draw()
            self.save()
        tree.write(self.state["faults"])
        tree.configure()
        self.pause_if_late()
        tree.build()
        if not self.state["tests"]:
            self.state["tests"] = tests.listed(self.arguments.tests)
            self.save()

    def learn_reach(self):
        """Runs each test without a fault, to learn its time and the places that it executes."""
        known = self.state["tests"]
        for tries, at_once in enumerate((self.arguments.jobs, 1)):   # failed tests run again
            todo = [name for name, test in known.items()
                    if not test.get("passes") and test.get("tries", 0) == tries]
            with concurrent.futures.ThreadPoolExecutor(at_once) as pool:
                for name, learnt in zip(todo, pool.map(self.learn, todo)):
                    if learnt:
                        known[name].update(learnt)
                        self.save()
                        print(f"{name}: {learnt['seconds']:.1f} s, {len(learnt['reached'])} faults"
                              + ("" if learnt["passes"] else ", FAILS"), flush=True)
            self.pause_if_late()

    def learn(self, name):
        if self.is_late():
            return None
        reached = (self.path.parent / "reached" / name).resolve()
        shutil.rmtree(reached, ignore_errors=True)
        reached.mkdir(parents=True)
        passes, seconds = tests.run(name, 600, reached=reached)
        return {"passes": passes, "seconds": seconds,
                "tries": self.state["tests"][name].get("tries", 0) + 1,
                "reached": sorted(int(file.name) for file in reached.iterdir())}

    def order(self, fault):
        """Returns the tests that reach a fault, quick and near ones first."""
        room = fault["file"].removeprefix("src/").rpartition("/")[0]

        def cost(name):
            test = self.state["tests"][name]
            distance = 1 if test["folder"] == room else \
                2 if test["folder"].partition("/")[0] == room.partition("/")[0] else 4
            return distance * test["seconds"]

        return sorted((name for name, test in self.state["tests"].items()
                       if test["passes"] and fault["number"] in test["reached"]), key=cost)

    def try_fault(self, fault):
        order = self.order(fault)
        fault["reaching"], fault["unconfirmed"] = len(order), []
        caps = {name: 3 * self.state["tests"][name]["seconds"] + 10 for name in order}
        while order:
            failed, passed = tests.first_failure(order, caps, fault["number"], self.arguments.jobs)
            for name in failed:
                # a test beside others may fail for another reason
                if not tests.run(name, caps[name], fault["number"])[0]:
                    return name
                fault["unconfirmed"].append(name)
            order = [name for name in order if name not in failed + passed]
        return None

    def try_faults(self):
        def cost(fault):
            return sum(self.state["tests"][name]["seconds"] for name in self.order(fault))

        for fault in sorted(self.state["faults"], key=cost):
            if "noticed" in fault:
                continue
            self.pause_if_late()
            began = time.monotonic()
            fault["noticed"] = self.try_fault(fault)
            self.save()
            print(f"{fault['number']} {fault['file']}:{fault['line']}: "
                  f"{fault['noticed'] or 'NOT NOTICED'} ({time.monotonic() - began:.0f} s)",
                  flush=True)


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__)
    parser.add_argument("seed", type=int)
    parser.add_argument("count", type=int)
    parser.add_argument("--only", default="", metavar="REGEX", help="draw in these sources alone")
    parser.add_argument("--tests", default=".", metavar="REGEX", help="run these tests alone")
    # tests wait more than they compute
    parser.add_argument("--jobs", type=int, default=2 * os.cpu_count(), help="tests at once")
    parser.add_argument("--minutes", type=float, help="pause then; the same command continues")
    parser.add_argument("--keep", action="store_true", help="keep the built copy for another draw")
    session = Session(parser.parse_args())
    session.build()
    session.learn_reach()
    session.try_faults()
    text = report(session.state)
    session.path.with_suffix(".md").write_text(text)
    print(text)
    if not session.arguments.keep:
        shutil.rmtree(tree.COPY)
        session.path.unlink()


main()
