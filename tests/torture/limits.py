"""No space, a limit to files' sizes, no free descriptors: a write fails with an error, what was
saved before stays saved, and all works again once there is room."""

import contextlib
import os
import resource
import subprocess

import ground
from ground import DATA_FAILURE, connected, figure, none, number_of, size
from kills import HALF_DAY, Damage, prepare_day, read, texts

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


class Starving:
    """Set-ups that come to a write which fails."""

    def __init__(self):
        self.damage, self.failed, self.runs = Damage(HALF_DAY), 0, 0

    def run(self, station, hunger, room):
        """Starves a set-up after its first steps, as many as `room` says."""
        engine, kept, under_way = connected(station), {}, ""

        def step(statement, change):
            nonlocal under_way
            if len(kept) == room:
                starved.enter_context(hunger)
            under_way = statement
            change()
            kept[statement] = texts(read(engine.DLLRS5, statement))

        with contextlib.ExitStack() as starved:
            number = number_of(prepare_day, engine, step)
        ground.close_slots(engine)
        self.runs += 1
        self.failed += number != 0
        self.damage.counts["other errors"] += number not in (0, DATA_FAILURE)
        self.damage.look(station, kept, under_way, (ground.set_up, engine))
        engine.Disconnetti_DB()

    def report(self, name):
        figure(f"{name}: set-ups that fail, of {self.runs}", self.failed, "1 at least",
               self.failed > 0)
        self.damage.report(name)


def size_limits(template, random):
    starving = Starving()
    for _ in range(size(60, 10)):
        most = random.choice([0, 512, random.randrange(1 << 16), random.randrange(1 << 22)])
        starving.run(ground.new_station("limited", template),
                     limited(resource.RLIMIT_FSIZE, most), random.randrange(200))
    starving.report("file-size limit")


def full_disk(template, random):
    """On a small file system of its own, where one may be mounted."""
    disk, starving = os.path.join(ground.folder, "disk"), Starving()
    os.makedirs(disk, exist_ok=True)
    mount = ["mount", "-t", "tmpfs", "-o", "size=12m", "ravelinox", disk]
    if subprocess.run(mount, stderr=subprocess.DEVNULL, check=False).returncode != 0:
        return ground.note("limits: no file system may be mounted here; a full disk is left out")
    try:
        for _ in range(size(40, 8)):
            station = ground.new_station("disk/station", template)
            starving.run(station, filled(disk), random.randrange(300))
    finally:
        subprocess.run(["umount", "--lazy", disk], check=True)
    return starving.report("full disk")


def descriptors(template):
    """Connecting, working and writing the text files with so many free descriptors."""
    crashes, refused, afterwards = 0, 0, 0
    for free in range(12):
        station = ground.new_station("descriptors", template)
        engine = ground.new_engine()
        open_files = len(os.listdir("/proc/self/fd")) - 1
        with limited(resource.RLIMIT_NOFILE, open_files + free):
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
    ground.set_up(connected(station, engine))
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
