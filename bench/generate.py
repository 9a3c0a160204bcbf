#!/usr/bin/env python3
"""Writes the same program in two languages: for zentroc and, as C, for tcc.

generate.py LINES FOLDER writes FOLDER/program.txt and FOLDER/program.c, each of LINES lines: many
small routines with byte and word arithmetic, conditions, loops and calls.
"""

import sys

# A routine, line for line in both languages. {n} is its number, {p} that of a routine before it.
ROUTINE = [
    ("DEFINE ROUTINE Step{n}(First BYTE, Limit WORD) RETURNS BYTE",
     "unsigned char Step{n}(unsigned char First, unsigned short Limit) {{"),
    ("    DEFINE BYTE Total{n} = 0", "    unsigned char Total{n} = 0;"),
    ("    DEFINE WORD Count{n} = 0", "    unsigned short Count{n} = 0;"),
    ("    Total{n} = First + 3", "    Total{n} = First + 3;"),
    ("    WHILE Count{n} < Limit", "    while (Count{n} < Limit) {{"),
    ("        Count{n} = Count{n} + 25", "        Count{n} = Count{n} + 25;"),
    ("        IF Total{n} > 100 THEN", "        if (Total{n} > 100) {{"),
    ("            Total{n} = Total{n} - First", "            Total{n} = Total{n} - First;"),
    ("        ELSE", "        }} else {{"),
    ("            INCREMENT Total{n}", "            Total{n}++;"),
    ("        END IF", "        }}"),
    ("    END WHILE", "    }}"),
    ("    IF Total{n} = 7 THEN", "    if (Total{n} == 7) {{"),
    ("        Total{n} = Step{p}(Total{n}, 500)", "        Total{n} = Step{p}(Total{n}, 500);"),
    ("    END IF", "    }}"),
    ("    Shared = Shared + Count{n}", "    Shared = Shared + Count{n};"),
    ("    RETURN Total{n}", "    return Total{n};"),
    ("END ROUTINE", "}}"),
    ("", ""),
]

HEAD = [
    ("DEFINE WORD Shared = 0", "unsigned short Shared = 0;"),
    ("DEFINE BYTE Answer = 0", "unsigned char Answer = 0;"),
    ("", ""),
]

TAIL = [
    ("BEGIN PROGRAM", "int main(void) {{"),
    ("    Answer = Step0(1, 1000)", "    Answer = Step0(1, 1000);"),
    ("END PROGRAM", "    return 0; }}"),
]


def program(lines, language):
    """The lines of the program in one of the two languages, 0 or 1."""
    rows = [row[language] for row in HEAD]
    number = 0
    while len(rows) + len(ROUTINE) + len(TAIL) <= lines:
        names = {"n": number, "p": max(number - 1, 0)}
        rows += [row[language].format(**names) for row in ROUTINE]
        number += 1
    if number == 0:  # too short for a routine: count instead
        work = ("    Answer = Answer + 1", "    Answer = Answer + 1;")[language]
        rows = rows[:2] + [TAIL[0][language].format()]
        rows += [work] * max(lines - len(rows) - 1, 0)
        return rows + [TAIL[2][language].format()]
    comment = ("; filling", "// filling")[language]
    rows += [comment] * (lines - len(rows) - len(TAIL))
    return rows + [row[language].format() for row in TAIL]


def main():
    lines, folder = int(sys.argv[1]), sys.argv[2]
    for language, name in enumerate(("program.txt", "program.c")):
        with open(f"{folder}/{name}", "w", encoding="ascii") as file:
            file.write("\n".join(program(lines, language)) + "\n")


if __name__ == "__main__":
    main()
