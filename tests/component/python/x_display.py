"""A screen of its own with a window manager, and the keyboard that types into it."""

from __future__ import annotations

import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

COMMAND_TIMEOUT = 30  # seconds

_libc = ctypes.CDLL(None)


def missing_programs() -> list[str]:
    """The programs it needs that are not installed; empty when it can be used."""
    return [program for program in ("Xvfb", "openbox", "xdotool") if shutil.which(program) is None]


def _die_with_test() -> None:
    """A test that crashes leaves nothing behind."""
    pr_set_pdeathsig = 1
    _libc.prctl(pr_set_pdeathsig, signal.SIGTERM)


class XDisplay:
    """Lasts from its making to close(). What this process shows and starts from then on appears on it. Its files are
    in a folder below `place`, which is the system's one for temporary files unless it is given."""

    def __init__(self, place: str | None = None):
        self._folder = tempfile.TemporaryDirectory(prefix="oveldra-screen-", dir=place)
        self._programs: list[subprocess.Popen] = []
        # The server looks for a free number itself and says which one it took when it is ready. It must not begin anew
        # when a client leaves: the next one could come in between.
        server = self._start(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"],
                             stdout=subprocess.PIPE)
        number = server.stdout.readline().decode().strip()
        if not number:
            raise RuntimeError("the server of the screen ended")
        folder = pathlib.Path(self._folder.name)
        environment = {
            "DISPLAY": f":{number}",
            "QT_QPA_PLATFORM": "xcb",
            # Not the machine's message bus, nor the user's settings, nor his window manager's.
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={folder / 'no-bus'}",
            "XDG_CONFIG_HOME": str(folder / "config"),
            "XDG_CACHE_HOME": str(folder / "cache"),
            "XDG_DATA_HOME": str(folder / "data"),
        }
        os.environ.update(environment)
        # Keys go to the windows, not through an input method that the machine's user has set up.
        for name in ("QT_IM_MODULE", "XMODIFIERS"):
            os.environ.pop(name, None)
        self._start(["openbox"], stdout=subprocess.DEVNULL)
        # It tells its desktops when it has taken over; a window that came before could stay without the keyboard.
        end = time.monotonic() + COMMAND_TIMEOUT
        while self._xdotool("get_num_desktops").returncode != 0:
            if time.monotonic() > end:
                raise RuntimeError("the window manager does not take over")

    def close(self) -> None:
        for program in reversed(self._programs):
            program.terminate()
            program.wait(COMMAND_TIMEOUT)
            if program.stdout:
                program.stdout.close()
        self._folder.cleanup()

    def keys(self, *names: str) -> None:
        """Presses and releases keys by their X names, one after the other."""
        self._xdotool("key", *names).check_returncode()

    def type(self, text: str) -> None:
        """Types a text of plain letters, digits and signs."""
        self._xdotool("type", text).check_returncode()

    def active_window(self) -> tuple[str, str]:
        """The number and the title of the window that has the keyboard; empty texts while none has it."""
        number = self._xdotool("getactivewindow").stdout.strip()
        # A program that takes the focus itself does so later than the window manager calls its window the active one.
        if not number or self._xdotool("getwindowfocus", "-f").stdout.strip() != number:
            return "", ""
        return number, self._xdotool("getwindowname", number).stdout.rstrip("\n")

    def _start(self, command: list[str], **streams) -> subprocess.Popen:
        program = subprocess.Popen(command, preexec_fn=_die_with_test, stderr=subprocess.DEVNULL, **streams)
        self._programs.append(program)
        return program

    def _xdotool(self, *arguments: str) -> subprocess.CompletedProcess:
        return subprocess.run(["xdotool", *arguments], timeout=COMMAND_TIMEOUT, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, encoding="utf-8", errors="replace")
