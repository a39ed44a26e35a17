#!/usr/bin/python3
"""Prepares a day on a station, lets the trains of a line run, and draws their graph: stations by
distance, time to the right, planned thin and dashed, actual bold.

    ravelinox import data/empoli/gtfs --station Empoli --out empoli
    train_graph.py empoli --out train_graph.svg

The cells (# %%) run one after the other, in an editor that knows notebooks too.
"""

# %% What to draw
import argparse
import datetime
import graphlib
import html
import math
import random
from collections import defaultdict, namedtuple

import ravelinox

options = argparse.ArgumentParser(description=__doc__,
                                  formatter_class=argparse.RawDescriptionHelpFormatter)
options.add_argument("folder", help="the station, as `ravelinox import` writes it")
options.add_argument("--station", default="Empoli")
options.add_argument("--day", default="2026-04-22", type=datetime.date.fromisoformat)
options.add_argument("--hours", nargs=2, default=[6, 10], type=int, metavar=("FROM", "TO"))
options.add_argument("--line", nargs=2, default=["Firenze Smn", "Pisa C.Le"], metavar="STATION")
options.add_argument("--seed", default=7, type=int, help="the same seed gives the same day")
options.add_argument("--out", default="train_graph.svg")
given = options.parse_args()


# %% The day: the start-up order, with random numbers that can be repeated
class Seeded(random.Random):
    """The engine's random numbers. It asks for a new sequence often; this one just goes on."""

    draw = random.Random.random

    def reseed(self):
        pass


ravelinox.platform.random = Seeded(given.seed)
ravelinox.platform.telephone_window = lambda view: print(view.messages.split("\r\n")[-1])

engine = ravelinox.cmdl1()
engine.DB_stazione = given.folder.replace("/", "\\") + "\\stazione.db"
engine.Connetti_DBstazione_DLL()
engine.Imposta_proprieta_pds()
engine.Connetti_DBlinea_DLL()
engine.Nome_PdS = given.station
midnight = engine.MkTime(0, 0, 0, given.day.day, given.day.month, given.day.year)
begin, end = (midnight + hour * 3600 for hour in given.hours)
engine.StartTime = begin - 3600  # trains that are on their way when the picture begins
engine.Global_ProbabilitaSoppressione = 50
engine.Global_Puntualita = 300
engine.Inzializza_Orario(engine.StartTime, midnight)

# %% Reading: a train's run as a list of stops
Stop = namedtuple("Stop", "train station planned_in planned_out real_in real_out recovery")
COLUMNS = ("Numero, Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo,"
           " Effettiva_partenza, Recupero_ritardo")


def rows(statement):
    slot = engine.DLLRS3
    slot.open(statement)
    found = list(slot)
    slot.close()
    return found


def run_of(train):
    return [Stop(*row) for row in rows(f"SELECT {COLUMNS} FROM circolazione"
                                       f" WHERE Numero = {train} ORDER BY Orario_arrivo")]


first, last = engine.StartTime, end + 3600
trains = [row[0] for row in rows(
    f"SELECT DISTINCT Numero FROM circolazione WHERE Orario_arrivo >= {first}"
    f" AND Orario_arrivo < {last} ORDER BY Numero")]
runs = {train: run_of(train) for train in trains}

# %% The line: its stations in order, each with its distance
sections = {}
for one, other, length in rows("SELECT Estremo1, Estremo2, Lunghezza FROM linea"):
    sections[one, other] = sections[other, one] = length


def distances(lists):
    """Each station's distance from the first one, given lists of stations in the line's order. A
    train that passes stations by has shorter sections than one that calls at all of them, so the
    longest way counts."""
    before = defaultdict(set)
    for names in lists:
        for here, there in zip(names, names[1:]):
            before[there].add(here)
    found = {}
    for name in graphlib.TopologicalSorter(before).static_order():
        found[name] = max((found[back] + sections.get((back, name), 1) for back in before[name]),
                          default=0)
    return found


calls = [[stop.station for stop in run] for run in runs.values()]
whole = [names for names in calls if set(given.line) <= set(names)]
whole = [names if names.index(given.line[0]) < names.index(given.line[1]) else names[::-1]
         for names in whole]
whole = [names[names.index(given.line[0]):names.index(given.line[1]) + 1] for names in whole]
if not whole:
    raise SystemExit(f"No train runs from {given.line[0]} to {given.line[1]} in these hours.")
kilometre = distances(whole)
# Trains of a part of the line tell the order of stations at which no train of the whole calls.
parts = [[name for name in names if name in kilometre] for names in calls]
kilometre = distances(whole + [
    names if kilometre[names[0]] < kilometre[names[-1]] else names[::-1]
    for names in parts if len(names) > 1])


# %% Running: what happens on the line, and every movement of it recorded in its turn
chance = random.Random(given.seed)


def happened(run):
    """The run as it will have been: the expected times, now and then a train held at a station,
    which wins back on the way what its timetable allows."""
    held = 0
    for stop in run:
        held = max(0, held - stop.recovery)
        real_in = stop.real_in and stop.real_in + held
        if chance.random() < 0.04:
            held += chance.choice([120, 300, 600])
        real_out = stop.real_out and stop.real_out + held
        yield stop._replace(real_in=real_in, real_out=real_out)


runs = {train: list(happened(run)) for train, run in runs.items()}
movements = [(time, train, kind, stop.station) for train, run in runs.items() for stop in run
             for kind, time in (("Arrivo", stop.real_in), ("Partenza", stop.real_out))
             if time is not None and engine.StartTime < time <= end]
for time, train, kind, station in sorted(movements):
    engine.RegistraEvento(kind, train, time, station)
