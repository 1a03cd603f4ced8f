"""What data in memory mean, and what is refused."""

from __future__ import annotations

import os
import pickle
from collections.abc import Callable
from typing import Any

import numpy as np
import pandas as pd
import pytest
import xarray as xr
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st
from hypothesis.extra import numpy as hnp

import vorm

X_ABOVE_2 = vorm.parse({"assessment": [{"name": "x", "formula": "x > 2"}]})


def values_of(data: Any, formula: str = "x > 2", **options: Any) -> list[Any]:
    """Time and truth at each change."""
    series = vorm.evaluate(formula, data, **options)
    return [
        (time, None if value is pd.NA else bool(value))
        for time, value in zip(series.index.tolist(), series.array)
    ]


def test_the_time_is_that_of_the_rows() -> None:
    data = {"x": ([0, 0.3, 0.6], [1, 3, 1])}
    assert values_of(data, "x > 2 & time > 0.3 | time < 0.1") == [
        (0, True),
        (0.1, False),
        (0.3, True),
        (0.6, False),
    ]
    assert values_of({"time": ([0, 1], [5, 7])}, "time > 6") == [(0, False), (1, True)]


LOW = {"assessment": [{"name": "x", "formula": "x < 5"}]}
TEXTS = {"assessment": [{"name": "x", "formula": "x == 'a'"}]}
NUMBERS = [1, 3, 4, 1]


@pytest.mark.parametrize(
    "values",
    [
        *(np.array(NUMBERS, dtype=t) for t in ("i1", "u1", "i2", "u2", "i4", "u4", "i8", "u8")),
        *(np.array(NUMBERS, dtype=t) for t in ("f2", "f4", "f8", ">i4", ">f8", ">f2")),
        pd.array(NUMBERS, dtype="Int16"),
        pd.array(NUMBERS, dtype="Float32"),
        pd.Categorical(NUMBERS),
        pd.arrays.SparseArray(NUMBERS),
        np.array(NUMBERS, dtype=object),
        np.ma.masked_array(NUMBERS, mask=[False] * 4),
        np.repeat(np.array(NUMBERS, dtype=float), 3)[::3],
        np.array(NUMBERS[::-1], dtype=np.int16)[::-1],
        NUMBERS,
        np.frombuffer(np.array(NUMBERS, dtype=float).tobytes()),
    ],
    ids=lambda values: str(getattr(values, "dtype", type(values).__name__)),
)
def test_numbers_of_every_type_are_numbers(values: Any) -> None:
    expected = [(0.0, False), (1.0, True), (3.0, False)]
    assert values_of({"x": ([0, 1, 2, 3], values)}) == expected
    # Decimals fit as they do for a column of a file.
    assert values_of({"x": ([0, 1, 2, 3], values)}, "x > 2.5") == expected


@pytest.mark.parametrize(
    "values",
    [
        [1.0, np.nan, 4.0],
        pd.array([1, None, 4], dtype="Int64"),
        pd.array([1.0, None, 4.0], dtype="Float64"),
        np.ma.masked_array([1, 2, 4], mask=[False, True, False]),
        np.array([1, None, 4], dtype=object),
    ],
    ids=["nan", "Int64", "Float64", "masked", "object"],
)
def test_what_is_missing_is_no_sample(values: Any) -> None:
    assert values_of({"x": ([0, 1, 2], values)}) == [(0.0, False), (2.0, True)]


def test_nan_is_a_value_where_that_is_asked_for() -> None:
    data = {"x": ([0, 1, 2], [3.0, np.nan, 3.0])}
    assert values_of(data) == [(0.0, True), (2.0, True)]
    assert values_of(data, nan="value") == [(0.0, True), (1.0, False), (2.0, True)]


