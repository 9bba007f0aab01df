"""A host's own connection: its declaration tables in a SQLite file, through Python's sqlite3.

The component reads three tables of the host when it imports a declaration: `caratula`, `item` and `groupsubitems`. Its
statements on them are plain enough for SQLite to take as they are. What is left to do here is what a database of this
kind means by them: texts compare without regard to letter case and to blanks at their end, yes/no and date columns give
values of those kinds, and every failure has a number and a text that a user can read.
"""

from __future__ import annotations

import datetime
import pathlib
import sqlite3

from oveldra import DATABASE_ERROR, OTHER_DATABASE_ERROR, OveldraError

TABLES = """
create table caratula (
    interno text collate ignorecase, fobdivcambio double, fletedivcambio double, segurodivcambio double);
create table item (
    interno text collate ignorecase, id integer, FobTotal double, itflete double, itseguro double, ajusteinc double,
    ajusteded double);
create table groupsubitems (
    interno text collate ignorecase, id integer, idsub integer, IDARTICULO text collate ignorecase, IDUNIDAD text,
    CANTIDAD double, PRECIOUNITARIO double, NCM text, FOB double);
create index caratula_interno on caratula (interno);
create index item_interno on item (interno, id);
create index groupsubitems_interno on groupsubitems (interno, id, idsub);
"""

# SQLite keeps no such kinds; the declared type of a column says what its integers and texts stand for.
sqlite3.register_converter("boolean", lambda kept: int(kept) != 0)
sqlite3.register_converter("date", lambda kept: datetime.date.fromisoformat(kept.decode()))

_NUMBERS = {  # by how SQLite's sentence begins, where its code alone does not tell
    "no such table": (-2147217865, 0, "El motor de base de datos no puede encontrar la tabla o consulta de entrada"),
    "no such column": (-2147217904, 0, "No se han especificado valores para algunos de los parámetros requeridos"),
    "near ": (-2147217900, 0, "Error de sintaxis"),
    "incomplete input": (-2147217900, 0, "Error de sintaxis"),
}
_NATIVE_NUMBERS = {
    "SQLITE_READONLY": (3027, "La operación debe usar una consulta actualizable"),
    "SQLITE_BUSY": (3218, "La base de datos está en uso por otro puesto"),
    "SQLITE_CORRUPT": (3049, "La base de datos está dañada"),
    "SQLITE_NOTADB": (3343, "El archivo no es una base de datos"),
    "SQLITE_CANTOPEN": (3024, "No se encontró el archivo de la base de datos"),
}


def _error(error: sqlite3.Error) -> OveldraError:
    sentence = str(error)
    for beginning, (number, native, text) in _NUMBERS.items():
        if sentence.startswith(beginning):
            return OveldraError(number, f"{text}. ({sentence})", native=native)
    code = "_".join(getattr(error, "sqlite_errorname", "").split("_")[:2])
    native, text = _NATIVE_NUMBERS.get(code, (OTHER_DATABASE_ERROR, "Error de la base de datos"))
    return OveldraError(DATABASE_ERROR, f"{text}. ({sentence})", native=native)


def _compare(left: str, right: str) -> int:
    left, right = left.rstrip(" ").lower(), right.rstrip(" ").lower()
    return (left > right) - (left < right)


def connect(file: pathlib.Path, mode: str) -> sqlite3.Connection:
    """Opens a database of these tables; `mode` is "ro" (read), "rw" (write) or "rwc" (make it, too)."""
    database = sqlite3.connect(f"{file.resolve().as_uri()}?mode={mode}", uri=True,
                               detect_types=sqlite3.PARSE_DECLTYPES)
    database.create_collation("ignorecase", _compare)
    return database


class Rows:
    """All rows of a query, standing on the first."""

    def __init__(self, cursor: sqlite3.Cursor):
        self._columns = {column[0].lower(): place for place, column in enumerate(cursor.description)}
        self._rows = cursor.fetchall()
        self._place = 0

    def at_eof(self) -> bool:
        return self._place == len(self._rows)

    def move_next(self) -> None:
        self._require_row()
        self._place += 1

    def move_first(self) -> None:
        self._place = 0
        self._require_row()

    def record_count(self) -> int:
        return len(self._rows)

    def value(self, field: str):
        place = self._columns.get(field.lower())
        if place is None:
            raise OveldraError(3265)
        self._require_row()
        return self._rows[self._place][place]

    def _require_row(self) -> None:
        if self.at_eof():
            raise OveldraError(3021)


class SqliteHost:
    """What oveldra.Connection() takes. The file is opened for reading: the component writes nothing of the host's."""

    def __init__(self, file: pathlib.Path):
        try:
            self._database = connect(file, "ro")
        except sqlite3.Error as error:
            raise _error(error) from error
        self._sql = ""

    def set_sql(self, text: str) -> None:
        self._sql = text

    def open_recordset(self) -> Rows:
        return Rows(self._run())

    def execute(self) -> int:
        return self._run().rowcount

    def _run(self) -> sqlite3.Cursor:
        try:
            return self._database.execute(self._sql)
        except sqlite3.Error as error:
            raise _error(error) from error
