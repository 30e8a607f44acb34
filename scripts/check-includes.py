#!/usr/bin/env python3
"""Keeps the library's layering: a subsystem folder includes only its own folder and those below it.

    interfaces -> foundation -> path | legacy -> edit -> interaction -> operations

`path` and `legacy` stand side by side: both build on the platform types and the foundation, and
neither includes the other. A header in a `detail/` folder is private: it is not installed, so no
public header (nor the umbrella `simplepath/simplepath.h`) may include it; sources and other private
headers may. Prints every offending include and exits 1, or exits 0 when the tree is clean.
"""
import pathlib
import re
import sys

LEVEL = {
    "interfaces": 0,
    "foundation": 1,
    "path": 2,
    "legacy": 2,
    "edit": 3,
    "interaction": 4,
    "operations": 5,
}
INCLUDE = re.compile(r'^\s*#\s*include\s*"simplepath/([^"]+)"')


def subsystem(relative):
    """The subsystem folder of a path relative to simplepath/, or None for the umbrella header."""
    parts = pathlib.PurePosixPath(relative).parts
    return parts[0] if len(parts) > 1 else None


def is_private(relative):
    return "detail" in pathlib.PurePosixPath(relative).parts[:-1]


def main():
    root = pathlib.Path(__file__).resolve().parent.parent / "simplepath"
    problems = []
    for source in sorted(root.rglob("*")):
        if source.suffix not in (".h", ".cpp"):
            continue
        relative = source.relative_to(root).as_posix()
        here = subsystem(relative)
        if here is not None and here not in LEVEL:
            problems.append(f"simplepath/{relative}: folder '{here}' has no place in the layer order")
            continue
        for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            target = match.group(1)
            there = subsystem(target)
            where = f"simplepath/{relative}:{number}: includes simplepath/{target}"
            if there not in LEVEL:
                problems.append(f"{where}, which is outside every subsystem folder")
                continue
            if source.suffix == ".h" and not is_private(relative) and is_private(target):
                problems.append(f"{where}: a public header may not include a private one")
            if here is None or here == there:
                continue
            if LEVEL[there] > LEVEL[here] or (LEVEL[there] == LEVEL[here]):
                problems.append(f"{where}: '{here}' may not include '{there}' (it sits above or beside)")
    for problem in problems:
        print(problem, file=sys.stderr)
    if problems:
        print(f"check-includes: {len(problems)} include(s) break the layering", file=sys.stderr)
        return 1
    print("check-includes: every include keeps the layer order")
    return 0


if __name__ == "__main__":
    sys.exit(main())
