"""The component's screens on connections of Python's own, before a user who only has a keyboard."""

from __future__ import annotations

import contextlib
import datetime
import decimal
import gc
import pathlib

from host_case import CRITICAL, INFORMATION, ScreenCase
from user import User

import oveldra
import sqlite_host
from doubles import ListedHost


class Importar(ScreenCase):
    """The host's tables in Python's sqlite3, the stock of inputs in the component's own store."""

    DECLARATION = "26001IT14000655K"

    def setUp(self) -> None:
        super().setUp()
        self.stock = self.inputs()
        self.component.Interno_Externo = "it-77"  # the host wrote it in capitals
        self.component.ADUANA = "001"

    def host_tables(self) -> pathlib.Path:
        file = self.folder / "anfitrion.sqlite"
        with contextlib.closing(sqlite_host.connect(file, "rwc")) as database, database:
            database.executescript(sqlite_host.TABLES)
            database.executemany("insert into caratula values (?, ?, ?, ?)",
                                 [("IT-7", 9, 9, 9), ("IT-77", 1.5, 2, 1)])
            database.executemany("insert into item values (?, ?, ?, ?, ?, ?, ?)",
                                 [("IT-77", 2, 100, 12.3456, None, 0, None),
                                  ("IT-77", 0, 999, 999, 999, 999, 999),
                                  ("IT-77", 1, 100, 10, 5, 8, None),
                                  ("IT-7", 1, 1, 1, 1, 1, 1)])
            database.executemany("insert into groupsubitems values (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                                 [("IT-77", 2, 12, "ESF-D1", "07", 2.5, 16, "9114.30.00", 40),
                                  ("IT-77", 2, 11, "CAJ-Ñ1", None, 3, 20, "9112.20.00", 60),
                                  ("IT-77", 1, 10, "MEC-Q1", "07", 3, None, "9108.12.10", 100)])
        return file

    def process(self, seat: User) -> None:
        """Fills the screen in, with adjustments and as available, and presses the process key."""
        seat.window("frmImportar")
        seat.focus("txtINTDCL")
        for text, following in ((self.DECLARATION, "txtINTFOF"), ("16/11/2026", "txtINTDES"),
                                ("Relojes", "txtAduana"), ("", "txtVEN")):
            if text:  # the customs office stays
                seat.type(text)
            seat.keys("Return")
            seat.focus(following)
        seat.type("16/11/2027")
        for box in ("chkAjustes", "chOK"):
            seat.tab_to(box)
            seat.keys("space")
        seat.keys("F11")

    def test_a_declaration_of_the_hosts_own_tables(self) -> None:
        self.assertTrue(self.component.ConectarDB(
            self.stock, None, oveldra.Connection(sqlite_host.SqliteHost(self.host_tables()))))

        def script(seat: User) -> None:
            self.process(seat)
            box = seat.box()
            self.assertEqual((box["box"], box["icon"]), ("Articulos exportados correctamente.", INFORMATION))
            seat.keys("Return")
            self.assertEqual(seat.window("frmImportar")["labels"]["lbTexto"], "OK")
            seat.keys("Escape")

        self.shows(self.component.Importar, script)

        self.assertEqual(
            self.stock.rows("select * from INTINS", "INTNRO", "INTDCL", "INTFOF", "INTVEN", "INTDES", "INTADU",
                            "INTCTC", "INTIOK"),
            [("it-77", self.DECLARATION, datetime.date(2026, 11, 16), datetime.date(2027, 11, 16), "Relojes", "001",
              None, 1)])
        # Item 1, one subitem: FOB 100 x 1.5 = 150, freight 10 x 2 = 20, insurance 5 x 1 = 5, increments 8 x 1.5 = 12:
        # CIF 187, for 3 pieces 62.333333.
        # Item 2: FOB 100 x 1.5 = 150, freight 12.3456 x 2 = 24.6912, no insurance: CIF 174.6912, shared as 174.69:
        # 60 x 1.5 / 150 of it are 104.814, for 3 pieces 34.938; 40 x 1.5 / 150 of it are 69.876, for 2.5 27.9504.
        self.assertEqual(
            self.stock.rows("select * from INS order by ARTITM,ARTSBT", "INTDCL", "ARTITM", "ARTSBT", "ARTNRO",
                            "ARTUNI", "ARTCAT", "ARTDSC", "ARTPRE", "ARTNCM"),
            [(self.DECLARATION, 1, 0, "MEC-Q1", "07", 3.0, 3.0, 62.333333, "9108.12.10"),
             (self.DECLARATION, 2, 1, "CAJ-Ñ1", "", 3.0, 3.0, 34.938, "9112.20.00"),
             (self.DECLARATION, 2, 2, "ESF-D1", "07", 2.5, 2.5, 27.9504, "9114.30.00")])

    def test_a_failure_half_way_is_told_and_leaves_nothing(self) -> None:
        """Every query of this host gives the same row, whose quantity cannot be read: that is found after the header
        has been written."""
        row = {"total": 0, "fobdivcambio": 1, "fletedivcambio": 1, "segurodivcambio": 1, "id": 1, "fobtotal": 100,
               "itflete": 10, "itseguro": 5, "ajusteinc": None, "ajusteded": None, "cantidad": ValueError("sin señal")}
        self.component.ConectarDB(self.stock, None, oveldra.Connection(ListedHost([row])))
        status = []

        def script(seat: User) -> None:
            self.process(seat)
            seen = seat.wait("a failure", lambda seen: seen["labels"]["lbTexto"].startswith("ER"))
            status.append(seen["labels"]["lbTexto"])
            seat.keys("Escape")

        self.shows(self.component.Importar, script)
        self.assertEqual(status, ["ER ERROR -2147467259 - ValueError: sin señal"])
        self.assertEqual(len(self.stock.select("select * from INTINS")), 0)
        self.assertEqual(len(self.stock.select("select * from INS")), 0)

    def test_without_a_file_number_there_is_no_screen(self) -> None:
        self.component.Interno_Externo = ""
        box = self.told(self.component.Importar)
        self.assertEqual((box["box"], box["icon"]), ("El parametro sInternoExt esta vacío", CRITICAL))


