"""The settings of the user's Windows: numbers, what screens keep of themselves, the screen's scale."""

from __future__ import annotations

import contextlib
import subprocess
import unittest
from collections.abc import Iterator

from listing_case import RECORDS, SETTINGS, ListingCase, document
from script_case import ScriptCase
from seat import Seat
from wine import Wine, wine

INTERNATIONAL = r"HKCU\Control Panel\International"
SCREEN = "Insumos por subitem de exportación"
FILES = "listed_host.vbs regional.vbs"


@contextlib.contextmanager
def separators(windows: Wine, decimal: str, grouping: str) -> Iterator[None]:
    """Regional settings of another user."""
    before = {name: windows.value(INTERNATIONAL, name) for name in ("sDecimal", "sThousand")}
    try:
        windows.set_value(INTERNATIONAL, "sDecimal", decimal)
        windows.set_value(INTERNATIONAL, "sThousand", grouping)
        yield
    finally:
        for name, text in before.items():
            windows.set_value(INTERNATIONAL, name, text)


class Numbers(ListingCase):
    def subitem(self, typed: str) -> int:
        """The number that the host's user meant, as the component asks for it."""
        def user(seat: Seat) -> None:
            seat.window(SCREEN)
            seat.keys("Escape")

        statement = self.told_by(FILES, "ShowSubitem", typed, user=user)["statement"]
        return int(statement.split("EXTSBT = ")[1].split()[0])

    # Nothing but the regional settings tells thousands and decimals of these two apart.
    TYPED = ("1.500", "3,750")

    def test_a_decimal_comma_is_read(self) -> None:
        self.assertEqual([self.subitem(text) for text in self.TYPED], [1500, 4])

    def test_a_decimal_point_is_read(self) -> None:
        with separators(self.windows, ".", ","):
            self.assertEqual([self.subitem(text) for text in self.TYPED], [2, 3750])

    def test_a_decimal_point_is_shown(self) -> None:
        with separators(self.windows, ".", ","):
            printed = self.listed("Down", "Down")
        self.assertEqual(printed, document([record.replace(",", ".") for record in RECORDS]))


class ColumnWidths(ScriptCase):
    KEY = rf"{SETTINGS}\oVELDRA\frmVerINSxSBT"
    LIST = "lstView"

    def play(self, *keys: str) -> None:
        def user(seat: Seat) -> None:
            seat.window(SCREEN)
            seat.keys(*keys, "Escape")

        self.told_by(FILES, "ShowSubitem", "1", user=user)

    def test_widths_that_the_user_fitted_are_kept_for_him(self) -> None:
        self.assertIsNone(wine().value(self.KEY, self.LIST))
        self.play()
        self.assertIsNone(wine().value(self.KEY, self.LIST))
        self.play("ctrl+plus")
        kept = wine().value(self.KEY, self.LIST)
        self.assertIsNotNone(kept)
        self.addCleanup(wine().delete_value, self.KEY, self.LIST)
        self.assertRegex(kept, r"^(\d+(\.\d)?;){5}(\d+(\.\d)?)?$")
        self.play("ctrl+minus")
        self.assertEqual(wine().value(self.KEY, self.LIST), "")


class Scale(ScriptCase):
    KEY = r"HKCU\Control Panel\Desktop"

    def width(self, dots_per_inch: int) -> int:
        """Of the screen's window, in pixels."""
        wine().set_value(self.KEY, "LogPixels", str(dots_per_inch), "REG_DWORD")
        wine().stop_programs()  # Windows reads it when it starts
        widths = []

        def user(seat: Seat) -> None:
            seat.window(SCREEN)
            widths.append(self.width_of(wine().display.active_window()[0]))
            seat.keys("Escape")

        self.told_by(FILES, "ShowSubitem", "1", user=user)
        return widths[0]

    @staticmethod
    def width_of(window: str) -> int:
        told = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], stdout=subprocess.PIPE, check=True,
                              encoding="ascii").stdout
        return int(dict(line.split("=") for line in told.splitlines())["WIDTH"])

    def test_a_screen_of_one_and_a_half_times_the_dots_is_filled_alike(self) -> None:
        before = wine().value(self.KEY, "LogPixels")
        self.addCleanup(wine().stop_programs)
        self.addCleanup(wine().set_value, self.KEY, "LogPixels", before or "96", "REG_DWORD")
        plain, fine = self.width(96), self.width(144)
        self.assertAlmostEqual(fine / plain, 1.5, delta=0.05)


if __name__ == "__main__":
    unittest.main()
