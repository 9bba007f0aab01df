"""The component for hosts in Python: its C interface (oVELDRA/oveldra.h) with the standard library only.

    import oveldra

    with oveldra.Component() as component, oveldra.Connection.open("sqlite:insumos.sqlite") as inputs:
        component.ConectarDB(inputs, None, None)
        component.Mostrar()  # shows the screen; returns when the user closes it
        if component.OK:
            print(component.CATNRO, component.PRDNRO)

Everything happens on one thread, the one that makes the first object or connection; from another one the calls raise
OveldraError 5. While an operation shows its screen, other Python threads run.

Values are None (Null), bool, int, float, str and datetime.date; yes/no fields of a recordset are the integers that are
kept, -1 for yes (INTIOK: what was written).
"""

from __future__ import annotations

import functools
from ctypes import byref, c_int32, c_int64

from .callbacks import (DATABASE_ERROR, FUNCTIONS, FUNCTIONS_WITH_BURSTS, OTHER_DATABASE_ERROR, keep, kept_objects,
                        let_go)
from .native import Handle, OveldraError, UnknownMemberError, Variant, library, load
from .values import OMITTED, YES_OF_ARGUMENTS, ConnectionHandle, field_value, fill, member_value, utf8

__all__ = ["DATABASE_ERROR", "HOST", "INPUTS", "NOMENCLATURE", "OMITTED", "OTHER_DATABASE_ERROR", "Component",
           "Connection", "OveldraError", "Recordset", "UnknownMemberError", "kept_objects", "load", "version"]

INPUTS, NOMENCLATURE, HOST = 0, 1, 2  # databases, for Connection.create()

_READ_WRITE, _READ_ONLY = 0, 1
_CALL = 2  # the kind of a member that is an operation


def version() -> str:
    """The version of the library, such as "0.7.0"."""
    return library().functions.oveldra_version().decode()


class Component(Handle):
    """An object of the class cloVELDRAMain, whose members are attributes, in any letter case: `component.OK`,
    `component.IdSUB = "7"`, `component.Mostrar()`. They raise OveldraError: 438 for a name that is not there, 450 for a
    wrong number of arguments, 94 for None and 13 for another value that cannot become the member's type.

    All components share one set of state: use one at a time.
    """

    _release = "oveldra_release"

    def __init__(self):
        super().__init__(library().made("oveldra_create"))

    def get(self, name: str):
        """The value of a property."""
        result = Variant()
        library().call("oveldra_get", self._handle, utf8(name), byref(result))
        return member_value(result)

    def put(self, name: str, value) -> None:
        """Writes a property."""
        variant = Variant()
        fill(variant, value, YES_OF_ARGUMENTS)
        library().call("oveldra_put", self._handle, utf8(name), byref(variant))

    def call(self, name: str, *arguments):
        """Calls an operation; None for one without an answer."""
        variants = (Variant * len(arguments))()
        for variant, value in zip(variants, arguments):
            fill(variant, value, YES_OF_ARGUMENTS)
        result = Variant()
        library().call("oveldra_call", self._handle, utf8(name), variants, len(arguments), byref(result))
        return member_value(result)

    def __getattr__(self, name: str):
        if name.startswith("_"):
            raise AttributeError(name)
        if (name.lower(), _CALL) in ((member.lower(), kind) for member, kind in library().members):
            return functools.partial(self.call, name)
        return self.get(name)

    def __setattr__(self, name: str, value) -> None:
        if name.startswith("_"):
            object.__setattr__(self, name, value)
        else:
            self.put(name, value)

    def __dir__(self):
        return [*object.__dir__(self), *(name for name, _ in library().members)]


class Recordset(Handle):
    """The rows of a query, a snapshot that stands on the first of them; readable after its connection is closed."""

    _release = "oveldra_recordset_release"

    def __init__(self, connection: Connection, sql: str):
        super().__init__(library().made("oveldra_open", connection._handle, utf8(sql)))

    def __len__(self) -> int:
        count = c_int64()
        library().call("oveldra_record_count", self._handle, byref(count))
        return count.value

    def at_eof(self) -> bool:
        """Whether it stands past the last row, at once for an empty result."""
        eof = c_int32()
        library().call("oveldra_at_eof", self._handle, byref(eof))
        return eof.value != 0

    def move_next(self) -> None:
        """To the next row; OveldraError 3021 past the last."""
        library().call("oveldra_move_next", self._handle)

    def move_first(self) -> None:
        """Back to the first row; OveldraError 3021 for an empty result."""
        library().call("oveldra_move_first", self._handle)

    def value(self, field: str):
        """A field of the current row, by name or alias in any letter case; OveldraError 3265 for an unknown one."""
        value = Variant()
        library().call("oveldra_value", self._handle, utf8(field), byref(value))
        return field_value(value)


class Connection(ConnectionHandle):
    """A connection for the component: opened by URL, made with new tables, or around a host's own object.

    That object needs set_sql(text), open_recordset() and execute() -> records affected; open_recordset() answers an
    object with at_eof() -> bool, move_next(), move_first(), record_count() -> int and value(field) -> value, whose rows
    do not change any more. It may have begin_burst(), which answers an object with commit() and end(); see
    oVELDRA/oveldra.h for what they mean. It lives for as long as the component needs it. What its functions raise is
    reported to the user: an OveldraError as it is, any other exception as a database error with the exception's text.
    """

    def __init__(self, host: object):
        functions = FUNCTIONS_WITH_BURSTS if hasattr(host, "begin_burst") else FUNCTIONS
        key = keep(host)
        try:
            handle = library().made("oveldra_connection_from_host", byref(functions), key)
        except OveldraError:
            let_go(key)
            raise
        super().__init__(handle)

    @classmethod
    def open(cls, url: str, read_only: bool = False) -> Connection:
        """Opens an existing database: "sqlite:FILE" or "postgresql://USER@HOST:PORT/DATABASE?schema=NAME"."""
        return cls._around("oveldra_connection_open", utf8(url), _READ_ONLY if read_only else _READ_WRITE)

    @classmethod
    def create(cls, url: str, database: int) -> Connection:
        """Makes a database with the tables of `database` (INPUTS, NOMENCLATURE or HOST) and opens it for writing."""
        return cls._around("oveldra_connection_create", utf8(url), database)

    @classmethod
    def _around(cls, make: str, *arguments) -> Connection:
        connection = cls.__new__(cls)
        ConnectionHandle.__init__(connection, library().made(make, *arguments))
        return connection

    def execute(self, sql: str) -> int:
        """Runs a command; the number of records affected."""
        affected = c_int64()
        library().call("oveldra_execute", self._handle, utf8(sql), byref(affected))
        return affected.value

    def select(self, sql: str) -> Recordset:
        """Runs a query."""
        return Recordset(self, sql)

    def rows(self, sql: str, *fields: str) -> list[tuple]:
        """Runs a query and gives these fields of all its rows."""
        found = []
        with self.select(sql) as records:
            while not records.at_eof():
                found.append(tuple(records.value(field) for field in fields))
                records.move_next()
        return found
