"""Other programs work on the same line database: they move the same trains, read on and on, or
hold the lock on writing."""

import contextlib
import multiprocessing
import os
import sqlite3
import time

import ground
from ground import connected, figure, none, outcome, rows, size, timed

apart = multiprocessing.get_context("fork")
MOVED = """SELECT Numero, sum(Effettivo_arrivo), count(*) FROM circolazione
    WHERE Effettivo_arrivo >= 0 AND Effettiva_partenza >= 0 GROUP BY Numero"""


def delay_trains(station, random, until, result):
    engine, sums, longest, refused = connected(station), {}, 0.0, 0
    trains = [train for train, *_ in rows(station, MOVED)][:20]
    while time.monotonic() < until:
        train, moved = random.choice(trains), random.randrange(-900, 900)
        failure, seconds = outcome(engine.RitardaTreno, train, moved, 0)
        longest = max(longest, seconds)
        refused += failure is not None
        sums[train] = sums.get(train, 0) + (0 if failure else moved)
    engine.Disconnetti_DB()
    result.put((sums, longest, refused))


def two_writers(station):
    before = {train: (total, calls) for train, total, calls in rows(station, MOVED)}
    results, until = apart.Queue(), time.monotonic() + size(60, 10)
    writers = [apart.Process(target=delay_trains,
                             args=(station, ground.draws(f"writer {n}"), until, results))
               for n in range(2)]
    for writer in writers:
        writer.start()
    done = [results.get(timeout=120) for _ in writers]
    wrong = sum(total != before[train][0] + calls * sum(sums.get(train, 0) for sums, *_ in done)
                for train, total, calls in rows(station, MOVED))
    none("two writers: trains whose sum is wrong", wrong)
    refused = sum(refusals for *_, refusals in done)
    none("two writers: calls refused", refused)
    longest = max(longest for _, longest, _ in done)
    timed("two writers: longest wait in seconds", f"{longest:.2f}", 5, longest <= 5)


def held(station, statement, ready, release, most):
    """Another program that reads or locks until it is told to let go, or for a time at most."""
    file = os.path.join(station, "linea.db")
    with sqlite3.connect(file, isolation_level=None) as other:
        other.execute(statement)
        other.execute("SELECT count(*) FROM circolazione").fetchall()
        ready.set()
        release.wait(most)
        other.execute("COMMIT")


@contextlib.contextmanager
def holding(station, statement, most=600):
    """The time while another program holds on to the line database."""
    ready, release = apart.Event(), apart.Event()
    other = apart.Process(target=held, args=(station, statement, ready, release, most))
    other.start()
    ready.wait(10)
    try:
        yield
    finally:
        release.set()
        other.join()


def seconds(call, *arguments):
    failure, taken = outcome(call, *arguments)
    assert failure is None, failure
    return taken


def reader_that_stays(station):
    """Set-ups with and without the reader take turns, so that both meet the same machine."""
    engine, alone, beside = connected(station), [], []
    for _ in range(size(40, 20)):
        alone.append(seconds(ground.set_up, engine))
        with holding(station, "BEGIN"):
            beside.append(seconds(ground.set_up, engine))
    ratio = min(beside) / min(alone)
    timed("reader that stays: set-up against one alone", f"{ratio:.2f}", 1.3, ratio <= 1.3)
    log = os.path.join(station, "linea.db-wal")
    with holding(station, "BEGIN"):
        for _ in range(size(100, 20)):
            ground.set_up(engine)
        grown = os.path.getsize(log)
    for _ in range(10):  # some 20 MB: it looks again every 16 MB at the latest
        ground.set_up(engine)
    cut = os.path.getsize(log)
    figure(f"reader that stays: log after it in KiB, of {grown >> 10} KiB beside it", cut >> 10, 4096,
           cut <= 4096 << 10 and cut < grown)
    engine.Disconnetti_DB()


def lock_on_writing(station):
    engine = connected(station)
    train = rows(station, MOVED)[0][0]
    with holding(station, "BEGIN IMMEDIATE", 3):
        failure, _ = outcome(engine.RitardaTreno, train, 60, 0)
    figure("locked for 3 s: the failure", failure, None, failure is None)
    with holding(station, "BEGIN IMMEDIATE", 8):
        failure, waited = outcome(engine.RitardaTreno, train, 60, 0)
    figure("locked for 8 s: the failure", failure and hex(failure.number), hex(ground.DATA_FAILURE),
           failure and failure.number == ground.DATA_FAILURE)
    timed("locked for 8 s: seconds until it is told", f"{waited:.1f}", 6, 4.5 <= waited <= 6)
    with holding(station, "BEGIN IMMEDIATE", 8):
        failure, waited = outcome(engine.RegistraEvento, "Arrivo", train, ground.START, "Empoli")
    figure("locked for 8 s: the movement's failure", failure, None, failure is None)
    timed("locked for 8 s: seconds until a movement is recorded", f"{waited:.1f}", 12, waited <= 12)
    heard = engine.CercaListaTreni(train, "Arrivo")
    figure("locked for 8 s: the movement is in the list", heard, True, heard is True)


def run():
    template = ground.prepared_station("prepared")
    for driver in (two_writers, reader_that_stays, lock_on_writing):
        driver(ground.new_station("shared", template))
