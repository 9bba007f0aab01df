"""A host's own connection: Python objects behind the functions that the component calls.

The component holds numbers, which stand for the objects kept here, so that nothing it still calls can be collected and
nothing that has gone can be called. No exception gets past these functions: ctypes would print it and answer success.
"""

from __future__ import annotations

import ctypes
import itertools

from .native import HostConnection, OveldraError, library
from .values import YES_OF_FIELDS, fill

DATABASE_ERROR = -2147467259  # the number that most database errors share; the native number tells them apart
OTHER_DATABASE_ERROR = 3146

_kept: dict[int, object] = {}
_keys = itertools.count(1)


def keep(thing: object) -> int:
    """The number that stands for an object until let_go()."""
    key = next(_keys)
    _kept[key] = thing
    return key


def let_go(key: int) -> None:
    del _kept[key]


def kept_objects() -> int:
    """How many connections, recordsets and bursts of hosts the component holds."""
    return len(_kept)


class _Rows:
    """A host's recordset with the text of the last field that was read, which must outlast the reading."""

    def __init__(self, records):
        self.records = records
        self.text: bytes | None = None


def _report(error: BaseException) -> int:
    """Tells the component what was raised; the number to answer."""
    if isinstance(error, OveldraError):
        number, native, description = error.number, error.native, error.description
    else:
        number, native = DATABASE_ERROR, OTHER_DATABASE_ERROR
        try:
            description = f"{type(error).__name__}: {error}"
        except Exception:  # an exception that cannot say what it is
            description = type(error).__name__
    text = description.encode(errors="replace") if description else None
    return library().functions.oveldra_fail(number, native, text)


def _answering(body):
    """A function of the table that answers 0 or the number of what was raised."""

    def function(*arguments) -> int:
        try:
            body(*arguments)
            return 0
        except BaseException as error:
            return _report(error)

    return function


@_answering
def _set_sql(host, sql):
    _kept[host].set_sql(sql.decode())


@_answering
def _open_recordset(host, recordset):
    recordset[0] = keep(_Rows(_kept[host].open_recordset()))


@_answering
def _execute(host, affected):
    affected[0] = _kept[host].execute()


@_answering
def _begin_burst(host, burst):
    burst[0] = keep(_kept[host].begin_burst())


@_answering
def _commit_burst(burst):
    _kept[burst].commit()


def _end_burst(burst):
    # Nothing can be answered here; ctypes hands what end() raises to sys.unraisablehook.
    _kept.pop(burst).end()


@_answering
def _at_eof(recordset, eof):
    eof[0] = 1 if _kept[recordset].records.at_eof() else 0


@_answering
def _move_next(recordset):
    _kept[recordset].records.move_next()


@_answering
def _move_first(recordset):
    _kept[recordset].records.move_first()


@_answering
def _record_count(recordset, count):
    count[0] = _kept[recordset].records.record_count()


@_answering
def _value(recordset, field, value):
    rows = _kept[recordset]
    rows.text = fill(value.contents, rows.records.value(field.decode()), YES_OF_FIELDS)


def _table(bursts: bool) -> HostConnection:
    """The functions, which the library copies; their ctypes objects live as long as this module."""
    functions = {
        "release": let_go,
        "set_sql": _set_sql,
        "open_recordset": _open_recordset,
        "execute": _execute,
        "at_eof": _at_eof,
        "move_next": _move_next,
        "move_first": _move_first,
        "record_count": _record_count,
        "value": _value,
        "release_recordset": let_go,
    }
    if bursts:
        functions |= {"begin_burst": _begin_burst, "commit_burst": _commit_burst, "end_burst": _end_burst}
    types = dict(HostConnection._fields_)
    return HostConnection(size=ctypes.sizeof(HostConnection),
                          **{name: types[name](function) for name, function in functions.items()})


FUNCTIONS = _table(bursts=False)
FUNCTIONS_WITH_BURSTS = _table(bursts=True)
