#!/usr/bin/env python3
"""Prints a program of which some lines are mistakes, those that tests/hints.table begins with.

mistakes.py LINES MISTAKES
"""

import pathlib
import sys

from generate import program

TABLE = pathlib.Path(__file__).resolve().parent.parent / "tests/hints.table"
HEAD = ["DEFINE BYTE Speed = 0", "DEFINE BYTE Level = 0", "DEFINE WORD Distance = 0",
        "DEFINE FLAG Lost = TRUE"]


def mistakes(count):
    lines = [line for line in TABLE.read_text().splitlines() if not line.startswith(";")]
    return [line.split("|")[0].strip() for line in lines[:count]]


def main():
    lines, count = int(sys.argv[1]), int(sys.argv[2])
    rows = HEAD + program(lines - len(HEAD), 0)
    places = [i for i, row in enumerate(rows) if row.strip().startswith("INCREMENT")]
    if len(places) < count:
        sys.exit(f"{lines} lines have no room for {count} mistakes")
    for place, mistake in zip(places, mistakes(count)):
        rows[place] = mistake
    print("\n".join(rows))


if __name__ == "__main__":
    main()
