"""Python's values as the variants of the C interface, and back."""

from __future__ import annotations

import datetime
import decimal
from ctypes import byref

from .native import Handle, Variant, library

OMITTED = object()  # an argument that is left out, where one after it is given

_OMITTED, _NULL, _BOOLEAN, _INTEGER, _DOUBLE, _TEXT, _DATE, _CONNECTION, _OBJECT = range(9)

YES_OF_ARGUMENTS = 1
YES_OF_FIELDS = -1


class ConnectionHandle(Handle):
    """What can travel in a variant as a connection."""

    _release = "oveldra_connection_release"


def utf8(text: str) -> bytes:
    """A text for the component; OveldraError 5 for one with a null character or half a surrogate pair."""
    if "\0" in text:
        raise library().error(5)
    try:
        return text.encode()
    except UnicodeEncodeError:
        raise library().error(5) from None


def fill(variant: Variant, value: object, yes: int) -> bytes | None:
    """Puts a value into a variant, True as `yes`. In a variant that Python made, ctypes keeps the text; for one of the
    library's, the answer must be kept for as long as the variant is read."""
    text = None
    if value is OMITTED:
        variant.kind = _OMITTED
    elif value is None:
        variant.kind = _NULL
    elif isinstance(value, bool):
        variant.kind, variant.value.integer = _BOOLEAN, yes if value else 0
    elif isinstance(value, int):
        if not -(2**63) <= value < 2**63:
            raise library().error(6)
        variant.kind, variant.value.integer = _INTEGER, value
    elif isinstance(value, (float, decimal.Decimal)):
        variant.kind, variant.value.number = _DOUBLE, float(value)
    elif isinstance(value, str):
        text = utf8(value)
        variant.kind, variant.value.text = _TEXT, text
    elif isinstance(value, datetime.date) and not isinstance(value, datetime.datetime):
        text = value.isoformat().encode()
        variant.kind, variant.value.text = _DATE, text
    elif isinstance(value, ConnectionHandle):
        variant.kind, variant.value.connection = _CONNECTION, value._handle
    else:
        variant.kind = _OBJECT
    return text


def member_value(variant: Variant):
    """The value of a member's result, which is ended."""
    boolean = variant.kind == _BOOLEAN
    value = field_value(variant)
    return bool(value) if boolean else value


def field_value(variant: Variant):
    """The value of a field of the component's, which is ended."""
    try:
        if variant.kind in (_BOOLEAN, _INTEGER):
            return variant.value.integer
        if variant.kind == _DOUBLE:
            return variant.value.number
        if variant.kind == _TEXT:
            return variant.value.text.decode()
        if variant.kind == _DATE:
            return datetime.date.fromisoformat(variant.value.text.decode())
        return None
    finally:
        library().functions.oveldra_variant_clear(byref(variant))
