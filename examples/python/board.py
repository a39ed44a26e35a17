#!/usr/bin/env python3
"""The trains that leave a station in the next hour, from a host in Python.

    board.py STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM

The folder holds stazione.db, such as `ravelinox import` writes. The class must be registered: see
docs/automation.md.
"""

import sys

from component import Failure, create, rows


def main(folder, station, day, time):
    year, month, day = map(int, day.split("-"))
    hour, minute = map(int, time.split(":"))
    engine = create("Ravelinox.cmdl1")

    # The start-up order: sessions, own station, the day's timetable.
    engine.DB_stazione = folder.replace("/", "\\") + "\\stazione.db"
    engine.Connetti_DBstazione_DLL()
    engine.Imposta_proprieta_pds()
    engine.Connetti_DBlinea_DLL()
    engine.Nome_PdS = station
    midnight = engine.MkTime(0, 0, 0, day, month, year)
    now = engine.StartTime = midnight + hour * 3600 + minute * 60
    engine.Global_ProbabilitaSoppressione = 50  # one train in fifty; 0 suppresses all
    engine.Global_Puntualita = 300
    engine.Inzializza_Orario(now, midnight)

    slot = engine.DLLRS3
    slot.Open("SELECT Numero, Effettiva_partenza FROM circolazione"
              f" WHERE Stazione = '{station}' AND Effettiva_partenza >= {now}"
              f" AND Effettiva_partenza < {now + 3600} ORDER BY Effettiva_partenza")
    departures = list(rows(slot))
    slot.Close()
    for train, leaves in departures:
        print(f"{engine.UnMkTime(leaves):%H:%M}  {train:>8}  {engine.RicavaRitardo(train, leaves):>5}"
              f"  {engine.CorsaTreno(train)}")
    engine.Disconnetti_DB()


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    try:
        main(*sys.argv[1:])
    except Failure as failure:
        sys.exit(f"board: {failure}")
