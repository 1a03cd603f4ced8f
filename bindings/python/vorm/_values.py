"""Values as they are given, as arrays that the engine reads.

What is missing is no sample: None, NaN, NA, an empty text, masked values, the code -1.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

import numpy as np
import numpy.typing as npt

from vorm._errors import checked_text, error

Array = npt.NDArray[Any]


@dataclass(frozen=True)
class Values:
    """Samples of one type; `missing` marks those that are none."""

    array: Array
    missing: Array | None = None
    members: list[str] | None = None  # of which the array holds positions
    is_typed: bool = True  # whether some sample tells the type, or a declaration

    def __len__(self) -> int:
        return len(self.array)

    def known(self) -> Array:
        """Which are samples; no NaN is one."""
        known = np.ones(len(self.array), dtype=np.bool_)
        if self.missing is not None:
            known &= ~self.missing
        if self.array.dtype.kind == "f":
            known &= ~np.isnan(self.array)
        return known


def marks(missing: Array) -> Array | None:
    """Where nothing is missing there are none."""
    return np.ascontiguousarray(missing, dtype=np.bool_) if missing.any() else None


def given_values(given: Any, subject: str) -> Values:
    """Values of a type that the engine has, or positions of texts."""
    if hasattr(getattr(given, "dtype", None), "categories"):
        return _of_categories(getattr(given, "array", given), subject)
    array, missing = _array_of(given, subject)
    if array.ndim != 1:
        raise error(f"{subject} has {array.ndim} dimensions", "the values of a signal are a list")
    if array.dtype.kind in "OU":
        return _of_objects(array, missing, subject)
    if array.dtype.kind not in "biuf" or array.dtype.itemsize > 8:
        raise error(f"{subject}: no signal has values of the type {array.dtype}")
    native = np.ascontiguousarray(array.astype(array.dtype.newbyteorder("="), copy=False))
    if missing is None or not missing.any():
        return Values(native)
    # What is masked may be any number, and tells nothing.
    return Values(np.where(missing, native.dtype.type(0), native), marks(missing))


def _array_of(given: Any, subject: str) -> tuple[Array, Array | None]:
    """The array, and where its mask says that there is nothing."""
    dtype = getattr(given, "dtype", None)
    if dtype is not None and not isinstance(dtype, np.dtype):
        numpy_type: Any = getattr(dtype, "numpy_dtype", None)
        if numpy_type is None or numpy_type.kind == "O":
            return np.asarray(given, dtype=object), np.asarray(given.isna())
        array = given.to_numpy(dtype=numpy_type, na_value=numpy_type.type(0))
        return np.asarray(array), np.asarray(given.isna())
    if isinstance(given, np.ma.MaskedArray):
        mask = np.ma.getmaskarray(given)  # type: ignore[no-untyped-call]
        return np.asarray(given.data), np.asarray(mask)
    try:
        return np.asarray(given), None
    except ValueError:
        raise error(f"{subject} has values of several lengths", "a signal is one list") from None


def _of_categories(given: Any, subject: str) -> Values:
    codes = np.ascontiguousarray(given.codes, dtype=np.int32)
    categories = given_values(np.asarray(given.categories), subject)
    if len(categories) == 0:
        return Values(np.zeros(len(codes)), marks(codes < 0))
    positions = np.maximum(codes, 0)
    is_missing = (codes < 0) | ~categories.known()[positions]
    if categories.members is None:
        return Values(categories.array[positions], marks(is_missing))
    # In their own order, which is that of their appearance among themselves.
    return Values(categories.array[positions], marks(is_missing), categories.members)


def _is_nothing(value: Any) -> bool:
    """As an empty cell is."""
    is_nan = isinstance(value, (float, np.floating)) and value != value
    is_empty = isinstance(value, str) and value == ""
    return value is None or is_nan or is_empty or type(value).__name__ in ("NAType", "NaTType")


def _of_objects(array: Array, missing: Array | None, subject: str) -> Values:
    nothing = np.array([_is_nothing(value) for value in array], dtype=np.bool_)
    if missing is not None:
        nothing |= missing
    kinds = {_kind(value) for value in array[~nothing]}
    if len(kinds) > 1 or None in kinds:
        types = ", ".join(sorted({type(value).__name__ for value in array[~nothing]}))
        raise error(f"{subject} has values of the types {types}", "a signal has one type")
    if kinds == {"text"}:
        return _of_texts(array, nothing, subject)
    if kinds == {"bool"}:
        return Values(np.where(nothing, False, array).astype(np.bool_), marks(nothing))
    numbers = np.zeros(len(array), dtype=_number_type(array[~nothing], subject))
    numbers[~nothing] = [number for number in array[~nothing]]
    return Values(numbers, marks(nothing))


def _of_texts(array: Array, nothing: Array, subject: str) -> Values:
    members: dict[str, int] = {}
    codes = np.zeros(len(array), dtype=np.int32)
    for index in np.flatnonzero(~nothing):
        text = checked_text(str(array[index]), f"{subject}, index {index}: a value")
        codes[index] = members.setdefault(text, len(members))
    return Values(codes, marks(nothing), list(members))


def _kind(value: Any) -> str | None:
    if isinstance(value, str):
        return "text"
    if isinstance(value, (bool, np.bool_)):
        return "bool"
    return "number" if isinstance(value, (int, float, np.integer, np.floating)) else None


def _number_type(numbers: Array, subject: str) -> Any:
    """Double, or a type of 64 bits where some integer has no double of its own."""
    integers = [int(number) for number in numbers if isinstance(number, (int, np.integer))]
    if all(abs(number) <= 2**53 or int(float(number)) == number for number in integers):
        return np.float64
    if len(integers) == len(numbers):
        for numpy_type in (np.int64, np.uint64):
            limits: Any = np.iinfo(numpy_type)
            if limits.min <= min(integers) and max(integers) <= limits.max:
                return numpy_type
    raise error(f"{subject}: no type holds {max(integers, key=abs)} and the other numbers exactly")