@pytest.mark.parametrize(
    "values",
    [
        ["off", "on", None, "on"],
        pd.Categorical(["off", "on", None, "on"], categories=["unused", "on", "off"]),
        pd.array(["off", "on", None, "on"], dtype="string"),
        np.array(["off", "on", "", "on"]),
    ],
    ids=["object", "categorical", "string", "U"],
)
def test_texts_are_enumerations(values: Any) -> None:
    data = {"x": (np.arange(4), values)}
    assert values_of(data, "x == 'on'") == [(0.0, False), (1.0, True), (3.0, True)]
    declared = {
        "signals": {"x": {"type": "Mode"}},
        "enumerations": {"Mode": ["on", "off"]},
        "assessment": [{"name": "m", "formula": "x == 'off'"}],
    }
    assert vorm.assess(vorm.parse(declared), data)["m"].failures.start.tolist() == [1.0]
    declared["enumerations"] = {"Mode": ["off"]}
    with pytest.raises(vorm.Error, match="index 1: 'on' is no member of the enumeration 'Mode'"):
        vorm.assess(vorm.parse(declared), data)


def test_every_signal_has_its_own_times() -> None:
    data = {
        "x": pd.Series([1.0, 5.0], index=[0.5, 3.0]),
        "y": vorm.Signal([0.0, 10.0], [0, 10], interpolation="linear", unit="m", max_gap=20),
    }
    assert vorm.intervals("x < y", data).values.tolist() == [[0.5, 1.0], [3.0, 3.0]]
    dataset = xr.Dataset({"x": ("time", [1, 5]), "z": ((), 1)}, coords={"time": [0.5, 3.0]})
    assert values_of(dataset) == [(0.5, False), (3.0, True)]


def test_declarations_hold_for_columns_in_memory() -> None:
    text = """
    [recording]
    interpolation = "linear"
    max_gap = 2
    equal_times = "last"
    origin = "first"
    [signals]
    v = "Speed [km/h]"
    gear = { type = "int8", max_gap = 100 }
    [[assessment]]
    name = "v"
    formula = "v < 1 | gear == 1"
    from = 0.25
    """
    index = pd.Index([10, 11, 11, 12, 15], name="time")
    frame = pd.DataFrame({"Speed [km/h]": [0, 7, 2, 2, 0], "gear": [0, 0, 0, 0, 1]}, index=index)
    result = vorm.assess(vorm.parse(text), frame)["v"]
    assert result.failures.values.tolist() == [[0.5, 2.0]]
    assert result.open.values.tolist() == [[2.0, 5.0]]


def test_dates_without_a_zone_are_those_of_the_declared_one() -> None:
    requirements = {
        "recording": {"zone": "Europe/Berlin"},
        "assessment": [{"name": "x", "formula": "x > 2"}],
    }
    dates = pd.to_datetime(["2024-07-01 12:00", "2024-07-01 13:00"])
    frame = pd.DataFrame({"x": [1, 3]}, index=dates)
    result = vorm.assess(vorm.parse(requirements), frame)["x"]
    assert result.failures.values.tolist() == [[date.value for date in dates]]
    assert "from 1719828000 s to 1719831600 s (2024-07-01 12:00:00 to 13:00:00)" in result.why()
    twice = frame.set_axis(pd.to_datetime(["2024-10-27 02:30", "2024-10-27 12:00"]))
    with pytest.raises(vorm.Error, match="signal 'x': times in the zone 'Europe/Berlin'"):
        vorm.assess(vorm.parse(requirements), twice)


ORIGINS: list[tuple[Any, str, Any, bool]] = [
    (1, "t_min", [0, 1, 2], True),
    (1, "t_min", [0.0, 1.0, 2.0], True),
    (0, "t_min", [0, 1, 2], False),
    ({"time": "2021-06-30 12:00:00"}, "", ["11:00", "12:00", "13:00"], True),
    ({"time": "2021-06-30 10:00:00Z"}, "", ["11:00", "12:00", "13:00"], True),
    ({"time": "30.06.2021 11:59:59.9999999"}, "", ["11:00", "12:00", "13:00"], False),
]


