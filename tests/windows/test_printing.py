"""The listing of discharges goes through the spooler of Windows to a printer as it is."""

from __future__ import annotations

import unittest

from listing_case import FOR_TEXT, RECORDS, SETTINGS, ListingCase, document

# The same records with eight decimals, for which some columns are wider.
WIDE_RECORDS = [
    "26001EC01000001A MECANISMO-DE-CUARZO-     00,33333333     01,00     02,00000000      00,00000000      00,00000000"
    "    62,333333       155,83      FAC-7",
    "26001EC01000002B CAJ-Ñ1                   01,50000000     01,00     10,00000000      00,50000000      02,25000000"
    "    34,938000       104,81 0001-00000",
]


class RawListing(ListingCase):
    def test_the_printer_picked_gets_the_records_in_code_page_850(self) -> None:
        self.assertEqual(self.listed("Down", "Down"), document(RECORDS))

    def test_the_printer_of_the_settings_is_proposed(self) -> None:
        self.set_value(rf"{SETTINGS}\oZENDALO\IMPRESION", "IMPNOM", FOR_TEXT)
        self.assertEqual(self.listed(), document(RECORDS))

    def test_quantities_have_eight_decimals_when_the_suite_says_so(self) -> None:
        self.set_value(rf"{SETTINGS}\oZENDALO\CONFIG", "opVDE", "S")
        self.assertEqual(self.listed("Down", "Down"), document(WIDE_RECORDS))


if __name__ == "__main__":
    unittest.main()
