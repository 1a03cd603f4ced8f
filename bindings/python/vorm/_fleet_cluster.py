"""Batches on the workers of a cluster."""

from __future__ import annotations

import functools
import os
from collections.abc import Callable, Sequence
from concurrent.futures import CancelledError
from typing import Any

from vorm._errors import error
from vorm._fleet_batches import Batch, Part, Work, assess_batch, give_up_on, joined, part_path


class _CutBatch:
    """A batch that is done piece by piece."""

    def __init__(self, batch: Batch, path: str) -> None:
        self._batch = batch
        self.path = path
        self._pieces: list[Part] = []

    def add(self, piece: Part) -> Part | None:
        """The part of all of it, once this is the last piece."""
        self._pieces.append(piece)
        if sum(one.recordings for one in self._pieces) < len(self._batch.paths):
            return None
        return joined(self._batch, self.path, self._pieces)


def on_cluster(
    client: Any, work: Work, batches: Sequence[Batch], done: Callable[[Part], None]
) -> None:
    """Hands each part to `done` in any order.

    A worker that dies is replaced by the cluster, and its batches go to others. Where that happens
    to a batch again and again, it is halved, until one recording is left, which is tried once more
    when nothing else runs: one whose workers die even then is given up. What became of the pieces
    is joined, so that a later call finds the part of the batch.
    """
    from distributed import KilledWorker, as_completed

    running: dict[Any, Batch] = {}

    def start(some: Sequence[Batch]) -> list[Any]:
        futures = client.map(functools.partial(assess_batch, work), some, pure=False)
        running.update(zip(futures, some))
        return list(futures)

    cut: dict[Batch, _CutBatch] = {}  # the batches from which a piece comes, by piece
    suspects: list[Batch] = []

    def finish(batch: Batch, part: Part) -> None:
        whole = cut.pop(batch, None)
        joint = whole.add(part) if whole else part
        if joint is not None:
            done(joint)

    try:
        # Without results: it would wait for ever for a task whose result was lost with its worker,
        # and that then fails.
        completed = as_completed(start(batches))
        for future in completed:
            batch = running[future]
            try:
                finish(batch, future.result())
            except KilledWorker:
                path = part_path(work, batch)
                if os.path.exists(path):  # only what the worker said of it was lost
                    finish(batch, assess_batch(work, batch))
                elif len(batch.paths) > 1:
                    whole = cut.pop(batch, None) or _CutBatch(batch, path)
                    halves = batch.halves()
                    cut.update((half, whole) for half in halves)
                    completed.update(start(halves))
                else:
                    suspects.append(batch)
            del running[future]
        for batch in suspects:
            (future,) = start([batch])
            try:
                finish(batch, future.result())
            except KilledWorker:
                path = cut[batch].path if batch in cut else part_path(work, batch)
                finish(batch, give_up_on(work, batch, path))
            del running[future]
    except CancelledError:
        raise error(
            "the cluster has dropped tasks, or was closed",
            "parts that are done stay: call again with the same folder",
        ) from None
    finally:
        if running:
            client.cancel(list(running))
