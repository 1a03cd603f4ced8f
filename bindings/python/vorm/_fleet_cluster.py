"""Batches on the workers of a cluster."""

from __future__ import annotations

import functools
from collections.abc import Callable, Sequence
from concurrent.futures import CancelledError
from typing import Any

from vorm._errors import error
from vorm._fleet_batches import Batch, Part, Work, assess_batch, give_up_on


def on_cluster(
    client: Any, work: Work, batches: Sequence[Batch], done: Callable[[Part], None]
) -> None:
    """Hands each part to `done` in any order.

    A worker that dies is replaced by the cluster, and its batches go to others. Where that happens
    to a batch again and again, it is halved, until one recording is left, which is tried once more
    when nothing else runs: one whose workers die even then is given up.
    """
    from distributed import KilledWorker, as_completed

    running: dict[Any, Batch] = {}

    def start(some: Sequence[Batch]) -> list[Any]:
        futures = client.map(functools.partial(assess_batch, work), some, pure=False)
        running.update(zip(futures, some))
        return list(futures)

    suspects: list[Batch] = []
    try:
        # Without results: it would wait for ever for a task whose result was lost with its worker,
        # and that then fails.
        completed = as_completed(start(batches))
        for future in completed:
            batch = running[future]
            try:
                done(future.result())
            except KilledWorker:
                if len(batch.paths) > 1:
                    completed.update(start(batch.halves()))
                else:
                    suspects.append(batch)
            del running[future]
        for batch in suspects:
            (future,) = start([batch])
            try:
                done(future.result())
            except KilledWorker:
                done(give_up_on(work, batch))
            del running[future]
    except CancelledError:
        raise error(
            "the cluster has dropped tasks, or was closed",
            "parts that are done stay: call again with the same folder",
        ) from None
    finally:
        if running:
            client.cancel(list(running))
