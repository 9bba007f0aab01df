"""Hosts that keep their databases with the store."""

from __future__ import annotations

import datetime

from script_case import Answers, ScriptCase
from seat import Seat
from wine import windows_path

DATABASE_ERROR = -2147467259
CLOSED = "La conexión no se puede usar para realizar esta operación. Está cerrada o no es válida en este contexto."


class StoreCase(ScriptCase):
    def told(self, procedure: str, **options) -> Answers:
        return self.told_by("store.vbs", procedure, windows_path(self.folder), **options)


class Importar(StoreCase):
    DECLARATION = "26001IT14000655K"

    def user(self, seat: Seat) -> None:
        seat.window("Exportar a Stock de Insumos")
        for text in (self.DECLARATION, "16/11/2026", "Relojes"):
            seat.fill(text)
        seat.keys("Return")  # the customs office stays
        seat.type("16/11/2027")
        seat.keys("Tab", "space", "Tab", "space", "F11")  # with adjustments, and available
        self.assertEqual(seat.dismiss_box(), "Articulos exportados correctamente.")
        seat.window("Exportar a Stock de Insumos")
        seat.keys("Escape")

    def test_a_declaration_goes_into_the_stock(self) -> None:
        told = self.told("ImportDeclaration", user=self.user)
        self.assertIs(told["connected"], True)
        self.assertEqual(told.every("RecordCount"), [1, 3])
        self.assertEqual(
            [told[name] for name in ("INTNRO", "INTDCL", "INTFOF", "INTVEN", "INTDES", "INTADU", "INTCTC", "INTIOK")],
            ["IT-77", self.DECLARATION, datetime.date(2026, 11, 16), datetime.date(2027, 11, 16), "Relojes", "001",
             None, 1])
        # Item 1, one subitem: FOB 100 x 1.5 = 150, freight 10 x 2 = 20, insurance 5 x 1 = 5, increments 8 x 1.5 = 12:
        # CIF 187, for 3 pieces 62.333333.
        # Item 2: FOB 100 x 1.5 = 150, freight 12.3456 x 2 = 24.6912, no insurance: CIF 174.6912, shared as 174.69:
        # 60 x 1.5 / 150 of it are 104.814, for 3 pieces 34.938; 40 x 1.5 / 150 of it are 69.876, for 2.5 27.9504.
        names = ("ARTITM", "ARTSBT", "ARTNRO", "ARTUNI", "ARTCAT", "ARTDSC", "ARTPRE", "ARTNCM")
        self.assertEqual(list(zip(*(told.every(name) for name in names))),
                         [(1, 0, "MEC-Q1", "07", 3.0, 3.0, 62.333333, "9108.12.10"),
                          (2, 1, "CAJ-Ñ1", "", 3.0, 3.0, 34.938, "9112.20.00"),
                          (2, 2, "ESF-D1", "07", 2.5, 2.5, 27.9504, "9114.30.00")])


class Reports(StoreCase):
    """What users are told of errors of a connection that is in another library."""

    def told_on(self, title: str, procedure: str, *keys: str) -> list[str]:
        boxes = []

        def user(seat: Seat) -> None:
            if keys:
                seat.window(title)
                seat.keys(*keys)
                boxes.append(seat.dismiss_box())
            boxes.append(seat.dismiss_box())
            seat.window(title)
            seat.keys("Escape")

        self.assertIs(self.told(procedure, user=user)["returned"], True)
        return boxes

    def test_an_error_that_is_raised(self) -> None:
        self.assertEqual(self.told_on("Listados de DIT's", "DeleteReadOnly", "Home", "Delete"),
                         ["Confirma eliminar la DIT 26001IT14000655K",
                          "La operación debe usar una consulta actualizable.\n\n-2147467259 - Sección "
                          "[oVELDRA.frmDIT.f_EliminarDIT]"])

    def test_a_query_that_cannot_be_opened(self) -> None:
        self.assertEqual(self.told_on("Insumos por subitem de exportación", "ShowDischargesOfUnopened"),
                         [f"{CLOSED}\n\n3709 - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"])


