#!/usr/bin/env python3
"""Counts the cases of a run of whole test executables: cases.py BUILD-FOLDER

Reads what ctest reported (BUILD-FOLDER/tests.xml) and what each executable reported of its own cases
(BUILD-FOLDER/reports). Prints "PASSED FAILED SKIPPED" on standard output; on standard error what the executables said of
cases that failed. An executable that ended badly though none of its cases failed (a leak found at its end, a crash)
counts as one failed case more; one that left no report as one failed case, and the cases it had done are not counted.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

WHOLE = re.compile(r"\.\d+of\d+$")


def cases(report):
    """(passed, failed, skipped) of a report that GoogleTest wrote."""
    passed = failed = skipped = 0
    for case in ElementTree.parse(report).getroot().iter("testcase"):
        if case.find("failure") is not None:
            failed += 1
        elif case.get("result") == "completed" and case.get("status") == "run":
            passed += 1
        else:
            skipped += 1
    return passed, failed, skipped


def of_entry(entry, reports):
    """(passed, failed, skipped) of one entry of ctest."""
    name, status = entry.get("name"), entry.get("status")
    if not WHOLE.search(name):
        return (status == "run", status == "fail", status not in ("run", "fail"))
    try:
        passed, failed, skipped = cases(reports / f"{name}.xml")
    except (OSError, ElementTree.ParseError):
        return 0, 1, 0
    return passed, max(failed, int(status != "run")), skipped


def unfinished(text):
    """The lines of a run without those of cases that passed or were skipped."""
    kept, case = [], []
    for line in text.splitlines():
        if line.startswith("[ RUN      ] "):
            kept += case
            case = [line]
        elif line.startswith(("[       OK ] ", "[  SKIPPED ] ")) and case:
            case = []
        elif line.startswith("[---"):
            continue
        else:
            (case if case else kept).append(line)
    return kept + case


def main(folder):
    sums = [0, 0, 0]
    for entry in ElementTree.parse(folder / "tests.xml").getroot().iter("testcase"):
        counted = of_entry(entry, folder / "reports")
        sums = [total + more for total, more in zip(sums, counted)]
        if counted[1]:
            text = entry.findtext("system-out") or ""
            print("\n".join([f"{entry.get('name')}:", *unfinished(text)]), file=sys.stderr)
    print(*map(int, sums))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