@pytest.mark.parametrize("origin, name, times, fails", ORIGINS)
def test_an_origin_is_written_as_the_times_are(
    origin: Any, name: str, times: Any, fails: bool
) -> None:
    """x is 9 at the second time alone, and the formula is asked for at time 0."""
    requirements = {
        "recording": {"origin": origin, "zone": "Europe/Berlin"},
        "assessment": [{"name": "x", "formula": "x < 5", "from": 0, "to": 0}],
    }
    index = pd.Index(times) if name else pd.to_datetime([f"2021-06-30 {time}" for time in times])
    run = vorm.assess(vorm.parse(requirements), {"x": (index.rename(name or None), [1, 9, 1])})
    assert run["x"].verdict == ("FAIL" if fails else "PASS")


@pytest.mark.parametrize(
    "origin, message",
    [
        ("20210630", "the origin '20210630' is no date"),
        ("06/05/2021", "the origin '06/05/2021' is no date"),
        ({"file": "a.csv"}, "data in memory has no files"),
    ],
)
def test_origins_that_may_be_another_time_are_refused(origin: Any, message: str) -> None:
    origin = origin if isinstance(origin, dict) else {"time": origin}
    requirements = vorm.parse({"recording": {"origin": origin}, **LOW})
    with pytest.raises(vorm.Error, match=message):
        vorm.assess(requirements, {"x": (pd.date_range("2021", periods=2), [1, 9])})


def test_declarations_that_cannot_hold_are_refused() -> None:
    requirements = vorm.parse({"signals": {"x": {"file": "a.csv"}}, **LOW})
    with pytest.raises(vorm.Error, match="declared to be in the file 'a.csv'"):
        vorm.assess(requirements, FRAME)


def test_declared_missing_numbers_are_no_samples() -> None:
    big = vorm.parse({"recording": {"missing": [str(2**53)]}, **LOW})
    values: Any = np.array([1, 2**53 + 1], dtype=np.int64)
    assert vorm.assess(big, {"x": ([0, 1], values)})["x"].verdict == "FAIL"
    requirements = vorm.parse({"recording": {"missing": ["-999", "?"]}, **LOW})
    for values in ([9, -999, 1], [9.0, -999.0, 1.0]):
        result = vorm.assess(requirements, {"x": ([0, 1, 2], values)})["x"]
        assert result.failures.values.tolist() == [[0.0, 2.0]]


def test_categories_of_numbers_are_exact() -> None:
    big = 2**53 + 1
    values = pd.Categorical([big, None, big])
    assert values_of({"x": ([0, 1, 2], values)}, f"x == {big}") == [(0.0, True), (2.0, True)]
    empty = {"x": ([0, 1, 2], pd.Categorical(["a", "", "a"]))}
    assert values_of(empty, "x == 'a'") == [(0.0, True), (2.0, True)]
    masked: Any = np.ma.masked_array([3, 2**63 - 1, 3], mask=[False, True, False])
    assert values_of({"x": ([0, 1, 2], masked)}, "x > 2.5") == [(0.0, True), (2.0, True)]


def test_without_a_sample_there_is_no_type() -> None:
    data = {"x": ([0, 1], [None, None]), "y": ([0, 1], [np.nan, np.nan])}
    for formula in ("x == 'a'", "y == 'a'", "x > 2"):
        requirements = vorm.parse({"assessment": [{"name": "a", "formula": formula}]})
        assert vorm.assess(requirements, data)["a"].verdict == "NO_RESULT"


