"""Columns of signals: one rule for types, which is that of files.

Numbers are double, integers of 64 bits where double cannot hold them all, texts an enumeration in
the order of their appearance, unless something else is declared.
"""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass
from decimal import Decimal
from typing import Any

import numpy as np

from vorm._errors import error
from vorm._values import Array, Values, given_values, marks

NUMPY_TYPES: dict[str, Any] = {
    "double": np.float64,
    "float": np.float32,
    "single": np.float32,
    "half": np.float16,
    "bool": np.bool_,
    "logical": np.bool_,
    **{
        f"{sign}int{bits}": np.dtype(f"{sign}int{bits}").type
        for sign in ("", "u")
        for bits in (8, 16, 32, 64)
    },
}


# Those that have a NaN, and what is declared as nothing.
FLOATING = (None, "double", "float", "single", "half")


@dataclass(frozen=True)
class Wanted:
    """What is declared: a type by its name, or the members of an enumeration, and missing texts."""

    type: str | None = None
    members: tuple[str, list[str]] | None = None
    missing: frozenset[str] = frozenset()


def values_of(given: Any, subject: str, wanted: Wanted, is_nan_value: bool = False) -> Values:
    """The samples that a Series, an array or a list holds, as they are declared."""
    values = _without(wanted.missing, given_values(given, subject))
    is_declared = wanted.type is not None or wanted.members is not None
    if is_nan_value and values.array.dtype.kind == "f" and wanted.type not in FLOATING:
        for index in np.flatnonzero(np.isnan(values.array)):
            raise error(f"{subject}, index {index}: nan is no {wanted.type}")
    if not is_declared and not (is_nan_value and len(values) > 0) and not values.known().any():
        return Values(np.zeros(len(values)), np.ones(len(values), dtype=np.bool_), is_typed=False)
    if wanted.members is not None:
        return _as_members(_as_texts(values, subject), wanted.members, subject)
    if wanted.type == "enum":
        return _as_texts(values, subject)
    if wanted.type is not None:
        return _as_type(values, wanted.type, subject)
    if values.members is not None:
        return values
    return Values(_as_number(values.array), values.missing)


def _without(missing: frozenset[str], values: Values) -> Values:
    """The samples without those that are declared as missing, by their text or their number."""
    if not missing:
        return values
    if values.members is None:
        is_missing = np.isin(values.array, _numbers(missing, values.array.dtype))
    else:
        positions = [i for i, member in enumerate(values.members) if member in missing]
        is_missing = np.isin(values.array, positions)
    if values.missing is not None:
        is_missing |= values.missing
    if values.members is None:
        return Values(
            np.where(is_missing, values.array.dtype.type(0), values.array), marks(is_missing)
        )
    kept = [member for member in values.members if member not in missing]
    table = np.array([kept.index(m) if m in kept else 0 for m in values.members], dtype=np.int32)
    return Values(table[values.array], marks(is_missing), kept)


def _numbers(texts: Iterable[str], dtype: np.dtype[Any]) -> Array:
    """Those of the texts that are numbers of the type, exactly where it is one of integers."""
    numbers = []
    for text in texts:
        try:
            number = Decimal(text)
        except ArithmeticError:
            continue
        if dtype.kind == "f":
            numbers.append(float(number))
        elif dtype.kind in "iu" and number.is_finite() and number == int(number):
            least, greatest = _limits(dtype)
            if least <= number <= greatest:
                numbers.append(int(number))
    return np.array(numbers, dtype=dtype)


def _as_number(array: Array) -> Array:
    """Integers as double, or as 64 bits where some have no double of their own."""
    if array.dtype.kind not in "iu":
        return array
    doubles = array.astype(np.float64)
    is_signed = array.dtype.kind == "i"
    # What rounds up to the end of the type is another number.
    fits = doubles < (2.0**63 if is_signed else 2.0**64)
    if np.all(fits) and np.array_equal(doubles.astype(array.dtype), array):
        return doubles
    return array.astype(np.int64 if np.max(array) <= np.iinfo(np.int64).max else np.uint64)


def _as_type(values: Values, name: str, subject: str) -> Values:
    target = NUMPY_TYPES.get(name)
    if target is None:
        raise error(f"{subject}: values in memory are never of the type {name}")
    if values.members is not None:
        raise error(f"{subject} has texts, but is declared as {name}")
    array = values.array
    known = values.known()
    if np.dtype(target).kind == "f":
        with np.errstate(over="ignore"):
            floats = array.astype(target)
        for index in np.flatnonzero(known & np.isinf(floats) & (np.abs(array) != np.inf)):
            raise error(f"{subject}, index {index}: {array[index]!s} is beyond the range of {name}")
        return Values(floats, values.missing)
    # A missing sample counts as 0, which every type has.
    array = np.where(known, array, array.dtype.type(0))
    limits = (0, 1) if target is np.bool_ else _limits(np.dtype(target))
    for index in np.flatnonzero(known & ~_fits(array, *limits)):
        raise error(f"{subject}, index {index}: {array[index]!s} is no {name}")
    return Values(array.astype(target), marks(~known))


def _limits(integer: np.dtype[Any]) -> tuple[int, int]:
    limits: Any = np.iinfo(integer)
    return int(limits.min), int(limits.max)


def _fits(array: Array, least: int, greatest: int) -> Array:
    if array.dtype.kind == "b":
        return np.ones(len(array), dtype=np.bool_)
    if array.dtype.kind == "f":
        # The least integer above what fits is a power of 2, which double has.
        fits: Array = (
            (array >= float(least)) & (array < float(greatest + 1)) & (array == np.floor(array))
        )
        return fits
    return np.array([least <= int(number) <= greatest for number in array], dtype=np.bool_)


def _as_texts(values: Values, subject: str) -> Values:
    if values.members is not None:
        return values
    known = values.known()
    if not known.any():
        return Values(np.zeros(len(values), dtype=np.int32), marks(~known), [])
    if values.array.dtype.kind == "f" and not np.all(
        np.isfinite(values.array[known]) & (values.array[known] == np.floor(values.array[known]))
    ):
        raise error(f"{subject} has numbers, but is declared as texts")
    is_bool = values.array.dtype.kind == "b"
    texts = [
        (str(bool(value)).lower() if is_bool else str(int(value))) if is_known else None
        for value, is_known in zip(values.array, known)
    ]
    return given_values(np.array(texts, dtype=object), subject)


def _as_members(values: Values, members: tuple[str, list[str]], subject: str) -> Values:
    name, declared = members
    assert values.members is not None
    positions = {member: position for position, member in enumerate(declared)}
    known = values.known()
    used = {int(code) for code in np.unique(values.array[known])}
    for code in sorted(used):
        if values.members[code] not in positions:
            index = int(np.flatnonzero(known & (values.array == code))[0])
            raise error(
                f"{subject}, index {index}: '{values.members[code]}' is no member of the "
                f"enumeration '{name}'"
            )
    table = np.array([positions.get(member, 0) for member in values.members] or [0], dtype=np.int32)
    return Values(table[values.array], values.missing, declared)
