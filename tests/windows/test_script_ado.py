"""The operations over a connection that has the members of an ADO connection."""

from __future__ import annotations

from script_case import ScriptCase
from seat import Seat
from test_script_screens import CLOCK, PICKED, WITHOUT_WORDS, pick

FILES = "component.vbs products.vbs ado_host.vbs"

SERVER, CLIENT = 2, 3  # where cursors are kept


class AdoConnection(ScriptCase):
    def test_a_product_is_picked(self) -> None:
        told = self.told_by(FILES, "Pick", user=pick)
        self.assertIs(told["connected"], True)
        self.assertEqual(tuple(told[name] for name in PICKED), (*CLOCK[:7], "", CLOCK[8]))  # its suffixes are Null

    def test_queries_run_with_a_client_cursor_and_the_hosts_own_comes_back(self) -> None:
        told = self.told_by(FILES, "Pick", user=pick)
        self.assertEqual(len(told.every("statement")), 3)
        self.assertEqual(told.every("cursor"), [CLIENT] * 3)
        self.assertEqual(told["cursor afterwards"], SERVER)

    def test_the_affected_records_of_a_command_are_understood(self) -> None:
        """The articles of a declaration are deleted only when the declaration itself was."""
        def user(seat: Seat) -> None:
            seat.window("Listados de DIT's")
            seat.keys("Home", "Delete")
            self.assertEqual(seat.dismiss_box(), "Confirma eliminar la DIT 26001IT14000655K")
            seat.window("Listados de DIT's")
            seat.keys("Escape")

        told = self.told_by(FILES, "DeleteDeclaration", user=user)
        deletions = [statement for statement in told.every("statement") if statement.startswith("delete")]
        self.assertEqual([deletion.split()[2] for deletion in deletions], ["INTINS", "INS", "DIP"])

    def test_an_error_of_the_connection_is_reported(self) -> None:
        """In its words if they arrive: this Wine's scripts hand on the number alone."""
        boxes = []

        def user(seat: Seat) -> None:
            boxes.append(seat.dismiss_box())
            seat.window("Insumos por subitem de exportación")
            seat.keys("Escape")

        told = self.told_by(FILES, "ShowDischarges", user=user)
        words, _, rest = boxes[0].partition("\n\n")
        self.assertIn(words, ("Consulta que no se entiende.", WITHOUT_WORDS))
        self.assertEqual(rest, "-2147217900 - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]")
        self.assertEqual(told["cursor afterwards"], SERVER)
