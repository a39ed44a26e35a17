#!/usr/bin/env python3
"""Runs the drivers, each in a process of its own, and writes their figures into one file.

    torture.py --library Ravelinox.so --program ravelinox --source . [--seed N] [--short] [DRIVER...]

A driver is a module with a function `run`, which prints a line for each figure. A driver that dies
is a figure that is broken. The seed stands in every line; given back, it repeats the run.
"""

import importlib
import os
import shutil
import subprocess
import sys
import time

import ground
from ground import built

DRIVERS = ["kills", "programs", "language", "texts", "files", "limits", "hosts", "sanitized"]
LONGEST = 1800  # seconds that a driver may take


def run_apart(driver):
    """The lines of a driver that runs in a process of its own."""
    begun = time.monotonic()
    command = [sys.executable, __file__, "--library", built.library, "--program", built.program,
               "--source", built.source, "--seed", str(built.seed), "--driver", driver]
    try:
        done = subprocess.run(command + ["--short"] * built.short, stdout=subprocess.PIPE,
                              text=True, timeout=LONGEST, check=False)
        lines, end = done.stdout.splitlines(), done.returncode
    except subprocess.TimeoutExpired as late:
        lines, end = (late.stdout or b"").decode().splitlines(), "none"
    if end != 0:
        lines.append(f"{driver} comes to its end\t{end}\t0\tBROKEN")
    ground.note(f"{driver}: {time.monotonic() - begun:.0f} s")
    return lines


def main():
    ground.note(f"seed {built.seed}")
    lines = ["name\tfigure\tlimit\tresult\tseed"]
    for driver in built.drivers or DRIVERS:
        lines += [f"{line}\t{built.seed}" for line in run_apart(driver)]
    text = "\n".join(lines) + "\n"
    print(text, end="")
    if built.out:
        with open(built.out, "w", encoding="utf-8") as out:
            out.write(text)
    return "\tBROKEN\t" in text


if __name__ == "__main__":
    try:
        sys.exit(importlib.import_module(built.driver).run() if built.driver else main())
    finally:
        os.seteuid(os.getuid())  # which a driver may have given up
        shutil.rmtree(ground.folder, ignore_errors=True)