delays = {train: str(engine.RicavaRitardo(train, end, 5)) for train in runs}
late = [f"{train} {delay}" for train, delay in delays.items() if delay.startswith("+")]
print(f"{len(movements)} movements; late by 5 minutes and more: {', '.join(late)}")
engine.Disconnetti_DB()

# %% The picture
WIDTH, HEIGHT, LEFT, RIGHT, TOP, BOTTOM = 1500, 860, 150, 50, 90, 60
STYLE = """
text { font-family: 'DejaVu Sans', Helvetica, Arial, sans-serif; fill: #24303c; font-size: 13px }
.title { font-size: 20px; font-weight: bold }
.own { font-weight: bold }
.number { font-size: 10.5px; text-anchor: middle; stroke-width: 3px; paint-order: stroke;
          stroke-linejoin: round }
path { fill: none; stroke-linejoin: round; stroke-linecap: round }
.grid path { stroke: #e3e8ec; stroke-linecap: butt }
.grid .hour { stroke: #aab4bd; stroke-width: 1.4 }
.grid .station { stroke: #c5cdd4 }
.grid path.own { stroke: #5d6b78; stroke-width: 1.6 }
.planned { stroke: #8a96a1; stroke-width: 1; stroke-dasharray: 5 4 }
.actual { stroke-width: 2.6 }
.there { stroke: #1b6ca8 } .back { stroke: #c4512d }
text.there { stroke: #fff; fill: #1b6ca8 } text.back { stroke: #fff; fill: #c4512d }
"""
length = max(kilometre.values())


def x(time):
    return LEFT + (time - begin) / (end - begin) * (WIDTH - LEFT - RIGHT)


def y(station):
    return TOP + kilometre[station] / length * (HEIGHT - TOP - BOTTOM)


def path(points, kind):
    steps = " L".join(f"{across:.1f} {down:.1f}" for across, down in points)
    return f'<path class="{kind}" d="M{steps}"/>'


def text(across, down, words, kind="", more=""):
    return f'<text x="{across:.1f}" y="{down:.1f}" class="{kind}" {more}>{html.escape(words)}</text>'


def grid():
    for minute in range(0, (end - begin) // 60 + 1, 10):
        across = x(begin + minute * 60)
        hour = minute % 60 == 0
        yield path([(across, TOP), (across, HEIGHT - BOTTOM)], "hour" if hour else "")
        if hour:
            clock = f"{engine.UnMkTime(begin + minute * 60):%H:%M}"
            for down in (TOP - 10, HEIGHT - BOTTOM + 22):
                yield text(across, down, clock, more='text-anchor="middle"')
    lowest = 0
    for station in sorted(kilometre, key=kilometre.get):
        own = "own" if station == given.station else ""
        yield path([(LEFT, y(station)), (WIDTH - RIGHT, y(station))], f"station {own}")
        lowest = max(lowest + 14, y(station) + 4)  # names of close neighbours, one below the other
        yield text(LEFT - 12, lowest, station, own, 'text-anchor="end"')


def stretches(run):
    """The parts of a run that lie on the line."""
    part = []
    for stop in run:
        if stop.station in kilometre:
            part.append(stop)
        else:
            yield part
            part = []
    yield part


def points(part, arrival, departure):
    for stop in part:
        for time in (getattr(stop, arrival), getattr(stop, departure)):
            if time is not None:
                yield x(time), y(stop.station)


def number(train, line, direction):
    """The train's number, above the longest part of its line that is to be seen."""
    seen = [(after[0] - ahead[0], ahead, after) for ahead, after in zip(line, line[1:])
            if ahead[1] != after[1] and ahead[0] > LEFT and after[0] < WIDTH - RIGHT]
    if not seen:
        return ""
    _, (left, up), (right, down) = max(seen)
    across, middle = (left + right) / 2, (up + down) / 2
    slope = math.degrees(math.atan2(down - up, right - left))
    return text(across, middle - 6, str(train), f"number {direction}",
                f'transform="rotate({slope:.1f} {across:.1f} {middle:.1f})"')


planned, actual, numbers = [], [], []
for train, run in runs.items():
    for part in stretches(run):
        if len(part) < 2:
            continue
        direction = "there" if y(part[0].station) < y(part[-1].station) else "back"
        planned.append(path(points(part, "planned_in", "planned_out"), "planned"))
        line = list(points(part, "real_in", "real_out"))
        actual.append(path(line, f"actual {direction}"))
        numbers.append(number(train, line, direction))

title = f"{given.line[0]} – {given.line[1]}, {given.day:%d.%m.%Y}"
legend = [text(LEFT, 36, title, "title")]
for at, (kind, words) in enumerate([("planned", "planned"), ("actual there", f"to {given.line[1]}"),
                                    ("actual back", f"to {given.line[0]}")]):
    across = WIDTH - RIGHT - 520 + at * 180
    legend += [path([(across, 31), (across + 36, 31)], kind), text(across + 46, 36, words)]

with open(given.out, "w", encoding="utf-8") as picture:
    picture.write("\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">',
        f"<style>{STYLE}</style>", f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#fff"/>',
        f'<clipPath id="plot"><rect x="{LEFT}" y="{TOP - 4}" width="{WIDTH - LEFT - RIGHT}"'
        f' height="{HEIGHT - TOP - BOTTOM + 8}"/></clipPath>',
        '<g class="grid">', *grid(), "</g>", *legend, '<g clip-path="url(#plot)">',
        *planned, *actual, *numbers, "</g>", "</svg>\n"]))
print(f"{given.out}: {len(actual)} trains on {len(kilometre)} stations")
