"""The twenty members as a script reaches them: by name, late."""

from __future__ import annotations

from script_case import ScriptCase
from seat import Seat

READ = ("OK", "CATNRO", "PRDDES", "PRDNCM", "PRDPAI", "PRDPRE", "PRDSUF", "PRDUNI", "PRDNRO")
WRITTEN = ("BaseNcm", "BaseTornel", "BaseInsumos", "Interno_Externo", "ADUANA", "IdSUB")
FILES = "component.vbs listed_host.vbs products.vbs members.vbs"

WRONG_TYPE = "No coinciden los tipos"


class Members(ScriptCase):
    def told(self, procedure: str, **options):
        return self.told_by(FILES, procedure, **options)

    def test_each_of_the_read_ones_is_read(self) -> None:
        told = self.told("ReadEachInAnyLetterCase")
        self.assertEqual({name: told[name] for name in READ},
                         {**dict.fromkeys(READ, ""), "OK": False, "PRDPRE": 0.0})
        self.assertIs(type(told["PRDPRE"]), float)

    def test_names_are_known_in_any_letter_case(self) -> None:
        told = self.told("ReadEachInAnyLetterCase")
        self.assertEqual((told["ok"], told["CATnro"], told["prdpre"]), (False, "", 0.0))

    def test_each_of_the_written_ones_is_written(self) -> None:
        told = self.told("WriteEach")
        self.assertEqual([told[f"{name}.number"] for name in WRITTEN], [0] * len(WRITTEN))

    def test_a_written_variable_keeps_its_text(self) -> None:
        self.assertEqual(self.told("WriteVariables")["text"], "TOR00001")

    def test_a_written_one_cannot_be_read(self) -> None:
        told = self.told("ReadWriteOnly")
        self.assertEqual([told[f"{name}.number"] for name in WRITTEN], [438] * len(WRITTEN))

    def test_a_read_one_cannot_be_written(self) -> None:
        told = self.told("WriteReadOnly")
        self.assertEqual([told[f"{name}.number"] for name in READ], [438] * len(READ))

    def test_an_unknown_name(self) -> None:
        told = self.told("UseUnknown")
        self.assertEqual([told[f"{way}.number"] for way in ("read", "written", "called")], [438] * 3)

    def test_too_many_arguments(self) -> None:
        told = self.told("CallWithTooMany")
        self.assertEqual([told[f"{name}.number"] for name in ("Mostrar", "ConectarDB")], [450] * 2)

    def test_each_of_the_operations_is_called(self) -> None:
        def user(seat: Seat) -> None:
            for title in ("Catalogos", "Productos", "Exportar a Stock de Insumos", "Listados de DIT's",
                          "Insumos por subitem de exportación"):
                seat.window(title)
                seat.keys("Escape")

        told = self.told("CallEach", user=user)
        for name in ("ConectarDB", "Mostrar", "Importar", "MostrarDIT", "VerINSxSBT"):
            self.assertIs(told[name], True)


class IdSUB(ScriptCase):
    def numbered(self, text: str) -> tuple:
        return self.told_by(FILES, f'NumberSubitem "{text}"').error("IdSUB")

    def test_a_number(self) -> None:
        self.assertEqual(self.numbered("123"), (0, "", ""))

    def refused(self, text: str) -> None:
        number, description, source = self.numbered(text)
        self.assertEqual((number, description), (13, WRONG_TYPE))
        self.assertIn("oVELDRA", source)

    def test_a_text_that_is_no_number(self) -> None:
        self.refused("abc")

    def test_no_text(self) -> None:
        self.refused("")

    def test_a_number_out_of_range(self) -> None:
        self.assertEqual(self.numbered("99999999999")[:2], (6, "Desbordamiento"))