class Mostrar(ScreenCase):
    def setUp(self) -> None:
        super().setUp()
        self.component.ConectarDB(self.inputs(
            "insert into CAT (CATNRO,CATDES) values ('OTROS','Otros')",
            "insert into CAT (CATNRO,CATDES) values ('RELOJES','Relojes')",
            "insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU) values "
            "('RELOJES','DESP-01','Despertador','9103.10.00.000A',1,'07','12,5','AA(uno)','203','0,25')",
            "insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU) values "
            "('RELOJES','PARED-01','Reloj de pared ñandú','9105.21.00.000B',1,'07','18,75','ZA(2)','212','0,6')"),
            None, None)

    @staticmethod
    def choose_catalog(seat: User) -> None:
        """The second of the two. The component asks by itself unless it remembers an earlier choice."""
        if seat.window("frmCatalogo", "frmProducto")["window"] == "frmProducto":
            seat.keys("F11")
            seat.window("frmCatalogo")
        seat.keys("Home", "Down", "Return")
        seat.window("frmProducto")

    def picked(self) -> tuple:
        names = ("OK", "CATNRO", "PRDNRO", "PRDDES", "PRDNCM", "PRDPAI", "PRDPRE", "PRDSUF", "PRDUNI")
        return tuple(getattr(self.component, name) for name in names)

    def test_a_picked_product_and_a_cancelled_pick_after_it(self) -> None:
        def pick(seat: User) -> None:
            self.choose_catalog(seat)
            self.assertEqual([row[0] for row in seat.screen()["lists"]["lstV"]], ["DESP-01", "PARED-01"])
            seat.keys("Home", "Down", "Return")

        self.shows(self.component.Mostrar, pick)
        self.assertEqual(self.picked(), (True, "RELOJES", "PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "212",
                                         18.75, "ZA(2)", "07"))

        def cancel(seat: User) -> None:
            self.choose_catalog(seat)
            seat.keys("Escape")

        self.shows(self.component.mostrar, cancel)
        self.assertEqual(self.picked(), (False, "", "PARED-01", "", "", "", 0.0, "", ""))


class MostrarDIT(ScreenCase):
    def test_an_operation_that_shows_its_screen_already(self) -> None:
        """A host that calls again from a place of its own while the screen is open."""
        host = ListedHost([])
        host.open_recordset = lambda: self.component.MostrarDIT()
        self.component.ConectarDB(oveldra.Connection(host), None, None)
        box = self.told(self.component.MostrarDIT, "frmDIT")
        self.assertEqual(box["box"], "El formulario ya se está mostrando; no se puede mostrar en forma modal\r\n\r\n400"
                                     " - Seccion [oVELDRA.frmDIT.Cargar_INTINS]")

    def test_bursts_are_committed_and_ended(self) -> None:
        """The component deletes a declaration inside one."""
        calls = []

        class Burst:
            def commit(self) -> None:
                calls.append("commit")

            def end(self) -> None:
                calls.append("end")

        class Host(ListedHost):
            def begin_burst(self) -> Burst:
                calls.append("begin")
                return Burst()

            def execute(self) -> int:
                calls.append(self.statements[-1].split()[2])
                return 1

        host = Host([{"intdcl": "D1", "intnro": "N1", "intdes": "", "intctc": None, "intfof": None, "intven": None,
                      "intiok": 1}])
        self.component.ConectarDB(oveldra.Connection(host), None, None)

        def script(seat: User) -> None:
            seat.wait("the declaration", lambda seen: seen.get("window") == "frmDIT" and seen["active"]
                      and seen["lists"]["lstVDIT"] == [["D1", "N1", "", "", "", "", "1"]])
            seat.tab_to("lstVDIT")
            seat.keys("Home", "Delete")
            self.assertEqual(seat.box()["box"], "Confirma eliminar la DIT D1")
            seat.keys("Return")
            seat.wait("an empty list", lambda seen: seen.get("lists", {}).get("lstVDIT") == [] and seen["active"])
            seat.keys("Escape")

        self.shows(self.component.MostrarDIT, script)
        self.assertEqual(calls, ["begin", "INTINS", "INS", "DIP", "commit", "end"])


