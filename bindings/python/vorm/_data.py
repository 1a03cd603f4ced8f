"""What data can be: recordings in files, or signals in memory."""

from __future__ import annotations

import os
from collections.abc import Mapping, Sequence
from dataclasses import KW_ONLY, dataclass
from typing import Any

from vorm import _vorm
from vorm._errors import checked_text, error
from vorm._requirements import path_text


@dataclass(frozen=True, eq=False)
class Signal:
    """Values with what a column cannot say.

    `values` may bring their times, as a Series does; else `times` are as many. `interpolation` is
    "held" or "linear", `max_gap` a distance of samples in seconds above which nothing is known
    between them (infinite: none), `unit` a text for people, and `type` a value type as assessment
    files name it: "int8", "float", "enum". What is None is as the requirements say.
    """

    values: Any
    times: Any = None
    _: KW_ONLY
    interpolation: str | None = None
    max_gap: float | None = None
    unit: str | None = None
    type: str | None = None

    def __post_init__(self) -> None:
        for name in ("interpolation", "unit", "type"):
            if getattr(self, name) is not None:
                checked_text(getattr(self, name), f"the {name} of a signal")
        if self.interpolation not in (None, "held", "linear"):
            raise error(f"the interpolation {self.interpolation!r} is neither 'held' nor 'linear'")
        if self.max_gap is not None and not _is_length(self.max_gap):
            raise error(f"max_gap is {self.max_gap!r}", "it is a number of seconds above 0")


def _is_length(seconds: Any) -> bool:
    try:
        return float(seconds) > 0
    except (TypeError, ValueError, OverflowError):
        return False


@dataclass(frozen=True)
class Quantity:
    """A signal under the name that the data gives it, with its times as they were given."""

    name: str
    times: Any
    signal: Signal

    @property
    def subject(self) -> str:
        """What messages call it."""
        return f"signal '{self.name}'"


def paths_in(data: Any) -> list[list[str]] | None:
    """The files of each recording, where the data are paths."""
    if isinstance(data, (str, os.PathLike)):
        return [[path_text(data)]]
    if isinstance(data, Sequence) and data and all(_is_path(each) for each in data):
        groups = ([each] if isinstance(each, (str, os.PathLike)) else each for each in data)
        return [[path_text(path) for path in group] for group in groups]
    return None


def _is_path(each: Any) -> bool:
    if isinstance(each, (str, os.PathLike)):
        return True
    is_group = isinstance(each, (list, tuple)) and len(each) > 0
    return is_group and all(isinstance(one, (str, os.PathLike)) for one in each)


def quantities_in(data: Any) -> list[Quantity]:
    """The signals in memory, in order. Raises Error for data that are none."""
    if isinstance(data, Mapping) and not hasattr(data, "data_vars"):
        return [_quantity(_text(name), value) for name, value in data.items()]
    if hasattr(data, "data_vars"):
        return _of_dataset(data)
    if hasattr(data, "columns") and hasattr(data, "index"):
        return _of_frame(data)
    raise error(
        f"data of the type {type(data).__name__} are no signals",
        "give a path, a DataFrame with times as its index, a dict of name to Series or "
        "(times, values), or an xarray Dataset",
    )


def _quantity(name: str, value: Any) -> Quantity:
    signal = value if isinstance(value, Signal) else None
    if isinstance(value, tuple) and len(value) == 2:
        signal = Signal(value[1], value[0])
    if signal is None:
        signal = Signal(value)
    times = signal.times
    if times is None and hasattr(signal.values, "index") and hasattr(signal.values, "to_numpy"):
        times = signal.values.index
    if times is None:
        raise error(
            f"signal '{name}' has no times",
            "give (times, values), a Series with times as its index, or Signal(values, times)",
        )
    return Quantity(name, times, signal)


def _of_frame(frame: Any) -> list[Quantity]:
    names = [_text(name) for name in frame.columns]
    index = frame.index
    if hasattr(index, "levels"):
        raise error("the index of the frame has several levels", "its index has to be the time")
    is_count = type(index).__name__ == "RangeIndex" and index.name is None
    times = [name for name in names if _vorm.is_time_name(name)]
    if is_count and times:
        raise error(
            f"the frame counts its rows, but has a column '{times[0]}'",
            f"say that it is the time: frame.set_index({times[0]!r}), or that the rows are seconds: "
            "frame.rename_axis('time')",
        )
    columns = [frame.iloc[:, number] for number in range(len(names))]
    return [Quantity(name, index, Signal(column)) for name, column in zip(names, columns)]


def _of_dataset(dataset: Any) -> list[Quantity]:
    if "time" not in dataset.coords:
        raise error("the Dataset has no coordinate 'time'", "rename the one that is the time")
    coordinate = dataset["time"]
    times = coordinate.values
    if "units" in coordinate.attrs:
        times = _named(times, f"time [{coordinate.attrs['units']}]")
    quantities = []
    for name, variable in dataset.data_vars.items():
        if variable.dims == ("time",):
            unit = variable.attrs.get("units")
            signal = Signal(variable.values, times, unit=None if unit is None else str(unit))
            quantities.append(Quantity(_text(name), times, signal))
    return quantities


def _named(times: Any, name: str) -> Any:
    """Times whose name tells their unit."""
    import pandas as pd

    return pd.Index(times, name=name)


def _text(name: Any) -> str:
    text = ".".join(map(str, name)) if isinstance(name, tuple) else str(name)
    return checked_text(text, "the name of a signal")
