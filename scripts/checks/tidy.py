#!/usr/bin/env python3
"""clang-tidy over the sources: tidy.py BUILD-FOLDER [--all | --deep]

The folder must have been built: its compile database says how each file is compiled, its build log on which
headers it depends. A file that passed is not looked at again until it, one of those headers, or the checks
change; the memory of that is BUILD-FOLDER/tidy.

Without an option, the files that differ from branch main or include a header that does, with every check.
--all takes every file of src/ and leaves the path-sensitive analyzer out, which costs more than all other checks
together; --deep is --all with it.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys

TIDY = "clang-tidy-14"


def output(*command, cwd=None):
    return subprocess.run(command, check=True, capture_output=True, text=True, cwd=cwd).stdout


def compiled(build):
    """Source -> object, for the sources of this project."""
    root = pathlib.Path.cwd()
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        source = pathlib.Path(entry["directory"], entry["file"])
        if source.is_relative_to(root) and not source.is_relative_to(root / "build"):
            found[str(source.relative_to(root))] = entry["output"] if "output" in entry else object_of(entry)
    return found


def object_of(entry):
    words = entry["command"].split()
    return words[words.index("-o") + 1]


def headers(build):
    """Object -> the headers of this project that it was compiled from, as ninja remembers them."""
    root = pathlib.Path.cwd()
    found, current = {}, None
    for line in output("ninja", "-C", str(build), "-t", "deps").splitlines():
        if line and not line[0].isspace():
            current = found.setdefault(line.split(":")[0], set())
        elif line.strip() and current is not None:
            path = pathlib.Path(build, line.strip()).resolve()
            if path.is_relative_to(root) and not path.is_relative_to(root / "build"):
                current.add(str(path.relative_to(root)))
    return found


def changed():
    """Files that differ from where the working copy left branch main."""
    try:
        base = output("git", "merge-base", "HEAD", "main").strip()
    except subprocess.CalledProcessError:
        base = "HEAD"
    return set(output("git", "diff", "--name-only", base).split() +
               output("git", "ls-files", "--others", "--exclude-standard").split())


def configuration(source):
    """The .clang-tidy files in force for a source."""
    folders = [pathlib.Path(source).parent, *pathlib.Path(source).parents]
    return sorted({str(folder / ".clang-tidy") for folder in folders if (folder / ".clang-tidy").exists()})


def stamp(build, source, uses, options):
    """A file whose existence says that exactly this text passed exactly these checks."""
    digest = hashlib.sha256("\0".join(options).encode())
    for name in [source, *sorted(uses), *configuration(source)]:
        digest.update(name.encode() + b"\0" + pathlib.Path(name).read_bytes() + b"\0")
    return build / "tidy" / digest.hexdigest()


def check(build, options, source, mark):
    run = subprocess.run([TIDY, "-p", str(build), "--quiet", *options, source], capture_output=True, text=True)
    if run.returncode == 0:
        mark.touch()
    return run.returncode == 0, source, run.stdout


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    (build / "tidy").mkdir(exist_ok=True)
    uses = headers(build)
    everything = "--all" in sys.argv[2:] or "--deep" in sys.argv[2:]
    options = ["--checks=-clang-analyzer-*"] if "--all" in sys.argv[2:] else []
    chosen = None if everything else changed()
    todo = []
    for source, obj in compiled(build).items():
        needs = uses.get(obj, set())
        if source.startswith("src/") if everything else chosen & ({source} | needs):
            mark = stamp(build, source, needs, options)
            if not mark.exists():
                todo.append((source, mark))
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for passed, source, text in pool.map(lambda job: check(build, options, *job), todo):
            if not passed:
                failed = True
                print(f"{source}:\n{text}")
    print(f"clang-tidy: {len(todo)} files looked at", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
