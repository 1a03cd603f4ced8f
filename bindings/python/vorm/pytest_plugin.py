"""The fixture vorm_check, and the option --vorm-report."""

from __future__ import annotations

import os
from collections.abc import Callable
from pathlib import Path
from typing import Any

import pytest

from vorm._assess import assess, judge
from vorm._errors import Error
from vorm._requirements import Requirements
from vorm._run import Run

RUNS = pytest.StashKey[list[Run]]()
REPORTS = pytest.StashKey[list[str]]()


def pytest_addoption(parser: pytest.Parser) -> None:
    group = parser.getgroup("vorm")
    group.addoption(
        "--vorm-report",
        metavar="FILE",
        help="write an HTML report of all runs of vorm_check to FILE",
    )


def pytest_configure(config: pytest.Config) -> None:
    runs: list[Run] = []
    reports: list[str] = []
    config.stash[RUNS] = runs
    config.stash[REPORTS] = reports


@pytest.fixture
def vorm_check(request: pytest.FixtureRequest) -> Callable[..., Run]:
    """vorm.check whose run is part of the report, named after the test; it gives the run."""

    def check(
        requirements: Requirements | str | os.PathLike[str], data: Any, **options: Any
    ) -> Run:
        __tracebackhide__ = True
        run = assess(requirements, data, **{"name": request.node.name, **options})
        request.config.stash[RUNS].append(run)
        judge(run)
        return run

    return check


def pytest_sessionfinish(session: pytest.Session) -> None:
    path = session.config.getoption("--vorm-report")
    if path is None:
        return
    groups: dict[tuple[Any, ...], list[Run]] = {}
    for run in session.config.stash[RUNS]:
        known = run.requirements
        key = (known.name, known.text, *known.parameters.items())
        groups.setdefault(key, []).append(run)
    for number, runs in enumerate(groups.values()):
        target = Path(path)
        if number > 0:
            target = target.with_stem(f"{target.stem}-{number + 1}")
        try:
            Run.joined(runs).to_html(target)
            session.config.stash[REPORTS].append(f"report of the requirements: {target}")
        except Error as error:
            session.exitstatus = pytest.ExitCode.USAGE_ERROR
            session.config.stash[REPORTS].append(f"no report of the requirements: {error}")


def pytest_terminal_summary(terminalreporter: Any, config: pytest.Config) -> None:
    for line in config.stash[REPORTS]:
        terminalreporter.write_line(line)
