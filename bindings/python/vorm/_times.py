"""Times of data, exactly: as numbers of a unit, and back as pandas has them."""

from __future__ import annotations

import datetime
from collections.abc import Sequence
from dataclasses import dataclass
from decimal import Decimal, localcontext
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

from vorm import _vorm
from vorm._errors import checked_text, error

if TYPE_CHECKING:
    import pandas as pd

# Seconds of each unit.
UNITS = {
    "fs": Decimal("1e-15"),
    "ps": Decimal("1e-12"),
    "ns": Decimal("1e-9"),
    "us": Decimal("1e-6"),
    "ms": Decimal("1e-3"),
    "s": Decimal(1),
    "min": Decimal(60),
    "h": Decimal(3600),
}

# Units that NumPy has and that are finer than a second.
NUMPY_UNITS = ("s", "ms", "us", "ns", "ps", "fs")


@dataclass(frozen=True)
class Times:
    """Times of samples: int64 or float64 numbers of a unit.

    Dates count from 1970 in UTC. `zone` is the zone that they were given in, and `is_local` tells
    that they did not say so. `is_epoch` tells that their size alone says that numbers count from
    1970. `origin_unit` is that of an origin that is given as a number.
    """

    numbers: npt.NDArray[Any]
    unit: str
    is_date: bool = False
    zone: Any = None
    is_local: bool = False
    origin_unit: str = "s"
    is_epoch: bool = False

    @property
    def tells_dates(self) -> bool:
        """Whether these are instants of the calendar."""
        return self.is_date or self.is_epoch

    def seconds_at(self, index: int) -> Decimal:
        """The time exactly; of a float the shortest decimal that reads back as it."""
        number = self.numbers[index]
        is_count = self.numbers.dtype == np.int64
        decimal = Decimal(int(number)) if is_count else Decimal(repr(float(number)))
        with localcontext() as context:
            context.prec = 60
            return decimal * UNITS[self.unit]

    def first(self) -> Decimal | None:
        """None without samples, and where the first time is no number."""
        if len(self.numbers) == 0 or not np.isfinite(self.numbers[0]):
            return None
        return self.seconds_at(0)


def times_of(given: Any, subject: str, unit: str | None = None, zone: str = "") -> Times:
    """The times that an index or an array holds.

    Numbers count in the unit, else in the one that the name of the index tells (`t_ms`), else in
    that in which they count from 1970, else in seconds. Dates without a zone are in `zone`, else in
    UTC.
    """
    if hasattr(given, "index") and hasattr(given, "array"):
        given = _as_index(given)
    given_zone = getattr(given, "tz", None)
    if type(given).__name__ == "PeriodIndex":
        raise error(f"{subject}: periods are no times", "to_timestamp() makes times of them")
    if isinstance(given, np.ma.MaskedArray):
        raise error(f"{subject}: times in a masked array", "each sample needs a time")
    name = getattr(given, "name", None)
    array = _time_array(given, subject)
    if given_zone is not None:
        array = np.asarray(given.tz_convert("UTC").tz_localize(None))
    if array.ndim != 1:
        raise error(f"{subject}: times of {array.ndim} dimensions", "times are a list of them")
    if array.dtype.kind == "M" and given_zone is None and zone:
        counts = _counts(_in_utc(array, zone, subject), subject)
        return Times(*counts, is_date=True, zone=zone, is_local=True)
    if array.dtype.kind in "mM":
        return Times(*_counts(array, subject), is_date=array.dtype.kind == "M", zone=given_zone)
    header = "" if name is None else checked_text(str(name), f"{subject}: the name of its times")
    return _number_times(array, subject, unit, header)


def _as_index(series: Any) -> Any:
    import pandas as pd

    return pd.Index(series, name=series.name)


