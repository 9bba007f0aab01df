"""A host that is built against the component's type library: it checks what it gets, and says what it sees."""

from __future__ import annotations

import os
import pathlib
import unittest

from wine import windows_path, wine

ROUNDS = 1000
# Bytes that these rounds may leave. Rounds that lose nothing leave a few pages at most; one object of 1 KB lost in every
# round would leave twice as much as is allowed.
ALLOWED_GROWTH = ROUNDS * 512
CLIENT_TIMEOUT = 180  # seconds
SCREENS = {"Mostrar": "Catalogos", "Importar": "Exportar a Stock de Insumos", "MostrarDIT": "Listados de DIT's",
           "VerINSxSBT": "Insumos por subitem de exportación"}


class Client(unittest.TestCase):

    @classmethod
    def setUpClass(cls) -> None:
        wine().ensure_registered()

    def said_by(self, *command: str) -> dict[str, str]:
        """Runs the program to its good end; the values that it told, by their names."""
        program = pathlib.Path(os.environ["OVELDRA_WINDOWS_BUILD"]) / "tests" / "windows" / "oveldra_client.exe"
        done = wine().run(windows_path(program.resolve()), *command, timeout=CLIENT_TIMEOUT)
        self.assertEqual(done.returncode, 0, done.stdout)
        told = dict(line.split("=", 1) for line in done.stdout.splitlines() if not line.startswith("holds: "))
        self.assertEqual(told.get("finished"), "yes", done.stdout)
        return told

    def test_every_member_is_reached_by_its_slot(self):
        told = self.said_by("slots")
        self.assertEqual({name: told[name] for name in SCREENS}, SCREENS)

    def test_the_type_library_describes_every_member(self):
        self.said_by("types")

    def test_the_object_is_one_by_all_its_interfaces(self):
        self.said_by("identity")

    def test_errors_come_with_number_description_and_source(self):
        told = self.said_by("errors")
        self.assertEqual(told["source"], told["source by name"])

    def test_a_second_thread_may_use_a_lent_object_and_none_of_its_own(self):
        self.said_by("apartments")

    def test_an_apartment_of_many_threads_works_through_a_proxy(self):
        self.said_by("threads")

    def test_the_library_is_unloaded_after_the_last_release_and_comes_back(self):
        self.said_by("unload")

    def test_the_hosts_windows_take_no_input_while_a_window_of_the_component_is_open(self):
        self.said_by("modality")

    def test_windows_follow_the_scale_of_their_monitor_in_a_host_that_does_not(self):
        self.said_by("awareness")

    def test_many_lives_of_an_object_leave_nothing_behind(self):
        told = self.said_by("rounds", str(ROUNDS))
        for figure in ("handles", "gdi objects", "user objects"):
            with self.subTest(figure):
                self.assertEqual(int(told[f"{figure} after"]), int(told[f"{figure} before"]))
                self.assertGreater(int(told[f"{figure} before"]), 0)
        growth = int(told["private bytes after"]) - int(told["private bytes before"])
        self.assertLess(growth, ALLOWED_GROWTH)
        self.assertGreater(int(told["private bytes before"]), 0)


if __name__ == "__main__":
    unittest.main()
