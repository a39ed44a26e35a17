"""Bad files: each is connected to, checked, asked and changed, and every step answers or fails with
number and sentence. Nothing is created, and reading changes nothing."""

import contextlib
import os
import shutil
import signal
import sqlite3
from collections import Counter

import ground
from ground import DATA_FAILURE, figure, host, none, outcome, size, timed

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


def steps(engine, file):
    """Connecting, checking, asking and changing."""
    if file.endswith("stazione.db"):
        return [engine.Connetti_DBstazione_DLL, lambda: check(engine, file, 7),
                lambda: engine.RicavaStatoManutenzione("CDB", 1),
                lambda: engine.DecrementaManutenzione("CDB", 1)]
    return [engine.Connetti_DBlinea_DLL, lambda: check(engine, file, 1),
            lambda: engine.CorsaTreno(TRAIN), lambda: engine.RitardaTreno(TRAIN, 60, 0, "ES 01")]


def check(engine, file, whole):
    """`VerificaDB` never fails; any other answer than that for a whole file counts as failing."""
    if engine.VerificaDB(file, "") < whole:
        raise host.Failure(DATA_FAILURE, "the check found no whole database")


def contents(file):
    """What stands in a file and its log, as another program reads copies of them; the file's bytes
    where none can."""
    copy = os.path.join(ground.folder, "copy.db")
    for end in ("", "-wal"):
        with contextlib.suppress(FileNotFoundError):
            os.unlink(copy + end)
        with contextlib.suppress(OSError):
            shutil.copyfile(file + end, copy + end)
    if not os.path.exists(copy):  # there is no file, or none that can be read
        return os.path.lexists(file) and os.lstat(file)[:7]
    try:
        with sqlite3.connect(copy) as other:
            dump = list(other.iterdump())
        other.close()
        return dump
    except (sqlite3.Error, UnicodeDecodeError):
        with open(file, "rb") as content:
            return content.read()


def use(file, case, expected, while_open, counts):
    """How long the longest step on a file took; counts what went otherwise than it should."""
    folder = os.path.dirname(file)
    engine, given, longest = ground.new_engine(), "", 0.0
    engine.DB_stazione = os.path.join(folder, "stazione.db").replace("/", "\\")
    engine.DB_linea, engine.Nome_PdS = "linea.db", "Empoli"
    names, before = set(os.listdir(folder)), contents(file)
    for at, step in enumerate([*steps(engine, file), engine.Disconnetti_DB]):
        failure, seconds = outcome(step)
        given, longest = given + ("-" if failure else "+"), max(longest, seconds)
        counts["failures without number or sentence"] += bool(failure) and (
            failure.number == 0 or len(str(failure)) < 20)
        if at == 1 and while_open:
            while_open(file)
        if at == 2 and not while_open:
            counts["changed by reading"] += contents(file) != before
    companions = {os.path.basename(file) + end for end in ("-wal", "-shm", "-journal")}
    made = set(os.listdir(folder)) - names - companions
    counts["files made"] += len(made)
    wrong = any(wanted not in ("?", found) for wanted, found in zip(expected, given))
    counts["steps that end otherwise than they should"] += wrong
    if wrong:
        ground.note(f"{case}: {given} instead of {expected}; {made or ''}")
    engine.release()
    return longest


def run():
    template, random, counts = ground.prepared_station("template"), ground.draws("files"), Counter()
    if os.geteuid() == 0:  # rights mean nothing to the system's administrator
        for folder, _, files in os.walk(ground.folder):
            for path in (folder, *(os.path.join(folder, file) for file in files)):
                os.chown(path, NOBODY, NOBODY)
        os.setegid(NOBODY)
        os.seteuid(NOBODY)
    cases = DAMAGES + [(f"scrambled {n}", scrambled, "????", None) for n in range(size(400, 60))]
    longest = 0.0
    for name, damage, expected, while_open in cases:
        for database in ("linea.db", "stazione.db"):
            station = ground.new_station("damaged", template)
            file = os.path.join(station, database)
            if damage:
                damage(file, random)
            longest = max(longest, use(file, f"{name}: {database}", expected, while_open, counts))
            os.chmod(station, 0o755)
    figure("bad files: used", len(cases) * 2, "-", True)
    for what, count in counts.items():
        none(f"bad files: {what}", count)
    timed("bad files: longest step in seconds", f"{longest:.2f}", 6, longest < 6)