def _time_array(given: Any, subject: str) -> npt.NDArray[Any]:
    numpy_type = getattr(getattr(given, "dtype", None), "numpy_dtype", None)
    try:
        if numpy_type is not None:
            return np.asarray(given.to_numpy(dtype=numpy_type))
        return np.asarray(given.to_numpy() if hasattr(given, "to_numpy") else given)
    except ValueError:
        raise error(
            f"{subject}: a time is missing, or is a list", "each sample needs one"
        ) from None


def _in_utc(array: npt.NDArray[Any], zone: str, subject: str) -> npt.NDArray[Any]:
    import pandas as pd

    try:
        return np.asarray(pd.DatetimeIndex(array).tz_localize(zone).tz_convert(None))
    except Exception as problem:  # the libraries of zones raise what they like
        raise error(f"{subject}: times in the zone '{zone}': {problem}") from None


def _counts(array: npt.NDArray[Any], subject: str) -> tuple[npt.NDArray[np.int64], str]:
    """Dates and lengths of time as whole numbers of a unit that is a second or finer."""
    missing = np.flatnonzero(np.isnat(array))
    if len(missing) > 0:
        raise error(
            f"{subject}, index {missing[0]}: the time is missing (NaT)", "each sample needs a time"
        )
    unit, step = np.datetime_data(array.dtype)
    if unit not in NUMPY_UNITS or step != 1:
        try:
            finer = array.astype(f"{array.dtype.kind}8[{'s' if unit not in NUMPY_UNITS else unit}]")
            is_same = np.array_equal(finer.astype(array.dtype), array)
        except OverflowError:
            is_same = False
        if not is_same:
            raise error(f"{subject}: times of the type {array.dtype} are out of range")
        array, unit = finer, np.datetime_data(finer.dtype)[0]
    native = np.ascontiguousarray(array.astype(array.dtype.newbyteorder("="), copy=False))
    _check_reach(native, subject)
    return native.view(np.int64), unit


def _check_reach(dates: npt.NDArray[Any], subject: str) -> None:
    """Results are dates of pandas, which count nanoseconds."""
    if dates.dtype.kind == "M" and len(dates) > 0:
        counts = dates.view(np.int64)
        scale = UNITS[np.datetime_data(dates.dtype)[0]] / UNITS["ns"]
        farthest = max(abs(int(counts.min())), abs(int(counts.max())))
        if farthest * scale >= 2**63:
            raise error(f"{subject}: a date is before 1678 or after 2261", "give times as numbers")


def _number_times(array: npt.NDArray[Any], subject: str, unit: str | None, name: str) -> Times:
    if array.dtype.kind in "iu":
        if array.dtype == np.uint64 and np.any(array > np.iinfo(np.int64).max):
            raise error(f"{subject}: a time is beyond the range of int64")
        numbers: npt.NDArray[Any] = np.ascontiguousarray(array, dtype=np.int64)
    elif array.dtype.kind == "f" and array.dtype.itemsize <= 8:
        numbers = np.ascontiguousarray(array, dtype=np.float64)
        if array.dtype.itemsize < 8:
            # A float32 stands for its own shortest decimal, too.
            numbers = np.array([float(str(number)) for number in array], dtype=np.float64)
    else:
        advice = "pandas.to_datetime makes times of texts" if array.dtype.kind in "OU" else None
        raise error(f"{subject}: values of the type {array.dtype} are no times", advice)
    known = unit or _unit_in(name, subject)
    epoch = None if known else _epoch_unit(numbers, subject)
    unit = known or epoch or "s"
    if numbers.dtype == np.int64 and len(numbers) > 0 and unit in ("min", "h"):
        factor = int(UNITS[unit])
        # As integers of Python: the least int64 is its own absolute value.
        farthest = max(abs(int(numbers.min())), abs(int(numbers.max())))
        if farthest > np.iinfo(np.int64).max // factor:
            raise error(f"{subject}: a time is beyond the range of int64")
        return Times(numbers * factor, "s", origin_unit=unit)
    return Times(numbers, unit, origin_unit=unit, is_epoch=epoch is not None)


