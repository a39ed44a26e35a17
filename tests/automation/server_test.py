"""The library file as a host sees it that knows nothing of C++: by name, by identifier, by slot."""

import argparse
import ctypes
import itertools
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from ctypes import POINTER, byref, c_double, c_int16, c_int32, c_uint8, c_void_p

parser = argparse.ArgumentParser()
for name in ("library", "program", "source"):
    parser.add_argument("--" + name, required=True)
built = parser.parse_args()
sys.path.insert(0, os.path.join(built.source, "examples", "python"))
import component as host  # noqa: E402
from component import (Failure, Missing, Nothing, Null, Variant, pack, read_text,  # noqa: E402
                       slot, unpack)

CLASS_ID = "{AB36EA2E-24D7-4003-A5B6-EE73CA74B313}"
INTERFACE_ID = "{8EFB22CF-45A9-42EA-9123-1B4401DAFCC3}"
ERROR_INFO_ID = "{1CF2B120-547D-101B-8E65-08002B2BD119}"
NOTIMPL, MEMBER_NOT_FOUND, MISMATCH, UNKNOWN_NAME = 0x80004001, 0x80020003, 0x80020005, 0x80020006
PARAM_NOT_FOUND, BAD_KIND, OVERFLOW = 0x80020004, 0x80020008, 0x8002000A
BAD_COUNT, NOT_OPTIONAL, CANNOT_REGISTER = 0x8002000E, 0x8002000F, 0x80040201

OBJECTS = ["DLLCN", "DLLCN2", "DLLRSMovimL", "DLLRSMovimS", "DLLRS", "DLLRS2", "DLLRS3", "DLLRS4",
           "DLLRS5"]
VARIANTS = ["DB_linea", "App_path", "DB_stazione", "Aspetto_sgn", "Nome_PdS", "AutItWaitList",
            "AutItExcludeList", "AutAsModificheBin"]
NUMBERS = {"Ric_sgn": (c_int16, -1), "RispRich_fs": (c_int16, -1), "StartTime": (c_int32, 1 << 30),
           "Global_ProbabilitaSoppressione": (c_int16, 32767), "Global_Puntualita": (c_int16, -32768),
           "Global_ProbabilitaGuasti": (c_int16, 3), "Global_DurataManutenzione": (c_int16, 4),
           "AutItEnabled": (c_int16, -1)}
PROPERTIES = [*OBJECTS, *VARIANTS[:4], *list(NUMBERS)[:7], "Nome_PdS", "AutItEnabled", *VARIANTS[5:]]
METHODS = ["Connetti_DBstazione_DLL", "Imposta_proprieta_pds", "Connetti_DBlinea_DLL", "C_Sgn",
           "VerRich_fs", "MkTime", "UnMkTime", "VisMovimento", "CausaRitardo", "RitardaTreno",
           "Inzializza_Orario", "EasterMondayDate", "Disconnetti_DB", "CorsaTreno",
           "FermateSuccessive", "RicavaRitardo", "RicavaInfoCircolazione", "RegistraEvento",
           "AnalisiPrecedenza", "DecrementaManutenzione", "RicavaStatoManutenzione",
           "RicavaPosizioneTreno", "VerificaDB", "AggiornaFileSSI", "ProssimoArrivo", "Registra",
           "AutAsSintesiVocale", "VerificaAs", "CheckSumDigit", "CercaListaTreni"]
# Identifiers count on by one, 0x60030005 is free; numbers have two slots, other properties three.
IDS = {name: 0x40030000 + at for at, name in enumerate(PROPERTIES)}
IDS |= {name: 0x60030000 + at + (at > 4) for at, name in enumerate(METHODS)}
WIDTHS = [2 if name in NUMBERS else 3 for name in PROPERTIES] + [1] * len(METHODS)
SLOTS = dict(zip(PROPERTIES + METHODS, itertools.accumulate(WIDTHS, initial=7)))


def by_reference(kind, content):
    """A variant that refers to `content`, which has to live as long."""
    variant = Variant(kind=kind | host.BYREF)
    variant.value.pointer = ctypes.addressof(content)
    return variant


