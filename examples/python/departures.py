#!/usr/bin/python3
"""The trains that leave a station in the next hour, with the Python package.

    departures.py STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM

The folder holds stazione.db, such as `ravelinox import` writes.
"""

import datetime
import sys

import ravelinox


def departures(folder, station, moment):
    engine = ravelinox.cmdl1()
    engine.DB_stazione = folder.replace("/", "\\") + "\\stazione.db"
    engine.Connetti_DBstazione_DLL()
    engine.Imposta_proprieta_pds()
    engine.Connetti_DBlinea_DLL()
    engine.Nome_PdS = station
    midnight = engine.MkTime(0, 0, 0, moment.day, moment.month, Anno=moment.year)
    engine.StartTime = midnight + moment.hour * 3600 + moment.minute * 60
    engine.Global_ProbabilitaSoppressione = 50  # one train in fifty; 0 suppresses all
    engine.Global_Puntualita = 300  # seconds
    engine.Inzializza_Orario(engine.StartTime, midnight)

    rows = engine.DLLRS3
    rows.open("SELECT Numero, Effettiva_partenza FROM circolazione"
              f" WHERE Stazione = '{station}' AND Effettiva_partenza >= {engine.StartTime}"
              f" AND Effettiva_partenza < {engine.StartTime + 3600} ORDER BY Effettiva_partenza")
    found = list(rows)  # each a tuple of its values
    rows.close()
    for train, leaves in found:
        yield engine.UnMkTime(leaves), train, engine.RicavaRitardo(train, leaves), engine.CorsaTreno(train)
    engine.Disconnetti_DB()


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    moment = datetime.datetime.fromisoformat(" ".join(sys.argv[3:]))
    try:
        for leaves, train, delay, way in departures(sys.argv[1], sys.argv[2], moment):
            print(f"{leaves:%H:%M}  {train:>8}  {delay:>5}  {way}")
    except ravelinox.Error as failure:
        sys.exit(f"departures: {failure.number}: {failure.text}")
