"""Connections of a host's own whose rows and failures a test decides."""

from __future__ import annotations

import weakref

from oveldra import OveldraError

recordsets: weakref.WeakSet = weakref.WeakSet()  # those that are not released yet
connections: weakref.WeakSet = weakref.WeakSet()


class ListedRows:
    """Rows given as dictionaries with lower-case names; a field that is an exception is raised when it is read."""

    def __init__(self, rows: list[dict]):
        self._rows = rows
        self._place = 0
        recordsets.add(self)

    def at_eof(self) -> bool:
        return self._place == len(self._rows)

    def move_next(self) -> None:
        if self.at_eof():
            raise OveldraError(3021)
        self._place += 1

    def move_first(self) -> None:
        if not self._rows:
            raise OveldraError(3021)
        self._place = 0

    def record_count(self) -> int:
        return len(self._rows)

    def value(self, field: str):
        row = self._rows[self._place]
        if field.lower() not in row:
            raise OveldraError(3265)
        if isinstance(row[field.lower()], Exception):
            raise row[field.lower()]
        return row[field.lower()]


class ListedHost:
    """Answers every query with the same rows, or raises; keeps the statements that came."""

    def __init__(self, answer: list[dict] | BaseException):
        self._answer = answer
        self.statements: list[str] = []
        connections.add(self)

    def set_sql(self, text: str) -> None:
        self.statements.append(text)

    def open_recordset(self) -> ListedRows:
        if isinstance(self._answer, BaseException):
            raise self._answer
        return ListedRows(self._answer)

    def execute(self) -> int:
        if isinstance(self._answer, BaseException):
            raise self._answer
        return len(self._answer)
