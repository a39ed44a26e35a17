"""Bad files: each is connected to, checked, asked and changed, and every step answers or fails with
number and sentence. Nothing is created, and reading changes nothing."""

import contextlib
import os
import shutil
import signal
import sqlite3
import time

import ground
from ground import DATA_FAILURE, figure, host, none, rows, size, timed

NOBODY = 65534
TRAIN = 4042


def changed(*statements):
    """A damage that another program does, in a file with a rollback journal."""
    def damage(file, _):
        with sqlite3.connect(file, isolation_level=None) as other:
            other.execute("PRAGMA journal_mode = DELETE")
            other.execute("PRAGMA writable_schema = ON")
            for table in ("enti", "circolazione", "generalita_treni"):
                for statement in statements:
                    with contextlib.suppress(sqlite3.OperationalError):  # the other file's table
                        other.execute(statement.format(table))
        other.close()
    return damage


def recoded(encoding, page):
    """The same rows in a file of another make."""
    def damage(file, _):
        with sqlite3.connect(file) as old:
            script = "\n".join(old.iterdump())
        old.close()
        os.unlink(file)
        with sqlite3.connect(file) as new:
            new.execute(f"PRAGMA encoding = '{encoding}'")
            new.execute(f"PRAGMA page_size = {page}")
            new.executescript(script)
        new.close()
    return damage


def cut(part):
    return lambda file, _: os.truncate(file, int(os.path.getsize(file) * part))


def junk(file, random):
    with open(file, "wb") as out:
        out.write(random.randbytes(5000))


def in_place(make):
    return lambda file, _: (os.unlink(file), make(file))


def log_left_behind(file, _):
    """A program wrote and was killed: its change stands in the log alone."""
    child = os.fork()
    if child == 0:
        other = sqlite3.connect(file, isolation_level=None)
        other.execute("PRAGMA journal_mode = WAL")
        other.execute("CREATE TABLE IF NOT EXISTS left_behind (N)")
        os.kill(os.getpid(), signal.SIGKILL)
    os.waitpid(child, 0)


def scrambled(file, random):
    with open(file, "r+b") as out:
        for _ in range(random.choice([1, 3, 20, 200])):
            out.seek(random.randrange(random.choice([100, 2048, os.path.getsize(file)])))
            out.write(random.randbytes(random.choice([1, 4, 64])))


# What is done to the file before, how it looks to each of connecting, checking, asking and changing
# ("+" works, "-" fails, "?" either), and what is done to it once it is open.
DAMAGES = [
    ("missing", lambda file, _: os.unlink(file), "----", None),
    ("empty", cut(0), "----", None),
    ("junk", junk, "----", None),
    ("half", cut(0.5), "????", None),
    ("most", cut(0.997), "----", None),
    ("a folder", in_place(os.mkdir), "----", None),
    ("a pipe", in_place(os.mkfifo), "----", None),
    ("a link to nowhere", in_place(lambda file: os.symlink("nowhere", file)), "----", None),
    ("pages of 512", recoded("UTF-8", 512), "++++", None),
    ("pages of 65536", recoded("UTF-8", 65536), "++++", None),
    ("UTF-16le", recoded("UTF-16le", 4096), "++++", None),
    ("UTF-16be", recoded("UTF-16be", 1024), "++++", None),
    ("log left behind", log_left_behind, "++++", None),
    ("read-only file", lambda file, _: os.chmod(file, 0o444), "+++-", None),
    ("read-only folder", lambda file, _: os.chmod(os.path.dirname(file), 0o555), "+++-", None),
    ("unreadable file", lambda file, _: os.chmod(file, 0), "----", None),
    ("views", changed("ALTER TABLE {0} RENAME TO x_{0}",
                      "CREATE VIEW {0} AS SELECT * FROM x_{0}"), "+++-", None),
    ("a view of itself", changed("DROP TABLE {0}", "CREATE VIEW {0} AS SELECT * FROM {0}"), "+?--",
     None),
    ("no types", changed("CREATE TABLE x AS SELECT * FROM {0}", "DROP TABLE {0}",
                         "ALTER TABLE x RENAME TO {0}"), "++++", None),
    ("no tables", changed("DROP TABLE {0}"), "+?--", None),
    ("no columns", changed("ALTER TABLE {0} RENAME TO y_{0}", "CREATE TABLE {0} (z)"), "+?--", None),
    ("a trigger", changed("CREATE TRIGGER g_{0} AFTER UPDATE ON {0} BEGIN DELETE FROM {0}; END"),
     "++++", None),  # it runs: what a file's own triggers do is the file's
    ("numbers out of range", changed("UPDATE circolazione SET Effettivo_arrivo = 99999999999",
                                     "UPDATE enti SET Stato_manutenzione = 1e300"), "+???", None),
    ("texts for numbers", changed("UPDATE circolazione SET Effettivo_arrivo = 'noon'",
                                  "UPDATE enti SET Stato_manutenzione = 'good'"), "+???", None),
    ("Null everywhere", changed("UPDATE circolazione SET Stazione = NULL, Effettivo_arrivo = NULL",
                                "UPDATE enti SET Stato_manutenzione = NULL"), "+???", None),
    ("a schema of junk", changed("UPDATE sqlite_schema SET sql = 'junk ' || name"), "----", None),
    ("removed while open", None, "++??", os.unlink),
    ("emptied while open", None, "++??", lambda file: os.truncate(file, 0)),
    ("replaced while open", None, "++??",
     lambda file: (shutil.copy(file, file + "2"), os.replace(file + "2", file))),
]


