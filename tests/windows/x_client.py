"""What a client of the X server can read: the text on the clipboard."""

from __future__ import annotations

import ctypes
import time

SELECTION_NOTIFY = 31
OWNER_NOTIFY_MASK = 1
PATIENCE = 30  # seconds
PAUSE = 0.01  # seconds
MOST = 1 << 20  # longs of a text

_x = ctypes.CDLL("libX11.so.6")
_fixes = ctypes.CDLL("libXfixes.so.3")
_x.XOpenDisplay.restype = ctypes.c_void_p
_x.XDefaultRootWindow.restype = ctypes.c_ulong
_x.XCreateSimpleWindow.restype = ctypes.c_ulong
_x.XInternAtom.restype = ctypes.c_ulong
for _function in (_x.XDefaultRootWindow, _x.XPending, _x.XFlush, _x.XCloseDisplay):
    _function.argtypes = [ctypes.c_void_p]
_x.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
_x.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
_x.XCreateSimpleWindow.argtypes = [ctypes.c_void_p, ctypes.c_ulong, *[ctypes.c_int] * 2, *[ctypes.c_uint] * 3,
                                   *[ctypes.c_ulong] * 2]
_x.XConvertSelection.argtypes = [ctypes.c_void_p, *[ctypes.c_ulong] * 5]
_x.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.c_void_p]
_x.XGetWindowProperty.argtypes = [ctypes.c_void_p, *[ctypes.c_ulong] * 2, *[ctypes.c_long] * 2, ctypes.c_int,
                                  ctypes.c_ulong, *[ctypes.c_void_p] * 5]
_x.XFree.argtypes = [ctypes.c_void_p]
_fixes.XFixesQueryExtension.argtypes = [ctypes.c_void_p] * 3
_fixes.XFixesSelectSelectionInput.argtypes = [ctypes.c_void_p, *[ctypes.c_ulong] * 3]


class _SelectionEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("requestor", ctypes.c_ulong), ("selection", ctypes.c_ulong),
                ("target", ctypes.c_ulong), ("property", ctypes.c_ulong), ("time", ctypes.c_ulong)]


class _Event(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("selection", _SelectionEvent), ("room", ctypes.c_long * 24)]


class Clipboard:
    """The clipboard of the screen that DISPLAY names, from its making to close()."""

    def __init__(self):
        self._display = _x.XOpenDisplay(None)
        if not self._display:
            raise RuntimeError("no screen")
        self._window = _x.XCreateSimpleWindow(self._display, _x.XDefaultRootWindow(self._display), 0, 0, 1, 1, 0, 0, 0)
        self._selection, self._target, self._place = (
            _x.XInternAtom(self._display, name, 0) for name in (b"CLIPBOARD", b"UTF8_STRING", b"OVELDRA_TEXT"))
        first_event, first_error = ctypes.c_int(), ctypes.c_int()
        if not _fixes.XFixesQueryExtension(self._display, ctypes.byref(first_event), ctypes.byref(first_error)):
            raise RuntimeError("the server of the screen does not tell when the clipboard changes")
        self._owner_notify = first_event.value
        _fixes.XFixesSelectSelectionInput(self._display, self._window, self._selection, OWNER_NOTIFY_MASK)
        _x.XSync(self._display, 0)

    def close(self) -> None:
        _x.XCloseDisplay(self._display)

    def copied(self) -> str:
        """The text that came onto it last since it was made or asked for, which is waited for."""
        end = time.monotonic() + PATIENCE
        while True:
            self._wait(self._owner_notify, end)
            _x.XConvertSelection(self._display, self._selection, self._target, self._place, self._window, 0)
            if self._wait(SELECTION_NOTIFY, end).selection.property:
                return self._property()

    def _wait(self, kind: int, end: float) -> _Event:
        event = _Event()
        while event.type != kind:
            _x.XFlush(self._display)
            while not _x.XPending(self._display):
                if time.monotonic() > end:
                    raise AssertionError("nothing came onto the clipboard")
                time.sleep(PAUSE)
            _x.XNextEvent(self._display, ctypes.byref(event))
        return event

    def _property(self) -> str:
        kind, count, rest = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_ulong()
        width, data = ctypes.c_int(), ctypes.c_void_p()
        _x.XGetWindowProperty(self._display, self._window, self._place, 0, MOST, 1, 0, ctypes.byref(kind),
                              ctypes.byref(width), ctypes.byref(count), ctypes.byref(rest), ctypes.byref(data))
        try:
            return ctypes.string_at(data, count.value).decode("utf-8")
        finally:
            _x.XFree(data)
