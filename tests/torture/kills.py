"""A program is killed at any moment; what it reported as saved before is still there.

The child names each step by a statement that reads what the step writes, once before the step and
once, with what it read, when the step has returned. Only the step under way may be undone.
"""

import collections
import os
import signal
import time

import ground
from ground import connected, figure, none, number_of, rows, size

TIMES = "Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza"


def texts(found):
    return str([[round(v, 4) if isinstance(v, float) else v for v in row] for row in found])


def read(slot, statement):
    slot.Open(statement)
    found = list(ground.host.rows(slot))
    slot.Close()
    return found


def prepare_day(engine, step):
    """The day as a host prepares it row by row: each row a day later, then its train."""
    calls = engine.DLLRSMovimL

    def move():
        for column in range(4):
            stored = calls.Fields(column).Value
            if stored is not None:
                calls.Fields(column).Value = stored + 86400
        calls.Update()

    for (train,) in read(engine.DLLRS3, "SELECT Numero FROM generalita_treni"):
        of_train = f" WHERE Numero = {train}"
        calls.Open(f"SELECT {TIMES}, Stazione FROM circolazione{of_train}")
        while not calls.EOF:
            place = calls.Fields(4).Value
            step(f"SELECT {TIMES} FROM circolazione{of_train} AND Stazione = '{place}'", move)
            calls.MoveNext()
        calls.Close()
        step("SELECT Posizione1, Posizione2 FROM generalita_treni" + of_train,
             lambda: engine.DLLRS3.Open(
                 "UPDATE generalita_treni SET Posizione1 = 'X', Posizione2 = 'Y'" + of_train))


def set_up(engine, step):
    step("SELECT Numero FROM generalita_treni", lambda: ground.set_up(engine))


def movements(engine, step):
    arrivals = read(engine.DLLRS3, "SELECT Numero, Effettivo_arrivo FROM circolazione WHERE Stazione"
                                   " = 'Empoli' AND Effettivo_arrivo > 0 ORDER BY Effettivo_arrivo")
    for index, (train, due) in enumerate(arrivals * 8):
        step(f"SELECT {TIMES} FROM circolazione WHERE Numero = {train}",
             lambda: engine.RegistraEvento("Arrivo", train, due + index % 600, "Empoli"))


def wear(engine, step):
    for entity in list(range(1, 25)) * 40:
        step(f"SELECT Stato_manutenzione FROM enti WHERE ID = {entity}",
             lambda: engine.DecrementaManutenzione("", 0, entity))


def killed(station, work, moment):
    """What a child reported that was killed at a moment, in seconds, and the step under way."""
    reader, writer = os.pipe()
    child = os.fork()
    if child == 0:
        os.close(reader)
        engine = connected(station)

        def step(statement, change):
            os.write(writer, f"{statement}\n".encode())
            change()
            slot = engine.DLLRS if "FROM enti" in statement else engine.DLLRS5
            os.write(writer, f"{statement}\t{texts(read(slot, statement))}\n".encode())

        try:
            work(engine, step)
            os.write(writer, b"end\n")
        finally:
            os._exit(0)
    os.close(writer)
    time.sleep(moment)
    os.kill(child, signal.SIGKILL)
    os.waitpid(child, 0)
    with os.fdopen(reader, encoding="utf-8") as reports:
        lines = [line.rstrip("\n").split("\t") for line in reports]
    last = lines[-1][0] if lines else ""
    return dict(line for line in lines if len(line) == 2), last


# Rows of which a time was moved and the one that goes with it was not: the times of the stored week
# lie in 1970, those of the set-up's day in 2026, and in a fresh timetable both kinds are equal.
HALF_SET_UP = """SELECT count(*) FROM circolazione
    WHERE (Orario_arrivo > 1 << 30) <> (Effettivo_arrivo > 1 << 30)
    OR (Orario_partenza > 1 << 30) <> (Effettiva_partenza > 1 << 30)"""
HALF_DAY = """SELECT count(*) FROM circolazione
    WHERE Orario_arrivo <> Effettivo_arrivo OR Orario_partenza <> Effettiva_partenza"""

# Work, its share of the kills, the station it begins with, until when it is killed (seconds), and
# how many rows are half written.
TABLE = [(prepare_day, 0.3, "fresh", 2, HALF_DAY), (set_up, 0.3, "fresh", 0.2, HALF_SET_UP),
         (movements, 0.3, "prepared", 1, "SELECT 0"), (wear, 0.1, "fresh", 0.4, "SELECT 0")]


class Damage:
    """What accidents did to stations: of each kind there must be none."""

    def __init__(self, half_rows):
        self.half_rows, self.counts = half_rows, collections.Counter()

    def look(self, station, kept, last, prepare):
        """Looks for the reported steps, the one under way left out, and prepares the day again."""
        self.counts["reported steps lost"] += sum(
            texts(rows(station, statement, file_of(statement))) != value
            for statement, value in kept.items() if statement != last)
        self.counts["rows half written"] += rows(station, self.half_rows)[0][0]
        self.counts["set-ups that fail afterwards"] += number_of(*prepare) != 0
        self.counts["files not whole"] += not ground.whole(station)

    def report(self, name):
        for what, count in self.counts.items():
            none(f"{name}: {what}", count)


def file_of(statement):
    return "stazione.db" if "FROM enti" in statement else "linea.db"


def run():
    random = ground.draws("kills")
    templates = {"fresh": ground.new_station("fresh"),
                 "prepared": ground.prepared_station("prepared")}
    for work, share, template, window, half_rows in TABLE:
        kills = round(size(300, 40) * share)
        damage, reported = Damage(half_rows), 0
        for _ in range(kills):
            station = ground.new_station("killed", templates[template])
            kept, last = killed(station, work, random.uniform(0, window))
            reported += len(kept)
            damage.look(station, kept, last, (ground.prepare, station))
        figure(f"{work.__name__}: steps reported before {kills} kills", reported, "1 at least",
               reported > 0 or work is set_up)
        damage.report(work.__name__)