class Recordset(StoreCase):
    def test_fields_by_name(self) -> None:
        told = self.told("ReadFields")
        self.assertEqual((told["default"], told["letter case"], told["null"], told["first"]),
                         ("Ñandúes", "Ñandúes", None, "NANDU"))

    def test_an_unknown_field(self) -> None:
        self.assertEqual(self.told("ReadFields")["unknown.number"], 3265)

    def test_past_the_last_row(self) -> None:
        told = self.told("ReadFields")
        self.assertIs(told["EOF"], True)
        self.assertEqual((told["past the end.number"], told["at the end.number"]), (3021, 3021))

    def test_an_empty_one_is_ok(self) -> None:
        told = self.told("FailToOpenRecordset")
        self.assertEqual((told["empty ok"], told["empty EOF"], told["empty RecordCount"]), (True, True, 0))

    def test_a_query_that_cannot_be_opened(self) -> None:
        told = self.told("FailToOpenRecordset")
        self.assertEqual((told["ok"], told["nothing"], told["LastErrorNumber"]), (False, True, -2147217865))
        self.assertIn("'NADA'", told["LastErrorDescription"])


class Execute(StoreCase):
    def test_affected_records_are_answered(self) -> None:
        told = self.told("Affect")
        self.assertEqual((told.every("insert"), told["update"], told["delete"]), ([1, 1], 2, 0))

    def failure(self, name: str) -> tuple:
        number, description, source = self.told("FailToExecute").error(name)
        self.assertIn("oVELDRA", source)
        return number, description

    def test_a_syntax_error(self) -> None:
        number, description = self.failure("syntax")
        self.assertEqual(number, -2147217900)
        self.assertIn("sintaxis", description)

    def test_a_duplicate_key(self) -> None:
        number, description = self.failure("duplicate")
        self.assertEqual(number, DATABASE_ERROR)
        self.assertIn("valores duplicados", description)

    def test_an_unknown_table(self) -> None:
        number, description = self.failure("table")
        self.assertEqual(number, -2147217865)
        self.assertIn("'NADA'", description)

    def test_a_connection_that_was_never_opened(self) -> None:
        self.assertEqual(self.failure("unopened"), (3709, CLOSED))

    def test_a_connection_that_was_closed(self) -> None:
        self.assertEqual(self.failure("closed"), (3709, CLOSED))


class Databases(StoreCase):
    def test_a_read_only_one_is_read_and_not_written(self) -> None:
        told = self.told("WriteReadOnly")
        self.assertEqual((told["CATNRO"], told["CATDES"]), ("A", "uno"))
        self.assertEqual(told.error("insert")[:2],
                         (DATABASE_ERROR, "La operación debe usar una consulta actualizable."))

    def test_one_that_is_not_there(self) -> None:
        self.assertEqual(self.told("OpenMissing")["open.number"], DATABASE_ERROR)

    def test_one_that_is_there_is_not_made_again(self) -> None:
        told = self.told("CreateTwice")
        self.assertEqual(told["create.number"], DATABASE_ERROR)
        self.assertEqual(told["CATNRO"], "A")

    def test_an_unknown_kind(self) -> None:
        self.assertEqual(self.told("CreateUnknown").error("create")[:2],
                         (5, "No existe la base 'otra': elija insumos, ncm o tornel."))

    def test_one_in_memory(self) -> None:
        told = self.told("UseMemory")
        self.assertEqual((told["CATNRO"], told["CATDES"]), ("A", "uno"))
        self.assertEqual(sorted(entry.name for entry in self.folder.iterdir()),
                         ["answers.txt", "host.vbs", "output.txt"])


class Burst(StoreCase):
    def test_it_holds_other_writers_off_until_it_is_committed(self) -> None:
        told = self.told("HoldOthersOff")
        self.assertEqual([told[f"{when}.number"] for when in ("while it is open", "commit", "afterwards")],
                         [DATABASE_ERROR, 0, 0])
        self.assertEqual((told.every("RecordCount"), told.every("CATNRO")), ([0, 2], ["A", "B"]))

    def test_one_that_is_released_keeps_what_was_done(self) -> None:
        self.assertEqual(self.told("ReleaseUncommitted")["CATNRO"], "A")
