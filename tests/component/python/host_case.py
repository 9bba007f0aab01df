"""What the tests of the Python binding share: the screen with its user, and a component for every test.

The environment names what is tested: OVELDRA_LIBRARY, the probe that sees the screen (SCREEN_PROBE) and the folder of
the example (PYTHON_EXAMPLE).
"""

from __future__ import annotations

import atexit
import contextlib
import functools
import gc
import os
import pathlib
import sys
import tempfile
import time
import unittest

import x_display
from user import User

sys.path.insert(0, os.environ["PYTHON_EXAMPLE"])

import doubles
import oveldra

CRITICAL, INFORMATION = 3, 1  # icons of message boxes


@functools.cache  # the one application of the process stays on the screen that it was made on
def user() -> User | None:
    """The user at a screen of the tests' own; None where it cannot be had, and the component works offscreen then."""
    # Qt reads the language from the variable; the C library need not have the locale.
    os.environ.update({"LC_ALL": "es_AR.UTF-8", "LANGUAGE": "", "TZ": "UTC", "QT_LOGGING_RULES": "",
                       "QT_STYLE_OVERRIDE": "fusion", "QT_SCALE_FACTOR": "1", "QT_QPA_PLATFORM": "offscreen"})
    time.tzset()
    settings = tempfile.TemporaryDirectory(prefix="oveldra-settings-")
    atexit.register(settings.cleanup)
    os.environ["XDG_CONFIG_HOME"] = settings.name
    if x_display.missing_programs():
        return None
    display = x_display.XDisplay()
    atexit.register(display.close)
    return User(display, os.environ["SCREEN_PROBE"])


class Case(unittest.TestCase):
    """A component, and a folder for databases. Nothing of a host's may be held when the component has gone."""

    @classmethod
    def setUpClass(cls) -> None:
        user()

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.component = oveldra.Component()
        # State of the component's that outlasts an object.
        self.component.Interno_Externo = ""
        self.component.IdSUB = "0"

    def tearDown(self) -> None:
        self.component.close()
        gc.collect()
        self.assertEqual(oveldra.kept_objects(), 0)
        self.assertEqual(len(doubles.recordsets), 0)
        self.assertEqual(len(doubles.connections), 0)

    def inputs(self, *statements: str) -> oveldra.Connection:
        """A new inputs database with what the statements write."""
        connection = oveldra.Connection.create(f"sqlite:{self.folder / 'insumos.sqlite'}", oveldra.INPUTS)
        self.addCleanup(connection.close)
        for statement in statements:
            self.assertEqual(connection.execute(statement), 1)
        return connection

    @contextlib.contextmanager
    def fails(self, number: int, native: int = 0, description: str | None = None):
        with self.assertRaises(oveldra.OveldraError) as raised:
            yield
        self.assertEqual((raised.exception.number, raised.exception.native), (number, native))
        if description is not None:
            self.assertEqual(raised.exception.description, description)


class ScreenCase(Case):
    """One that needs the user."""

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        if user() is None:
            raise unittest.SkipTest(f"not installed: {', '.join(x_display.missing_programs())}")

    def shows(self, operation, script) -> None:
        """Runs an operation while the user plays the script."""
        with user().plays(script):
            operation()

    def told(self, operation, screen_below: str | None = None) -> dict:
        """Runs an operation that shows a message box, alone or on a screen, which is left; what the box said."""
        boxes = []

        def script(seat: User) -> None:
            boxes.append(seat.box())
            seat.keys("Return")
            if screen_below is not None:
                seat.window(screen_below)
                seat.keys("Escape")

        self.shows(operation, script)
        return boxes[0]
