"""What became of requirements."""

from __future__ import annotations

import datetime
import html
import os
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any

import numpy as np

from vorm import _vorm
from vorm._errors import Error, error
from vorm._plots import plot
from vorm._requirements import Requirements, path_text
from vorm._times import Clock

if TYPE_CHECKING:
    import matplotlib.axes
    import pandas as pd

MOST_INTERVALS = 10


class Result:
    """What became of one assessment on one recording."""

    def __init__(self, result: _vorm.AssessmentResult, recording: str, clock: Clock) -> None:
        self._result = result
        self._clock = clock
        self.recording = recording

    @property
    def name(self) -> str:
        return self._result.name

    @property
    def description(self) -> str:
        return self._result.description

    @property
    def formula(self) -> str:
        """As it stands in the requirements."""
        return self._result.formula

    @property
    def severity(self) -> str:
        """error, warning or info: how bad it is where it fails."""
        return self._result.severity

    @property
    def tags(self) -> list[str]:
        return self._result.tags

    @property
    def verdict(self) -> str:
        """PASS, FAIL, NO_RESULT or ERROR."""
        return self._result.verdict

    @property
    def error(self) -> Error | None:
        """Why it could not be evaluated."""
        return self._result.error

    @property
    def first_failure(self) -> Any:
        """The first failing time: seconds, or a Timestamp where the data have dates; or None."""
        time = self._result.first_failure(self._clock.form)
        return None if time is None else self._clock.time(time)

    @property
    def passed(self) -> float:
        """For how many seconds it holds."""
        return self._result.passed

    @property
    def failed(self) -> float:
        """For how many seconds it fails."""
        return self._result.failed

    @property
    def robustness(self) -> float | None:
        """By how much it holds at the worst time, negative where it fails.

        None where it was not asked for, and where the data do not decide it; robustness_range then
        tells between what it lies.
        """
        least, greatest = self.robustness_range or (0.0, 1.0)
        return least if least == greatest or np.isnan(least) else None

    @property
    def robustness_range(self) -> tuple[float, float] | None:
        """Between what the robustness lies; None where it was not asked for or is not known."""
        return self._result.robustness

    @property
    def robustness_error(self) -> Error | None:
        """Why it was asked for and is not known."""
        return self._result.robustness_error

    @property
    def failures(self) -> pd.DataFrame:
        """The failing intervals: start is the first failing time, end the next that does not."""
        return self._spans(self._result.failures(self._clock.form))

    @property
    def open(self) -> pd.DataFrame:
        """The intervals of which the data do not tell."""
        return self._spans(self._result.open_spans(self._clock.form))

    @property
    def passes_throughout(self) -> bool:
        """Whether it holds at every time that was looked at."""
        return self._result.passes_throughout

    @property
    def summary(self) -> str:
        """One line on how it ended."""
        count = self._result.failure_count
        if count > 0:
            more = (
                f" and in {count - 1} more interval{'s' if count > 2 else ''}" if count > 1 else ""
            )
            unit = "" if self._clock.is_date else " s"
            return f"'{self.name}' fails at {self.first_failure}{unit}{more}"
        ends = {"PASS": "passes", "NO_RESULT": "has no result", "ERROR": "cannot be evaluated"}
        is_open = self.verdict == "PASS" and not self.passes_throughout
        return f"'{self.name}' {ends[self.verdict]}{', but is not known throughout' if is_open else ''}"

    def why(self, intervals: int = MOST_INTERVALS) -> str:
        """Why it fails or has no result, of as many intervals.

        Times are in seconds; data with dates have them beside these, in the zone of the requirements.
        """
        if not isinstance(intervals, int) or intervals < 0:
            raise error(f"intervals is {intervals!r}", "it is how many of them to tell")
        return self._result.why(min(intervals, 2**31))

    def plot(self, ax: matplotlib.axes.Axes | None = None) -> matplotlib.axes.Axes:
        """Draws the signals of the formula, failing intervals in red and open ones hatched.

        Into `ax`, or into a figure of its own with a plot for each signal; gives the lowest axes.
        Of signals of many samples those are drawn that the HTML report draws: no extreme vanishes.
        """
        return plot(self._result, self._clock, ax)

    def _spans(self, spans: Any) -> pd.DataFrame:
        import pandas as pd

        columns = {
            "start": self._clock.index(spans[:, 0]),
            "end": self._clock.index(spans[:, 1]),
        }
        return pd.DataFrame(columns)

    def __bool__(self) -> bool:
        raise TypeError("a verdict is PASS, FAIL or NO_RESULT: ask for .verdict, or use vorm.check")

    def __repr__(self) -> str:
        return f"<Result {self.verdict}: {self.summary}>"

    def _repr_html_(self) -> str:
        picture = self._result.svg(900)
        return f"<pre>{html.escape(self.why())}</pre>{picture}"


