"""A Windows of the tests' own: a Wine prefix with Argentine regional settings, on a screen of its own.

The environment says what is tested and with what: OVELDRA_WINDOWS_FOLDER (the folder with the libraries), WINE (the
program, or a wrapper with its arguments; "wine") and OVELDRA_WINDOWS_SCRATCH (where the folder of all files of the run is
made; the system's place for temporary files).
"""

from __future__ import annotations

import atexit
import functools
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests" / "component" / "python"))

import x_display

COMPONENT, STORE = "oVELDRA.dll", "oVELDRAStore.dll"

START_TIMEOUT = 180  # seconds that a new prefix may take
COMMAND_TIMEOUT = 60  # seconds
SOME_LOCALE = "/usr/lib/locale/C.utf8"
CODE_PAGE = "cp1252"  # of the regional settings below: of scripts, and of what commands write to a pipe

REGIONAL_SETTINGS = r"""Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Control Panel\International]
"Locale"="00002C0A"
"LocaleName"="es-AR"
"sDecimal"=","
"sThousand"="."
"sMonDecimalSep"=","
"sMonThousandSep"="."
"sList"=";"
"sDate"="/"
"iDate"="1"
"sShortDate"="dd/MM/yyyy"

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
"""

ROOTS = {"HKCU": "HKEY_CURRENT_USER", "HKLM": "HKEY_LOCAL_MACHINE"}

Registry = dict[str, dict[str, str]]  # the values of keys by their names, as an export writes them


def folder() -> pathlib.Path:
    """The folder with the libraries."""
    return pathlib.Path(os.environ["OVELDRA_WINDOWS_FOLDER"]).resolve()


def windows_path(path: pathlib.Path) -> str:
    """How programs for Windows name a file of this system."""
    return "Z:" + str(path).replace("/", "\\")


def read_export(text: str) -> Registry:
    """The keys and values of an exported part of a registry."""
    keys: Registry = {}
    values: dict[str, str] = {}
    for line in text.replace("\\\r\n", "").splitlines():
        if line.startswith("["):
            values = keys.setdefault(line.strip("[]"), {})
        elif "=" in line:
            name, _, value = line.partition("=")
            values[name] = value
    return keys


