"""The Python binding: late binding, values, errors and threads; and the example host that uses it."""

from __future__ import annotations

import contextlib
import datetime
import decimal
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest

from host_case import Case, user

import oveldra
import sqlite_host
from doubles import ListedHost


class LateBinding(Case):
    def test_a_member_that_is_not_there(self) -> None:
        for reach in (lambda: self.component.Nada, lambda: setattr(self.component, "Nada", "1"),
                      lambda: self.component.call("Nada"), lambda: self.component.Interno_Externo,
                      lambda: setattr(self.component, "OK", True), lambda: self.component.call("OK")):
            with self.fails(438):
                reach()
        self.assertFalse(hasattr(self.component, "Nada"))

    def test_names_in_any_letter_case(self) -> None:
        self.assertIs(self.component.ok, False)
        self.component.idsub = "7"
        self.assertTrue(callable(self.component.mostrardit))

    def test_the_members_are_listed(self) -> None:
        self.assertLessEqual({"OK", "PRDNRO", "IdSUB", "ConectarDB", "VerINSxSBT"}, set(dir(self.component)))

    def test_a_wrong_number_of_arguments(self) -> None:
        for arguments in ((), (None,) * 4):
            with self.fails(450):
                self.component.ConectarDB(*arguments)
        with self.fails(450):
            self.component.Mostrar("uno")

    def test_values_that_are_no_text(self) -> None:
        connection = self.inputs()
        for value, number in (("abc", 13), (object(), 13), (b"1", 13), (connection, 13), (None, 94),
                              ("99999999999", 6), (2**70, 6), ("a\0b", 5), ("\ud800", 5)):
            with self.subTest(value=value), self.fails(number):
                self.component.IdSUB = value

    def test_a_closed_component(self) -> None:
        closed = oveldra.Component()
        closed.close()
        closed.close()
        with self.fails(91):
            closed.OK

    def test_another_thread(self) -> None:
        numbers = []

        def reach() -> None:
            for use in (lambda: self.component.OK, lambda: setattr(self.component, "ADUANA", "1"),
                        self.component.get, oveldra.Component):
                try:
                    use("OK") if use == self.component.get else use()
                except oveldra.OveldraError as error:
                    numbers.append(error.number)

        thread = threading.Thread(target=reach)
        thread.start()
        thread.join()
        self.assertEqual(numbers, [5, 5, 5, 5])
        self.assertRegex(oveldra.version(), r"^\d+\.\d+\.\d+$")


class Connections(Case):
    def test_values_of_every_kind_through_the_component(self) -> None:
        row = {"null": None, "yes": True, "no": False, "integer": -2**63, "number": 0.1, "text": "Ñandú 'a' 10 €",
               "empty": "", "date": datetime.date(2026, 11, 21), "decimal": decimal.Decimal("2.5")}
        with oveldra.Connection(ListedHost([row])) as connection:
            self.assertEqual(connection.rows("x", *(name.upper() for name in row)),
                             [(None, -1, 0, -2**63, 0.1, "Ñandú 'a' 10 €", "", datetime.date(2026, 11, 21), 2.5)])

    def test_values_that_no_field_has(self) -> None:
        for value in (b"bytes", datetime.datetime(2026, 11, 21, 10, 30), object()):
            with oveldra.Connection(ListedHost([{"a": value}])) as connection, self.subTest(value=value):
                with connection.select("x") as records, self.fails(13):
                    records.value("a")

    def test_rows_are_walked_to_the_end_and_back(self) -> None:
        with oveldra.Connection(ListedHost([{"a": 1}, {"a": 2}])) as connection, connection.select("x") as records:
            self.assertEqual(len(records), 2)
            records.move_next()
            self.assertEqual(records.value("a"), 2)
            records.move_next()
            self.assertTrue(records.at_eof())
            with self.fails(3021):
                records.move_next()
            records.move_first()
            self.assertEqual(records.value("a"), 1)
            with self.fails(3265):
                records.value("b")

    def test_rows_are_read_on_the_components_thread_only(self) -> None:
        numbers = []

        def read(records: oveldra.Recordset) -> None:
            for use in (lambda: len(records), records.at_eof, records.move_next, records.move_first,
                        lambda: records.value("a")):
                try:
                    use()
                except oveldra.OveldraError as error:
                    numbers.append(error.number)

        with oveldra.Connection(ListedHost([{"a": 1}])) as connection, connection.select("x") as records:
            thread = threading.Thread(target=read, args=(records,))
            thread.start()
            thread.join()
        self.assertEqual(numbers, [5] * 5)

    def test_failures_arrive_as_they_were_raised(self) -> None:
        for failure, expected in ((oveldra.OveldraError(-2147467259, "Ocupada", native=3218),
                                   (-2147467259, 3218, "Ocupada")),
                                  (ValueError("entre cero"), (-2147467259, 3146, "ValueError: entre cero")),
                                  (KeyboardInterrupt(), (-2147467259, 3146, "KeyboardInterrupt: "))):
            with oveldra.Connection(ListedHost(failure)) as connection, self.subTest(failure=failure):
                with self.fails(*expected):
                    connection.select("x")
                with self.fails(*expected):
                    connection.execute("x")


