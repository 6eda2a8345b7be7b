# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Runs tests of the copy, each in a home and a temporary folder of its own."""
import concurrent.futures
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time

import tree

# What Qt Test prints, long before the test ends.
FAILURE = re.compile(rb"^\d+: FAIL!", re.MULTILINE)


def listed(pattern):
    """Returns all tests and the folder of each."""
    about = json.loads(subprocess.run(
        ["ctest", "--test-dir", str(tree.BUILD), "-R", pattern, "--show-only=json-v1"],
        check=True, capture_output=True, text=True).stdout)
    graph, tests = about["backtraceGraph"], {}
    for test in about["tests"]:
        node, folder = test["backtrace"], ""
        while node is not None:   # the outermost file below tests/ that adds it
            entry = graph["nodes"][node]
            found = re.search(r"/tests/(.*)/CMakeLists\.txt$", graph["files"][entry["file"]])
            folder = found[1] if found else folder
            node = entry.get("parent")
        tests[test["name"]] = {"folder": folder}
    return tests


def end(process):
    """Ends a test and what it started. A private desktop cleans up when it is terminated."""
    for sent, patience in ((signal.SIGTERM, 6), (signal.SIGKILL, 2)):
        deadline = time.monotonic() + patience
        while time.monotonic() < deadline:
            try:
                os.killpg(process.pid, sent if sent else 0)
            except ProcessLookupError:
                return
            sent = 0
            process.poll()
            time.sleep(0.05)


def run(name, cap, fault=0, reached=None, stop=None):
    """Runs one test. Returns whether it passed, None if it was stopped, and the seconds it took."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="vellumo-mutate-"))
    (folder / "home").mkdir()
    # ctest writes its logs to the current folder, so each run has its own
    (folder / "CTestTestfile.cmake").write_text(f'subdirs("{tree.BUILD.resolve()}")\n')
    environment = {key: value for key, value in os.environ.items() if not key.startswith("XDG_")}
    environment.update(HOME=str(folder / "home"), TMPDIR=str(folder), VELLUMO_FAULT=str(fault))
    if reached:
        environment["VELLUMO_FAULTS_REACHED"] = str(reached)
    began, passed = time.monotonic(), False
    with open(folder / "output", "wb") as output:
        process = subprocess.Popen(
            ["ctest", "-V", "--no-tests=error", "-R", f"^{re.escape(name)}$"], cwd=folder,
            env=environment, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
            start_new_session=True)
    while time.monotonic() - began < cap:
        if process.poll() is not None:
            passed = process.returncode == 0
            break
        if stop and stop.is_set():
            passed = None
            break
        if FAILURE.search((folder / "output").read_bytes()):
            break
        time.sleep(0.02 if time.monotonic() - began < 1 else 0.2)
    seconds = time.monotonic() - began
    end(process)
    shutil.rmtree(folder, ignore_errors=True)
    return passed, seconds


def first_failure(names, caps, fault, jobs):
    """Runs tests in order, some at once, until one fails. Returns those that failed and passed."""
    stop, passed, failed = threading.Event(), [], []

    def one(name):
        if not stop.is_set():
            good, _ = run(name, caps[name], fault, stop=stop)
            if good:
                passed.append(name)
            elif good is False:
                failed.append(name)
                stop.set()

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        list(pool.map(one, names))
    return failed, passed
