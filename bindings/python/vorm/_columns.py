"""Values of signals as the arrays that the engine reads: one rule for types and missing values.

It is that of files: integers are numbers (double) unless double cannot hold them all, texts are an
enumeration in the order of their appearance, and what is missing is no sample.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

from vorm._errors import checked_text, error

Array = npt.NDArray[Any]

NUMPY_TYPES = {
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
class Values:
    """Samples of one type; `missing` marks those that are none."""

    array: Array
    missing: Array | None = None
    members: list[str] | None = None  # of which the array holds positions

    def __len__(self) -> int:
        return len(self.array)


@dataclass(frozen=True)
class Wanted:
    """What is declared: a type by its name, or the members of an enumeration, and missing texts."""

    type: str | None = None
    members: tuple[str, list[str]] | None = None
    missing: frozenset[str] = frozenset()


def values_of(given: Any, subject: str, wanted: Wanted, is_nan_value: bool = False) -> Values:
    """The samples that a Series, an array or a list holds, as they are declared."""
    values = _without(wanted.missing, _plain(given, subject))
    for member in values.members or []:
        checked_text(member, f"{subject}: a value")
    if is_nan_value and values.array.dtype.kind == "f" and wanted.type not in FLOATING:
        for index in np.flatnonzero(np.isnan(values.array)):
            raise error(f"{subject}, index {index}: nan is no {wanted.type}")
    if wanted.members is not None:
        return _as_members(_as_texts(values, subject), wanted.members, subject)
    if wanted.type == "enum":
        return _as_texts(values, subject)
    if wanted.type is not None:
        return _as_type(values, wanted.type, subject)
    if values.members is not None:
        return values
    return Values(_as_number(values.array), values.missing)


def _plain(given: Any, subject: str) -> Values:
    """Values of a type that the engine has, or integers of any size, or positions of texts."""
    dtype = getattr(given, "dtype", None)
    if dtype is not None and hasattr(given, "cat" if hasattr(given, "index") else "categories"):
        return _of_categories(getattr(given, "array", given), subject)
    mask = None
    if dtype is not None and not isinstance(dtype, np.dtype):
        mask = np.asarray(given.isna())
        numpy_type: Any = getattr(dtype, "numpy_dtype", None)
        is_text = numpy_type is None or numpy_type.kind == "O"
        array = (
            np.asarray(given, dtype=object)
            if is_text
            else np.asarray(given.to_numpy(dtype=numpy_type, na_value=numpy_type.type(0)))
        )
    else:
        if isinstance(given, np.ma.MaskedArray):
            mask = np.asarray(np.ma.getmaskarray(given))  # type: ignore[no-untyped-call]
            given = given.data
        array = np.asarray(given)
    if array.ndim != 1:
        raise error(f"{subject} has {array.ndim} dimensions", "the values of a signal are a list")
    if array.dtype.kind in "OU":
        return _of_objects(array, mask, subject)
    is_known = array.dtype.kind in "biuf" and array.dtype.itemsize <= 8
    if not is_known:
        raise error(f"{subject}: no signal has values of the type {array.dtype}")
    native = array.astype(array.dtype.newbyteorder("="), copy=False)
    return Values(np.ascontiguousarray(native), _marks(mask))


def _without(missing: frozenset[str], values: Values) -> Values:
    """The samples without those whose texts are declared as missing."""
    positions = [i for i, member in enumerate(values.members or []) if member in missing]
    if not positions or values.members is None:
        return values
    is_missing = np.isin(values.array, positions) | _all_of(values.array, values.missing)
    kept = [member for member in values.members if member not in missing]
    table = np.array([kept.index(m) if m in kept else 0 for m in values.members], dtype=np.int32)
    return Values(table[values.array], _marks(is_missing), kept)


def _marks(mask: Array | None) -> Array | None:
    return np.ascontiguousarray(mask, dtype=np.bool_) if mask is not None and mask.any() else None


def _of_categories(given: Any, subject: str) -> Values:
    categories = list(given.categories)
    if not all(isinstance(each, str) for each in categories):
        return _plain(np.asarray(given), subject)
    codes = np.ascontiguousarray(given.codes, dtype=np.int32)
    return Values(np.maximum(codes, 0), _marks(codes < 0), categories)


def _is_nothing(value: Any) -> bool:
    """None, NaN, NA and an empty text, as an empty cell."""
    return value is None or type(value).__name__ == "NAType" or value != value or value == ""


def _of_objects(array: Array, mask: Array | None, subject: str) -> Values:
    nothing = np.array(
        [bool(m) or _is_nothing(v) for v, m in zip(array, _all_of(array, mask))], dtype=np.bool_
    )
    kinds = {_kind(value) for value in array[~nothing]}
    if kinds == {"text"}:
        members: dict[str, int] = {}
        codes = np.zeros(len(array), dtype=np.int32)
        for index in np.flatnonzero(~nothing):
            codes[index] = members.setdefault(str(array[index]), len(members))
        return Values(codes, _marks(nothing), list(members))
    if len(kinds) > 1 or kinds == {None}:
        types = sorted({type(value).__name__ for value in array[~nothing]})
        raise error(
            f"{subject} has values of the types {', '.join(types)}", "a signal has one type"
        )
    filled = np.where(nothing, False if kinds == {"bool"} else 0, array)
    dtype = np.bool_ if kinds == {"bool"} else _number_type(array[~nothing])
    try:
        return Values(np.ascontiguousarray(filled.astype(dtype)), _marks(nothing))
    except OverflowError:
        raise error(f"{subject} has an integer of more than 64 bits") from None


def _all_of(array: Array, mask: Array | None) -> Array:
    return np.zeros(len(array), dtype=np.bool_) if mask is None else mask


def _kind(value: Any) -> str | None:
    if isinstance(value, str):
        return "text"
    if isinstance(value, (bool, np.bool_)):
        return "bool"
    return "number" if isinstance(value, (int, float, np.integer, np.floating)) else None


def _number_type(numbers: Array) -> Any:
    if not all(isinstance(number, (int, np.integer)) for number in numbers):
        return np.float64
    return np.uint64 if len(numbers) > 0 and max(numbers) > np.iinfo(np.int64).max else np.int64


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
    known = _known(values)
    if np.dtype(target).kind == "f":
        with np.errstate(over="ignore"):
            return Values(array.astype(target), values.missing)
    # A missing sample counts as 0, which every type has.
    array = np.where(known, array, array.dtype.type(0))
    limits = (0, 1) if target is np.bool_ else _limits(np.dtype(target))
    for index in np.flatnonzero(known & ~_fits(array, *limits)):
        raise error(f"{subject}, index {index}: {array[index]!s} is no {name}")
    return Values(array.astype(target), _marks(~known))


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


def _known(values: Values) -> Array:
    known = np.ones(len(values), dtype=np.bool_)
    if values.missing is not None:
        known &= ~values.missing
    if values.array.dtype.kind == "f":
        known &= ~np.isnan(values.array)
    return known


def _as_texts(values: Values, subject: str) -> Values:
    if values.members is not None:
        return values
    known = _known(values)
    if values.array.dtype.kind == "f" and not np.all(
        values.array[known] == np.floor(values.array[known])
    ):
        raise error(f"{subject} has numbers, but is declared as texts")
    is_bool = values.array.dtype.kind == "b"
    texts = [
        (str(bool(value)).lower() if is_bool else str(int(value))) if is_known else None
        for value, is_known in zip(values.array, known)
    ]
    return _of_objects(np.array(texts, dtype=object), None, subject)


def _as_members(values: Values, members: tuple[str, list[str]], subject: str) -> Values:
    name, declared = members
    assert values.members is not None
    positions = {member: position for position, member in enumerate(declared)}
    known = _known(values)
    used = {int(code) for code in np.unique(values.array[known])}
    for code in sorted(used):
        if values.members[code] not in positions:
            index = int(np.flatnonzero(known & (values.array == code))[0])
            raise error(
                f"{subject}, index {index}: '{values.members[code]}' is no member of the enumeration '{name}'"
            )
    table = np.array([positions.get(member, 0) for member in values.members] or [0], dtype=np.int32)
    return Values(table[values.array], values.missing, declared)
