#!/usr/bin/env python3
"""Who may stand on whom, read from the sources: layers.py (in the root of the project)

cmake/Layers.cmake holds the table; the build enforces it by include paths and libraries. This looks at every
include of every file, the ones that no target compiles included, and at where Qt is used. A source with a header of
its own name includes that first of all, which shows with each build that the header stands alone.
"""
import pathlib
import re
import subprocess
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
SYSTEM_ONLY = re.compile(r"^(Q[A-Z]\w*|Qt\w*/.*|q[a-z]+\.h)$")


def allowed_layers():
    """Layer -> the layers that it may use, and the layers that may use Qt."""
    text = pathlib.Path("cmake/Layers.cmake").read_text(encoding="utf-8")
    allowed = {m[1]: set(m[2].split()) for m in re.finditer(r"^set\(ZU_ALLOWED_(\w+)([^)]*)\)", text, re.M)}
    qt = set(re.search(r"^set\(ZU_QT_LAYERS ([^)]*)\)", text, re.M)[1].split())
    return allowed, qt


def tracked():
    names = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], check=True, capture_output=True, text=True)
    return names.stdout.split()


def faults(name, allowed, qt):
    """What a file includes and must not."""
    parts = pathlib.PurePath(name).parts
    layer = parts[1] if len(parts) > 2 and parts[1] in allowed else None
    in_source = parts[0] == "src"
    for bracket, included in INCLUDE.findall(pathlib.Path(name).read_text(encoding="utf-8")):
        target = included.split("/")[0]
        if bracket == "<" and SYSTEM_ONLY.match(included):
            if layer is not None and layer not in qt:
                yield f"{name}: uses Qt ({included})"
        elif in_source and target in allowed and layer is not None:
            if target != layer and target not in allowed[layer]:
                yield f"{name}: layer {layer} must not use {target} ({included})"


def own_header_late(name):
    """What a source has before its own header."""
    source = pathlib.Path(name)
    header = source.with_suffix(".h")
    if source.parts[0] == "src" and source.suffix == ".cpp" and header.exists():
        first = INCLUDE.search(source.read_text(encoding="utf-8"))
        own = "/".join(header.parts[1:])
        if first is None or first[2] != own:
            yield f"{name}: does not include {own} first"


def main():
    allowed, qt = allowed_layers()
    found = [fault for name in tracked() for fault in (*faults(name, allowed, qt), *own_header_late(name))]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
