"""The shared library: its types and functions, how it is loaded, and what it says when something failed."""

from __future__ import annotations

import collections
import ctypes
import os
import threading
import weakref
from ctypes import POINTER, byref, c_char_p, c_double, c_int32, c_int64, c_size_t, c_void_p

INTERFACE = 1  # of the header that this binding was written for


class OveldraError(RuntimeError):
    """An error of the component or, raised by a host's connection, one for the component to report.

    `number` and `native` are those listed in oVELDRA/oveldra.h. An empty `description` stands for the runtime's own
    text for the number when the error goes to the component.
    """

    def __init__(self, number: int, description: str = "", source: str = "", native: int = 0):
        super().__init__(f"{number} - {description}")
        self.number = number
        self.description = description
        self.source = source
        self.native = native


class UnknownMemberError(OveldraError, AttributeError):
    """Error 438; an AttributeError, too, so that hasattr() and its like work on a Component."""


class Value(ctypes.Union):
    _fields_ = [("integer", c_int64), ("number", c_double), ("text", c_char_p), ("connection", c_void_p)]


class Variant(ctypes.Structure):
    _fields_ = [("kind", c_int32), ("value", Value)]


class HostConnection(ctypes.Structure):
    """The table of a host's functions."""

    _fields_ = [
        ("size", c_size_t),
        ("release", ctypes.CFUNCTYPE(None, c_void_p)),
        ("set_sql", ctypes.CFUNCTYPE(c_int32, c_void_p, c_char_p)),
        ("open_recordset", ctypes.CFUNCTYPE(c_int32, c_void_p, POINTER(c_void_p))),
        ("execute", ctypes.CFUNCTYPE(c_int32, c_void_p, POINTER(c_int64))),
        ("begin_burst", ctypes.CFUNCTYPE(c_int32, c_void_p, POINTER(c_void_p))),
        ("commit_burst", ctypes.CFUNCTYPE(c_int32, c_void_p)),
        ("end_burst", ctypes.CFUNCTYPE(None, c_void_p)),
        ("at_eof", ctypes.CFUNCTYPE(c_int32, c_void_p, POINTER(c_int32))),
        ("move_next", ctypes.CFUNCTYPE(c_int32, c_void_p)),
        ("move_first", ctypes.CFUNCTYPE(c_int32, c_void_p)),
        ("record_count", ctypes.CFUNCTYPE(c_int32, c_void_p, POINTER(c_int64))),
        ("value", ctypes.CFUNCTYPE(c_int32, c_void_p, c_char_p, POINTER(Variant))),
        ("release_recordset", ctypes.CFUNCTYPE(None, c_void_p)),
    ]


class Member(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("kind", c_int32), ("parameters", c_int32), ("required", c_int32)]


# The functions by what they answer, with their arguments.
_NUMBERS = {
    "oveldra_create": (POINTER(c_void_p),),
    "oveldra_member_at": (c_int32, POINTER(Member)),
    "oveldra_get": (c_void_p, c_char_p, POINTER(Variant)),
    "oveldra_put": (c_void_p, c_char_p, POINTER(Variant)),
    "oveldra_call": (c_void_p, c_char_p, POINTER(Variant), c_size_t, POINTER(Variant)),
    "oveldra_connection_open": (c_char_p, c_int32, POINTER(c_void_p)),
    "oveldra_connection_create": (c_char_p, c_int32, POINTER(c_void_p)),
    "oveldra_connection_from_host": (POINTER(HostConnection), c_void_p, POINTER(c_void_p)),
    "oveldra_execute": (c_void_p, c_char_p, POINTER(c_int64)),
    "oveldra_open": (c_void_p, c_char_p, POINTER(c_void_p)),
    "oveldra_at_eof": (c_void_p, POINTER(c_int32)),
    "oveldra_move_next": (c_void_p,),
    "oveldra_move_first": (c_void_p,),
    "oveldra_record_count": (c_void_p, POINTER(c_int64)),
    "oveldra_value": (c_void_p, c_char_p, POINTER(Variant)),
    "oveldra_fail": (c_int32, c_int32, c_char_p),
    "oveldra_interface": (),
    "oveldra_error_number": (),
    "oveldra_error_native": (),
}
_TEXTS = {"oveldra_version": (), "oveldra_error_description": (), "oveldra_error_source": ()}
_NOTHING = {
    "oveldra_release": (c_void_p,),
    "oveldra_connection_release": (c_void_p,),
    "oveldra_recordset_release": (c_void_p,),
    "oveldra_variant_clear": (POINTER(Variant),),
}


