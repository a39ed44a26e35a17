"""Hosts that misbehave. Each case runs in a process of its own and fails when that dies."""

import ctypes
import itertools
import os
import signal
import socket
import subprocess
import threading

import ground
import texts
from ground import connected, figure, host, number_of


def too_early_and_too_late(station):
    """Every method on an object that was never connected, and on one that was disconnected."""
    late = connected(station)
    late.Disconnetti_DB()
    for engine in (ground.new_engine(), late):
        for place, table, call in texts.places():
            number = number_of(call, engine, "x")
            assert number or table is None or "RegistraEvento" in place, place  # changed nothing
            ground.close_slots(engine)
        assert number_of(engine.Inzializza_Orario, ground.START, 0) == ground.CLOSED


def slots_left_open_or_replaced(station):
    engine, other = connected(station), connected(station)
    engine.DLLRS3.Open("SELECT Numero FROM circolazione")
    assert number_of(engine.CorsaTreno, texts.TRAIN) == ground.OPEN
    engine.DLLRS3 = other.DLLRS3
    other.release()
    assert " - " in engine.CorsaTreno(texts.TRAIN)
    engine.DLLRS3 = host.Nothing
    assert number_of(engine.CorsaTreno, texts.TRAIN) == ground.CLOSED
    engine.DLLCN2 = host.Nothing
    engine.Disconnetti_DB()
    assert number_of(engine.Connetti_DBlinea_DLL) == 0


def released_in_any_order(station):
    for order in itertools.permutations(range(5)):
        engine = connected(station)
        rows = engine.DLLRS3
        rows.Open("SELECT Numero FROM circolazione")
        held = [engine, rows, rows.Fields(0), rows.ActiveConnection, engine.DLLCN]
        for at in order:
            held[at].release()
        del engine, rows, held
    assert ctypes.CDLL(ground.library).DllCanUnloadNow() == 0


def a_fork(station):
    """A child that makes objects of its own leaves the parent's alone."""
    engine = connected(station)
    child = os.fork()
    if child == 0:
        ground.set_up(connected(station))
        os._exit(0)
    assert os.waitpid(child, 0)[1] == 0
    ground.set_up(engine)


def signals_in_the_middle(station):
    rings = []
    signal.signal(signal.SIGALRM, lambda *_: rings.append(1))
    signal.siginterrupt(signal.SIGALRM, True)
    signal.setitimer(signal.ITIMER_REAL, 0.001, 0.001)
    engine = connected(station)
    for _ in range(5):
        ground.set_up(engine)
        engine.AggiornaFileSSI(ground.START)
    signal.setitimer(signal.ITIMER_REAL, 0)
    assert rings


def another_folder_and_locale(station):
    """The working folder is gone, and decimals have a comma."""
    os.mkdir("gone")
    os.chdir("gone")
    os.rmdir(os.getcwd())
    made = os.path.join(ground.folder, "it_IT.UTF-8")
    subprocess.run(["localedef", "-i", "it_IT", "-f", "UTF-8", made], check=True)
    os.environ["LOCPATH"] = ground.folder
    host.libc.setlocale.restype = ctypes.c_char_p
    assert host.libc.setlocale(6, b"it_IT.UTF-8")
    text = ctypes.create_string_buffer(8)
    host.libc.snprintf(text, 8, b"%.1f", ctypes.c_double(1.5))
    assert text.value == b"1,5"
    engine = connected(station)
    ground.set_up(engine)
    engine.DLLRS.Open("UPDATE enti SET Stato_manutenzione = '0.5' WHERE ID = 1")
    assert engine.RicavaStatoManutenzione("", 0, 1) == 0.5
    engine.DecrementaManutenzione("", 0, 1)
    engine.Registra(1.5)
    with open(os.path.join(ground.folder, "log_InizializzaOrario.txt"), "rb") as log:
        assert log.read().endswith(b"1.5\r\n")


def a_broken_pipe(station):
    """The speech service hangs up, and SIGPIPE would end the host."""
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)
    os.environ["SPEECHD_ADDRESS"] = "unix_socket:" + ground.folder + "/voice"
    service = socket.socket(socket.AF_UNIX)
    service.bind(ground.folder + "/voice")
    service.listen()
    threading.Thread(target=lambda: [service.accept()[0].close() for _ in range(9)],
                     daemon=True).start()
    assert number_of(connected(station).AutAsSintesiVocale, 1, "Stazione", "Empoli") != 0


def run():
    station, wrong = ground.prepared_station("host"), []
    os.chdir(ground.folder)
    cases = (too_early_and_too_late, slots_left_open_or_replaced, released_in_any_order, a_fork,
             signals_in_the_middle, another_folder_and_locale, a_broken_pipe)
    for case in cases:
        child = os.fork()
        if child == 0:
            try:
                case(station)
                os._exit(0)
            except BaseException as reason:  # the child must not go on as the driver
                ground.note(case.__name__, repr(reason))
                os._exit(1)
        if os.waitpid(child, 0)[1] != 0:
            wrong.append(case.__name__)
    figure(f"hosts that misbehave: of {len(cases)} kinds went wrong", wrong or 0, 0, not wrong)
