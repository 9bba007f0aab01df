"""What the tests of listings share: print queues of the tests' own, and the way to the listing of a declaration."""

from __future__ import annotations

import pathlib
import tempfile

import private_cups
from private_cups import PrivateCups
from script_case import ScriptCase
from seat import Seat
from wine import windows_path, wine

FOR_PAGES, FOR_TEXT = "Laser", "Matriz"
SETTINGS = r"HKCU\Software\VB and VBA Program Settings"

# Of the discharges in hosts/discharges.vbs, by the date of the exportation; the quantities with six decimals.
RECORDS = [
    "26001EC01000001A MECANISMO-DE-CUARZO-    00,333333     01,00 02,000000     00,000000     00,000000"
    "    62,333333       155,83      FAC-7",
    "26001EC01000002B CAJ-Ñ1                  01,500000     01,00 10,000000     00,500000     02,250000"
    "    34,938000       104,81 0001-00000",
]


def document(records: list[str]) -> bytes:
    """As a printer gets it."""
    return "".join(f"{record}\r\n" for record in records).encode("cp850")


class ListingCase(ScriptCase):
    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        missing = private_cups.missing_programs()
        if missing:
            raise RuntimeError(f"not installed: {', '.join(missing)}")
        place = tempfile.TemporaryDirectory(prefix="oveldra-print-", dir=wine().scratch)
        cls.addClassCleanup(place.cleanup)
        cls.printers = PrivateCups(pathlib.Path(place.name), wine().environment)
        cls.addClassCleanup(cls.printers.close)
        for queue in (FOR_PAGES, FOR_TEXT):
            cls.printers.add_queue(queue)
        # The spooler of Windows works in the programs that print, and asks the server that they name.
        wine().environment.update(cls.printers.settings)
        for name in cls.printers.settings:
            cls.addClassCleanup(wine().environment.pop, name)

    def set_value(self, key: str, name: str, text: str) -> None:
        """For the time of the test, and anew for every one: there is none before it."""
        wine().set_value(key, name, text)
        self.addCleanup(wine().delete_value, key, name)

    def listed(self, *choice: str) -> bytes:
        """Opens the listing of the one declaration, chooses the printer with these keys and prints in DOS mode; what
        arrives at the raw queue."""
        documents = []

        def user(seat: Seat) -> None:
            before = self.printers.count(FOR_TEXT)
            seat.window("Listados de DIT's")
            seat.keys("Home", "Return")
            seat.window("Modificar DIT")
            seat.keys("F12")
            seat.window("Listado de Descargas")
            # From the printers back to the modes, the second of them, and to the printers again.
            seat.keys("shift+Tab", "Down", "space", "Tab", *choice, "F12")
            documents.append(self.printers.wait_for_document(FOR_TEXT, before))
            for title in ("Modificar DIT", "Listados de DIT's"):
                seat.keys("Escape")
                seat.window(title)
            seat.keys("Escape")

        told = self.told_by("store.vbs discharges.vbs", "ShowDeclarations", windows_path(self.folder), user=user)
        self.assertIs(told["returned"], True)
        self.assertEqual(self.printers.count(FOR_PAGES), 0)
        return documents[0]