def _unit_in(name: str, subject: str) -> str | None:
    """The unit that a name such as `t_ms` or `time [ms]` tells."""
    unit = _vorm.time_unit_in_name(name)
    written = _vorm.column_header(name)[1]
    if unit is None and written:
        raise error(
            f"{subject}: the unit '{written}' of its times '{name}' is not known",
            f"known are {', '.join(UNITS)}; or say [recording] unit",
        )
    return unit


# From there on numbers are no seconds.
MOST_SECONDS = 1e11


def _epoch_unit(numbers: npt.NDArray[Any], subject: str) -> str | None:
    """That of a count from 1970, which its size tells; None for seconds from any other time."""
    if len(numbers) == 0:
        return None
    unit = _vorm.epoch_unit(float(numbers[0]))
    if unit is None:
        for number in (numbers[0], numbers[-1]):
            if MOST_SECONDS < abs(float(number)) < np.inf:
                raise error(
                    f"{subject}: times such as {number} are no seconds",
                    "name their unit: [recording] unit, or the name of the index, 'time [ms]'",
                )
    return unit


def origin_of(origin: tuple[str, str], times: Sequence[Times], zone: str) -> Decimal:
    """The seconds that are time 0, as an assessment file says."""
    kind, text = origin
    if kind == "recorded":
        return Decimal(0)
    if kind == "first":
        return min(
            (first for each in times if (first := each.first()) is not None), default=Decimal(0)
        )
    if kind == "file":
        raise error(
            f"the origin is the first sample of '{text}', but data in memory has no files",
            'origin = "first" is the first sample of all',
        )
    if any(each.is_date for each in times):
        seconds = _vorm.date_seconds(text, zone)
    else:
        units = {each.origin_unit for each in times} or {"s"}
        if len(units) > 1:
            raise error(
                f"the origin {text} is a number, but times count in {' and '.join(sorted(units))}",
                "give all signals times of one unit",
            )
        seconds = _vorm.number_seconds(text, units.pop())
    if seconds is None:
        kind = "date" if any(each.is_date for each in times) else "number"
        raise error(f"the origin '{text}' is no {kind}, as the times of the data are")
    return Decimal(seconds)


@dataclass(frozen=True)
class Clock:
    """How times of results are given: as seconds, or as dates in the zone of the data."""

    is_date: bool = False
    zone: Any = None
    is_local: bool = False
    origin: Decimal = Decimal(0)

    @property
    def form(self) -> _vorm.TimeForm:
        """What to ask the extension for."""
        return _vorm.TimeForm.Nanoseconds if self.is_date else _vorm.TimeForm.Seconds

    def index(self, times: npt.NDArray[Any]) -> pd.Index:
        """Times of that form as pandas has them."""
        import pandas as pd

        if not self.is_date:
            return pd.Index(times, name="time")
        origin = int(self.origin.scaleb(9).to_integral_value())
        dates = pd.DatetimeIndex(times + origin, name="time")
        if self.zone is None:
            return dates
        dates = dates.tz_localize("UTC").tz_convert(self.zone)
        return dates.tz_localize(None) if self.is_local else dates

    def time(self, time: float | int) -> Any:
        """One of them."""
        if not self.is_date:
            return time
        return self.index(np.array([time], dtype=np.int64))[0]


def clock_of(times: Sequence[Times], origin: Decimal) -> Clock:
    """That of data with these times. Raises Error where some are dates and others are not."""
    if len({each.is_date for each in times}) > 1:
        raise error("some times are dates, and others are numbers", "use one kind for all signals")
    zones = {(str(each.zone), each.is_local): each for each in times}
    first = next(iter(zones.values()), Times(np.zeros(0), "s"))
    if len(zones) > 1:
        return Clock(first.is_date, datetime.timezone.utc, False, origin)
    return Clock(first.is_date, first.zone, first.is_local, origin)