def typed(kind, value):
    variant = Variant(kind=kind)
    field = {host.UI1: "uint8", host.I2: "int16", host.R4: "real32", host.R8: "real64",
             host.DATE: "real64"}.get(kind, "int32")
    setattr(variant.value, field, value)
    return variant


class ServerCase(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        os.environ["XDG_DATA_HOME"] = self.folder
        os.environ.pop("DISPLAY", None)  # the dispatchers' messages need no window here
        # The component writes its files beside itself, so it gets a folder of its own.
        self.file = os.path.join(self.folder, "Ravelinox.so")
        shutil.copy(built.library, self.file)
        self.library = ctypes.CDLL(self.file)
        self.engine = host.create_from_file(self.file, CLASS_ID)

    def tearDown(self):
        self.engine.release()
        self.assertEqual(self.library.DllCanUnloadNow(), 0, "something is still held")

    def raw(self, name, *types, accessor=0):
        return slot(self.engine.pointer, SLOTS[name] + accessor, *types)

    def refused(self, code, call, *arguments, argument=None):
        with self.assertRaises(Failure) as caught:
            call(*arguments)
        self.assertEqual(caught.exception.number, code, str(caught.exception))
        if argument is not None:
            self.assertEqual(caught.exception.argument, argument)
        return caught.exception


class Face(ServerCase):
    def test_exports_the_four_entry_points(self):
        listing = subprocess.run(["nm", "--dynamic", "--defined-only", built.library], check=True,
                                 capture_output=True, text=True).stdout
        self.assertEqual({line.split()[-1] for line in listing.splitlines()},
                         {"DllRegisterServer", "DllUnregisterServer", "DllGetClassObject",
                          "DllCanUnloadNow"})

    def test_names_have_their_identifiers_in_any_case(self):
        for name, id_ in IDS.items():
            for spelling in (name, name.upper(), name.lower()):
                self.assertEqual(self.engine.id_of(spelling), id_, spelling)
        self.assertEqual(self.engine.id_of("mktime", "ANNO", "ore"), [0x60030006, 5, 0])
        for unknown in (["MkTim"], ["MkTime "], [""], ["MkTimeà"], ["MkTime", "Ore", "Year"]):
            self.refused(UNKNOWN_NAME, self.engine.id_of, *unknown)
        for nothing in (0x60030005, 0x6003001F, 0x40030019, 0, -1):
            self.refused(MEMBER_NOT_FOUND, self.engine.invoke, nothing, host.METHOD | host.GET)

    def test_every_property_through_slots_and_identifiers(self):
        for name, (ctype, number) in NUMBERS.items():
            self.assertEqual(self.raw(name, ctype, accessor=1)(number), 0, name)
            read = ctype()
            self.assertEqual(self.raw(name, POINTER(ctype))(byref(read)), 0, name)
            self.assertEqual(read.value, number, name)
            self.assertEqual(abs(self.engine.invoke(IDS[name], host.GET)), abs(number), name)
            self.refused(MEMBER_NOT_FOUND, self.engine.call, name, host.PUT_REFERENCE, 1)
        for name in VARIANTS:
            given = pack("perché no, " + name)
            self.assertEqual(self.raw(name, Variant, accessor=1)(given), 0, name)
            host.clear(given)
            read = Variant()
            self.assertEqual(self.raw(name, POINTER(Variant))(byref(read)), 0, name)
            self.assertEqual(unpack(read), "perché no, " + name)
            self.assertEqual(self.raw(name, Variant, accessor=2)(typed(host.I4, 7)) & 0xFFFFFFFF,
                             MISMATCH, "only an object is set by reference")
            rows = self.engine.DLLRS
            setattr(self.engine, name, rows)
            self.assertEqual(getattr(self.engine, name).pointer, rows.pointer)
            setattr(self.engine, name, None)
        for name in OBJECTS:
            id_ = IDS[name]
            self.assertEqual(self.raw(name, c_void_p, accessor=1)(None) & 0xFFFFFFFF, NOTIMPL, name)
            first, made = self.engine.invoke(id_, host.GET), c_void_p()
            self.assertEqual(self.raw(name, POINTER(c_void_p))(byref(made)), 0)
            self.assertEqual(host.Component(made.value).pointer, first.pointer, name)
            self.assertEqual(self.raw(name, c_void_p, accessor=2)(None), 0)
            self.assertEqual(self.engine.invoke(id_, host.GET).State, 0)
            self.refused(MEMBER_NOT_FOUND, self.engine.call, name, host.PUT, 1)
            wrong = self.engine.DLLCN if "RS" in name else self.engine.DLLRS
            self.refused(MISMATCH, setattr, self.engine, name, wrong)
            setattr(self.engine, name, first)
            self.assertEqual(self.engine.invoke(id_, host.GET).pointer, first.pointer)
            setattr(self.engine, name, Nothing)
            held = pack(first)
            for use in (host.PUT_REFERENCE, host.PUT | host.PUT_REFERENCE):
                self.engine.invoke(id_, use, [by_reference(host.VARIANT, held)], [host.NAME_OF_PUT])
            host.clear(held)
            self.assertEqual(self.engine.invoke(id_, host.GET).pointer, first.pointer)

    def test_the_root_interface_is_one_pointer(self):
        made = c_void_p()
        query = slot(self.engine.pointer, 0, POINTER(host.Guid), POINTER(c_void_p))
        for id_ in (INTERFACE_ID, "{00020400-0000-0000-C000-000000000046}",
                    "{00000000-0000-0000-C000-000000000046}"):
            self.assertEqual(query(byref(host.Guid.of(id_)), byref(made)), 0)
            self.assertEqual(host.Component(made.value).pointer, self.engine.pointer)
        self.assertEqual(query(byref(host.Guid.of(CLASS_ID)), byref(made)) & 0xFFFFFFFF, 0x80004002)
        self.assertIsNone(made.value)


class Calls(ServerCase):
    def mktime(self, values, names=()):
        return self.engine.invoke(IDS["MkTime"], host.METHOD, values, names)

    def test_arguments_by_value_by_reference_and_by_name(self):
        moment = [2026, 4, 22, 0, 0, 6]
        self.assertEqual(self.mktime([typed(host.I4, n) for n in moment]), 1776837600)
        self.assertEqual(self.mktime([typed(host.R8, n + 0.25) for n in moment]), 1776837600)
        contents = [c_int16(2026)] + [c_uint8(n) for n in moment[1:]]
        references = [by_reference(host.I2 if n == 0 else host.UI1, content)
                      for n, content in enumerate(contents)]
        self.assertEqual(self.mktime(references), 1776837600)
        self.assertEqual([content.value for content in contents], moment)
        inner = typed(host.I2, 2026)
        references[0] = by_reference(host.VARIANT, inner)
        self.assertEqual(self.mktime(references), 1776837600)
        named = [typed(host.I4, n) for n in (2026, 6)] + [typed(host.I4, n) for n in (4, 22, 0, 0)]
        self.refused(PARAM_NOT_FOUND, self.mktime, named, [5, 0], argument=1)
        last_two = [typed(host.I4, n) for n in (2026, 4, 22, 0, 0, 6)]
        self.assertEqual(self.mktime(last_two, [5, 4]), 1776837600)

    def test_wrong_arguments_are_named(self):
        good = [2026, 4, 22, 0, 0, 6]
        wide = c_int32(22)
        text = pack("noon")
        for wrong, code in ((text, MISMATCH), (typed(host.I4, 256), OVERFLOW),
                            (typed(host.I4, -1), OVERFLOW), (Variant(kind=host.NULL), MISMATCH),
                            (by_reference(host.I4, wide), MISMATCH), (pack(Missing), NOT_OPTIONAL),
                            (Variant(kind=14), BAD_KIND), (Variant(kind=0x2003), BAD_KIND),
                            (Variant(kind=host.I4 | host.BYREF), MISMATCH)):
            values = [typed(host.I4, n) for n in good]
            values[2] = wrong
            self.refused(code, self.mktime, values, argument=2)
        host.clear(text)
        values = [typed(host.I4, n) for n in good]
        self.refused(BAD_COUNT, self.mktime, values[:5])
        self.refused(BAD_COUNT, self.mktime, values + values[:1])
        self.refused(NOT_OPTIONAL, self.mktime, values[:5], [5])
        self.refused(PARAM_NOT_FOUND, self.mktime, values, [6], argument=0)
        put = IDS["StartTime"]
        self.refused(NOT_OPTIONAL, self.engine.invoke, put, host.PUT, [typed(host.I4, 1)])
        self.refused(BAD_COUNT, self.engine.invoke, put, host.PUT)
        self.refused(OVERFLOW, self.engine.call, "Global_Puntualita", host.PUT, 32768)
        self.refused(OVERFLOW, self.engine.call, "StartTime", host.PUT, 1 << 31)
        self.refused(MISMATCH, self.engine.call, "StartTime", host.PUT, Null)
        self.refused(MEMBER_NOT_FOUND, self.engine.invoke, IDS["MkTime"], host.GET, values)

    def test_whole_numbers_of_any_width_become_the_next_wider_kind(self):
        for kind, given, read in ((16, -5, -5), (18, 0xFFFF, 65535), (19, 0xFFFFFFFF, 4294967295.0),
                                  (20, -(1 << 40), -1099511627776.0), (21, (1 << 64) - 1, 2.0**64),
                                  (22, -7, -7), (23, 7, 7)):
            variant = Variant(kind=kind)
            variant.value.words[0] = given & ((1 << 64) - 1)
            self.engine.invoke(IDS["App_path"], host.PUT, [variant], [host.NAME_OF_PUT])
            self.assertEqual((self.engine.App_path, type(self.engine.App_path)), (read, type(read)))

    def test_results_of_every_kind(self):
        code, letter = pack("Ravelinox"), c_void_p()
        self.assertEqual(self.raw("CheckSumDigit", POINTER(Variant), POINTER(c_void_p))(
            byref(code), byref(letter)), 0)
        self.assertEqual(read_text(letter.value), self.engine.CheckSumDigit("Ravelinox"))
        host.free_text(letter.value)
        host.clear(code)
        self.assertEqual(self.engine.EasterMondayDate(2024), "0104")
        easter = Variant()
        raw = self.raw("EasterMondayDate", c_int16, POINTER(Variant))
        self.assertEqual(raw(2024, byref(easter)), 0)
        self.assertEqual(unpack(easter), "0104")
        days, stamp = c_double(), c_int32(1776837600)
        self.assertEqual(self.raw("UnMkTime", POINTER(c_int32), POINTER(c_double))(
            byref(stamp), byref(days)), 0)
        self.assertAlmostEqual(days.value, 46134.25)
        self.assertEqual(self.engine.UnMkTime(1776837600).isoformat(), "2026-04-22T06:00:00")
        self.assertEqual(self.engine.UnMkTime(-(1 << 31)).isoformat(), "1901-12-13T20:45:52")
        self.assertIs(self.engine.VerificaAs(), False)
        self.assertEqual(self.engine.VerificaDB(self.folder, ""), 0)
        self.engine.Nome_PdS = "Sant’Ilario 🚂"
        self.assertEqual(self.engine.Nome_PdS, "Sant’Ilario 🚂")


class Data(ServerCase):
    def setUp(self):
        super().setUp()
        subprocess.run([built.program, "import", os.path.join(built.source, "data/empoli/gtfs"),
                        "--station", "Empoli", "--out", self.folder], check=True,
                       stdout=subprocess.DEVNULL)
        self.engine.DB_stazione = self.folder + "\\stazione.db"
        self.engine.Connetti_DBstazione_DLL()
        self.engine.Imposta_proprieta_pds()
        self.engine.Connetti_DBlinea_DLL()

    def test_a_failure_is_told_and_its_slot_closed_by_the_host(self):
        failure = self.refused(3021, self.engine.RicavaPosizioneTreno, 999999999, 0)
        self.assertIn("3021: ", str(failure))
        self.refused(3705, self.engine.RicavaPosizioneTreno, 999999999, 0)
        self.engine.DLLRS3.Close()
        number, time, result = c_int32(999999999), c_int32(0), Variant()
        code = self.raw("RicavaPosizioneTreno", POINTER(c_int32), POINTER(c_int32),
                        POINTER(Variant))(byref(number), byref(time), byref(result))
        self.assertEqual(code & 0xFFFFFFFF, 0x800A0000 | 3021)
        info, text = c_void_p(), c_void_p()
        query = slot(self.engine.pointer, 0, POINTER(host.Guid), POINTER(c_void_p))
        self.assertEqual(query(byref(host.Guid.of(ERROR_INFO_ID)), byref(info)), 0)
        self.assertEqual(slot(info.value, 5, POINTER(c_void_p))(byref(text)), 0)
        self.assertEqual(f"3021: {read_text(text.value)}", str(failure))
        host.free_text(text.value)
        slot(info.value, 2)()

    def test_rows_and_sessions_through_their_own_faces(self):
        session, rows = self.engine.DLLCN2, self.engine.DLLRS4
        self.assertEqual((session.State, session.CursorLocation, session.Mode), (1, 3, 16))
        self.assertEqual(rows.ActiveConnection.pointer, session.pointer)
        rows.Open("SELECT TOP 3 Binario, Numero FROM circolazione WHERE Stazione = 'Empoli'")
        self.assertEqual((rows.RecordCount, rows.FieldCount, rows.EOF, rows.BOF),
                         (3, 2, False, False))
        rows.MoveLast()
        self.refused(3265, rows.Fields, 2)
        rows.Fields(0).Value = "8"
        rows.Update()
        rows.MoveFirst()
        rows.MovePrevious()
        self.assertIs(rows.BOF, True)
        rows.MoveFirst()
        self.assertEqual([track for track, _ in host.rows(rows)][2], "8")
        self.assertIs(rows.EOF, True)
        rows.Close()
        self.engine.Disconnetti_DB()
        self.assertEqual(session.State, 0)
        self.refused(3704, rows.Open, "SELECT Binario FROM circolazione")


class Registration(ServerCase):
    def registry(self):
        with open(os.path.join(self.folder, "ravelinox", "registry"), encoding="utf-8") as lines:
            return lines.read()

    def test_keeps_the_entries_of_others(self):
        os.mkdir(os.path.join(self.folder, "ravelinox"))
        others = "Other.thing\\CLSID = {x}\nno entry at all\nRavelinox.cmdl10 = other\n"
        with open(os.path.join(self.folder, "ravelinox", "registry"), "w", encoding="utf-8") as out:
            out.write(others)
        for _ in range(2):
            self.assertEqual(self.library.DllRegisterServer(), 0)
        self.assertTrue(self.registry().startswith(others))
        entries = host.registry()
        self.assertEqual(entries["CLSID\\" + CLASS_ID + "\\InprocServer32"],
                         os.path.realpath(self.file))
        self.assertEqual(entries["Ravelinox.cmdl1\\CLSID"], CLASS_ID)
        self.assertEqual(entries["Interface\\" + INTERFACE_ID], "_cmdl1")
        self.assertEqual(len(self.registry().splitlines()), len(set(self.registry().splitlines())))
        made = host.create("Ravelinox.cmdl1")
        self.assertEqual(made.EasterMondayDate(2024), "0104")
        made.release()
        self.assertEqual(self.library.DllUnregisterServer(), 0)
        self.assertEqual(self.registry(), others)

    def test_fails_where_it_cannot_write(self):
        self.assertEqual(self.library.DllUnregisterServer(), 0, "nothing to remove")
        with open(os.path.join(self.folder, "ravelinox"), "w", encoding="utf-8"):
            pass  # a file in the folder's place
        self.assertEqual(self.library.DllRegisterServer() & 0xFFFFFFFF, CANNOT_REGISTER)
        home = os.environ.pop("HOME", "/")
        self.addCleanup(os.environ.__setitem__, "HOME", home)
        del os.environ["XDG_DATA_HOME"]
        self.assertEqual(self.library.DllRegisterServer() & 0xFFFFFFFF, CANNOT_REGISTER,
                         "never in the working folder")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
