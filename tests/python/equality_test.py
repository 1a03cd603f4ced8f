"""The module gives what the program gives on the same columns, to the last bit."""

from __future__ import annotations

import json
import subprocess
import tempfile
from decimal import Decimal
from pathlib import Path
from typing import Any

import numpy as np
import pandas as pd
import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st

import vorm

BIG = 2**53

FORMULAS = (
    "{n} <= {c}",
    "always[0, 1.5]({n} > {c})",
    "{n} > {c} -> eventually[0, 700 ms](~b)",
    "rise(b) -> (e == 'low' until[0, 2] {n} < {c})",
    "Shift[-0.25]({n}) - {n} < 1",
    "e ~= 'high' | b",
    "eventually[-1, 0](b & {n} >= {c})",
    "abs({n}) < 2",
    "held({n}) >= {c} | {n} < {c}",
    "time < 46408.7 | {n} < {c}",
    "time > 46408.6",
)


@st.composite
def columns(draw: st.DrawFn) -> tuple[dict[str, Any], pd.DataFrame]:
    """Requirements and a frame: held and linear, holes, NaN, texts, integers, equal times."""
    rows = draw(st.integers(1, 12))
    steps = draw(st.lists(st.sampled_from([0, 1, 3, 10, 25, 40]), min_size=rows, max_size=rows))
    start = draw(st.sampled_from([0, -37, 46408_60]))
    times = [(start + sum(steps[: i + 1])) / 100 for i in range(rows)]

    def values(*choices: Any) -> list[Any]:
        return draw(st.lists(st.sampled_from(choices), min_size=rows, max_size=rows))

    big = values(BIG, BIG + 1, BIG - 1, 5)
    frame = pd.DataFrame(
        {
            "x": np.array(values(0.0, 0.1, 1.5, -2.25, 1 / 3, np.nan), dtype=np.float64),
            "y": np.array(values(-1.0, 2.0, 0.3, 7.125, np.nan), dtype=np.float64),
            "i": pd.array(values(0, 1, 2, -3, None), dtype="Int64"),
            # Equal where times are: a sample that is left out tells a file no type.
            "k": pd.array([big[times.index(time)] for time in times], dtype="Int64"),
            "f": np.array(values(0.1, 0.2, -1.0), dtype=np.float32),
            "b": pd.array(values(True, False, None), dtype="boolean"),
            "e": pd.Categorical(values("low", "high", "middle", None)),
        },
        index=pd.Index(times, name="time"),
    )
    signals = {
        "y": {"interpolation": "linear"},
        "f": {"type": "float", "interpolation": draw(st.sampled_from(["held", "linear"]))},
        "b": {"type": "bool"},
        "e": {"type": "Level"},
    }
    numbers = {
        "x": ["0.1", "1"],
        "y": ["0.3", "2"],
        "i": ["1", "0.5"],
        "k": [str(BIG + 1)],
        "f": ["0.1", "0"],
    }
    assessments = []
    for number, formula in enumerate(draw(st.lists(st.sampled_from(FORMULAS), min_size=1))):
        name = draw(st.sampled_from(sorted(numbers)))
        text = formula.format(n=name, c=draw(st.sampled_from(numbers[name])))
        assessments.append({"name": str(number), "formula": text})
    recording: dict[str, Any] = {"equal_times": draw(st.sampled_from(["first", "last"]))}
    if draw(st.booleans()):
        recording["max_gap"] = 0.2
    recording["origin"] = draw(st.sampled_from(["first", "recorded"]))
    requirements = {
        "recording": recording,
        "signals": signals,
        "enumerations": {"Level": ["high", "middle", "low", "none"]},
        "assessment": assessments,
    }
    return requirements, frame


def outcome_of(report: str) -> list[Any]:
    """All but what is about files."""
    recordings = json.loads(report)["recordings"]
    for one in recordings:
        assert one["error"] is None, one["error"]
        for outcome in one["assessments"]:
            if outcome["problem"]:
                outcome["error"] = outcome["problem"] = "an error"
    return [(one["zone"], one["assessments"]) for one in recordings]


def program_report(program: Path, requirements: dict[str, Any], tables: dict[str, str]) -> str:
    """What the program reports of a folder with these tables."""
    with tempfile.TemporaryDirectory() as name:
        toml, folder = Path(name) / "requirements.toml", Path(name) / "recording"
        toml.write_text(vorm._requirements._toml(requirements))
        folder.mkdir()
        for table, text in tables.items():
            (folder / f"{table}.csv").write_text(text)
        recording = folder if len(tables) > 1 else next(folder.iterdir())
        options = "--explain --robustness --format json --quiet".split()
        command = [str(program), "run", str(toml), str(recording), *options]
        done = subprocess.run(command, capture_output=True, text=True)
        assert done.returncode in (0, 1, 3), done.stderr
        return str(done.stdout)


def table_of(frame: pd.DataFrame) -> str:
    return str(frame.to_csv()).replace("True", "true").replace("False", "false")


SETTINGS = settings(max_examples=250, deadline=None, suppress_health_check=list(HealthCheck))


@SETTINGS
@given(data=columns(), nan=st.sampled_from(["missing", "value"]))
def test_a_frame_and_its_table_are_the_same(
    program: Path, data: tuple[dict[str, Any], pd.DataFrame], nan: str
) -> None:
    requirements, frame = data
    run = vorm.assess(vorm.parse(requirements), frame, robustness=True, nan=nan)
    if nan == "value":
        frame = frame.assign(**{name: frame[name].map(repr) for name in "xy"})
    report = program_report(program, requirements, {"table": table_of(frame)})
    assert outcome_of(run.to_json()) == outcome_of(report)


