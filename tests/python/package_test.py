"""The Python package as a host uses it: a day on the bundled station, values, failures, seams."""

import argparse
import contextlib
import copy
import datetime
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
import unittest

parser = argparse.ArgumentParser()
for name in ("package", "program", "source"):
    parser.add_argument("--" + name, required=True)
built = parser.parse_args()
sys.path.insert(0, built.package)
import ravelinox  # noqa: E402
from ravelinox import EMPTY, MISSING, Error, platform  # noqa: E402

SOURCE = pathlib.Path(built.source)
STATION = "Empoli"


class Seeded(random.Random):
    def draw(self):
        return self.random()

    def reseed(self):
        pass


def setUpModule():
    global work, fresh
    work = pathlib.Path(tempfile.mkdtemp())
    fresh = work / "fresh"
    subprocess.run([built.program, "import", SOURCE / "data/empoli/gtfs", "--station", STATION,
                    "--out", fresh], check=True, stdout=subprocess.DEVNULL)
    platform.component_folder = str(work)
    platform.telephone_window = None


def tearDownModule():
    shutil.rmtree(work)


class DayCase(unittest.TestCase):
    """A fresh copy of the bundled station, and a day prepared on it."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=work)) / "station"
        shutil.copytree(fresh, self.folder)
        self.engine = self.connected()

    def connected(self):
        engine = ravelinox.cmdl1()
        engine.DB_stazione = str(self.folder / "stazione.db").replace("/", "\\")
        engine.Connetti_DBstazione_DLL()
        engine.Imposta_proprieta_pds()
        engine.Connetti_DBlinea_DLL()
        engine.Nome_PdS = STATION
        self.midnight = engine.MkTime(0, 0, 0, 22, 4, Anno=2026)
        engine.StartTime = self.midnight + 6 * 3600
        engine.Global_ProbabilitaSoppressione = 50
        engine.Global_Puntualita = 300
        return engine

    def prepare(self, source):
        with ravelinox.override(random=source):
            return self.engine.Inzializza_Orario(self.engine.StartTime, self.midnight)

    def rows(self, statement):
        slot = self.engine.DLLRS3
        slot.open(statement)
        found = list(slot)
        slot.close()
        return found

    def next_arrival(self):
        return self.rows("SELECT TOP 1 Numero, Orario_arrivo FROM circolazione"
                         f" WHERE Stazione = '{STATION}' AND Effettivo_arrivo >="
                         f" {self.engine.StartTime} AND Orario_partenza > 0"
                         " ORDER BY Effettivo_arrivo")[0]


class Day(DayCase):
    def test_a_movement_waits_for_a_writer_on_another_thread(self):
        # Were the interpreter's lock kept while waiting for the file's, nobody could commit.
        self.assertIs(self.prepare(Seeded(7)), EMPTY)
        train, scheduled = self.next_arrival()
        other = ravelinox.RowWriter(str(self.folder / "linea.db"))
        other.append("accessi", [999, "", "Nowhere"])
        committing = threading.Timer(0.3, other.commit)
        committing.start()
        self.engine.RegistraEvento(Stazione=STATION, Orario=scheduled + 60, NumTreno=train,
                                   TipoEvento="Arrivo")
        committing.join()
        self.assertEqual(self.rows("SELECT Effettivo_arrivo FROM circolazione WHERE Numero ="
                                   f" {train} AND Stazione = '{STATION}'"), [(scheduled + 60,)])
        self.assertTrue(self.engine.CercaListaTreni(train, "Arrivo"))
        self.assertRegex(self.engine.RicavaRitardo(train, scheduled + 60, 5), r"^[+-]? *\d+$")
        self.assertIn(f" {train}", ravelinox.frmTelefonoINdll.TreniArrivati)
        self.engine.Disconnetti_DB()


class Values(DayCase):
    def test_every_kind_comes_back_as_it_went(self):
        engine = ravelinox.cmdl1()
        self.assertIs(engine.Nome_PdS, EMPTY)
        moment = datetime.datetime(1969, 12, 31, 23, 59, 59)
        for value in (None, MISSING, EMPTY, True, False, 0, -2**31, 2**31 - 1, 0.1, "", "è",
                      "\udcff", moment, engine.DLLCN, engine.DLLRS):
            engine.App_path = value
            self.assertEqual(engine.App_path, value)
            self.assertIs(type(engine.App_path), type(value))
        self.assertEqual(engine.UnMkTime(-1), moment)
        self.assertIs(copy.deepcopy(MISSING), MISSING)
        self.assertIs(engine.CausaRitardo("?"), EMPTY)

    def test_what_does_not_fit_is_refused(self):
        engine = ravelinox.cmdl1()
        zone = datetime.datetime.now(datetime.timezone.utc)
        for failure, act in [
                (OverflowError, lambda: setattr(engine, "App_path", 2**31)),
                (OverflowError, lambda: engine.MkTime(256, 0, 0, 1, 1, 2026)),
                (TypeError, lambda: setattr(engine, "App_path", b"bytes")),
                (TypeError, lambda: setattr(engine, "App_path", zone)),
                (TypeError, lambda: setattr(engine, "DLLCN", engine.DLLRS)),
                (TypeError, lambda: engine.UnMkTime(None)),
                (TypeError, lambda: engine.UnMkTime(Timestamp=1, More=2)),
                (TypeError, lambda: setattr(platform, "voice", 5)),
                (TypeError, lambda: setattr(platform, "random", None))]:
            with self.subTest(failure), self.assertRaises(failure):
                act()

    def test_fields_and_slots(self):
        rows = ravelinox.Recordset()
        rows.active_connection = self.engine.DLLCN2
        rows.lock_type = ravelinox.LockType.optimistic
        rows.open("SELECT Lista_accessi FROM accessi WHERE Nome_stazione = 'Empoli'")
        field = rows.field(0)
        field.value = None
        rows.update()
        del rows  # the field keeps its slot
        self.assertIsNone(field.value)
        self.assertEqual(self.rows("SELECT * FROM accessi WHERE Lista_accessi IS NULL")[0][1], None)

    def test_a_writer_makes_all_rows_or_none(self):
        path = str(work / "new.db")
        ravelinox.create_line_database(path)
        with ravelinox.RowWriter(path) as rows:
            rows.append("accessi", (1, "a", "A"))
        with contextlib.suppress(KeyError), ravelinox.RowWriter(path) as rows:
            rows.append("accessi", (2, "b", "B"))
            raise KeyError
        with self.assertRaises(Error):
            rows.commit()
        with contextlib.closing(sqlite3.connect(path)) as other:
            self.assertEqual(len(other.execute("SELECT * FROM accessi").fetchall()), 1)


class Failures(DayCase):
    def test_numbers(self):
        engine = self.engine
        slot = engine.DLLRS2
        slot.active_connection = engine.DLLCN2
        for number, act in [(13, lambda: engine.MkTime(0, 0, 0, 31, 2, 2026)),
                            (3021, lambda: engine.FermateSuccessive(1, STATION)),
                            (3705, lambda: engine.FermateSuccessive(1, STATION)),
                            (0x80040E14, lambda: slot.open("DELETE"))]:
            with self.subTest(number), self.assertRaises(Error) as caught:
                act()
            self.assertEqual(caught.exception.number & 0xFFFFFFFF, number)
            self.assertEqual(str(caught.exception), caught.exception.text)
            self.assertTrue(caught.exception.text)
            self.assertIs(type(copy.copy(caught.exception)), type(caught.exception))


class Seams(DayCase):
    def test_random_source(self):
        class Script(Seeded):
            def draw(self):
                return self.drawn()

        source = Script()
        for drawn, failure in [(lambda: 1 / 0, ZeroDivisionError), (lambda: 1.0, ValueError),
                               (lambda: float("nan"), ValueError), (lambda: "x", TypeError)]:
            source.drawn = drawn
            with self.subTest(failure), self.assertRaises(failure):
                self.prepare(source)
            self.engine = self.connected()
        source.drawn = lambda: 1 - 2**-53  # 1 in single precision
        with ravelinox.override(random=source):
            self.assertIsInstance(self.engine.CausaRitardo("Guasto"), str)

    def test_telephone(self):
        shown, reports = [], []
        form = ravelinox.frmTelefonoINdll
        form.close()

        class Window:
            def show(self, view):
                shown.append((view.caller, view.messages, view.send_enabled))
                raise KeyError("the window is gone")

            def closed(self):
                return len(shown) > 1

        hook, sys.unraisablehook = sys.unraisablehook, lambda it: reports.append(it.exc_type)
        try:
            with ravelinox.override(telephone_window=Window):
                form.RiceviComunicazione("DCO", "uno")
                form.RiceviComunicazione("DCO", None)
                self.assertFalse(form.is_open)
        finally:
            sys.unraisablehook = hook
        self.assertEqual(shown, [("DCO", "uno", True), ("DCO", "uno\r\n", True)])
        self.assertEqual(reports, [KeyError, KeyError])

    def test_voice_while_another_thread_runs(self):
        speaking, answered = threading.Event(), threading.Event()
        spoken, failures = [], []

        class Voice:
            def speak(self, text):
                spoken.append(text)
                speaking.set()
                answered.wait(10)
                raise Error(429, "no more breath")

        def announce(engine):
            try:
                engine.AutAsSintesiVocale(0, "Stazione", STATION)
            except Error as failure:
                failures.append(failure.number)

        with ravelinox.override(voice=Voice):
            thread = threading.Thread(target=announce, args=[self.engine])
            thread.start()
            self.assertTrue(speaking.wait(10))
            with self.assertRaises(Error) as refused:
                self.engine.VisMovimento()
            self.assertEqual(refused.exception.number, 5)
            self.assertEqual(self.connected().EasterMondayDate(2024), "0104")
            answered.set()
            thread.join()
        self.assertEqual((failures, len(spoken)), ([429], 1))
        self.assertIn(STATION, spoken[0])
        with ravelinox.override(voice=spoken.append):
            self.engine.AutAsSintesiVocale(0, "Stazione", "Pisa")
        self.assertIn("Pisa", spoken[1])
        with ravelinox.override(voice=None), self.assertRaises(Error) as silent:
            self.engine.AutAsSintesiVocale(0, "Stazione", STATION)
        self.assertEqual(silent.exception.number, 429)

    def test_a_folder_of_the_user_and_seams_that_outlive_the_interpreter(self):
        script = ("import os; os.access = lambda *_: False; import ravelinox, sys\n"
                  "print(ravelinox.platform.component_folder)\n"
                  "ravelinox.platform.voice = ravelinox.platform.beep = print\n"
                  "ravelinox.platform.telephone_window = lambda view: None\n"
                  "ravelinox.frmTelefonoINdll.RiceviComunicazione('a', 'b')\n"
                  "ravelinox.cmdl1().Registra('x')\n")
        home = work / "home"
        done = subprocess.run([sys.executable, "-c", script], check=True, capture_output=True,
                              text=True, env={**os.environ, "PYTHONPATH": built.package,
                                              "XDG_DATA_HOME": str(home)})
        self.assertEqual(done.stdout.strip(), str(home / "ravelinox"))
        self.assertTrue((home / "ravelinox" / "log_InizializzaOrario.txt").exists())


class Stubs(unittest.TestCase):
    def test_they_follow_the_member_table(self):
        subprocess.run([sys.executable, SOURCE / "python/write_stub", built.package, "--check"],
                       check=True)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
