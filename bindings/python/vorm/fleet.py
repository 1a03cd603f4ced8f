"""Requirements on many recordings, on this machine or on a cluster.

>>> from vorm import fleet
>>> run = fleet.assess("limits.toml", paths, client=distributed.Client("scheduler:8786"))
>>> run.verdicts
"""

from __future__ import annotations

import math
import os
import tempfile
from collections import Counter
from collections.abc import Callable, Iterable, Iterator, Sequence
from typing import TYPE_CHECKING, Any

from vorm._assess import chosen_by
from vorm._errors import error
from vorm._fleet_batches import Part, Work, assess_batch, batches_of, lines_of
from vorm._fleet_cluster import on_cluster
from vorm._requirements import Requirements, path_text, requirements_of

if TYPE_CHECKING:
    import pandas as pd

__all__ = ["Fleet", "assess"]


class Fleet:
    """What became of requirements on many recordings. Tables are read from files when asked for."""

    def __init__(self, parts: Sequence[Part], folder: Any) -> None:
        self._parts = sorted(parts, key=lambda part: part.start)
        self._folder = folder
        """A temporary one lives as long as this object."""

    @property
    def parts(self) -> list[str]:
        """The files with the lines, in the order of the recordings."""
        return [part.path for part in self._parts]

    @property
    def counts(self) -> dict[str, int]:
        """How many verdicts of each kind there are, and how many recordings are unreadable."""
        total: Counter[str] = Counter()
        for part in self._parts:
            total.update(part.counts)
        kinds = ("PASS", "FAIL", "NO_RESULT", "ERROR", "unreadable")
        return {kind: total[kind] for kind in kinds}

    def lines(self) -> Iterator[dict[str, Any]]:
        """What each line of `assess run --format jsonl` tells, in the order of the recordings."""
        for part in self._parts:
            yield from lines_of(part.path)

    @property
    def verdicts(self) -> pd.DataFrame:
        """A row for each recording and assessment, with the columns of Run.verdicts, in seconds."""
        keys = ["verdict", "severity", "first_failure", "passed", "failed", "no_result"]
        columns = [*keys[:-1], "open", "robustness"]
        return self._table(
            ["recording", "assessment", *columns],
            lambda line: [
                [line["recording"], one["name"], *(one[key] for key in keys), _robustness(one)]
                for one in line["assessments"]
            ],
        ).astype({name: float for name in columns[2:]})

    @property
    def errors(self) -> pd.DataFrame:
        """A row for each recording that cannot be used (its assessment is None), and for each
        assessment that cannot be evaluated."""
        return self._table(
            ["recording", "assessment", "error"],
            lambda line: [
                [line["recording"], name, problem]
                for name, problem in [
                    (None, line["error"]),
                    *((one["name"], one["error"]) for one in line["assessments"]),
                ]
                if problem is not None
            ],
        )

    def _table(
        self, columns: list[str], rows_of: Callable[[dict[str, Any]], list[list[Any]]]
    ) -> pd.DataFrame:
        import pandas as pd

        rows = [row for line in self.lines() for row in rows_of(line)]
        return pd.DataFrame(rows, columns=columns)

    def __bool__(self) -> bool:
        raise TypeError("verdicts are PASS, FAIL or NO_RESULT: look at .counts or .verdicts")

    def __len__(self) -> int:
        return sum(part.recordings for part in self._parts)

    def __repr__(self) -> str:
        counts = ", ".join(f"{count} {name}" for name, count in self.counts.items() if count > 0)
        return f"<Fleet of {len(self)}: {counts or 'nothing'}>"


def _robustness(assessment: dict[str, Any]) -> float | None:
    """JSON has no number for what is infinite."""
    infinite = {"infinite": math.inf, "minus infinite": -math.inf}
    known: float | None = assessment["robustness"]
    return infinite.get(assessment["robustness_error"], known)


def assess(
    requirements: Requirements | str | os.PathLike[str],
    paths: Iterable[str | os.PathLike[str]],
    client: Any = None,
    batch: int | None = None,
    folder: str | os.PathLike[str] | None = None,
    *,
    robustness: bool = False,
    explain: bool = False,
    only: Sequence[str] | str | None = None,
    skip: Sequence[str] | str | None = None,
    strict: bool = False,
    progress: Callable[[int, int], None] | None = None,
) -> Fleet:
    """Assesses recordings, each a file or a folder, by the workers of a cluster.

    `client` is one of Dask distributed; without it all cores of this machine work. `batch` is how
    many recordings a task has, by default as many as take some seconds. What became of each batch
    goes into a file of `folder`, whole or not at all; with the same folder a later call does only
    what is missing, was interrupted, or has changed: requirements, options, and the sizes, times and
    rights of the recordings' files. All machines must know the paths and the folder by the same names.
    Without a folder the files are temporary, which is for workers of this machine. `progress` is
    called with how many recordings are done, and with the number of all. With `explain` the lines
    explain failures. The other options are those of vorm.assess.

    A recording that cannot be read, or whose workers die, is among the errors and keeps no other
    from being assessed. Raises Error for requirements and options that cannot be used, and what the
    workers raise otherwise, such as for a full disk; parts that are done stay.
    """
    known = requirements_of(requirements)
    chosen = chosen_by(known, only, skip)
    if isinstance(paths, (str, os.PathLike)):
        raise error("paths is one path", "it is a list of paths: one for each recording")
    names = [path_text(path) for path in paths]
    if "-" in names:
        raise error("'-' is standard input", "give the recording as a file")
    if batch is not None and (not isinstance(batch, int) or batch < 1):
        raise error(f"batch is {batch!r}", "it is a number of recordings, at least 1")
    temporary = tempfile.TemporaryDirectory(prefix="vorm-fleet-") if folder is None else None
    place = temporary.name if temporary else os.path.abspath(path_text(folder))
    os.makedirs(place, exist_ok=True)
    work = Work(
        known.text,
        known.name,
        tuple(known._given.items()),
        tuple(chosen),
        bool(robustness),
        bool(strict),
        bool(explain),
        place,
        os.getcwd(),
    )
    parts: list[Part] = []

    def done(part: Part) -> None:
        if not os.path.exists(part.path):
            raise error(
                f"{part.path} was written by a worker and is not seen here",
                "give a folder that all machines know by the same name",
            )
        parts.append(part)
        if progress is not None:
            progress(sum(one.recordings for one in parts), len(names))

    cores = sum(client.ncores().values()) if client is not None else os.cpu_count() or 1
    batches = batches_of(names, batch, cores)
    if client is not None:
        on_cluster(client, work, batches, done)
    else:
        for each in batches:
            done(assess_batch(work, each, cores))
    if sum(part.recordings for part in parts) != len(names):
        raise RuntimeError("some recordings were lost on the way")
    return Fleet(parts, temporary)