@SETTINGS
@given(data=columns(), rows=st.lists(st.integers(1, 12), min_size=7, max_size=7))
def test_signals_with_times_of_their_own_are_files_of_their_own(
    program: Path, data: tuple[dict[str, Any], pd.DataFrame], rows: list[int]
) -> None:
    requirements, frame = data
    signals = {name: frame[name].iloc[-count:] for name, count in zip(frame, rows)}
    run = vorm.assess(vorm.parse(requirements), signals, robustness=True)
    tables = {name: table_of(series.to_frame()) for name, series in signals.items()}
    assert outcome_of(run.to_json()) == outcome_of(program_report(program, requirements, tables))


@pytest.mark.parametrize("zone", [None, "UTC", "America/New_York"])
def test_dates_are_exact_to_the_nanosecond_over_weeks(program: Path, zone: str | None) -> None:
    random = np.random.default_rng(1)
    start = pd.Timestamp("2024-01-01T00:00:00.000000001").value
    steps = random.integers(1, 4, 400)
    steps[::50] = 3 * 86_400 * 10**9 + 1
    count = start + np.cumsum(steps)
    index = pd.DatetimeIndex(count, tz=zone, name="time")
    frame = pd.DataFrame({"x": random.integers(0, 2, 400)}, index=index)
    requirements = {
        "recording": {"origin": "first", "max_gap": "1 s"},
        "assessment": [{"name": "x", "formula": "x > 0 | Shift[1 ns](x) > 0"}],
    }
    run = vorm.assess(vorm.parse(requirements), frame, robustness=True)
    seconds = [str(Decimal(int(c)).scaleb(-9)) for c in count]
    tables = {"table": frame.set_axis(pd.Index(seconds, name="time")).to_csv()}
    report = program_report(program, requirements, tables)
    assert outcome_of(run.to_json()) == outcome_of(report)
    failures = run["x"].failures
    assert failures.start.dt.tz is not None if zone else failures.start.dt.tz is None
    assert set(failures.start) <= set(frame.index)
    assert len(failures) > 5 and run["x"].first_failure == failures.start[0]


@pytest.mark.parametrize("zone", [None, "America/New_York"])
def test_dates_are_shown_and_read_in_the_declared_zone(program: Path, zone: str | None) -> None:
    index = pd.date_range("2026-11-22 10:00", periods=4, freq="10s", tz=zone, name="time")
    frame = pd.DataFrame({"x": [1, 9, 1, 1]}, index=index)
    start = "2026-11-22T16:00:05" if zone else "2026-11-22 10:00:05"
    requirements = {
        "recording": {"origin": "first", "zone": "Europe/Berlin"},
        "assessment": [{"name": "x", "formula": "x < 5", "from": start, "to": "25 s"}],
    }
    run = vorm.assess(vorm.parse(requirements), frame, robustness=True)
    report = program_report(program, requirements, {"table": frame.to_csv()})
    assert outcome_of(run.to_json()) == outcome_of(report)
    hour = 16 if zone else 10
    assert run["x"].why().splitlines()[1:] == [
        f"fails from 10 s to 20 s (2026-11-22 {hour}:00:10 to {hour}:00:20)",
        f"  because x < 5 is false from 10 s to 20 s (2026-11-22 {hour}:00:10 to {hour}:00:20)",
        "dates in Europe/Berlin",
    ]


def test_times_that_nothing_tells_apart_are_refused(program: Path) -> None:
    count = 1_700_000_000 * 10**9 + np.array(
        [0, 200 * 86_400 * 10**9, 200 * 86_400 * 10**9 + 1]
    )
    frame = pd.DataFrame({"x": [0, 1, 0]}, index=pd.Index(count, name="time [ns]"))
    requirements = {"assessment": [{"name": "x", "formula": "x > 0"}]}
    with pytest.raises(vorm.Error, match="the recording is too long for its times"):
        vorm.assess(vorm.parse(requirements), frame.set_axis(pd.DatetimeIndex(count)))
    report = json.loads(program_report(program, requirements, {"table": frame.to_csv()}))
    assert "the recording is too long for its times" in report["recordings"][0]["error"]


@pytest.mark.parametrize(
    "name, numbers, unit",
    [
        ("t_ms", [0.5, 1000.1, 2500], "ms"),
        ("time [us]", [0, 1_000_000, 2_500_000], "us"),
        ("t_min", [0, 1, 90], "min"),
        ("timestamp", [1710773350354, 1710773351354, 1710773352354], "ms"),
    ],
)
def test_the_unit_of_times_is_found_as_in_files(
    program: Path, name: str, numbers: list[Any], unit: str
) -> None:
    frame = pd.DataFrame({"x": [0, 3, 1]}, index=pd.Index(numbers, name=name))
    requirements: dict[str, Any] = {
        "assessment": [{"name": "x", "formula": "eventually[0, 1](x > 2)"}]
    }
    run = vorm.assess(vorm.parse(requirements), frame, robustness=True)
    report = program_report(program, requirements, {"table": frame.to_csv()})
    assert outcome_of(run.to_json()) == outcome_of(report)
    declared = {**requirements, "recording": {"unit": unit}}
    unnamed = vorm.assess(vorm.parse(declared), frame.set_axis(pd.Index(numbers)), robustness=True)
    report = program_report(program, declared, {"table": frame.to_csv()})
    assert outcome_of(unnamed.to_json()) == outcome_of(report)
