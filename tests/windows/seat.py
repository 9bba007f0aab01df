"""The user, who has nothing but the screen and the keyboard, and looks before he presses a key."""

from __future__ import annotations

import subprocess
import time
from collections.abc import Callable

import x_client
from wine import Wine

PATIENCE = 60  # seconds that a window may take to come up
PAUSE = 0.02  # seconds between two looks at the screen
BOX = "oVELDRA"  # the title of message boxes


class Seat:
    """A user before one program, which has been started already. Going away closes what is open."""

    def __init__(self, windows: Wine, program: subprocess.Popen):
        self._windows = windows
        self._display = windows.display
        self._program = program
        self._window = ""

    def keys(self, *names: str) -> None:
        self._display.keys(*names)

    def type(self, text: str) -> None:
        self._display.type(text)

    def fill(self, text: str) -> None:
        """Fills a text box in and goes on to the next one."""
        self.type(text)
        self.keys("Return")

    def wait(self, wanted: str, holds: Callable[[], bool]) -> None:
        """Looks until it holds, as long as the program runs."""
        end = time.monotonic() + PATIENCE
        while not holds():
            if self._program.poll() is not None:
                raise AssertionError(f"the program ended; still to come: {wanted}")
            if time.monotonic() > end:
                raise AssertionError(f"never seen: {wanted}; the keyboard is at \"{self._display.active_window()[1]}\"")
            time.sleep(PAUSE)

    def window(self, title: str) -> None:
        """Waits until a window with this title has the keyboard, another one than the one that was waited for last."""
        def holds() -> bool:
            number, seen = self._display.active_window()
            if seen != title or number == self._window:
                return False
            self._window = number
            return True

        self.wait(f"the window \"{title}\"", holds)

    def box(self) -> str:
        """Waits for a message box and answers its text."""
        self.window(BOX)
        return self.box_text()

    def box_text(self) -> str:
        """The text of the message box that has the keyboard, read as users copy it."""
        clipboard = x_client.Clipboard()
        try:
            self.keys("ctrl+c")
            copied = clipboard.copied()
        finally:
            clipboard.close()
        # Between lines of dashes: the title, the text, the buttons.
        parts = [part.strip("\r\n") for part in copied.split("-" * 27)]
        return parts[2].replace("\r\n", "\n")

    def dismiss_box(self) -> str:
        """The same, and closes it."""
        text = self.box()
        self.keys("Return")
        return text

    def leave(self) -> None:
        """Waits until the program ends by itself."""
        try:
            self._program.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"still open: \"{self._display.active_window()[1]}\"") from None

    def go_away(self) -> None:
        """Closes one window after the other, and in the end the program."""
        end = time.monotonic() + PATIENCE / 4
        while self._program.poll() is None:
            if time.monotonic() > end:
                self._windows.stop_programs()
                self._program.wait(PATIENCE)
                return
            if self._display.active_window()[0]:
                self.keys("Escape")
            time.sleep(PAUSE)