def test_robustness_runs_along_lines_from_row_to_row() -> None:
    held = vorm.evaluate("x > 2", {"x": ([0, 1, 2], [1, 5, 1])}, robustness=True)
    assert list(held.items()) == [(0, -1), (1, -1), (1, 3), (2, 3), (2, -1)]
    line = vorm.Signal([1, 5], [0, 2], interpolation="linear")
    assert list(vorm.evaluate("x > 2", {"x": line}, robustness=True).items()) == [(0, -1), (2, 3)]
    hole = vorm.Signal([1, 1, 3, 3], [0, 1, 5, 6], max_gap=2)
    rows = vorm.evaluate("x > 2", {"x": hole}, robustness=True)
    assert rows.index.tolist() == [0, 1, 1, 5, 5, 6]
    assert np.array_equal(rows.array, [-1, -1, np.nan, np.nan, 1, 1], equal_nan=True)
    instant = vorm.evaluate("rise(x > 2)", {"x": ([0, 1, 2, 3], [1, 1, 3, 3])}, robustness=True)
    assert instant[instant.index == 2].max() == 1


def test_signals_that_nothing_names_need_not_fit() -> None:
    data = {"x": ([0, 1], [1, 3]), "y": (["a"], [1j]), "z": (pd.date_range("2024", periods=1), [1])}
    assert vorm.assess(X_ABOVE_2, data)["x"].verdict == "FAIL"
    declared = vorm.parse({"recording": {"missing": ["?"]}, **TEXTS})
    texts = {"x": ([0, 1, 2], ["a", "?", "a"]), "y": vorm.Signal([1], [0], max_gap=np.inf)}
    assert vorm.assess(declared, texts)["x"].verdict == "PASS"
    assert vorm.assess(vorm.parse(TEXTS), texts)["x"].verdict == "FAIL"


def test_formulas_know_what_the_data_tell() -> None:
    dates = pd.date_range("2024-03-31 01:30", periods=3, freq="h", tz="Europe/Berlin")
    series = vorm.evaluate("x > 2", {"x": pd.Series([1, 3, 1], index=dates)})
    assert series.index[1] == dates[1] and str(series.index.tz) == "Europe/Berlin"
    robustness = vorm.evaluate("x > 2", {"x": ([0, 1], [1, 5])}, robustness=True)
    assert robustness.to_dict() == {0.0: -1.0, 1.0: 3.0}
    ahead = vorm.evaluate("eventually[0, 1](x > 2)", {"x": ([0, 1, 4], [1, 1, 1])})
    assert ahead.index.tolist() == [0.0, 3.0, 4.0] and ahead.isna().tolist() == [False, True, True]
    # An instant and what follows it have one time.
    assert values_of({"x": ([0, 1], [1, 3])}, "~rise(x > 2)") == [(0.0, True), (1.0, False)]
    assert values_of({"x": ([0, 1, 2], [1, 3, 3])}, "rise(x > 2)") == [
        (0.0, False),
        (1.0, True),
        (1.0, False),
        (2.0, False),
    ]


def test_until_holds_at_a_step_and_from_any_first_time() -> None:
    """y becomes true at 105; x is false from there on, and was true throughout before."""
    data = {"x": ([100, 105, 110], [True, False, False]), "y": ([100, 105], [False, True])}
    # At the goal x need not hold any more, but where one begins.
    intervals = vorm.intervals("x until[0, 2] y", data).values.tolist()
    assert intervals == [[100.0, 103.0], [105.0, 110.0]]
    assert vorm.intervals("x until[0, 5] y", data).values.tolist() == [[105.0, 110.0]]


FRAME = pd.DataFrame({"x": [1.0, 2.0]}, index=[0.0, 1.0])


