#!/usr/bin/env python3
"""What must not stand in the project: words.py (in the root of the project)

The texts of this project are about this system. They do not point at places of a machine that their reader
does not have, and nothing is left over that says "to be done". Looked at are all tracked text files,
their names, and the messages of all commits.
"""
import re
import subprocess
import sys

SELF = "scripts/checks/words.py"
ELSEWHERE = [
    r"(?<![\w./])/(?:root|Users)/|(?<![\w./])/home/(?!user/)",
    r"(?<![\w./])/tmp/(?!\.|runtime)[\w-]+/",
]
LEFT_OVER = [
    r"\b(TODO|FIXME|HACK)\b|\bXXX:",
    r"\bDISABLED_\w+",
]
EVERYWHERE = re.compile("|".join(ELSEWHERE), re.IGNORECASE)
IN_FILES = re.compile("|".join(LEFT_OVER))


def git(*arguments):
    return subprocess.run(["git", *arguments], check=True, capture_output=True, text=True, errors="replace").stdout


def in_files():
    for name in git("ls-files").splitlines():
        if EVERYWHERE.search(name):
            yield f"{name}: the name itself"
        if name == SELF or name.endswith(".svg"):
            continue
        try:
            with open(name, encoding="utf-8") as file:
                lines = file.read().splitlines()
        except (UnicodeDecodeError, FileNotFoundError):
            continue  # no text, or deleted and not yet committed
        for number, line in enumerate(lines, 1):
            if EVERYWHERE.search(line) or IN_FILES.search(line):
                yield f"{name}:{number}: {line.strip()[:120]}"


def in_messages():
    for entry in git("log", "--format=%h%x09%s%x09%b%x00").split("\0"):
        if EVERYWHERE.search(entry):
            yield "commit " + " ".join(entry.split())[:160]


def main():
    found = [*in_files(), *in_messages()]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
