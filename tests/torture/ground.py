"""What the drivers stand on: a station to break, the library to break it with, the figures."""

import argparse
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

parser = argparse.ArgumentParser(description=__doc__)
for name in ("library", "program", "source"):
    parser.add_argument("--" + name, required=True, type=os.path.abspath)
parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1 << 31))
parser.add_argument("--short", action="store_true", help="the form for every change")
parser.add_argument("--out", help="file for the figures")
parser.add_argument("--driver", help="runs this one in the process itself")
parser.add_argument("drivers", nargs="*", help="which to run; all of them without")
built = parser.parse_args()
sys.path.insert(0, os.path.join(built.source, "examples", "python"))
import component as host  # noqa: E402

CLASS_ID = "{AB36EA2E-24D7-4003-A5B6-EE73CA74B313}"
DATA_FAILURE, OPEN, CLOSED = 0x80004005, 3705, 3704
MIDNIGHT = 1776816000  # 22 April 2026, a Wednesday
START = MIDNIGHT + 6 * 3600
os.environ.pop("DISPLAY", None)  # the dispatchers' messages need no window here
os.environ.pop("WAYLAND_DISPLAY", None)

folder = tempfile.mkdtemp(prefix="ravelinox-torture-")
os.environ["XDG_DATA_HOME"] = os.environ["XDG_RUNTIME_DIR"] = folder
os.environ["SPEECHD_ADDRESS"] = "inet_socket:127.0.0.1:1"  # nor a voice
library = shutil.copy(built.library, folder)  # it writes its files beside itself


def draws(purpose):
    """A source of random numbers for a purpose, the same for the same seed."""
    return random.Random(f"{built.seed} {purpose}")


def size(full, short):
    return short if built.short else full


def figure(name, value, limit, kept):
    """One line of the result: what was measured, and whether it keeps the limit."""
    print(name, value, limit, "kept" if kept else "BROKEN", sep="\t", flush=True)


def timed(name, value, limit, kept):
    """A figure of time. The short form does not judge it: its machine may be doing anything."""
    figure(name, value, limit, kept or built.short)


def none(name, count):
    """Something of which there must be none."""
    figure(name, count, 0, count == 0)


def note(*words):
    print(*words, file=sys.stderr, flush=True)


def import_station(to):
    subprocess.run([built.program, "import", os.path.join(built.source, "data/empoli/gtfs"),
                    "--station", "Empoli", "--out", to], check=True, stdout=subprocess.DEVNULL)
    return to


def new_station(name, template=None):
    """A folder with both databases, fresh or copied."""
    to = os.path.join(folder, name)
    shutil.rmtree(to, ignore_errors=True)
    return shutil.copytree(template, to) if template else import_station(to)


def new_engine():
    return host.create_from_file(library, CLASS_ID)


def connected(station, engine=None):
    engine = engine or new_engine()
    engine.DB_stazione = station.replace("/", "\\") + "\\stazione.db"
    engine.Connetti_DBstazione_DLL()
    engine.Imposta_proprieta_pds()
    engine.Connetti_DBlinea_DLL()
    engine.Nome_PdS, engine.StartTime = "Empoli", START
    engine.Global_ProbabilitaSoppressione, engine.Global_ProbabilitaGuasti = 32767, 500
    engine.Global_Puntualita = 300
    return engine


def set_up(engine):
    engine.Inzializza_Orario(START, MIDNIGHT)


def close_slots(engine):
    """What a host does after a failure."""
    for slot in ("DLLRSMovimL", "DLLRSMovimS", "DLLRS", "DLLRS2", "DLLRS3", "DLLRS4", "DLLRS5"):
        if getattr(engine, slot).State:
            getattr(engine, slot).Close()


def prepare(station):
    engine = connected(station)
    set_up(engine)
    engine.Disconnetti_DB()


def prepared_station(name):
    station = new_station(name)
    prepare(station)
    return station


def outcome(call, *arguments):
    """The failure that a call ends with, None when it succeeds, and how many seconds it took."""
    begun, failed = time.monotonic(), None
    try:
        call(*arguments)
    except host.Failure as failure:
        failed = failure
    return failed, time.monotonic() - begun


def number_of(call, *arguments):
    """The number of the failure that a call ends with, 0 when it succeeds."""
    failure, _ = outcome(call, *arguments)
    return failure.number if failure else 0


def rows(station, statement, file="linea.db"):
    """What another program reads."""
    with sqlite3.connect(os.path.join(station, file)) as other:
        result = other.execute(statement).fetchall()
    other.close()
    return result


def whole(station):
    return all(rows(station, "PRAGMA integrity_check", file) == [("ok",)]
               for file in ("linea.db", "stazione.db"))
