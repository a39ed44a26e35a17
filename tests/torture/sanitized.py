"""The two programs that were built with sanitizers of their own: two threads, and the fuzzer."""

import os
import subprocess

import ground
from ground import built, none, size


def program(preset, name, *arguments):
    """How a program ended and the last that it said."""
    file = os.path.join(built.source, "build", preset, "tests", "torture", name)
    def run_with(*words):
        return subprocess.run([*words, file, *arguments], cwd=ground.folder, stderr=subprocess.PIPE,
                              text=True, errors="replace", check=False)

    done = run_with()
    if "unexpected memory mapping" in done.stderr:  # the kernel's addresses leave it no place
        done = run_with("setarch", "--addr-no-randomize")
    if done.returncode:
        ground.note(done.stderr[-5000:])
    return done.returncode, done.stderr


def run():
    station = ground.prepared_station("threads")
    end, _ = program("threads", "ravelinox_threads", station.replace("/", "\\"))
    none("two threads under ThreadSanitizer: findings", end)
    words = os.path.join(built.source, "tests", "torture", "words.dict")
    seconds = size(600, 60)
    end, said = program("fuzz", "ravelinox_fuzz", f"-seed={built.seed % (1 << 32)}", "-max_len=400",
                        f"-max_total_time={seconds}", f"-dict={words}", "-print_final_stats=1")
    count = [line.split()[-1] for line in said.splitlines() if "number_of_executed_units" in line]
    none(f"fuzzed statements for {seconds} s ({', '.join(count)} of them): findings", end)