@contextlib.contextmanager
def as_user(user):
    """Rights mean nothing to the system's administrator, so the engine does not run as one."""
    before = os.geteuid()
    if os.getuid() == 0:
        os.seteuid(0)
        os.seteuid(user)
    try:
        yield
    finally:
        if os.getuid() == 0:
            os.seteuid(0)
            os.seteuid(before)


def steps(engine, file):
    """Connecting, checking, asking and changing."""
    if file.endswith("stazione.db"):
        return [engine.Connetti_DBstazione_DLL, None,
                lambda: engine.RicavaStatoManutenzione("CDB", 1),
                lambda: engine.DecrementaManutenzione("CDB", 1)]
    return [engine.Connetti_DBlinea_DLL, None, lambda: engine.CorsaTreno(TRAIN),
            lambda: engine.RitardaTreno(TRAIN, 60, 0, "ES 01")]



def contents(file):
    """What stands in a file and its log, as another program reads copies of them; the file's bytes
    where none can."""
    if not os.path.isfile(file):
        return os.path.lexists(file)
    copy = os.path.join(ground.folder, "copy.db")
    for end in ("", "-wal"):
        if os.path.exists(file + end):
            shutil.copy(file + end, copy + end)
    try:
        with sqlite3.connect(copy) as other:
            dump = list(other.iterdump())
        other.close()
        return dump
    except (sqlite3.Error, UnicodeDecodeError):
        with open(file, "rb") as content:
            return content.read()
    finally:
        for end in ("", "-wal", "-shm"):
            with contextlib.suppress(FileNotFoundError):
                os.unlink(copy + end)


class Result:
    cases = unexpected = silent = read_changed = made = 0
    longest = 0.0


def outcome(step, result, case):
    begun = time.monotonic()
    try:
        step()
        return "+"
    except host.Failure as failure:
        if failure.number == 0 or len(str(failure)) < 20:
            result.silent += 1
            ground.note(case, failure)
        return "-"
    finally:
        result.longest = max(result.longest, time.monotonic() - begun)


def use(file, case, expected, while_open, result):
    folder = os.path.dirname(file)
    os.chmod(folder, os.stat(folder).st_mode | 0o055)
    engine, given = ground.new_engine(), ""
    engine.DB_stazione = os.path.join(folder, "stazione.db").replace("/", "\\")
    engine.DB_linea, engine.Nome_PdS = "linea.db", "Empoli"
    names, before = set(os.listdir(folder)), contents(file)
    whole = 7 if "stazione" in file else 1
    with as_user(NOBODY):
        for at, step in enumerate(steps(engine, file)):
            step = step or (lambda: check(engine, file, whole))
            given += outcome(step, result, case)
            if at == 1 and while_open:
                while_open(file)
            if at == 2 and not while_open:
                with as_user(0):
                    result.read_changed += contents(file) != before
        outcome(engine.Disconnetti_DB, result, case)
    companions = {os.path.basename(file) + end for end in ("-wal", "-shm", "-journal")}
    made = set(os.listdir(folder)) - names - companions
    result.made += len(made)
    result.cases += 1
    if any(wanted not in ("?", found) for wanted, found in zip(expected, given)):
        result.unexpected += 1
        ground.note(f"{case}: {given} instead of {expected}; {made or ''}")
    engine.release()


def check(engine, file, whole):
    """`VerificaDB` never fails; any other answer than that for a whole file counts as failing."""
    if engine.VerificaDB(file, "") < whole:
        raise host.Failure(DATA_FAILURE, "the check found no whole database")


def run():
    template, random, result = ground.new_station("template"), ground.draws("files"), Result()
    os.chmod(ground.folder, 0o755)
    cases = DAMAGES + [(f"scrambled {n}", scrambled, "????", None) for n in range(size(400, 60))]
    for name, damage, expected, while_open in cases:
        for database in ("linea.db", "stazione.db"):
            station = ground.new_station("damaged", template)
            file = os.path.join(station, database)
            for path in (station, *(os.path.join(station, each) for each in os.listdir(station))):
                os.chown(path, NOBODY, NOBODY) if os.geteuid() == 0 else None
            if damage:
                damage(file, random)
            if os.geteuid() == 0 and os.path.isfile(file):
                os.chown(file, NOBODY, NOBODY)
            use(file, f"{name}: {database}", expected, while_open, result)
            os.chmod(station, 0o755)
    none(f"bad files: steps that end otherwise than they should, {result.cases} files", result.unexpected)
    none("bad files: failures without number or sentence", result.silent)
    none("bad files: changed by reading", result.read_changed)
    none("bad files: files made", result.made)
    timed("bad files: longest step in seconds", f"{result.longest:.2f}", 6, result.longest < 6)
