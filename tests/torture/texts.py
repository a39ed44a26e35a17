"""Hostile texts in every place that takes a text: a result or a failure with number and sentence,
soon, and no row is changed but those that the joined statement means."""

import os

import ground
from ground import figure, none, outcome, rows, timed

TEXTS = ["", "'", "''", "'''", "%", "_", "[a-z]%", "\"", "`", "\\", "/", "../..", "--", "' --",
         "x'; DELETE FROM circolazione; --", "x'; UPDATE enti SET Numero = 0",
         "' OR 1 = ANY (SELECT Numero FROM enti) OR '", "x' UNION SELECT * FROM enti",
         "\0", "a\0b", "Empoli\0' OR 'a' = 'a", "\ud800", "x\udfff\ud800y", "🚂", "\u202eilopmE",
         "e\u0301" * 100, "\r\n.\r\n", "%s%n%999999d", "|", " - ", "|@|@", "1|" * 1000, "  ",
         "x" * (1 << 20), "'" * (1 << 20), "(" * 100_000, "é🚂" * (1 << 18), " - " * (1 << 18)]
ALL = "' OR 'a' = 'a"  # means every row
TRAIN = 4042  # it comes through Empoli

# Each method that takes a text: its arguments, in which a text is put in every text's place in turn,
# and the table that it may change.
METHODS = [
    ("C_Sgn", ("A1-1", "A1"), None), ("VerRich_fs", ("Empoli", "Montelupo"), None),
    ("CausaRitardo", ("Guasto",), None), ("FermateSuccessive", (TRAIN, "Empoli"), None),
    ("RitardaTreno", (TRAIN, 0, 0, "ES 01"), "generalita_treni"),
    ("RegistraEvento", ("Arrivo", TRAIN, 1, "Empoli"), "circolazione"),
    ("RegistraEvento", ("Partenza", TRAIN, 1, "Empoli"), "circolazione"),
    ("AnalisiPrecedenza", (TRAIN, TRAIN, "Empoli"), None), ("VerificaDB", ("no", ""), None),
    ("DecrementaManutenzione", ("CDB", 1), "enti"), ("RicavaStatoManutenzione", ("CDB", 1), None),
    ("ProssimoArrivo", ("Empoli", "Montelupo", 0), None), ("Registra", ("",), None),
    ("AutAsSintesiVocale", (TRAIN, "Stazione", "Empoli"), None),
    ("AutAsSintesiVocale", (TRAIN, "Cambio binario", "1", "2"), None),
    ("CheckSumDigit", ("A",), None), ("CercaListaTreni", (TRAIN, "Arrivo"), None),
    ("CorsaTreno", ("1",), None)]
# Properties that statements and paths are made of, and a call that reads them.
PROPERTIES = [("Nome_PdS", "AggiornaFileSSI", (0,)), ("Nome_PdS", "CercaListaTreni", (1, "Arrivo")),
              ("Nome_PdS", "FermateSuccessive", (TRAIN, "")), ("DB_linea", "Connetti_DBlinea_DLL", ()),
              ("Nome_PdS", "RicavaInfoCircolazione", (TRAIN, 0)),
              ("DB_stazione", "Connetti_DBstazione_DLL", ()),
              ("AutAsModificheBin", "AggiornaFileSSI", (0,))]


def with_property(engine, name, call, given, text):
    engine = ground.new_engine() if name.startswith("DB_") else engine  # not yet connected
    before = getattr(engine, name)
    setattr(engine, name, text)
    try:
        return getattr(engine, call)(*given)
    finally:
        setattr(engine, name, before)


def places():
    """Where a text goes, the table that may change there, and the call."""
    for name, given, table in METHODS:
        for at in (at for at, value in enumerate(given) if isinstance(value, str)):
            yield f"{name}, {at}", table, lambda engine, text, name=name, given=given, at=at: (
                getattr(engine, name)(*given[:at], text, *given[at + 1:]))
    for name, call, given in PROPERTIES:
        yield f"{name}, {call}", None, lambda engine, text, name=name, call=call, given=given: (
            with_property(engine, name, call, given, text))
    yield "a slot's source", None, lambda engine, text: engine.DLLRS3.Open(text)
    yield "a condition", None, lambda engine, text: engine.DLLRS3.Open(
        f"SELECT Numero FROM circolazione WHERE Stazione LIKE '{text}'")


def contents(station):
    """Every table's rows, each with its train or number first."""
    tables = {"linea.db": ["circolazione", "generalita_treni", "accessi", "linea"],
              "stazione.db": ["enti", "proprieta", "itinerari", "banco", "deviatoi", "finestre"]}
    return {table: rows(station, f"SELECT * FROM {table}", file)
            for file, names in tables.items() for table in names}


def run():
    station = ground.prepared_station("hostile")
    os.chdir(ground.new_station("working"))
    engine = ground.connected(station)
    before, files = contents(station), sorted(os.listdir("."))
    calls = strangers = 0
    longest, silent = (0, ""), []
    for place, table, call in places():
        for text in TEXTS + [ALL]:
            failure, seconds = outcome(call, engine, text)
            if failure and (failure.number == 0 or not str(failure).split(": ", 1)[1]):
                silent.append((place, text[:40]))
            calls += 1
            longest = max(longest, (seconds, f"{place}: {text[:20]!a}"))
            ground.close_slots(engine)
            after = contents(station)
            for name in [name for name in before if before[name] != after[name]]:
                # Of the changed table only this train's rows, or all if the text means all.
                others = [new for old, new in zip(before[name], after[name])
                          if old != new and TRAIN not in old]
                if name != table or others and text != ALL and name != "enti":
                    strangers += 1
                    ground.note(f"{place} with {text[:40]!a} changed {name}: {others[:3]}")
            before = after
    none(f"hostile texts: rows changed that nobody meant, {calls} calls", strangers)
    figure("hostile texts: failures without number or sentence", len(silent), 0, not silent)
    timed(f"hostile texts: longest call in seconds ({longest[1]})", f"{longest[0]:.2f}", 1,
          longest[0] < 1)
    made = sorted(set(os.listdir(".")) - set(files))
    figure("hostile texts: files made in the working folder", made or 0, 0, not made)
