#!/usr/bin/env python3
"""Measures zentroc against tcc, side by side in one run: whole processes, the smallest of many.

compile_speed.py ZENTROC [--runs N]
"""

import argparse
import os
import subprocess
import tempfile
import time

from generate import program
from report import report

SIZES = (0, 5, 1000, 6000, 30000)
GROWTH = (1000, 300000)


def seconds_of(command):
    """Seconds that one run of the command takes."""
    silence = [(os.POSIX_SPAWN_OPEN, fd, os.devnull, os.O_WRONLY, 0) for fd in (1, 2)]
    start = time.perf_counter()
    pid = os.posix_spawnp(command[0], command, os.environ, file_actions=silence)
    _, status = os.waitpid(pid, 0)
    seconds = time.perf_counter() - start
    # A program too large for the board is compiled all the same, and counted as an error.
    if os.waitstatus_to_exitcode(status) not in (0, 1):
        raise SystemExit(f"failed: {' '.join(command)}")
    return seconds


def kilobytes_of(command):
    """The memory that the command needs, as the time program sees it: a small parent, whose own
    memory does not count as the child's."""
    result = subprocess.run(["time", "-f", "%M", *command], capture_output=True, text=True)
    return int(result.stderr.split()[-1])


def write_programs(lines, folder):
    for language, name in enumerate(("program.txt", "program.c")):
        rows = program(lines, language) if lines else [
            ("BEGIN PROGRAM\nEND PROGRAM", "int main(void) { return 0; }")[language]]
        with open(f"{folder}/{name}", "w", encoding="ascii") as file:
            file.write("\n".join(rows) + "\n")


def measure(commands, runs):
    """The best time and the memory of each command; they take turns, so that both meet the same
    machine."""
    best = [float("inf")] * len(commands)
    for _ in range(runs):
        for i, command in enumerate(commands):
            best[i] = min(best[i], seconds_of(command))
    return [(seconds, kilobytes_of(command)) for seconds, command in zip(best, commands)]


def compare_with_tcc(zentroc, folder, runs):
    print(f"{'lines':>8} {'zentroc ms':>11} {'tcc ms':>8} {'ratio':>6} {'zentroc KB':>11} {'tcc KB':>7}")
    for lines in SIZES:
        write_programs(lines, folder)
        ours, peer = measure([
            [zentroc, "-o", folder, f"{folder}/program.txt"],
            ["tcc", "-c", f"{folder}/program.c", "-o", f"{folder}/program.o"],
        ], runs if lines <= 6000 else max(runs // 4, 5))
        print(f"{lines:>8} {ours[0] * 1e3:>11.2f} {peer[0] * 1e3:>8.2f} {ours[0] / peer[0]:>6.2f}"
              f" {ours[1]:>11} {peer[1]:>7}")
        report(f"compiling {lines} lines, tcc", f"{ours[0] * 1e3:.2f} ms", f"{peer[0] * 1e3:.2f} ms",
               ours[0] / peer[0], "<= 1")


def measure_growth(zentroc, folder, runs):
    times, sizes = [], []
    for lines in GROWTH:
        write_programs(lines, folder)
        (best,) = measure([[zentroc, "-o", folder, f"{folder}/program.txt"]],
                          runs if lines <= 6000 else max(runs // 10, 3))
        times.append(best[0])
        sizes.append(best[1])
    linear = times[0] * GROWTH[1] / GROWTH[0]
    memory = sizes[1] * 1024 / GROWTH[1]
    print(f"growth from {GROWTH[0]} to {GROWTH[1]} lines: {times[1] * 1e3:.1f} ms,"
          f" {times[1] / linear:.2f} of linear; {memory:.0f} bytes of memory a line")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("zentroc")
    parser.add_argument("--runs", type=int, default=100)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        compare_with_tcc(arguments.zentroc, folder, arguments.runs)
        measure_growth(arguments.zentroc, folder, arguments.runs)


if __name__ == "__main__":
    main()
