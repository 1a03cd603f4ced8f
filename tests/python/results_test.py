"""Verdicts, reports, plots, and work that goes on beside others."""

from __future__ import annotations

import _thread
import os
import pickle
import resource
import signal
import subprocess
import sys
import threading
import time
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import matplotlib
import numpy as np
import pandas as pd
import pytest

import vorm

matplotlib.use("agg")

TEXT = """
title = "a drive"
[[assessment]]
name = "slow"
formula = "speed < 20"
[[assessment]]
name = "brakes"
formula = "rise(brake) -> eventually[0, 1](speed < 2)"
[[assessment]]
name = "lamp"
formula = "eventually[5, 9](brake)"
"""
REQUIREMENTS = vorm.parse(TEXT)
FRAME = pd.DataFrame(
    {"speed": [10.0, 25.0, 10.0, 30.0, 1.0], "brake": [False, False, True, False, False]},
    index=pd.Index([0.0, 1.0, 2.0, 4.0, 5.0], name="time"),
)


def test_a_run_tells_verdicts_intervals_and_reasons() -> None:
    run = vorm.assess(REQUIREMENTS, FRAME, robustness=True)
    assert run.verdicts.verdict.tolist() == ["FAIL", "FAIL", "NO_RESULT"]
    assert run.verdicts.loc[0, ["first_failure", "failed", "robustness"]].tolist() == [1, 2, -10]
    assert run.failures.values.tolist() == [
        ["data", "slow", 1.0, 2.0],
        ["data", "slow", 4.0, 5.0],
        ["data", "brakes", 2.0, 2.0],
    ]
    slow = run["slow"]
    assert (slow.verdict, slow.first_failure, slow.robustness) == ("FAIL", 1.0, -10.0)
    assert "because speed < 20 is false from 1 s to 2 s" in slow.why()
    assert "4 s" not in slow.why(intervals=1)
    assert run["lamp"].open.values.tolist() == [[0.0, 5.0]]
    assert run["lamp"].robustness is None and run["lamp"].robustness_range == (-np.inf, np.inf)
    assert "slow" in run and "fast" not in run
    assert repr(run) == "<Run: 2 FAIL, 1 NO_RESULT>"
    assert repr(slow) == "<Result FAIL: 'slow' fails at 1.0 s and in 1 more interval>"
    with pytest.raises(KeyError, match="no result is called 'fast'; there are 'slow', 'brakes'"):
        run["fast"]
    for either in (run, slow):
        with pytest.raises(TypeError, match="vorm.check"):
            bool(either)


def test_an_evaluation_leaves_nothing_behind() -> None:
    first, second = (vorm.assess(REQUIREMENTS, FRAME, jobs=jobs).to_json() for jobs in (1, 4))
    assert first == second


def test_recordings_in_files_are_assessed_each(tmp_path: Path) -> None:
    files = [tmp_path / "a.csv", tmp_path / "b.csv", tmp_path / "none.csv"]
    table = FRAME.to_csv().replace("True", "true").replace("False", "false")
    files[0].write_text(table)
    files[1].write_text(table.replace("25.0", "5").replace("30.0", "5"))
    (tmp_path / "r.toml").write_text(TEXT)
    run = vorm.assess(tmp_path / "r.toml", files, jobs=2)
    assert run[str(files[0]), "slow"].verdict == "FAIL"
    assert run[str(files[1]), "slow"].verdict == "PASS"
    assert len(run) == 6 and len(run.errors) == 1 and "none.csv" in str(run.errors[0])
    with pytest.raises(vorm.Error, match=r"run\[recording, assessment\]"):
        run["slow"]
    assert vorm.intervals("speed < 20", files[0]).start.tolist() == [1.0, 4.0]
    with pytest.raises(vorm.Error, match="none.csv"):
        vorm.check(REQUIREMENTS, files[2])


def test_check_raises_what_does_not_hold() -> None:
    with pytest.raises(vorm.Failed) as caught:
        vorm.check(REQUIREMENTS, FRAME)
    first, *rest = str(caught.value).splitlines()
    assert first == "'slow' fails at 1.0 s and in 1 more interval, and 2 more"
    assert "because speed < 20 is false from 4 s to 5 s" in "\n".join(rest)
    assert caught.value.run is not None and caught.value.run["slow"].verdict == "FAIL"
    assert str(pickle.loads(pickle.dumps(caught.value))) == str(caught.value)
    vorm.check(REQUIREMENTS, FRAME.assign(speed=1.0), only="slow")
    with pytest.raises(vorm.Failed, match="'lamp' has no result"):
        vorm.check(REQUIREMENTS, FRAME, only="lamp")
    ahead = vorm.parse({"assessment": [{"name": "a", "formula": "always[0, 1](speed < 50)"}]})
    vorm.check(ahead, FRAME)
    with pytest.raises(vorm.Failed, match="'a' passes, but is not known throughout"):
        vorm.check(ahead, FRAME, strict=True)
    unknown = vorm.parse({"assessment": [{"name": "a", "formula": "sped < 50"}]})
    with pytest.raises(vorm.Error, match="did you mean 'speed'"):
        vorm.check(unknown, FRAME)