class Wine:
    """Lasts from its making to close(). Its libraries are registered when that is asked for."""

    def __init__(self):
        missing = x_display.missing_programs()
        if missing:
            raise RuntimeError(f"not installed: {', '.join(missing)}")
        self._place = tempfile.TemporaryDirectory(prefix="oveldra-windows-",
                                                  dir=os.environ.get("OVELDRA_WINDOWS_SCRATCH"))
        self.scratch = pathlib.Path(self._place.name).resolve()
        self._program = shlex.split(os.environ.get("WINE", "wine"))
        self.display = x_display.XDisplay(str(self.scratch))
        home, locales = self.scratch / "home", self.scratch / "locales"
        home.mkdir()
        locales.mkdir()
        # Wine takes the language from the locale's name and the encoding of file names from the locale itself, which the
        # system need not have: any one in UTF-8 will do.
        (locales / "es_AR.utf8").symlink_to(SOME_LOCALE)
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(("QT_", "LC_", "LANG")) and name not in ("WINEPREFIX", "WINEDEBUG")}
        self.environment.update({
            "WINEPREFIX": str(self.scratch / "prefix"),
            "WINEDEBUG": "-all",
            # No offers to install what is not needed, no entries in the desktop's menus.
            "WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe=d",
            "HOME": str(home),
            "XDG_RUNTIME_DIR": str(home),
            "LOCPATH": str(locales),
            "LC_ALL": "es_AR.UTF-8",
            "TZ": "UTC",
        })
        self._registered = False
        self._keeper: subprocess.Popen | None = None
        try:
            self._start_windows()
        except BaseException:
            self.close()
            raise

    def _start_windows(self) -> None:
        self.run("wineboot", "-i", timeout=START_TIMEOUT).check_returncode()
        # While a program runs, the services and the desktop need not start again for every other one.
        self._keeper = self.start("cmd", stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        settings = self.scratch / "regional.reg"
        settings.write_text(REGIONAL_SETTINGS, "utf-16")
        self.run("reg", "import", windows_path(settings)).check_returncode()
        if self.value(r"HKCU\Control Panel\International", "sDecimal") != ",":
            raise RuntimeError("the regional settings are not taken")

    def close(self) -> None:
        """Ends all programs of the prefix."""
        if self._keeper is not None:
            self._keeper.stdin.close()
        self._server("-k")
        self._server("-w")
        if self._keeper is not None:
            self._keeper.wait(COMMAND_TIMEOUT)
        self.display.close()
        # Programs that were ended may write into the prefix for a moment yet.
        end = time.monotonic() + COMMAND_TIMEOUT
        while True:
            try:
                self._place.cleanup()
                return
            except OSError:
                if time.monotonic() > end:
                    raise

    def stop_programs(self) -> None:
        """Ends a program that cannot be ended otherwise, and with it all others; Windows starts anew."""
        self._server("-k")
        self._server("-w")
        self._keeper.stdin.close()
        self._keeper.wait(COMMAND_TIMEOUT)
        self._keeper = self.start("cmd", stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def start(self, *command: str, **options) -> subprocess.Popen:
        """Starts a program for Windows."""
        return subprocess.Popen([*self._program, *command], **{"env": self.environment, "cwd": self.scratch, **options})

    def run(self, *command: str, timeout: float = COMMAND_TIMEOUT, cwd: pathlib.Path | None = None,
            environment: dict[str, str] | None = None) -> subprocess.CompletedProcess:
        """Runs a program for Windows to its end; both its outputs as one text."""
        # Not a pipe: services that Wine starts with the program would keep it open for as long as they run.
        with tempfile.TemporaryFile(dir=self.scratch) as output:
            done = subprocess.run([*self._program, *command], env={**self.environment, **(environment or {})},
                                  cwd=cwd or self.scratch, timeout=timeout, stdin=subprocess.DEVNULL, stdout=output,
                                  stderr=subprocess.STDOUT)
            output.seek(0)
            done.stdout = output.read().decode(CODE_PAGE, "replace")
        return done

    def _server(self, option: str) -> None:
        # It stands beside the program, and is called through the same wrapper.
        *wrapper, program = self._program
        server = str(pathlib.PurePath(program).with_name("wineserver"))
        subprocess.run([*wrapper, server, option], env=self.environment, timeout=COMMAND_TIMEOUT,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def export(self, *keys: str) -> Registry:
        """All that stands below these keys; nothing for one that is not there."""
        found: Registry = {}
        file = self.scratch / "export.reg"
        for key in keys:
            file.unlink(missing_ok=True)
            self.run("reg", "export", key, windows_path(file), "/y")
            if file.exists():
                found.update(read_export(file.read_bytes().decode("utf-16")))
        return found

    def value(self, key: str, name: str) -> str | None:
        """The text of one value of the registry, or its number in digits; None when it is not there."""
        root, _, place = key.partition("\\")
        values = self.export(key).get(f"{ROOTS[root]}\\{place}", {})
        written = values.get(f'"{name}"', "")
        if written.startswith("dword:"):
            return str(int(written.removeprefix("dword:"), 16))
        return re.sub(r"\\(.)", r"\1", written[1:-1]) if written.startswith('"') else None

    def set_value(self, key: str, name: str, text: str, kind: str = "REG_SZ") -> None:
        self.run("reg", "add", key, "/v", name, "/t", kind, "/d", text, "/f").check_returncode()

    def delete_value(self, key: str, name: str) -> None:
        self.run("reg", "delete", key, "/v", name, "/f").check_returncode()

    def regsvr32(self, library: str, *options: str) -> int:
        """Its exit code for one of the libraries."""
        return self.run("regsvr32", "/s", *options, windows_path(folder() / library)).returncode

    def ensure_registered(self) -> None:
        """Registers the libraries for the machine, once: this Wine finds no classes that are the user's alone."""
        if not self._registered:
            for library in (COMPONENT, STORE):
                if self.regsvr32(library) != 0:
                    raise RuntimeError(f"{library} cannot be registered")
            self._registered = True

    def ensure_unregistered(self) -> None:
        if self._registered:
            for library in (COMPONENT, STORE):
                if self.regsvr32(library, "/u") != 0:
                    raise RuntimeError(f"{library} cannot be unregistered")
            self._registered = False


@functools.cache
def wine() -> Wine:
    """The one of this run."""
    made = Wine()
    atexit.register(made.close)
    return made
