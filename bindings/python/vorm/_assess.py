"""From requirements and data to a run."""

from __future__ import annotations

import os
from collections.abc import Sequence
from typing import Any

from vorm import _vorm
from vorm._data import paths_in
from vorm._errors import Failed, checked_text, error
from vorm._layout import Layout, columns_of
from vorm._requirements import Requirements, requirements_of
from vorm._run import Run
from vorm._times import Clock


def assess(
    requirements: Requirements | str | os.PathLike[str],
    data: Any,
    *,
    robustness: bool = False,
    only: Sequence[str] | str | None = None,
    skip: Sequence[str] | str | None = None,
    jobs: int = 1,
    nan: str = "missing",
    strict: bool = False,
    name: str = "data",
) -> Run:
    """Assesses data by requirements, which may be the path of an assessment file.

    `data` is a path or a list of paths, one for each recording; a DataFrame whose index is the
    time; a dict of names to a Series, (times, values) or a Signal, each with its own times; or an
    xarray Dataset with the coordinate time. NaN is no sample, unless `nan` is "value". `only` names
    the assessments to run, `skip` those to leave out, also by patterns such as "brake*" and by
    their tags, "tag:release"; `strict` counts as no pass what is not known at some time; `name` is
    what reports call data in memory.

    Raises Error for data in memory that cannot be used. An assessment that cannot be evaluated, or
    a file that cannot be read, is among the errors of the run, and keeps nothing else from being
    assessed.
    """
    known = requirements_of(requirements)
    checked_text(name, "a name")
    chosen = chosen_by(known, only, skip)
    jobs = _jobs(jobs)
    paths = paths_in(data)
    if paths is not None:
        run = _vorm.Run.read(known.file, paths, chosen, jobs, bool(robustness), bool(strict))
        return Run(run, known, [Clock()])
    columns = columns_of(data, Layout(known.file, nan), known.file.names_to_read(chosen))
    recording = _vorm.Recording.for_file(
        known.file, chosen, name, columns.columns, columns.available, columns.date_of_zero
    )
    run = _vorm.Run.assess(known.file, recording, chosen, jobs, bool(robustness), bool(strict))
    return Run(run, known, [columns.clock])


def chosen_by(
    requirements: Requirements, only: Sequence[str] | str | None, skip: Sequence[str] | str | None
) -> list[str]:
    """The names of the assessments that these names, patterns and tags choose."""
    return requirements.file.chosen(_texts(only, "only"), _texts(skip, "skip"))


def _texts(texts: Sequence[str] | str | None, what: str) -> list[str]:
    if not (texts is None or isinstance(texts, (str, Sequence))):
        raise error(f"{what} is {texts!r}", "it is the name of an assessment, or a list of names")
    several = [texts] if isinstance(texts, str) else list(texts or [])
    for each in several:
        checked_text(each, "a name")
    return several


def _jobs(jobs: int) -> int:
    if not isinstance(jobs, int) or not 1 <= jobs <= 1024:
        raise error(f"jobs is {jobs!r}", "it is a number of threads from 1 to 1024")
    return jobs


def check(requirements: Requirements | str | os.PathLike[str], data: Any, **options: Any) -> None:
    """Does nothing where all requirements hold, for tests; `options` are those of assess.

    Raises Failed, with the reasons, where one of the severity error fails or nothing is known of
    it, with `strict` also where it is not known at some time; and Error for input that cannot be
    used.
    """
    __tracebackhide__ = True
    judge(assess(requirements, data, **options))


def judge(run: Run) -> None:
    """Raises what check raises for such a run."""
    __tracebackhide__ = True
    if run.errors:
        raise run.errors[0]
    failed = [one for one in run.not_passed() if one.severity == "error"]
    if failed:
        raise Failed(_message(failed), run)


def _message(failed: Sequence[Any]) -> str:
    """The first line alone has to say what failed: it is all that a summary shows."""
    first = failed[0]
    more = f", and {len(failed) - 1} more" if len(failed) > 1 else ""
    return "\n\n".join([f"{first.summary}{more}", *(result.why() for result in failed)])
