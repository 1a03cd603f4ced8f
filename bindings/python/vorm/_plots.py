"""Plots by matplotlib, of the samples that the HTML report draws."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

from vorm import _vorm
from vorm._errors import error
from vorm._times import Clock

if TYPE_CHECKING:
    import matplotlib.axes

FAILING = "#d6293e"
OPEN = "#8a8a8a"


def plot(
    result: _vorm.AssessmentResult, clock: Clock, ax: matplotlib.axes.Axes | None
) -> matplotlib.axes.Axes:
    """Draws the signals of a result into the axes, or into a figure with a plot for each."""
    import matplotlib.pyplot as plt

    signals = result.drawing(clock.form)
    if not signals:
        raise error(f"'{result.name}' has no signals to draw")
    if ax is not None:
        axes = [ax] * len(signals)
    else:
        _, grid = plt.subplots(
            len(signals), 1, sharex=True, squeeze=False, figsize=(9, 1 + 1.6 * len(signals))
        )
        axes = list(grid[:, 0])
    for one, signal in zip(axes, signals):
        _draw(one, signal, clock)
    for one in dict.fromkeys(axes):
        _shade(one, result, clock)
        one.legend(loc="upper right")
    axes[0].set_title(f"{result.name}: {result.verdict}")
    axes[-1].set_xlabel("" if clock.is_date else "time [s]")
    return axes[-1]


def _draw(ax: Any, signal: tuple[Any, ...], clock: Clock) -> None:
    name, unit, is_linear, levels, (times, values), thresholds = signal
    label = f"{name} [{unit}]" if unit else name
    (line,) = ax.plot(
        clock.index(times), values, drawstyle="default" if is_linear else "steps-post", label=label
    )
    if len(values) < 200:
        line.set_marker(".")
    for threshold in thresholds:
        ax.axhline(threshold, color=line.get_color(), linestyle=":", linewidth=1)
    if levels:
        ax.set_yticks(range(len(levels)), levels)


def _shade(ax: Any, result: _vorm.AssessmentResult, clock: Clock) -> None:
    """Instants are lines: no failure is too short to be seen. One element for all of a kind."""
    from matplotlib.dates import date2num

    height = {"transform": ax.get_xaxis_transform()}
    failing = {"color": FAILING, "alpha": 0.25}
    unknown = {"facecolor": "none", "edgecolor": OPEN, "hatch": "//"}
    for spans, colour, style in (
        (result.failures(clock.form), FAILING, failing),
        (result.open_spans(clock.form), OPEN, unknown),
    ):
        if len(spans) > 0:
            ends = [clock.index(spans[:, side]) for side in (0, 1)]
            start, end = map(date2num, ends) if clock.is_date else (spans[:, 0], spans[:, 1])
            ranges = np.column_stack([start, end - start])
            ax.broken_barh(ranges, (0, 1), **style, **height, linewidth=0)
            ax.vlines(start, 0, 1, color=colour, linewidth=1, **height)