class Lifetimes(Case):
    def test_a_connection_that_is_closed_inside_its_own_function(self) -> None:
        host = ListedHost([{"a": 1}])
        connection = oveldra.Connection(host)
        host.set_sql = lambda text: connection.close()
        self.assertEqual(connection.rows("x", "a"), [(1,)])
        self.assertEqual(oveldra.kept_objects(), 0)
        with self.fails(91):
            connection.select("x")

    def test_what_another_thread_lets_go_of_ends_with_the_next_call(self) -> None:
        connection = oveldra.Connection(ListedHost([]))
        thread = threading.Thread(target=connection.close)
        thread.start()
        thread.join()
        self.assertEqual(oveldra.kept_objects(), 1)
        self.component.IdSUB = "1"
        self.assertEqual(oveldra.kept_objects(), 0)

    def test_what_is_never_closed_ends_with_the_program(self) -> None:
        program = """
import oveldra

class Host:
    def __del__(self):
        print("released")

component = oveldra.Component()
component.ConectarDB(oveldra.Connection(Host()), None, None)
print("end")
"""
        run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, timeout=60,
                             env={**os.environ, "PYTHONPATH": os.environ["PYTHON_EXAMPLE"]})
        self.assertEqual((run.returncode, run.stdout), (0, "end\nreleased\n"), run.stderr)


class SqliteHost(Case):
    def test_kinds_of_values(self) -> None:
        file = self.folder / "a.sqlite"
        with contextlib.closing(sqlite_host.connect(file, "rwc")) as database, database:
            database.execute("create table t (yes boolean, no boolean, none boolean, day date, n double, i integer,"
                             " s text collate ignorecase)")
            database.execute("insert into t values (-1, 0, null, '2026-11-21', 3, 3, 'Ñu ')")
        with oveldra.Connection(sqlite_host.SqliteHost(file)) as connection:
            self.assertEqual(connection.rows("select *, 'x' as dos from t where s = 'ñU'", "YES", "no", "none", "day",
                                             "n", "i", "s", "DOS"),
                             [(-1, 0, None, datetime.date(2026, 11, 21), 3.0, 3, "Ñu ", "x")])

    def test_failures_have_numbers(self) -> None:
        with self.fails(-2147467259, 3024):
            sqlite_host.SqliteHost(self.folder / "nada.sqlite")
        file = self.folder / "a.sqlite"
        sqlite_host.connect(file, "rwc").executescript("create table t (a text)")
        with oveldra.Connection(sqlite_host.SqliteHost(file)) as connection:
            for statement, number, native in (("select a from u", -2147217865, 0), ("select b from t", -2147217904, 0),
                                              ("selec a from t", -2147217900, 0), ("delete from t", -2147467259, 3027)):
                with self.subTest(statement), self.fails(number, native):
                    connection.execute(statement)


class Example(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        user()

    def test_the_host_makes_its_databases_and_connects(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            command = [sys.executable, f"{os.environ['PYTHON_EXAMPLE']}/host.py",
                       "--biblioteca", os.environ["OVELDRA_LIBRARY"], "--datos", f"{folder}/datos"]
            for _ in range(2):  # makes them, finds them
                run = subprocess.run([*command, "probar"], capture_output=True, text=True, timeout=60)
                self.assertEqual((run.returncode, run.stdout), (0, f"oVELDRA {oveldra.version()}: conectado.\n"))
            self.assertEqual(sorted(file.name for file in pathlib.Path(folder, "datos").glob("*.sqlite")),
                             ["anfitrion.sqlite", "insumos.sqlite", "nomenclador.sqlite"])
            run = subprocess.run([*command, "--subitem", "siete", "probar"], capture_output=True, text=True, timeout=60)
            self.assertEqual((run.returncode, run.stderr.splitlines()[-1]), (1, "13 - No coinciden los tipos"))