@pytest.mark.parametrize(
    "data, message",
    [
        (FRAME.set_axis([1.0, 0.0]), "signal 'x', index 1: the time goes back from 1 s to 0 s"),
        (FRAME.set_axis([0.0, np.nan]), "signal 'x', index 1: the time nan is not finite"),
        (FRAME.set_axis([0, 0]), "signal 'x', index 1: the signal has a second sample at 0 s"),
        (FRAME.set_axis(pd.to_datetime(["2024", None])), "index 1: the time is missing"),
        (
            FRAME.set_axis(["a", "b"]),
            "values of the type object are no times\n  pandas.to_datetime",
        ),
        (FRAME.set_axis(pd.period_range("2024", periods=2)), "periods are no times"),
        (FRAME.assign(time=[0, 1]).reset_index(drop=True), r"\n  .*set_index\('time'\)"),
        (pd.concat([FRAME, FRAME], axis=1), "several columns are called 'x'"),
        (FRAME.astype(complex), "signal 'x': no signal has values of the type complex128"),
        (FRAME.astype(np.longdouble), "signal 'x': no signal has values of the type float128"),
        (FRAME.assign(x=["a", 1]), "signal 'x' has values of the types int, str"),
        (FRAME.assign(x=[b"a", b"b"]), "signal 'x' has values of the types bytes"),
        ({"x": [1, 2]}, "signal 'x' has no times\n  give "),
        ({"x": ([0, 1], [1, 2, 3])}, "signal 'x': has 2 times, but 3 values"),
        ({"x": ([0], [[1]])}, "signal 'x' has 2 dimensions"),
        ({"x": (3, 4)}, "signal 'x': times of 0 dimensions"),
        ({"x": vorm.Signal([1.5], [0], type="int8")}, "signal 'x', index 0: 1.5 is no int8"),
        ({"x": vorm.Signal([300], [0], type="int8")}, "signal 'x', index 0: 300 is no int8"),
        (
            {"x": vorm.Signal([1], [0], type="fixed")},
            "values in memory are never of the type fixed",
        ),
        ({"\ud800": ([0], [1])}, "the name of a signal is no valid text"),
        ({"x": ([0, 1], ["a", "\ud800"])}, "signal 'x', index 1: a value is no valid text"),
        (
            {"x": ([0, 1], np.array([2**70 + 1, 1], dtype=object))},
            "no type holds 1180591620717411",
        ),
        ({"x": ([0, 1], np.array([2**53 + 1, 0.5], dtype=object))}, "no type holds 900719925474"),
        (
            {"x": ([0, 1], np.array([-1, 2**63 + 1], dtype=object))},
            "no type holds 92233720368547",
        ),
        ({"x": ([0, 1], [[1, 2], [3]])}, "signal 'x' has values of several lengths"),
        ({"x": (np.ma.array([0, 1], mask=[False, True]), [1, 2])}, "times in a masked array"),
        ({"x": (pd.Index([0, 1], name="time [days]"), [1, 2])}, "the unit 'days' of its times"),
        ({"x": ([10**13, 10**13 + 1], [1, 2])}, "times such as 10000000000000 are no seconds"),
        ({"x": (np.array(["3000-01-01"], dtype="M8[s]"), [1])}, "a date is before 1678 or after"),
        ({"x": vorm.Signal([1e300], [0], type="float")}, "index 0: 1e.300 is beyond the range of"),
        ({"x": (np.array([0, 1], dtype="M8[as]"), [1, 3])}, "are out of range"),
        ({"x": vorm.Signal([np.inf], [0], type="enum")}, "has numbers, but is declared as texts"),
        ({"x": (pd.Index([-(2**63), 0], name="t_min"), [1, 3])}, "beyond the range of int64"),
        (42, "data of the type int are no signals\n  give a path"),
        (None, "data of the type NoneType are no signals"),
    ],
)
def test_what_cannot_be_used_says_why(data: Any, message: str) -> None:
    with pytest.raises(vorm.Error, match=message):
        vorm.assess(X_ABOVE_2, data)


DATES_AND_NUMBERS = {"x": ([0, 1], [1, 2]), "y": (pd.to_datetime(["2024"]), [1])}
NUMBER: Any = 7
WITH_LIMIT = "parameters = { limit = 3 }"
TABLE: Any = {"assessment": []}


