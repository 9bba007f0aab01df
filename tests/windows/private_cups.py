"""A print server of the tests' own, whose queues keep what they get."""

from __future__ import annotations

import ctypes
import pathlib
import shutil
import signal
import socket
import subprocess
import time

SYSTEM = pathlib.Path("/usr/lib/cups")
PATIENCE = 20  # seconds
PAUSE = 0.02  # seconds between two looks
# The settings of the user, and of the print system, that a client obeys.
FOREIGN_SETTINGS = ("CUPS_SERVERROOT", "CUPS_USER", "CUPS_ENCRYPTION", "CUPS_DATADIR", "PRINTER", "LPDEST", "IPP_PORT")

FILES = """ServerRoot {place}/root
ServerBin {place}/programs
RequestRoot {place}/spool
TempDir {place}/temporary
CacheDir {place}/cache
StateDir {place}/state
AccessLog {place}/access_log
ErrorLog {place}/error_log
PageLog {place}/page_log
"""

SERVER = """Listen 127.0.0.1:{port}
Browsing No
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
JobPrivateAccess all
JobPrivateValues none
<Limit All>
Order deny,allow
</Limit>
</Policy>
"""

# A document lies under its name when all of it has come.
BACKEND = """#!/bin/sh -e
folder={place}/arrived${{DEVICE_URI#keep:}}
mkdir -p "$folder"
cat ${{6:+"$6"}} >"$folder/$1"
mv "$folder/$1" "$folder/$1.job"
"""


_libc = ctypes.CDLL(None)


def _die_with_test() -> None:
    """A test that crashes leaves nothing behind."""
    pr_set_pdeathsig = 1
    _libc.prctl(pr_set_pdeathsig, signal.SIGTERM)


def _found(program: str) -> str | None:
    return shutil.which(program) or shutil.which(program, path="/usr/sbin")


def missing_programs() -> list[str]:
    """The programs it needs that are not installed; empty when it can be used."""
    return [program for program in ("cupsd", "lpadmin", "lpstat") if _found(program) is None]


class PrivateCups:
    """Lasts from its making to close(). The place is an empty folder of its own."""

    def __init__(self, place: pathlib.Path, environment: dict[str, str]):
        self._place = place
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        self.settings = {"CUPS_SERVER": f"127.0.0.1:{port}"}
        self._environment = {name: value for name, value in environment.items() if name not in FOREIGN_SETTINGS}
        self._environment.update(self.settings, HOME=str(place), LC_ALL="C.UTF-8")
        self._write_programs()
        (place / "cups-files.conf").write_text(FILES.format(place=place))
        (place / "cupsd.conf").write_text(SERVER.format(port=port))
        self._server = subprocess.Popen(
            [_found("cupsd"), "-f", "-c", place / "cupsd.conf", "-s", place / "cups-files.conf"],
            env=self._environment, preexec_fn=_die_with_test, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            self._wait("the print server", self._answers)
        except BaseException:
            self.close()
            raise

    def close(self) -> None:
        self._server.terminate()
        self._server.wait(PATIENCE)

    def add_queue(self, name: str) -> None:
        """One that hands on what it gets as it is."""
        self._run("lpadmin", "-p", name, "-E", "-v", f"keep:/{name}").check_returncode()

    def wait_for_document(self, queue: str, after: int = 0) -> bytes:
        """The one that comes after so many others."""
        self._wait(f"document {after + 1} at {queue}", lambda: len(self._jobs(queue)) > after)
        return self._jobs(queue)[after].read_bytes()

    def count(self, queue: str) -> int:
        return len(self._jobs(queue))

    def _jobs(self, queue: str) -> list[pathlib.Path]:
        return sorted((self._place / "arrived" / queue).glob("*.job"), key=lambda file: int(file.stem))

    def _answers(self) -> bool:
        if self._server.poll() is not None:
            raise RuntimeError("the print server ended")
        return self._run("lpstat", "-r").stdout.startswith(b"scheduler is running")

    def _run(self, tool: str, *arguments: str) -> subprocess.CompletedProcess:
        return subprocess.run([_found(tool), *arguments], env=self._environment, timeout=PATIENCE,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    @staticmethod
    def _wait(wanted: str, holds) -> None:
        end = time.monotonic() + PATIENCE
        while not holds():
            if time.monotonic() > end:
                raise AssertionError(f"never came: {wanted}")
            time.sleep(PAUSE)

    def _write_programs(self) -> None:
        for name in ("root", "spool", "temporary", "cache", "state", "arrived", "programs/backend", "programs/filter"):
            (self._place / name).mkdir(parents=True)
        (self._place / "programs" / "daemon").symlink_to(SYSTEM / "daemon")
        # What only its owner may run is run as the server's own user.
        keep = self._place / "programs" / "backend" / "keep"
        keep.write_text(BACKEND.format(place=self._place))
        keep.chmod(0o700)
