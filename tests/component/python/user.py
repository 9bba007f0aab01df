"""The user before the screen, on a thread of his own: the main thread is inside the component meanwhile."""

from __future__ import annotations

import contextlib
import ctypes
import json
import threading
import time
from collections.abc import Callable, Iterator

from x_display import XDisplay

PATIENCE = 30  # seconds that a window may take to come up
PAUSE = 0.01  # seconds between two looks at the screen


class User:
    """Waits for what he wants to see before he presses a key."""

    def __init__(self, display: XDisplay, probe: str):
        self._display = display
        self._probe = ctypes.CDLL(probe)
        self._probe.probe_screen.restype = ctypes.c_char_p
        self._probe.probe_close.restype = None

    def keys(self, *names: str) -> None:
        self._display.keys(*names)

    def type(self, text: str) -> None:
        self._display.type(text)

    def screen(self) -> dict:
        """The window that he has to do with: "window" (objectName), "title", "active", "focus" (objectName), "labels"
        (texts by objectName), "lists" (rows of cells by objectName), and of a message box "box" (text) and "icon"."""
        seen = self._probe.probe_screen()
        return json.loads(seen) if seen is not None else {}

    def wait(self, wanted: str, holds: Callable[[dict], bool]) -> dict:
        """Looks until it holds; the screen on which it does."""
        end = time.monotonic() + PATIENCE
        while True:
            seen = self.screen()
            if holds(seen):
                return seen
            if time.monotonic() > end:
                raise AssertionError(f"never seen: {wanted}; last: {seen}")
            time.sleep(PAUSE)

    def window(self, *names: str) -> dict:
        """Waits until one of these windows has the keyboard."""
        return self.wait(f"the window {' or '.join(names)}",
                         lambda seen: seen.get("window") in names and seen["active"])

    def box(self) -> dict:
        """Waits until a message box has the keyboard."""
        return self.wait("a message box", lambda seen: "box" in seen and seen["active"])

    def focus(self, name: str) -> None:
        """Waits until this control of the active window has the focus."""
        self.wait(f"the focus on {name}", lambda seen: seen.get("focus") == name and seen["active"])

    def tab_to(self, name: str) -> None:
        """Walks with the tab key, at most once around."""
        seen = self.screen()
        first = seen["focus"]
        while seen["focus"] != name:
            here = seen["focus"]
            self.keys("Tab")
            seen = self.wait("the focus elsewhere", lambda now: now.get("focus", here) != here)
            if seen["focus"] == first:
                raise AssertionError(f"the tab key does not come to {name}")

    @contextlib.contextmanager
    def plays(self, script: Callable[[User], None]) -> Iterator[None]:
        """Plays the script while the block runs, which ends when the last window is closed. A script that fails, or
        that leaves a window open, closes all of them; its failure is raised here."""
        done = threading.Event()
        failures: list[BaseException] = []

        def play() -> None:
            try:
                script(self)
                if not done.wait(PATIENCE):
                    raise AssertionError(f"left open: {self.screen()}")
            except BaseException as failure:
                failures.append(failure)
                while not done.wait(PAUSE):
                    self._probe.probe_close()

        thread = threading.Thread(target=play)
        thread.start()
        try:
            yield
        finally:
            done.set()
            thread.join()
        if failures:
            raise failures[0]