@pytest.mark.parametrize(
    "call, message",
    [
        (lambda: vorm.parse("[[assessment]]"), "requirements:1:1"),
        (lambda: vorm.load("nowhere.toml"), "nowhere.toml"),
        (lambda: vorm.evaluate("x > y", DATES_AND_NUMBERS), "some times are dates"),
        (lambda: vorm.evaluate("x <", FRAME), "x <"),
        (lambda: vorm.evaluate("y < 2", FRAME), "unknown signal 'y'\n(.*\n)*  there is 'x'"),
        (lambda: vorm.assess(X_ABOVE_2, FRAME, only=["z"]), "'z'"),
        (lambda: vorm.assess(X_ABOVE_2, FRAME, nan="keep"), "'missing' or 'value'"),
        (lambda: vorm.assess(X_ABOVE_2, FRAME, jobs=0), "jobs is 0"),
        (lambda: vorm.Signal([1], interpolation="spline"), "'held' nor 'linear'"),
        (lambda: vorm.Signal([1], max_gap=-1), "a number of seconds above 0"),
        (lambda: vorm.parse({"assessment": [{"name": {1}}]}), "type set has no place"),
        (lambda: vorm.parse("\ud800"), "the text of the requirements is no valid text"),
        (lambda: vorm.parse(NUMBER), "the text of the requirements is no text"),
        (lambda: vorm.assess(TABLE, FRAME), "vorm.parse makes requirements of it"),
        (lambda: vorm.evaluate(NUMBER, FRAME), "the formula is no text, but of the type int"),
        (lambda: vorm.load("a\0b"), "is no path"),
        (lambda: vorm.parse(WITH_LIMIT, parameters={"limt": 3}), "'limt'(.*\n)*.*mean 'limit'"),
        (lambda: vorm.parse(WITH_LIMIT, parameters={"limit": True}), "'true' is no number"),
        (lambda: vorm.parse(WITH_LIMIT, parameters={"limit": TABLE}), "is of the type dict"),
        (lambda: vorm.evaluate("x > $y", FRAME), "only assessment files have parameters"),
        (lambda: vorm.assess(X_ABOVE_2, FRAME, only=[NUMBER]), "a name is no text"),
        (lambda: vorm.assess(X_ABOVE_2, FRAME).to_html("x.html", megabytes=-1), "megabytes is -1"),
    ],
)
def test_wrong_calls_say_what_is_wrong(call: Callable[[], Any], message: str) -> None:
    with pytest.raises(vorm.Error, match=message):
        call()


def test_errors_and_requirements_are_values() -> None:
    with pytest.raises(vorm.Error) as caught:
        vorm.parse('[[assessment]]\nname = "a"\nformula = "x <"')
    error = pickle.loads(pickle.dumps(caught.value))
    assert (error.file, error.line, str(error)) == ("requirements", 3, str(caught.value))
    again = pickle.loads(pickle.dumps(X_ABOVE_2))
    assert again.assessments == ["x"]
    assert repr(again) == "<Requirements 'requirements': 'x'>"


ARRAYS = int(os.environ.get("VORM_PYTHON_ARRAYS", "400"))


@settings(max_examples=ARRAYS, deadline=None, suppress_health_check=list(HealthCheck))
@given(
    values=hnp.arrays(
        st.one_of(
            hnp.scalar_dtypes(),
            hnp.byte_string_dtypes(),
            hnp.unicode_string_dtypes(),
            hnp.array_dtypes(max_size=2),
        ),
        hnp.array_shapes(min_dims=0, max_dims=3, min_side=0, max_side=4),
    ),
    times=st.one_of(
        st.just(np.arange(4.0)),
        hnp.arrays(hnp.scalar_dtypes(), hnp.array_shapes(min_dims=0, max_dims=2, min_side=0)),
    ),
    stride=st.sampled_from([None, 2, -1]),
    is_readable_only=st.booleans(),
)
def test_no_array_does_more_than_raise(
    values: Any, times: Any, stride: int | None, is_readable_only: bool
) -> None:
    if values.ndim > 0 and stride is not None:
        values = values[::stride]
    values.flags.writeable = not is_readable_only
    for formula in ("x > 2", "x == 'a'", "x"):
        try:
            vorm.evaluate(formula, {"x": (times, values)})
        except vorm.Error:
            pass
