# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""The copy of the sources with the faults, and its build."""
import pathlib
import re
import shutil
import subprocess

COPY = pathlib.Path("build/mutate/tree")
BUILD = COPY / "build/dev"

# Asked by each fault whether it is turned on. Creates an empty file named by the fault at once, so
# that a killed process has recorded it as well.
SWITCH = """#pragma once
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>
namespace vellumo_mutate {
inline bool isOn(int number)
{
    static const char *const chosen = std::getenv("VELLUMO_FAULT");
    static const int fault = chosen ? std::atoi(chosen) : 0;
    static const char *const folder = std::getenv("VELLUMO_FAULTS_REACHED");
    static std::atomic<bool> reached[10000];
    if (folder && !reached[number].exchange(true)) {
        const int saved = errno;
        const std::string name = std::string(folder) + '/' + std::to_string(number);
        const int file = ::open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
        if (file >= 0)
            ::close(file);
        errno = saved;
    }
    return number == fault;
}
}
"""
# Warnings that a fault causes are no reason to reject it.
INCLUDE = '#include "mutate_switch.h"\n' + "".join(
    f'#pragma GCC diagnostic ignored "-W{name}"\n' for name in
    ("conversion", "float-conversion", "parentheses", "implicit-fallthrough", "bool-compare",
     "int-in-bool-context", "type-limits", "unused-value", "maybe-uninitialized", "logical-op"))


def source_files():
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            check=True, capture_output=True, text=True).stdout.split("\0")
    return sorted(name for name in listed if name and pathlib.Path(name).is_file())


def write_changed(path, text):
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def write(faults):
    """Updates the copy to the present sources with these faults. Does not touch unchanged files, so
    that they are not built again. Returns the file and lines of each fault in the copy."""
    lines, mutated = {}, {}
    for fault in faults:
        mutated.setdefault(fault["file"], []).append(fault)
    for name in source_files():
        source, copy = pathlib.Path(name), COPY / name
        copy.parent.mkdir(parents=True, exist_ok=True)
        if name not in mutated:
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                shutil.copy(source, copy)
            continue
        original, text, at = source.read_text(), INCLUDE, 0
        for fault in sorted(mutated[name], key=lambda fault: fault["start"]):
            text += original[at:fault["start"]]
            first = text.count("\n") + 1
            text += fault["text"].replace("@", f"::vellumo_mutate::isOn({fault['number']})")
            lines[fault["number"]] = (name, first, text.count("\n") + 1)
            at = fault["end"]
        write_changed(copy, text + original[at:])
    write_changed(COPY / "src/mutate_switch.h", SWITCH)
    return lines


def configure():
    subprocess.run(
        ["cmake", "--preset", "dev", "--log-level=WARNING", "-DVELLUMO_BUILD_BENCHES=OFF"],
        check=True, cwd=COPY, stdout=subprocess.DEVNULL)


def uncompilable(faults, lines):
    """Compiles the sources with faults; returns the numbers of those that the compiler rejects."""
    files = sorted({fault["file"] for fault in faults})
    run = subprocess.run(["ninja", "-C", str(BUILD.resolve()), "-k", "0"]
                         + [f"{(COPY / name).resolve()}^" for name in files],
                         capture_output=True, text=True, check=False)
    if run.returncode == 0:
        return set()
    named = set(re.findall(r"/(src/[\w./-]+\.cpp):(\d+)[:,]", run.stdout))
    rejected = {number for number, (name, first, last) in lines.items()
                if any(name == file and first <= int(line) <= last for file, line in named)}
    if not rejected:
        failed = set(re.findall(r"^FAILED: \S*?\.dir/(\S+)\.o", run.stdout, re.MULTILINE))
        rejected = {number for number, (name, _, _) in lines.items()
                    if any(name.endswith("/" + file) for file in failed)}
    if not rejected:
        raise SystemExit(run.stdout[-4000:] + run.stderr)
    return rejected


def build():
    run = subprocess.run(["cmake", "--build", "--preset", "dev"], cwd=COPY, capture_output=True,
                         text=True, check=False)
    if run.returncode != 0:
        raise SystemExit(run.stdout[-4000:] + run.stderr)
