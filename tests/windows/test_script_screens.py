"""The operations over connections that are classes of a script's own."""

from __future__ import annotations

from script_case import ScriptCase
from seat import Seat

WITHOUT_WORDS = "Error definido por la aplicación o el objeto"

FILES = "component.vbs listed_host.vbs products.vbs screens.vbs"

PICKED = ("OK", "CATNRO", "PRDNRO", "PRDDES", "PRDNCM", "PRDPAI", "PRDPRE", "PRDSUF", "PRDUNI")
CLOCK = (True, "RELOJES", "PARED-01", "Reloj de pared ñandú", "9105.21.00.000B", "212", 18.75, "ZA(2)", "07")


def choose_catalog(seat: Seat) -> None:
    """The second of the two."""
    seat.window("Catalogos")
    seat.keys("Home", "Down", "Return")
    seat.window("Productos")


def pick(seat: Seat) -> None:
    choose_catalog(seat)
    seat.keys("Home", "Down", "Return")


class Mostrar(ScriptCase):
    @staticmethod
    def user(seat: Seat) -> None:
        pick(seat)
        seat.dismiss_box()
        seat.window("Productos")  # the catalog is remembered
        seat.keys("Escape")

    def test_a_picked_product_and_a_cancelled_pick_after_it(self) -> None:
        told = self.told_by(FILES, "PickThenCancel", user=self.user)
        self.assertIs(told["connected"], True)
        self.assertEqual(list(zip(*(told.every(name) for name in PICKED))),
                         [CLOCK, (False, "", "PARED-01", "", "", "", 0.0, "", "")])

    def test_the_statements_are_the_hosts_dialect(self) -> None:
        told = self.told_by(FILES, "PickThenCancel", user=self.user)
        products = "select PRDNRO,PRDDES,PRDNCM,PRDPAI from PRD where CATNRO = 'RELOJES'"
        self.assertEqual(told.every("statement"),
                         ["select * from CAT order by CATDES", products,
                          "select * from PRD where CATNRO = 'RELOJES' and PRDNRO = 'PARED-01'", products])


class ConectarDB(ScriptCase):
    LOCATION = "\n\nSección [oVELDRA.cloVELDRAMain.ConectarDB]"

    def refused(self, procedure: str) -> str:
        boxes = []
        told = self.told_by(FILES, procedure, user=lambda seat: boxes.append(seat.dismiss_box()))
        self.assertIs(told["connected"], False)
        return boxes[0]

    def test_variables_by_reference(self) -> None:
        told = self.told_by(FILES, "ConnectWithVariables")
        self.assertEqual((told["connected"], told["kept"]), (True, True))

    def test_omitted_arguments_are_reported_and_the_inputs_are_kept(self) -> None:
        boxes = []

        def user(seat: Seat) -> None:
            boxes.append(seat.dismiss_box())
            pick(seat)

        told = self.told_by(FILES, "ConnectWithoutTheOptional", user=user)
        self.assertEqual(boxes, ["424 - Se requiere un objeto" + self.LOCATION])
        self.assertIs(told["connected"], False)
        self.assertEqual(tuple(told[name] for name in PICKED), CLOCK)

    def test_an_object_of_another_class(self) -> None:
        self.assertEqual(self.refused("ConnectDictionary"),
                         "430 - La clase no acepta Automatización o no acepta la interfaz esperada" + self.LOCATION)

    def test_nothing(self) -> None:
        self.assertEqual(self.refused("ConnectNothing"),
                         "91 - Variable de objeto o bloque With no establecido" + self.LOCATION)

    def test_a_number(self) -> None:
        self.assertEqual(self.refused("ConnectNumber"), "424 - Se requiere un objeto" + self.LOCATION)


class Importar(ScriptCase):
    def test_without_a_file_number_there_is_no_screen(self) -> None:
        boxes = []
        told = self.told_by(FILES, "ImportWithoutFileNumber", user=lambda seat: boxes.append(seat.dismiss_box()))
        self.assertEqual(boxes, ["El parametro sInternoExt esta vacío"])
        self.assertIs(told["returned"], True)


class VerINSxSBT(ScriptCase):
    TITLE = "Insumos por subitem de exportación"
    LOCATION = " - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"

    def test_it_asks_for_the_subitem_and_opens_and_closes(self) -> None:
        def user(seat: Seat) -> None:
            seat.window(self.TITLE)
            seat.keys("Escape")

        told = self.told_by(FILES, "ShowDischarges", user=user)
        self.assertEqual(told.every("statement"),
                         ["select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where EXTINT = 'EX-1' and "
                          "EXTSBT = 123 order by ARTDCL, ARTITM, ARTSBT"])
        self.assertIs(told["returned"], True)

    def report_of(self, procedure: str) -> str:
        boxes = []

        def user(seat: Seat) -> None:
            boxes.append(seat.dismiss_box())
            seat.window(self.TITLE)
            seat.keys("Escape")

        self.assertIs(self.told_by(FILES, procedure, user=user)["returned"], True)
        return boxes[0]

    def test_an_error_that_the_host_raises_is_reported(self) -> None:
        """In the host's words if they arrive: this Wine's scripts hand on the number alone."""
        words, _, rest = self.report_of("ShowDischargesOfRaisingHost").partition("\n\n")
        self.assertIn(words, ("El servidor del estudio no responde: señal caída.", WITHOUT_WORDS))
        self.assertEqual(rest, "-2147217865" + self.LOCATION)

    def test_a_refusing_host_is_asked_for_its_reason(self) -> None:
        self.assertEqual(self.report_of("ShowDischargesOfRefusingHost"),
                         "Falta la tabla de descargas.\n\n-2147217865" + self.LOCATION)


class MostrarDIT(ScriptCase):
    def test_it_opens_and_closes(self) -> None:
        def user(seat: Seat) -> None:
            seat.window("Listados de DIT's")
            seat.keys("Escape")

        told = self.told_by(FILES, "ShowDeclarations", user=user)
        self.assertEqual(len(told.every("statement")), 1)
        self.assertRegex(told["statement"], r"^select \* from INTINS where INTFOF between datevalue\('01/01/\d{4}'\) and "
                                            r"datevalue \('31/12/\d{4}'\)$")
        self.assertIs(told["returned"], True)
