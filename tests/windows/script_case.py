"""Hosts written in VBScript: a test runs one of their procedures and reads what it told.

A host is put together from files of hosts/, in the order given. They are UTF-8 here, but Windows reads scripts in the
code page of the regional settings.
"""

from __future__ import annotations

import datetime
import pathlib
import re
import tempfile
import unittest
from collections.abc import Callable

from seat import Seat
from wine import CODE_PAGE, Wine, windows_path, wine

HOSTS = pathlib.Path(__file__).resolve().parent / "hosts"

NULL, DATE, TEXT, BOOLEAN = 1, 7, 8, 11
INTEGERS, NUMBERS = (2, 3, 17, 20), (4, 5, 6, 14)

# The last lines of every script. An error that its procedure does not handle is told instead of ending it in silence.
LAST_LINES = """
On Error Resume Next
{procedure}
If Err.Number <> 0 Then TellError "uncaught"
CloseAnswers
"""


def value(kind: int, text: str):
    """A value as a script told it."""
    if kind in INTEGERS:
        return int(text)
    if kind in NUMBERS:
        return float(text.replace(",", "."))
    if kind == BOOLEAN:
        return text == "True"
    if kind == DATE:
        return datetime.date.fromisoformat(text)
    if kind == TEXT:
        return re.sub(r"\\(.)", lambda escaped: {"n": "\n", "t": "\t"}.get(escaped[1], escaped[1]), text)
    if kind == NULL:
        return None
    raise ValueError(f"told a value of kind {kind}")  # Empty, or an object


class Answers:
    """What a script told, in this order."""

    def __init__(self, text: str):
        self.told: list[tuple] = []
        for line in text.splitlines():
            name, kind, said = line.split("\t")
            self.told.append((name, value(int(kind), said)))

    def every(self, name: str) -> list:
        return [said for told, said in self.told if told == name]

    def __getitem__(self, name: str):
        found = self.every(name)
        if len(found) != 1:
            raise AssertionError(f"{name} was told {len(found)} times; all that was told: {self.told}")
        return found[0]

    def error(self, name: str) -> tuple:
        """Number, description and source of an error."""
        return tuple(self[f"{name}.{part}"] for part in ("number", "description", "source"))


class ScriptCase(unittest.TestCase):
    """Libraries that are registered, and a folder for databases."""

    @classmethod
    def setUpClass(cls) -> None:
        wine().ensure_registered()

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(dir=wine().scratch)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    @property
    def windows(self) -> Wine:
        return wine()

    def told_by(self, files: str, procedure: str, *arguments: str,
                user: Callable[[Seat], None] | None = None, environment: dict[str, str] | None = None) -> Answers:
        """Runs a procedure of a host made of these files, while the user does his part. The script finds its arguments
        behind the first one, which is the file of its answers; `environment` is added to that of all programs."""
        script, answers = self.folder / "host.vbs", self.folder / "answers.txt"
        text = "".join((HOSTS / name).read_text("utf-8") for name in ["answers.vbs", *files.split()])
        text += LAST_LINES.format(procedure=procedure)
        script.write_bytes("\r\n".join(text.splitlines()).encode(CODE_PAGE) + b"\r\n")
        answers.unlink(missing_ok=True)
        with open(self.folder / "output.txt", "w+b") as output:
            program = wine().start("cscript", "//nologo", windows_path(script), windows_path(answers), *arguments,
                                   stdout=output, stderr=output,
                                   env={**wine().environment, **(environment or {}),
                                        "WINEDEBUG": "-all,fixme+vbscript"})
            seat = Seat(wine(), program)
            try:
                if user is not None:
                    user(seat)
                seat.leave()
            except BaseException as failure:
                seat.go_away()
                failure.add_note(self._report(output, answers))
                raise
            try:
                told = Answers(answers.read_bytes().decode("utf-16"))
            except (OSError, ValueError) as failure:
                self.fail(f"{procedure} cannot be understood: {failure}\n{self._report(output, answers)}")
            if not told.every("end"):
                self.fail(f"{procedure} did not come to its end\n{self._report(output, answers)}")
            return told

    @staticmethod
    def _report(output, answers: pathlib.Path) -> str:
        output.seek(0)
        said = output.read().decode("utf-8", "replace")
        return said + (answers.read_bytes().decode("utf-16") if answers.exists() else "no answers")
