# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""The table of faults, and their sum."""
import os

WIDTH = 120


def code(text, other):
    """A line of source in a cell. What is long is cut to the part that differs from the other."""
    first = max(0, min(len(os.path.commonprefix([text, other])) - WIDTH // 2, len(text) - WIDTH))
    cut = "…" * (first > 0) + text[first:first + WIDTH] + "…" * (len(text) > first + WIDTH)
    return "`" + cut.replace("|", "\\|") + "`" if cut else "nothing"


def row(fault):
    noticed = fault["noticed"]
    if not noticed:
        reach = f"{fault['reaching']} tests reach it" if fault["reaching"] else "no test reaches it"
        noticed = f"NOT NOTICED, {reach}"
    where = f"{fault['file'].removeprefix('src/')}:{fault['line']}"
    before, after = code(fault["before"], fault["after"]), code(fault["after"], fault["before"])
    kind = fault["kind"].replace("|", "\\|")
    return f"| {fault['number']} | {where} | {kind} | {before} | {after} | {noticed} |"


def report(state):
    faults = state["faults"]
    noticed = sum(1 for fault in faults if fault["noticed"])
    lines = ["| | where | kind | before | after | noticed by |", "|---|---|---|---|---|---|"]
    lines += [row(fault) for fault in faults]
    lines += ["", f"{noticed} of {len(faults)} noticed; {state['rejected']} more did not compile."]
    lines += [f"Left out, since it fails without a fault: {name}"
              for name, test in state["tests"].items() if not test["passes"]]
    lines += [f"Fault {fault['number']}: {name} failed once, but not again."
              for fault in faults for name in fault["unconfirmed"]]
    return "\n".join(lines) + "\n"
