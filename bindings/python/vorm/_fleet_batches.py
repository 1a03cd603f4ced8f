"""Batches of recordings, and the files that hold what became of them."""

from __future__ import annotations

import contextlib
import functools
import glob
import hashlib
import json
import math
import os
import uuid
from collections import Counter
from collections.abc import Iterator, Sequence
from dataclasses import dataclass, replace
from typing import Any

from vorm import _vorm
from vorm._errors import error
from vorm._requirements import Parameter, Requirements

# What a task reads takes a few seconds.
MOST_RECORDINGS = 1000
BYTES_OF_A_BATCH = 200e6
LOOKED_AT = 20


@dataclass(frozen=True)
class Work:
    """What is to be done with each recording, in words that any machine understands."""

    text: str
    name: str
    parameters: tuple[tuple[str, Parameter], ...]
    only: tuple[str, ...]
    robustness: bool
    strict: bool
    explain: bool
    folder: str
    place: str
    """The folder in which relative paths are meant."""

    @property
    def file(self) -> _vorm.File:
        """What the engine knows of the requirements."""
        return _file_of(self.text, self.name, self.parameters)


@functools.lru_cache(maxsize=4)
def _file_of(text: str, name: str, parameters: tuple[tuple[str, Parameter], ...]) -> _vorm.File:
    return Requirements(text, name, dict(parameters)).file


@dataclass(frozen=True)
class Batch:
    """Some recordings that follow one another."""

    start: int
    paths: tuple[str, ...]

    def halves(self) -> list[Batch]:
        middle = len(self.paths) // 2
        return [
            Batch(self.start, self.paths[:middle]),
            Batch(self.start + middle, self.paths[middle:]),
        ]


@dataclass(frozen=True)
class Part:
    """A file with the lines of a batch."""

    start: int
    recordings: int
    path: str
    counts: Counter[str]
    """Of verdicts, and of recordings that could not be used as "unreadable"."""


def batches_of(paths: Sequence[str], size: int | None, cores: int) -> list[Batch]:
    """All paths in batches of that size, or of one that occupies all cores for seconds each."""
    size = size or _fitting_size(paths, cores)
    return [
        Batch(start, tuple(paths[start : start + size])) for start in range(0, len(paths), size)
    ]


def _fitting_size(paths: Sequence[str], cores: int) -> int:
    looked_at = paths[:: max(1, len(paths) // LOOKED_AT)]
    mean = sum(map(_bytes_of, looked_at)) / max(1, len(looked_at))
    by_bytes = int(BYTES_OF_A_BATCH / max(1.0, mean))
    by_cores = math.ceil(len(paths) / (4 * max(1, cores)))
    return max(1, min(MOST_RECORDINGS, by_bytes, by_cores))


def _bytes_of(path: str) -> int:
    return sum(size for _, size, *_ in _state_of(path))


def _state_of(path: str) -> list[tuple[str, int, int, int]]:
    """What tells that files or their rights have changed; nothing of a folder that cannot be read."""
    try:
        if os.path.isdir(path):
            with os.scandir(path) as entries:
                return sorted(_state_of_file(entry.name, entry.path) for entry in entries)
        return [_state_of_file("", path)]
    except OSError:
        return []


def _state_of_file(name: str, path: str) -> tuple[str, int, int, int]:
    try:
        known = os.stat(path)
    except OSError:
        return (name, 0, 0, 0)  # such as a link that leads nowhere
    return (name, known.st_size, known.st_mtime_ns, known.st_ctime_ns)


def assess_batch(work: Work, batch: Batch, jobs: int = 1) -> Part:
    """Assesses a batch into a part of its own, unless the part is there already."""
    are_relative = not all(map(os.path.isabs, batch.paths))
    if are_relative and os.getcwd() != work.place:
        raise error(
            f"relative paths are meant in {work.place}, and a worker works in {os.getcwd()}",
            "give absolute paths",
        )
    path = part_path(work, batch)
    if not os.path.exists(path):
        lines = _vorm.Run.lines(
            work.file,
            list(batch.paths),
            list(work.only),
            jobs,
            work.robustness,
            work.strict,
            work.explain,
        )
        _write(path, lines)
    return _part(batch, path)


def give_up_on(work: Work, batch: Batch, whole: str) -> Part:
    """The part of a batch of one recording that kills each process that assesses it. What is kept of
    it in the end is in the part `whole`."""
    path = part_path(work, batch)
    line = _vorm.Run.error_line(
        work.file,
        batch.paths[0],
        "each worker that assessed it died",
        f"assess it alone to see why; without the file {whole} it is tried again",
        work.strict,
    )
    _write(path, [line])
    return _part(batch, path)


def joined(batch: Batch, path: str, pieces: Sequence[Part]) -> Part:
    """One part of all those that a batch was cut into. These stay: the same recordings may be
    another batch, too."""
    lines: list[str] = []
    for piece in sorted(pieces, key=lambda piece: piece.start):
        with open(piece.path, encoding="utf-8") as file:
            lines.extend(file)
    _write(path, lines)
    return _part(batch, path)


def part_path(work: Work, batch: Batch) -> str:
    """Named by all that its lines depend on: the requirements, and which recordings these are and
    their state."""
    place = "" if all(map(os.path.isabs, batch.paths)) else work.place
    asked = _hash([_vorm.version, repr(replace(work, folder="", place=place)), *batch.paths])
    state = _hash(repr(_state_of(path)) for path in batch.paths)
    return os.path.join(work.folder, f"part-{asked}-{state}.jsonl")


def _hash(texts: Any) -> str:
    digest = hashlib.sha256()
    for text in texts:
        encoded = text.encode(errors="surrogatepass")
        digest.update(len(encoded).to_bytes(8, "little") + encoded)
    return digest.hexdigest()[:24]


def _write(path: str, lines: list[str]) -> None:
    """Whole or not at all; parts of the same batch from before its recordings changed go."""
    folder, name = os.path.split(path)
    written = os.path.join(folder, f".{uuid.uuid4().hex}.part")
    try:
        with open(written, "x", encoding="utf-8") as file:
            file.writelines(lines)
            file.flush()
            os.fsync(file.fileno())
        os.replace(written, path)
    except BaseException:
        with contextlib.suppress(FileNotFoundError):
            os.unlink(written)
        raise
    batch = name.rpartition("-")[0]
    for other in glob.glob(os.path.join(glob.escape(folder), f"{batch}-*.jsonl")):
        if other != path:
            with contextlib.suppress(FileNotFoundError):
                os.unlink(other)


def _part(batch: Batch, path: str) -> Part:
    counts: Counter[str] = Counter()
    recordings = 0
    for line in lines_of(path):
        recordings += 1
        counts["unreadable"] += line["error"] is not None
        counts.update(one["verdict"] for one in line["assessments"])
    if recordings < len(batch.paths):
        raise RuntimeError(f"{path} has {recordings} lines of {len(batch.paths)} recordings")
    return Part(batch.start, len(batch.paths), path, counts)


def lines_of(path: str) -> Iterator[dict[str, Any]]:
    """What each line of a part tells."""
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            yield json.loads(line)