class VerINSxSBT(ScreenCase):
    """The stock of inputs on a connection of Python's own: what the component asks and shows."""

    def test_rows_of_python_values(self) -> None:
        host = ListedHost([{"artdcl": " 26001IT14000655K ", "artnro": None, "artitm": 3, "artsbt": "2",
                            "ralcan": decimal.Decimal("1.25"), "artpre": 62.333333}])
        self.component.ConectarDB(oveldra.Connection(host), None, None)
        self.component.Interno_Externo = "EX-1"
        self.component.IdSUB = "1.234"  # a thousand and more, as the user's settings have it
        seen = []

        def script(seat: User) -> None:
            seen.append(seat.window("frmVerINSxSBT"))
            seat.keys("Escape")

        self.shows(self.component.VerINSxSBT, script)
        self.assertEqual(host.statements,
                         ["select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where EXTINT = 'EX-1' and "
                          "EXTSBT = 1234 order by ARTDCL, ARTITM, ARTSBT"])
        self.assertEqual(seen[0]["lists"]["lstView"],
                         [["", "26001IT14000655K", "003", "002", "01,250000", "62,333333"]])

    def report_of(self, failure: BaseException) -> dict:
        self.component.ConectarDB(oveldra.Connection(ListedHost(failure)), None, None)
        return self.told(self.component.VerINSxSBT, "frmVerINSxSBT")

    LOCATION = " - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"

    def test_a_query_that_fails_is_reported_in_the_hosts_words(self) -> None:
        box = self.report_of(oveldra.OveldraError(-2147467259, "El servidor del estudio no responde.", native=3151))
        self.assertEqual((box["box"], box["icon"]),
                         ("El servidor del estudio no responde.\r\n\r\n-2147467259" + self.LOCATION, CRITICAL))

    def test_an_error_without_words_has_the_runtimes(self) -> None:
        box = self.report_of(oveldra.OveldraError(13))
        self.assertEqual(box["box"], "No coinciden los tipos\r\n\r\n13" + self.LOCATION)

    def test_an_exception_of_python_is_reported(self) -> None:
        box = self.report_of(KeyError("ARTDCL"))
        self.assertEqual(box["box"], "KeyError: 'ARTDCL'\r\n\r\n-2147467259" + self.LOCATION)


class ConectarDB(ScreenCase):
    LOCATION = "\r\n\r\nSección [oVELDRA.cloVELDRAMain.ConectarDB]"

    def test_an_omitted_argument_is_reported_and_the_inputs_are_kept(self) -> None:
        host = ListedHost([])
        answers = []
        inputs = oveldra.Connection(host)
        box = self.told(lambda: answers.append(self.component.ConectarDB(inputs)))
        inputs.close()
        self.assertEqual(answers, [False])
        self.assertEqual((box["box"], box["icon"]), ("424 - Se requiere un objeto" + self.LOCATION, CRITICAL))

        def script(seat: User) -> None:
            seat.window("frmVerINSxSBT")
            seat.keys("Escape")

        self.shows(self.component.VerINSxSBT, script)
        self.assertEqual(len(host.statements), 1)

    def test_an_object_of_another_kind(self) -> None:
        box = self.told(lambda: self.assertFalse(self.component.ConectarDB(object(), None, None)))
        self.assertTrue(box["box"].startswith("430 - "), box["box"])

    def test_the_component_holds_its_connections(self) -> None:
        first, second = ListedHost([]), ListedHost([])
        self.component.ConectarDB(oveldra.Connection(first), None, None)
        gc.collect()
        self.assertEqual(oveldra.kept_objects(), 1)
        self.component.ConectarDB(oveldra.Connection(second), None, None)
        gc.collect()
        self.assertEqual(oveldra.kept_objects(), 1)
        self.component.close()
        self.assertEqual(oveldra.kept_objects(), 0)
