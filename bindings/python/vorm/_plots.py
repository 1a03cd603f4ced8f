"""Plots by matplotlib, of the samples that the HTML report draws."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

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
    """Instants are lines: no failure is too short to be seen."""
    failing = {"color": FAILING, "alpha": 0.25}
    unknown = {"facecolor": "none", "edgecolor": OPEN, "hatch": "//"}
    for spans, colour, style in (
        (result.failures(clock.form), FAILING, failing),
        (result.open_spans(clock.form), OPEN, unknown),
    ):
        for start, end in zip(clock.index(spans[:, 0]), clock.index(spans[:, 1])):
            ax.axvspan(start, end, **style, linewidth=0)
            ax.axvline(start, color=colour, linewidth=1)