def test_pages_and_plots_lose_no_failure(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SOURCE_DATE_EPOCH", "0")
    noise = np.random.default_rng(3).uniform(0, 1, 100_000)
    spikes = [17, 50_000, 99_998]
    noise[spikes] = 30
    frame = pd.DataFrame({"speed": noise, "brake": False})
    run = vorm.assess(REQUIREMENTS, frame.rename_axis("time"))
    for path in (tmp_path / "one.html", tmp_path / "two.html"):
        run.to_html(path)
    page = (tmp_path / "one.html").read_text()
    assert page == (tmp_path / "two.html").read_text()
    assert "1970-01-01" in page and len(page) < 1e6
    ax = run["slow"].plot()
    (line,) = [line for line in ax.lines if len(line.get_xdata()) > 2]
    drawn = dict(zip(line.get_xdata(), line.get_ydata()))
    assert all(drawn[spike] == 30 for spike in spikes) and len(drawn) < 20_000
    bars, marks = ax.collections
    assert len(bars.get_paths()) == len(marks.get_segments()) == len(spikes)
    assert "<svg" in run["slow"]._repr_html_() and "<table" in run._repr_html_()
    with pytest.raises(vorm.Error, match="nowhere"):
        run.to_html(tmp_path / "nowhere" / "x.html")
    # Held values are steps, dates are dates, and all signals fit into one plot, too.
    dates = FRAME.set_axis(pd.date_range("2024", periods=5, freq="s"))
    result = vorm.assess(REQUIREMENTS, dates)["brakes"]
    ax = result.plot(ax=matplotlib.pyplot.figure().subplots())
    assert ax.lines[0].get_drawstyle() == "steps-post"
    assert ax.lines[0].get_xdata()[0] == np.datetime64("2024-01-01")
    matplotlib.pyplot.close("all")


def test_parameters_are_given_for_a_variant() -> None:
    text = """
        parameters = { limit = 27.8, delay = "500 ms", lamp = true, count = 3 }
        [[assessment]]
        name = "slow"
        formula = "speed <= $limit & always[0, $delay]($lamp)"
    """
    declared = vorm.parse(text)
    assert declared.parameters == {"limit": 27.8, "delay": "500 ms", "lamp": True, "count": 3}
    assert vorm.assess(declared, FRAME)["slow"].verdict == "FAIL"
    limit: Any = np.float64(1e3)
    given = vorm.parse(text, parameters={"limit": limit, "lamp": True, "delay": "1 s"})
    again = pickle.loads(pickle.dumps(given))
    assert again.parameters == given.parameters == {**declared.parameters, **again.parameters}
    assert again.parameters["limit"] == 1000 and again.parameters["delay"] == "1 s"
    run = vorm.assess(again, FRAME)
    assert run["slow"].verdict == "PASS"
    assert '"limit": 1000.0' in run.to_json()


def test_pytest_keeps_variants_apart(pytester: pytest.Pytester) -> None:
    pytester.makefile(
        ".toml", r='parameters = { m = 3 }\n[[assessment]]\nname = "a"\nformula = "x < $m"'
    )
    pytester.makepyfile(
        """
        import pytest, vorm

        @pytest.mark.parametrize("most", [3, 4])
        def test_drive(vorm_check, most):
            vorm_check(vorm.load("r.toml", parameters={"m": most}), {"x": ([0.0, 1.0], [1, 2])})
        """
    )
    pytester.runpytest_subprocess(
        "-p", "vorm.pytest_plugin", "--vorm-report", "r.html", "-p", "no:cacheprovider"
    ).assert_outcomes(passed=2)
    pages = [(pytester.path / name).read_text() for name in ("r.html", "r-2.html")]
    assert "m = 3 (3)" in pages[0] and "m = 4 (3)" in pages[1]


def test_pytest_shows_what_failed_and_writes_a_report(
    pytester: pytest.Pytester, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("COLUMNS", "200")
    pytester.makefile(".toml", requirements=TEXT)
    pytester.makepyfile(
        """
        import pandas as pd, pytest, vorm

        @pytest.mark.parametrize("speed", [1, 30])
        def test_drive(vorm_check, speed):
            frame = pd.DataFrame({"speed": speed}, index=[0.0, 1.0])
            vorm_check("requirements.toml", frame, only="slow")

        def test_plain():
            frame = pd.DataFrame({"speed": 30}, index=[0.0, 1.0])
            vorm.check("requirements.toml", frame, only="slow")
        """
    )
    options = ["-p", "vorm.pytest_plugin", "--vorm-report", "report.html", "-p", "no:cacheprovider"]
    result = pytester.runpytest_subprocess(*options)
    result.assert_outcomes(passed=1, failed=2)
    result.stdout.fnmatch_lines(
        [
            "report of the requirements: report.html",
            "FAILED *test_drive?30? - vorm.Failed: 'slow' fails at 0.0 s*",
            "FAILED *test_plain - vorm.Failed: 'slow' fails at 0.0 s*",
        ]
    )
    assert "def judge" not in result.stdout.str()
    page = (pytester.path / "report.html").read_text()
    lost = pytester.runpytest_subprocess(*options[:3], "nowhere/report.html", *options[4:])
    lost.assert_outcomes(passed=1, failed=2)
    lost.stdout.fnmatch_lines(
        ["no report of the requirements: cannot write 'nowhere/report.html'*"]
    )
    assert "test_drive[1]" in page and "test_drive[30]" in page and "test_plain" not in page


def noise(count: int) -> dict[str, Any]:
    random = np.random.default_rng(1)
    times = np.arange(count) / 1000
    return {
        name: vorm.Signal(random.uniform(size=count), times, interpolation="linear")
        for name in "ab"
    }


LONG = "always[0, 1](" + " & ".join(f"(a + b < {2 + i / 100})" for i in range(40)) + ")"


def test_other_threads_go_on() -> None:
    counts = []
    is_done = threading.Event()

    def count() -> None:
        while not is_done.is_set():
            counts.append(1)
            time.sleep(0.001)

    data = noise(200_000)
    thread = threading.Thread(target=count)
    thread.start()
    before = len(counts)
    vorm.evaluate(LONG, data)
    during = len(counts) - before
    is_done.set()
    thread.join()
    assert during > 5, "about one where the interpreter is locked"


@pytest.fixture
def interrupts() -> Iterator[None]:
    """What runs in the background may have been started to ignore them."""
    before = signal.signal(signal.SIGINT, signal.default_int_handler)
    yield
    signal.signal(signal.SIGINT, before)


def test_an_interrupt_ends_a_long_call(interrupts: None) -> None:
    data = noise(400_000)
    threading.Timer(0.5, _thread.interrupt_main).start()
    begin = time.monotonic()
    with pytest.raises(KeyboardInterrupt):
        while time.monotonic() - begin < 60:
            vorm.evaluate(LONG, data)
    assert time.monotonic() - begin < 2.5
    assert len(vorm.intervals("a < 2", data)) == 0


def without_threads() -> None:
    """A thread's stack takes more than all that the process may have."""
    _, most = resource.getrlimit(resource.RLIMIT_STACK)
    resource.setrlimit(resource.RLIMIT_STACK, (1 << 36, most))
    resource.setrlimit(resource.RLIMIT_AS, (1 << 35, 1 << 35))


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="sanitizers need room of their own")
def test_where_the_system_has_no_thread_to_give_the_caller_does_the_work() -> None:
    code = """
import threading, vorm
try:
    threading.Thread(target=print).start()
except RuntimeError:
    print(vorm.intervals("x <= 2", {"x": ([0, 1, 2], [1, 3, 1])}).to_dict("list"))
"""
    done = subprocess.run(
        [sys.executable, "-c", code],
        preexec_fn=without_threads,
        env={**os.environ, "OPENBLAS_NUM_THREADS": "1"},
        capture_output=True,
        text=True,
        check=True,
    )
    assert done.stdout == "{'start': [1.0], 'end': [2.0]}\n"


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="sanitizers need room of their own")
def test_memory_that_runs_out_is_an_error() -> None:
    code = """
import resource, sys, vorm
import numpy as np, pandas
times = np.arange(300_000) / 100
data = {"a": (times, np.sin(times))}
page = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (page + int(sys.argv[1]), resource.RLIM_INFINITY))
try:
    vorm.evaluate("integral[0, 3](a) > 0 | a * 2 > abs(a)", data)
    print("no error")
except MemoryError:
    print("MemoryError")
"""
    outputs = [
        subprocess.run(
            [sys.executable, "-c", code, str(room)], capture_output=True, text=True, check=True
        ).stdout
        for room in (100_000, 1_000_000, 3_700_000, 9_300_000, 21_000_000, 4_000_000_000)
    ]
    assert outputs == ["MemoryError\n"] * 5 + ["no error\n"]


def test_importing_brings_neither_pandas_nor_matplotlib() -> None:
    code = "import sys, vorm; print({'pandas', 'matplotlib'} & set(sys.modules))"
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True)
    assert done.stdout == "set()\n"
    assert set(vorm.__all__) <= set(dir(vorm)) and len(vorm.__all__) <= 12