class Run:
    """What became of requirements on data."""

    def __init__(self, run: _vorm.Run, requirements: Requirements, clocks: Sequence[Clock]) -> None:
        """The one clock is that of all recordings, or each has its own."""
        self._run = run
        self._clocks = list(clocks)
        self.requirements = requirements
        recordings = run.recordings
        if len(self._clocks) == 1:
            self._clocks *= len(recordings)
        self._recordings = recordings
        self._results = [
            Result(result, recording.name, clock)
            for recording, clock in zip(recordings, self._clocks)
            for result in recording.assessments
        ]

    @property
    def results(self) -> list[Result]:
        """One for each recording and assessment."""
        return list(self._results)

    @property
    def errors(self) -> list[Error]:
        """Recordings that cannot be read, and assessments that cannot be evaluated."""
        unread = [one.error for one in self._recordings if one.error is not None]
        return unread + [one.error for one in self._results if one.error is not None]

    @property
    def warnings(self) -> list[str]:
        """What was left out or changed in reading files."""
        return [warning for one in self._recordings for warning in one.warnings]

    @property
    def verdicts(self) -> pd.DataFrame:
        """A row for each recording and assessment; times in seconds, first_failure as the data's."""
        import pandas as pd

        rows = [
            {
                "recording": one.recording,
                "assessment": one.name,
                "verdict": one.verdict,
                "severity": one.severity,
                "first_failure": one.first_failure,
                "passed": one.passed if one.error is None else np.nan,
                "failed": one.failed if one.error is None else np.nan,
                "open": one._result.open if one.error is None else np.nan,
                "robustness": np.nan if one.robustness is None else one.robustness,
            }
            for one in self._results
        ]
        columns = [
            "recording",
            "assessment",
            "verdict",
            "severity",
            "first_failure",
            "passed",
            "failed",
            "open",
            "robustness",
        ]
        return pd.DataFrame(rows, columns=columns)

    @property
    def failures(self) -> pd.DataFrame:
        """A row for each failing interval."""
        import pandas as pd

        frames = []
        for one in self._results:
            frame = one.failures
            if len(frame) > 0:
                frame.insert(0, "assessment", one.name)
                frame.insert(0, "recording", one.recording)
                frames.append(frame)
        columns = ["recording", "assessment", "start", "end"]
        return pd.concat(frames, ignore_index=True) if frames else pd.DataFrame(columns=columns)

    def not_passed(self) -> list[Result]:
        """The results that are no pass; of a strict run also those not known throughout."""
        return [
            one
            for one in self._results
            if one.verdict != "PASS" or (self._run.is_strict and not one.passes_throughout)
        ]

    def to_html(self, path: str | os.PathLike[str], *, megabytes: float = 20) -> None:
        """Writes the report as one page that needs no other file, of so many megabytes at most.

        Times on the page are in seconds. SOURCE_DATE_EPOCH fixes the date that it shows.
        """
        if not isinstance(megabytes, (int, float)) or not 0 < megabytes < 1e6:
            raise error(f"megabytes is {megabytes!r}", "it is a size above 0")
        self._run.write_html(path_text(path), _today(), int(megabytes * 1e6))

    def to_json(self) -> str:
        """The report that `assess run --explain --format json` writes."""
        return self._run.json()

    @staticmethod
    def joined(runs: Sequence[Run]) -> Run:
        """The recordings of several runs of the same requirements in one."""
        clocks = [clock for run in runs for clock in run._clocks]
        return Run(_vorm.Run.joined([run._run for run in runs]), runs[0].requirements, clocks)

    def __getitem__(self, key: str | tuple[str, str]) -> Result:
        """The result of an assessment; of several recordings: run[recording, assessment]."""
        recording, name = key if isinstance(key, tuple) and len(key) == 2 else (None, key)
        found = [
            one for one in self._results if one.name == name and recording in (None, one.recording)
        ]
        if len(found) == 1:
            return found[0]
        if found:
            names = ", ".join(repr(one.recording) for one in found)
            raise error(f"'{name}' has a result for each of {names}", "run[recording, assessment]")
        known = ", ".join(dict.fromkeys(repr(one.name) for one in self._results))
        raise KeyError(f"no result is called {name!r}; there are {known}")

    def __contains__(self, name: object) -> bool:
        return any(one.name == name for one in self._results)

    def __len__(self) -> int:
        return len(self._results)

    def __iter__(self) -> Any:
        return iter(self._results)

    def __bool__(self) -> bool:
        raise TypeError(
            "verdicts are PASS, FAIL or NO_RESULT: look at .verdicts, or use vorm.check"
        )

    def __repr__(self) -> str:
        counts = {
            verdict: sum(one.verdict == verdict for one in self._results)
            for verdict in ("PASS", "FAIL", "NO_RESULT", "ERROR")
        }
        texts = [f"{count} {verdict}" for verdict, count in counts.items() if count > 0]
        unread = sum(one.error is not None for one in self._recordings)
        return f"<Run: {', '.join(texts + [f'{unread} unreadable'] * (unread > 0)) or 'nothing'}>"

    def _repr_html_(self) -> str:
        pictures = "".join(one._result.svg(900) for one in self.not_passed()[:1])
        return str(self.verdicts.to_html(index=False)) + pictures


def _today() -> str:
    epoch = os.environ.get("SOURCE_DATE_EPOCH")
    if epoch is None:
        return datetime.date.today().isoformat()
    utc = datetime.timezone.utc
    try:
        return datetime.datetime.fromtimestamp(int(epoch), utc).date().isoformat()
    except (ValueError, OverflowError, OSError):
        raise error(
            f"SOURCE_DATE_EPOCH is '{epoch}'", "it is a number of seconds from 1970"
        ) from None
