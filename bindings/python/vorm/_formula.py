"""Formulas on data, without requirements."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from vorm import _vorm
from vorm._data import paths_in
from vorm._errors import checked_text, error
from vorm._layout import Layout, columns_of
from vorm._times import Clock

if TYPE_CHECKING:
    import pandas as pd


def _recording(formula: _vorm.Formula, data: Any, nan: str) -> tuple[_vorm.Recording, Clock]:
    paths = paths_in(data)
    if paths is None:
        columns = columns_of(data, Layout(None, nan), formula.names)
        recording = _vorm.Recording.for_formula(formula, "data", columns.columns, columns.available)
        return recording, columns.clock
    if len(paths) > 1:
        raise error("a formula is evaluated on one recording", "files of one recording: [[a, b]]")
    return _vorm.Recording.read(formula, paths[0]), Clock()


def evaluate(
    formula: str, data: Any, *, robustness: bool = False, nan: str = "missing"
) -> pd.Series:
    """What a formula is over time, as a Series at the times at which it changes.

    True, False, or NA where the data do not tell; each holds up to the next row, and the last row is
    the end. Two rows of one time are what holds at it and just after it. With `robustness` it is by
    how much the formula holds, NaN where the data do not decide it; it runs along straight lines
    from row to row, and where it steps two rows have one time. `data` are those of assess, of one
    recording. Raises Error.
    """
    import pandas as pd

    known = _vorm.Formula(checked_text(formula, "the formula"))
    recording, clock = _recording(known, data, nan)
    if robustness:
        times, numbers = known.robustness(recording, clock.form)
        return pd.Series(numbers, index=clock.index(times), name=formula)
    times, truth = known.truth(recording, clock.form)
    values = pd.arrays.BooleanArray(truth > 0, truth == 0)
    return pd.Series(values, index=clock.index(times), name=formula)


def intervals(formula: str, data: Any, *, nan: str = "missing") -> pd.DataFrame:
    """The intervals in which a formula fails: columns start and end."""
    import pandas as pd

    known = _vorm.Formula(checked_text(formula, "the formula"))
    recording, clock = _recording(known, data, nan)
    spans = known.failures(recording, clock.form)
    return pd.DataFrame({"start": clock.index(spans[:, 0]), "end": clock.index(spans[:, 1])})
