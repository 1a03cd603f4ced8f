"""What requirements say of the signals of data, and the columns that come of both."""

from __future__ import annotations

import math
from collections.abc import Iterable, Sequence
from dataclasses import dataclass
from typing import Any

from vorm import _vorm
from vorm._columns import Wanted, values_of
from vorm._data import Quantity, quantities_in
from vorm._errors import error
from vorm._times import Clock, Times, clock_of, origin_of, times_of


@dataclass(frozen=True)
class Columns:
    """Signals in memory as the engine takes them."""

    columns: list[_vorm.Column]
    available: list[str]
    clock: Clock
    date_of_zero: str | None
    """The seconds from 1970 to time 0 where all times are instants of the calendar."""


class Layout:
    """What an assessment file says of signals, or, without one, what holds if nothing is said."""

    def __init__(self, file: _vorm.File | None, nan: str) -> None:
        if nan not in ("missing", "value"):
            raise error(f"nan is {nan!r}", "it is 'missing' or 'value'")
        self._file = file
        self.is_nan_value = nan == "value"
        declared = [] if file is None else file.declarations
        self._declared = {each.name: each for each in declared}

    @property
    def time_unit(self) -> str | None:
        return None if self._file is None else self._file.time_unit

    @property
    def zone(self) -> str:
        return "" if self._file is None else self._file.zone

    @property
    def origin(self) -> tuple[str, str]:
        return ("recorded", "") if self._file is None else self._file.origin

    def declaration(self, name: str) -> _vorm.Declaration | None:
        """That of a signal."""
        return self._declared.get(name)

    def names(self, quantities: Sequence[Quantity]) -> dict[str, list[Quantity]]:
        """What each name means: declared signals, and those of the data that are not declared."""
        named: dict[str, list[Quantity]] = {}
        columns = {each.column or each.name for each in self._declared.values()}
        for quantity in quantities:
            header, _ = _vorm.column_header(quantity.name)
            for name in dict.fromkeys((quantity.name, header)):
                if name not in columns and name not in self._declared:
                    named.setdefault(name, []).append(quantity)
        for each in self._declared.values():
            column = each.column or each.name
            meant = [
                one for one in quantities if column in (one.name, _vorm.column_header(one.name)[0])
            ]
            if meant:
                named[each.name] = meant
        return named

    def column(self, name: str, quantity: Quantity, times: Times, zero: str) -> _vorm.Column:
        """The samples of a signal as they are declared."""
        signal, declared = quantity.signal, self._declared.get(name)
        if declared is not None and declared.file:
            raise error(
                f"the signal '{name}' is declared to be in the file '{declared.file}', but data in "
                "memory have no files",
                "leave the file out",
            )
        members = None if declared is None else declared.members
        missing = frozenset() if self._file is None else frozenset(self._file.missing)
        wanted = Wanted(signal.type, None, missing)
        if signal.type is None and declared is not None:
            wanted = Wanted(None if members else declared.type, members, missing)
        values = values_of(signal.values, quantity.subject, wanted, self.is_nan_value)
        enumeration = wanted.members[0] if wanted.members else name
        return _vorm.Column(
            name=name,
            times=times.numbers,
            time_unit=times.unit,
            zero=zero,
            values=values.array,
            missing=values.missing,
            members=None if values.members is None else (enumeration, values.members),
            unit=_first(signal.unit, declared and declared.unit or None, _unit_in(quantity.name)),
            is_typed=values.is_typed,
            is_nan_value=self.is_nan_value,
            is_linear=self._is_linear(quantity, declared, values.array.dtype.kind == "f"),
            max_gap=self._max_gap(signal.max_gap, declared),
            equal_times=_first(
                declared and declared.equal_times, self._file and self._file.equal_times, "error"
            ),
        )

    def _max_gap(self, given: float | None, declared: _vorm.Declaration | None) -> str | None:
        """As a decimal; nothing where no distance is too long."""
        if given is not None:
            return None if math.isinf(given) else repr(float(given))
        of_file = None if self._file is None else self._file.max_gap
        return of_file if declared is None or declared.max_gap is None else declared.max_gap

    def _is_linear(
        self, quantity: Quantity, declared: _vorm.Declaration | None, has_lines: bool
    ) -> bool:
        """What the whole file says gives way where a type has no lines."""
        if quantity.signal.interpolation is not None:
            return quantity.signal.interpolation == "linear"
        if declared is not None and declared.is_linear is not None:
            return declared.is_linear
        return has_lines and self._file is not None and self._file.is_linear


def _first(*choices: Any) -> Any:
    """The first that is known."""
    return next((choice for choice in choices if choice is not None), None)


def _unit_in(name: str) -> str:
    return _vorm.column_header(name)[1]


class KnownTimes:
    """The times of signals, those of several signals read once."""

    def __init__(self, layout: Layout) -> None:
        self._layout = layout
        self._known: dict[int, Times] = {}

    def of(self, quantity: Quantity) -> Times:
        """Those of a signal, whose data outlive this."""
        key = id(quantity.times)
        if key not in self._known:
            self._known[key] = times_of(
                quantity.times, quantity.subject, self._layout.time_unit, self._layout.zone
            )
        return self._known[key]


def columns_of(data: Any, layout: Layout, wanted: Iterable[str]) -> Columns:
    """The columns of the signals that are wanted."""
    quantities = quantities_in(data)
    named = layout.names(quantities)
    chosen = {}
    names = sorted(wanted)
    for name in names:
        declared = layout.declaration(name)
        if name not in named and declared is not None:
            raise error(
                f"there is no '{declared.column or name}' for the signal '{name}'",
                f"there are {', '.join(repr(each.name) for each in quantities)}",
            )
        if len(named.get(name, [])) > 1:
            raise error(f"several columns are called '{name}'", "rename all of them but one")
        if name in named:
            chosen[name] = named[name][0]
    if "time" in names and "time" not in named:
        # The time reaches over all signals, whichever are wanted.
        for name, meant in named.items():
            if all(one.times is not meant[0].times for one in chosen.values()):
                chosen[name] = meant[0]
    known = KnownTimes(layout)
    # The first sample of all signals counts, whichever are wanted.
    counting = quantities if layout.origin[0] == "first" else list(chosen.values())
    times = [known.of(quantity) for quantity in counting]
    origin = origin_of(layout.origin, times, layout.zone)
    # A minus sign would round to the digits of the context.
    zero = format(origin.copy_negate(), "f")
    columns = [layout.column(name, one, known.of(one), zero) for name, one in chosen.items()]
    tells_dates = bool(times) and all(each.tells_dates for each in times)
    date_of_zero = format(origin, "f") if tells_dates else None
    return Columns(columns, list(named), clock_of(times, origin), date_of_zero)
