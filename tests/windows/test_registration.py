"""What registering writes for the user or the machine, and that unregistering takes it away again."""

from __future__ import annotations

import shutil
import subprocess

from script_case import ScriptCase
from wine import COMPONENT, ROOTS, STORE, Registry, folder, windows_path, wine

USER, MACHINE = r"HKCU\Software\Classes", r"HKLM\Software\Classes"
FOR_USER, FOR_MACHINE = ("/n", "/i:user"), ()

CLASSES = ("oVELDRA.cloVELDRAMain", "oVELDRAStore.ConexionDB")
NOT_MADE = 429

FULL_NAMES = {root: root.replace(root[:4], ROOTS[root[:4]]) for root in (USER, MACHINE)}


class RegistrationCase(ScriptCase):
    @classmethod
    def setUpClass(cls) -> None:
        wine().ensure_unregistered()
        # Users of Windows have these keys, with or without something below them; those of a new prefix have not.
        for name in ("CLSID", "Interface", "TypeLib"):
            wine().run("reg", "add", f"{USER}\\{name}", "/f").check_returncode()

    def setUp(self) -> None:
        super().setUp()
        # Windows registers classes of its own when scripts use them first.
        self.assertEqual(self.creation_errors(), [NOT_MADE, NOT_MADE])
        self.before = self.registry()

    def registry(self) -> Registry:
        return wine().export(USER, MACHINE)

    def changed_keys(self) -> list[str]:
        now = self.registry()
        return sorted(key for key in now.keys() | self.before.keys() if now.get(key) != self.before.get(key))

    def written_below(self, root: str) -> Registry:
        """What there was not before, by keys without their root. What 32-bit programs see of it beside is no key of its
        own, but a link."""
        added = {key.removeprefix(FULL_NAMES[root] + "\\").lower(): values for key, values in self.registry().items()
                 if key.startswith(FULL_NAMES[root]) and key not in self.before}
        return {key: values for key, values in added.items() if not key.startswith("wow6432node\\")}

    def creation_errors(self) -> list[int]:
        told = self.told_by("creation.vbs", "MakeBoth")
        return [told[f"{which}.number"] for which in ("component", "store")]

    def assert_registered_below(self, root: str) -> None:
        """This Wine finds no classes that are the user's alone, so it is the keys that tell."""
        self.assertEqual([key for key in self.changed_keys() if not key.startswith(FULL_NAMES[root])], [])
        written = self.written_below(root)
        for name in CLASSES:
            self.assertIn(name.lower(), written)
        for kind, number in (("clsid", 2), ("typelib", 2), ("interface", 4)):
            places = {key.split("\\")[1] for key in written if key.startswith(kind + "\\")}
            self.assertEqual(len(places), number, kind)

    def assert_works_registered_below(self, root: str) -> None:
        self.assert_registered_below(root)
        self.assertEqual(self.creation_errors(), [0, 0])

    def assert_as_before(self) -> None:
        self.assertEqual(self.changed_keys(), [])
        self.assertEqual(self.creation_errors(), [NOT_MADE, NOT_MADE])


class Regsvr32(RegistrationCase):
    def setUp(self) -> None:
        super().setUp()
        self.addCleanup(self.leave_nothing)

    def leave_nothing(self) -> None:
        """A test that failed half way must not fail the next one."""
        if self.changed_keys():
            for options in (FOR_USER, FOR_MACHINE):
                for library in (COMPONENT, STORE):
                    wine().regsvr32(library, "/u", *options)

    def regsvr32(self, *options: str) -> None:
        for library in (COMPONENT, STORE):
            self.assertEqual(wine().regsvr32(library, *options), 0)

    def test_for_the_user_and_back(self) -> None:
        self.regsvr32(*FOR_USER)
        self.assert_registered_below(USER)
        self.regsvr32("/u", *FOR_USER)
        self.assert_as_before()

    def test_for_the_machine_and_back(self) -> None:
        self.regsvr32(*FOR_MACHINE)
        self.assert_works_registered_below(MACHINE)
        self.regsvr32("/u", *FOR_MACHINE)
        self.assert_as_before()

    def test_the_user_gets_what_the_machine_gets(self) -> None:
        self.regsvr32(*FOR_USER)
        users = self.written_below(USER)
        self.regsvr32("/u", *FOR_USER)
        self.regsvr32(*FOR_MACHINE)
        self.assertEqual(self.written_below(MACHINE), users)
        self.regsvr32("/u", *FOR_MACHINE)

    def test_twice_is_the_same_as_once(self) -> None:
        self.regsvr32(*FOR_USER)
        once = self.registry()
        self.regsvr32(*FOR_USER)
        self.assertEqual(self.registry(), once)
        self.regsvr32("/u", *FOR_USER)
        self.assert_as_before()

    def test_back_when_nothing_is_registered(self) -> None:
        self.regsvr32("/u", *FOR_USER)
        self.assertEqual(self.changed_keys(), [])

    def test_the_libraries_are_registered_where_they_are(self) -> None:
        self.regsvr32(*FOR_USER)
        texts = {text for values in self.registry().values() for text in values.values()}
        for library in (COMPONENT, STORE):
            self.assertIn(f'"{windows_path(folder() / library)}"'.replace("\\", "\\\\"), texts)


class Scripts(RegistrationCase):
    """By the scripts beside the libraries, in a folder as users name theirs."""

    def setUp(self) -> None:
        super().setUp()
        self.place = self.folder / "Estudio Ñandú & Cía (1)"
        shutil.copytree(folder(), self.place)
        self.addCleanup(self.leave_nothing)

    def leave_nothing(self) -> None:
        if self.changed_keys():
            for arguments in ((), ("maquina",)):
                self.cmd("desinstalar.cmd", *arguments)

    def cmd(self, script: str, *arguments: str) -> subprocess.CompletedProcess:
        # As the desktop and consoles start it: in its own folder or in another one.
        return wine().run("cmd", "/c", script, *arguments, cwd=self.place)

    def done(self, script: str, *arguments: str) -> None:
        answer = self.cmd(script, *arguments)
        self.assertEqual(answer.returncode, 0, answer.stdout)

    def test_for_the_user_and_back(self) -> None:
        self.done("instalar.cmd")
        self.assert_registered_below(USER)
        self.done("desinstalar.cmd")
        self.assert_as_before()

    def test_for_the_machine_and_back(self) -> None:
        self.done("instalar.cmd", "maquina")
        self.assert_works_registered_below(MACHINE)
        self.done("desinstalar.cmd", "maquina")
        self.assert_as_before()
