#!/usr/bin/env python3
"""Prints how much of each folder the tests go through, and each branch that they never take.

coverage_report.py EXPORT ROOT COUNTED... -- LISTED...

EXPORT is what `llvm-cov export` wrote for the sources below ROOT. Both lists are of folders: of the
second the branches that no test takes are listed as well.
"""

import json
import re
import sys
from collections import namedtuple

Branch = namedtuple("Branch", "line column side count text")


def branches_of(file):
    """The branches of a file: two of each condition, one of each case. A template or an inline
    function has rows for each of its instances, which are added up."""
    counts = {}
    for line, column, _, _, taken, not_taken, *_ in file["branches"]:
        sums = counts.setdefault((line, column), [0, 0])
        sums[0] += taken
        sums[1] += not_taken
    with open(file["filename"], encoding="utf-8") as source:
        lines = source.read().split("\n")
    for (line, column), sums in sorted(counts.items()):
        text = lines[line - 1]
        if text[:column - 1].endswith("switch ("):
            continue  # the way past all cases: each value of an enumeration has its own
        if text[column - 1:].startswith("true)") or text[:column - 1].endswith("constexpr ("):
            continue  # known to the compiler, which counts nothing there
        if re.match(r"case\b|default\b", text[column - 1:]):
            yield Branch(line, column, "case", sums[0], text.strip())
            continue
        yield Branch(line, column, "true", sums[0], text.strip())
        yield Branch(line, column, "false", sums[1], text.strip())


def files_of(export, root, folder):
    return [file for file in export["files"] if file["filename"].startswith(f"{root}/{folder}/")]


def percent(part, whole):
    return f"{part / whole:.1%}" if whole else "-"


def print_table(export, root, folders):
    print("| Folder | Lines | covered | Branches | covered |\n|---|--:|--:|--:|--:|")
    for folder in folders:
        files = files_of(export, root, folder)
        lines = [file["summary"]["lines"] for file in files]
        count = sum(line["count"] for line in lines)
        covered = sum(line["covered"] for line in lines)
        branches = [branch for file in files for branch in branches_of(file)]
        taken = sum(branch.count > 0 for branch in branches)
        print(f"| `{folder}/` | {count} | {percent(covered, count)} |"
              f" {len(branches)} | {percent(taken, len(branches))} |")


def print_missed(export, root, folders):
    for file in (file for folder in folders for file in files_of(export, root, folder)):
        name = file["filename"].removeprefix(root + "/")
        for branch in branches_of(file):
            if branch.count == 0:
                print(f"{name}:{branch.line}:{branch.column}: {branch.side}: {branch.text}")


def main():
    path, root, *folders = sys.argv[1:]
    split = folders.index("--")
    with open(path, encoding="utf-8") as file:
        export = json.load(file)["data"][0]
    print_table(export, root, folders[:split])
    print("\nBranches that no test takes:")
    print_missed(export, root, folders[split + 1:])


if __name__ == "__main__":
    main()