class Library:
    """The loaded library, and the handles that have to wait until no call is in progress."""

    def __init__(self, path: str):
        self.functions = ctypes.CDLL(path)
        for answer, functions in ((c_int32, _NUMBERS), (c_char_p, _TEXTS), (None, _NOTHING)):
            for name, arguments in functions.items():
                function = getattr(self.functions, name, None)
                if function is None:
                    raise ImportError(f"{path}: no {name} in it; the library is older than this binding", path=path)
                function.restype, function.argtypes = answer, arguments
        if self.functions.oveldra_interface() < INTERFACE:
            raise ImportError(f"{path}: the library is older than this binding", path=path)
        self.members = self._members()
        self._thread: int | None = None  # known with the first call that succeeds
        self._calls = 0  # in progress on that thread, one inside the other
        self._ended: collections.deque[tuple[str, int]] = collections.deque()

    def _members(self) -> list[tuple[str, int]]:
        """The members of the class: their names and kinds."""
        member = Member()
        found = []
        while self.functions.oveldra_member_at(len(found) + 1, byref(member)) == 0:
            found.append((member.name.decode(), member.kind))
        return found

    def call(self, name: str, *arguments) -> None:
        """Calls a function that answers the number of an error, and raises that error."""
        thread = threading.get_ident()
        inside = 1 if self._thread in (None, thread) else 0
        self._calls += inside
        try:
            if getattr(self.functions, name)(*arguments) != 0:
                raise self.failure()
            self._thread = self._thread or thread
        finally:
            self._calls -= inside
            if inside:
                self._release()

    def made(self, name: str, *arguments) -> int:
        """Calls a function whose last argument is where it puts a handle."""
        handle = c_void_p()
        self.call(name, *arguments, byref(handle))
        assert handle.value is not None
        return handle.value

    def end(self, name: str, handle: int) -> None:
        """Releases a handle, perhaps later: the garbage collector comes on any thread, and in the middle of a call that
        has a screen open."""
        self._ended.append((name, handle))
        if threading.get_ident() == self._thread:
            self._release()

    def _release(self) -> None:
        while self._calls == 0 and self._ended:
            name, handle = self._ended.popleft()
            getattr(self.functions, name)(handle)

    def failure(self) -> OveldraError:
        """The last failure on this thread."""
        number = self.functions.oveldra_error_number()
        kind = UnknownMemberError if number == 438 else OveldraError
        return kind(number, self.functions.oveldra_error_description().decode(),
                    self.functions.oveldra_error_source().decode(), self.functions.oveldra_error_native())

    def error(self, number: int) -> OveldraError:
        """An error of the automation runtime, with the runtime's own text."""
        self.functions.oveldra_fail(number, 0, None)
        return self.failure()


_loaded: Library | None = None


def load(path: str | None = None) -> None:
    """Loads the library: from `path`, else from where the environment variable OVELDRA_LIBRARY points, else from where
    the system keeps its libraries. The first call counts; without one, the first object or connection loads it. Raises
    OSError when it is not found, ImportError when it is older than this binding."""
    global _loaded
    if _loaded is None:
        _loaded = Library(path or os.environ.get("OVELDRA_LIBRARY") or "liboVELDRA.so.0")


def library() -> Library:
    load()
    assert _loaded is not None
    return _loaded


class Handle:
    """What the library made, and how it is ended: by close(), by the end of a `with`, or with the Python object."""

    _release: str

    def __init__(self, handle: int):
        self._handle: int | None = handle
        # Not __del__, which at the end of the program may come when half of it is gone.
        self._ending = weakref.finalize(self, library().end, self._release, handle)

    def close(self) -> None:
        """Releases it now; whatever is asked of it afterwards raises OveldraError 91. A second call does nothing."""
        self._handle = None
        self._ending()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()
