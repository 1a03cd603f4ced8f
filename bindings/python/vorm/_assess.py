"""From requirements and data to a run."""

from __future__ import annotations

import os
from collections.abc import Iterable, Sequence
from dataclasses import dataclass
from typing import Any

from vorm import _vorm
from vorm._columns import Wanted, values_of
from vorm._data import Quantity, paths_in, quantities_in
from vorm._errors import Failed, error
from vorm._requirements import Requirements, requirements_of
from vorm._run import Run
from vorm._times import Clock, Times, clock_of, decimal_text, origin_of, times_of


@dataclass(frozen=True)
class Columns:
    """Signals in memory as the engine takes them."""

    columns: list[_vorm.Column]
    available: list[str]
    clock: Clock


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
        members = None if declared is None else declared.members
        wanted = Wanted(signal.type, None)
        if signal.type is None and declared is not None:
            wanted = Wanted(None if members else declared.type, members)
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
            is_nan_value=self.is_nan_value,
            is_linear=self._is_linear(quantity, declared, values.array.dtype.kind == "f"),
            max_gap=_first(
                _text(signal.max_gap),
                declared and declared.max_gap,
                self._file and self._file.max_gap,
            ),
            equal_times=_first(
                declared and declared.equal_times, self._file and self._file.equal_times, "error"
            ),
        )

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


def _text(seconds: float | None) -> str | None:
    return None if seconds is None else repr(float(seconds))


def columns_of(data: Any, layout: Layout, wanted: Iterable[str]) -> Columns:
    """The columns of the signals that are wanted."""
    quantities = quantities_in(data)
    times: dict[int, Times] = {}
    for quantity in quantities:
        if id(quantity.times) not in times:
            times[id(quantity.times)] = times_of(
                quantity.times, quantity.subject, layout.time_unit, layout.zone
            )
    origin = origin_of(layout.origin, list(times.values()))
    clock = clock_of(list(times.values()), origin)
    named = layout.names(quantities)
    zero = decimal_text(-origin)
    columns = []
    for name in sorted(wanted):
        declared = layout.declaration(name)
        if name not in named and declared is not None:
            raise error(
                f"there is no '{declared.column or name}' for the signal '{name}'",
                f"there are {', '.join(repr(each.name) for each in quantities)}",
            )
        if name not in named:
            continue
        if len(named[name]) > 1:
            raise error(f"several columns are called '{name}'", "rename all of them but one")
        (quantity,) = named[name]
        columns.append(layout.column(name, quantity, times[id(quantity.times)], zero))
    return Columns(columns, list(named), clock)


def assess(
    requirements: Requirements | str | os.PathLike[str],
    data: Any,
    *,
    robustness: bool = False,
    only: Sequence[str] | str | None = None,
    jobs: int = 1,
    nan: str = "missing",
    strict: bool = False,
    name: str = "data",
) -> Run:
    """Assesses data by requirements, which may be the path of an assessment file.

    `data` is a path or a list of paths, one for each recording; a DataFrame whose index is the
    time; a dict of names to a Series, (times, values) or a Signal, each with its own times; or an
    xarray Dataset with the coordinate time. NaN is no sample, unless `nan` is "value". `only` names
    the assessments to run; `strict` counts as no pass what is not known at some time; `name` is
    what reports call data in memory.

    Raises Error for data in memory that cannot be used. An assessment that cannot be evaluated, or
    a file that cannot be read, is among the errors of the run, and keeps nothing else from being
    assessed.
    """
    known = requirements_of(requirements)
    chosen = [only] if isinstance(only, str) else list(only or [])
    jobs = _jobs(jobs)
    paths = paths_in(data)
    if paths is not None:
        run = _vorm.Run.read(known.file, paths, chosen, jobs, robustness, strict)
        return Run(run, known, [Clock()])
    columns = columns_of(data, Layout(known.file, nan), known.file.names_to_read(chosen))
    recording = _vorm.Recording.for_file(
        known.file, chosen, name, columns.columns, columns.available
    )
    run = _vorm.Run.assess(known.file, recording, chosen, jobs, robustness, strict)
    return Run(run, known, [columns.clock])


def _jobs(jobs: int) -> int:
    if not 1 <= jobs <= 1024:
        raise error(f"jobs is {jobs}", "it is a number of threads from 1 to 1024")
    return jobs


def check(requirements: Requirements | str | os.PathLike[str], data: Any, **options: Any) -> None:
    """Does nothing where all requirements hold, for tests; `options` are those of assess.

    Raises Failed, with the reasons, where one fails or nothing is known of it, with `strict` also
    where it is not known at some time; and Error for input that cannot be used.
    """
    __tracebackhide__ = True
    judge(assess(requirements, data, **options))


def judge(run: Run) -> None:
    """Raises what check raises for such a run."""
    __tracebackhide__ = True
    if run.errors:
        raise run.errors[0]
    failed = run.not_passed()
    if failed:
        raise Failed(_message(failed), run)


def _message(failed: Sequence[Any]) -> str:
    """The first line alone has to say what failed: it is all that a summary shows."""
    first = failed[0]
    more = f", and {len(failed) - 1} more" if len(failed) > 1 else ""
    return "\n\n".join([f"{first.summary}{more}", *(result.why() for result in failed)])
