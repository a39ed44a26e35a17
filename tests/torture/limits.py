"""No space, a limit to files' sizes, no free descriptors: a write fails with an error, what was
saved before stays saved, and all works again once there is room."""

import contextlib
import os
import resource
import subprocess

import ground
from ground import DATA_FAILURE, connected, figure, none, number_of, size
from kills import HALF_DAY, lost_steps, prepare_day, read, texts

FULL = 61


@contextlib.contextmanager
def limited(which, most):
    before = resource.getrlimit(which)
    resource.setrlimit(which, (most, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(which, before)


@contextlib.contextmanager
def filled(folder):
    """A file takes all the space that there is."""
    file = os.path.join(folder, "filling")
    with open(file, "wb", buffering=0) as out, contextlib.suppress(OSError):
        while True:
            out.write(b"x" * 4096)
    try:
        yield
    finally:
        os.unlink(file)


class Starved:
    """Set-ups that come to a write which fails."""

    runs = failed = other_error = lost = half = torn = refused = 0

    def run(self, station, starving, room=0):
        """Starves the set-up after its first steps, as many as `room` says."""
        engine, kept, under_way = connected(station), {}, [""]
        hunger = contextlib.ExitStack()

        def step(statement, change):
            if len(kept) == room:
                hunger.enter_context(starving)
            under_way[0] = statement
            change()
            kept[statement] = texts(read(engine.DLLRS5, statement))

        with hunger:
            number = number_of(prepare_day, engine, step)
        ground.close_slots(engine)
        self.runs += 1
        self.failed += number != 0
        self.other_error += number not in (0, DATA_FAILURE)
        self.lost += lost_steps(station, kept, under_way[0])
        self.half += ground.rows(station, HALF_DAY)[0][0]
        self.refused += number_of(ground.set_up, engine) != 0
        engine.Disconnetti_DB()
        self.torn += not ground.whole(station)

    def report(self, name):
        figure(f"{name}: set-ups that fail, of {self.runs}", self.failed, "1 at least",
               self.failed > 0)
        for what, count in (("other errors", self.other_error), ("saved steps lost", self.lost),
                            ("rows half written", self.half), ("files not whole", self.torn),
                            ("set-ups that fail afterwards", self.refused)):
            none(f"{name}: {what}", count)


def size_limits(template, random):
    starved = Starved()
    for _ in range(size(60, 10)):
        most = random.choice([0, 512, random.randrange(1 << 16), random.randrange(1 << 22)])
        starved.run(ground.new_station("limited", template),
                    limited(resource.RLIMIT_FSIZE, most), random.randrange(200))
    starved.report("file-size limit")


def full_disk(template, random):
    """On a small file system of its own, where one may be mounted."""
    disk, starved = os.path.join(ground.folder, "disk"), Starved()
    os.makedirs(disk, exist_ok=True)
    mount = ["mount", "-t", "tmpfs", "-o", "size=12m", "ravelinox", disk]
    if subprocess.run(mount, stderr=subprocess.DEVNULL, check=False).returncode != 0:
        return ground.note("limits: no file system may be mounted here; a full disk is left out")
    try:
        for _ in range(size(40, 8)):
            station = ground.new_station("disk/station", template)
            starved.run(station, filled(disk), random.randrange(300))
    finally:
        subprocess.run(["umount", "--lazy", disk], check=True)
    return starved.report("full disk")


def open_files():
    return len(os.listdir("/proc/self/fd")) - 1


def descriptors(template):
    """Connecting, working and writing the text files with so many free descriptors."""
    crashes, refused, afterwards = 0, 0, 0
    for free in range(12):
        station = ground.new_station("descriptors", template)
        engine = ground.new_engine()
        with limited(resource.RLIMIT_NOFILE, open_files() + free):
            failed = number_of(start, engine, station)
            refused += failed != 0
            crashes += failed not in (0, DATA_FAILURE, ground.CLOSED, ground.OPEN, 75)
        ground.close_slots(engine)
        engine.Disconnetti_DB()
        afterwards += number_of(start, engine, station) != 0
        engine.Disconnetti_DB()
    figure("no descriptors: starts refused, of 12", refused, "1 at least", refused > 0)
    none("no descriptors: other errors", crashes)
    none("no descriptors: starts that fail afterwards", afterwards)


def start(engine, station):
    engine.DB_stazione = station.replace("/", "\\") + "\\stazione.db"
    engine.Connetti_DBstazione_DLL()
    engine.Imposta_proprieta_pds()
    engine.Connetti_DBlinea_DLL()
    engine.Nome_PdS, engine.Global_ProbabilitaSoppressione = "Empoli", 32767
    ground.set_up(engine)
    engine.AggiornaFileSSI(ground.START)
    engine.Registra("a line")


def text_files(station):
    engine = connected(station)
    log = os.path.join(ground.folder, "log_InizializzaOrario.txt")
    information = os.path.join(ground.folder, "Output.ssi")
    engine.Registra("first")
    kept, ends = os.path.getsize(log), []

    def write_both(wanted):
        ends.append(number_of(engine.Registra, "1234567") == wanted)
        ends.append(number_of(engine.AggiornaFileSSI, ground.START) == wanted)
        ground.close_slots(engine)

    for most in (0, 1, kept, kept + 1, kept + 3, kept + 7):
        with limited(resource.RLIMIT_FSIZE, most):
            write_both(FULL)
        ends.append(os.path.getsize(log) == kept)
    for file in (log, information):
        os.rename(file, file + ".away")
        os.symlink("/dev/full", file)
    write_both(FULL)
    for file in (log, information):
        os.replace(file + ".away", file)
    write_both(0)
    with open(log, "rb") as lines:
        ends.append(lines.read()[kept:] == b"1234567\r\n")
    wrong = ends.count(False)
    none(f"text files: writes that end otherwise than they should, of {len(ends)}", wrong)
    engine.Disconnetti_DB()


def run():
    random, template = ground.draws("limits"), ground.new_station("template")
    size_limits(template, random)
    full_disk(template, random)
    descriptors(template)
    text_files(ground.prepared_station("texts"))
