"""Prints the figures of an lcov file by folder of src: coverage.py FILE [--json] [PATTERN]; see scripts/coverage.sh."""

import collections
import json
import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


class Figures:
    def __init__(self):
        self.lines = self.lines_hit = self.branches = self.branches_hit = 0

    def add(self, other):
        self.lines += other.lines
        self.lines_hit += other.lines_hit
        self.branches += other.branches
        self.branches_hit += other.branches_hit

    def as_json(self):
        return {
            "lines": self.lines,
            "linesReached": self.lines_hit,
            "branches": self.branches,
            "branchesReached": self.branches_hit,
        }


def share(part, whole):
    return f"{100 * part / whole:5.1f} %" if whole else "      -"


def read(path):
    """The figures of each source below src, and its uncovered lines."""
    figures, missed, source = {}, collections.defaultdict(list), None
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        key, _, value = line.partition(":")
        if key == "SF":
            file = pathlib.Path(os.path.normpath(value))  # a compiler cache makes paths relative to the build folder
            source = file.relative_to(ROOT).as_posix() if file.is_relative_to(ROOT / "src") else None
            if source:
                figures[source] = Figures()
        elif source and key == "DA":
            number, count = value.split(",")[:2]
            figures[source].lines += 1
            figures[source].lines_hit += count != "0"
            if count == "0":
                missed[source].append(int(number))
        elif source and key == "BRDA":
            figures[source].branches += 1
            figures[source].branches_hit += value.rsplit(",", 1)[1] not in ("-", "0")
    return figures, missed


def by_folder(figures):
    """The sums of each folder of sources, and of src/z7cashflow, src/adapters and src/host as a whole."""
    sums = collections.defaultdict(Figures)
    for source, own in figures.items():
        parts = source.split("/")
        for depth in {2, min(3, len(parts) - 1)}:
            sums["/".join(parts[:depth])].add(own)
    return dict(sorted(sums.items()))


def spans(numbers):
    """[1, 2, 3, 7] as "1-3, 7"."""
    found = []
    for number in numbers:
        if found and found[-1][1] == number - 1:
            found[-1][1] = number
        else:
            found.append([number, number])
    return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in found)


def main(arguments):
    file, *options = arguments
    patterns = [option for option in options if option != "--json"]
    figures, missed = read(file)
    if not figures:
        print("no source of src was measured", file=sys.stderr)
        return 2
    sums = by_folder(figures)
    if "--json" in options:
        print(json.dumps({folder: own.as_json() for folder, own in sums.items()}, indent=2))
        return 0
    print(f"{'Folder':32} {'Lines':>7} {'reached':>8} {'Branches':>9} {'reached':>8}")
    for folder, own in sums.items():
        print(
            f"{folder:32} {own.lines:7} {share(own.lines_hit, own.lines):>8} "
            f"{own.branches:9} {share(own.branches_hit, own.branches):>8}"
        )
    for source in sorted(missed):
        if any(re.search(pattern, source) for pattern in patterns):
            print(f"{source}: {spans(missed[source])}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
