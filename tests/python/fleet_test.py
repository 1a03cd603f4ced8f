"""Fleets: on this machine, on a cluster of two processes, and what becomes of them in faults."""

from __future__ import annotations

import json
import os
import random
import signal
import subprocess
import threading
import time
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import dask
import distributed
import numpy as np
import pytest
import vorm
from vorm import fleet

RECORDINGS = int(os.environ.get("VORM_FLEET_RECORDINGS", "400"))

TEXT = """
[parameters]
limit = 20.0
[[assessment]]
name = "slow"
formula = "speed <= $limit"
[[assessment]]
name = "stops"
formula = "speed > 15 -> eventually[0, 2 s](speed < 5)"
"""


@pytest.fixture(scope="module")
def recordings(tmp_path_factory: pytest.TempPathFactory) -> list[str]:
    """Small ones, of which some cannot be read, and some lack a signal."""
    folder = tmp_path_factory.mktemp("recordings")
    chance = random.Random(3)
    paths = []
    for number in range(RECORDINGS):
        path = folder / f"{number}.csv"
        rows = [f"{i / 10},{chance.uniform(0, 21):.2f}" for i in range(50)]
        if number % 37 != 5:
            name = "velocity" if number % 41 == 7 else "speed"
            path.write_text(f"time,{name}\n" + "\n".join(rows) + "\n")
        paths.append(str(path))
    return paths


@pytest.fixture
def client() -> Iterator[Any]:
    with distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, dashboard_address=None
    ) as cluster, distributed.Client(cluster) as client:
        yield client


def told(lines: Any) -> Any:
    """What lines tell of recordings, whoever wrote them."""
    text = json.dumps([{**line, "fingerprint": ""} for line in lines])
    return json.loads(text.replace("a.toml", "requirements"))  # as each calls the requirements


def expected(program: Path, folder: Path, recordings: list[str]) -> list[Any]:
    (folder / "a.toml").write_text(TEXT)
    (folder / "list").write_text("\n".join(recordings))
    subprocess.run(
        [program, "run", "a.toml", "--recordings", "list", "-q", "-f", "jsonl=lines"],
        cwd=folder,
        stdout=subprocess.DEVNULL,
    )
    lines: list[Any] = told(map(json.loads, (folder / "lines").read_text().splitlines()))
    return lines


def times_of(folder: Path) -> dict[str, int]:
    return {path.name: path.stat().st_mtime_ns for path in folder.glob("part-*")}


def test_equals_the_program_and_does_only_what_is_missing(
    program: Path, tmp_path: Path, recordings: list[str], client: Any
) -> None:
    wanted = expected(program, tmp_path, recordings)
    requirements = vorm.parse(TEXT)
    alone = fleet.assess(requirements, recordings)
    assert told(alone.lines()) == wanted

    folder = tmp_path / "parts"
    done: list[tuple[int, ...]] = []
    on_cluster = fleet.assess(
        requirements,
        recordings,
        client,
        batch=23,
        folder=folder,
        progress=lambda *counts: done.append(counts),
    )
    assert told(on_cluster.lines()) == wanted
    assert done[-1] == (len(recordings), len(recordings))
    frame = vorm.assess(requirements, recordings).verdicts
    for run in (alone, on_cluster):
        verdicts = run.verdicts
        assert list(verdicts.columns) == list(frame.columns)
        assert verdicts.astype(frame.dtypes).equals(frame)
        assert run.counts["unreadable"] > 0 and run.counts["ERROR"] > 0
        assert len(run.errors) == run.counts["unreadable"] + run.counts["ERROR"]

    infinite = vorm.parse(
        {
            "assessment": [
                {"name": "true", "formula": "true | speed > 0"},
                {"name": "finite", "formula": "speed > 0"},
            ]
        }
    )
    robustness = fleet.assess(infinite, recordings[:3], robustness=True).verdicts["robustness"]
    frame = vorm.assess(infinite, recordings[:3], robustness=True).verdicts
    assert robustness.equals(frame["robustness"])
    assert np.isinf(robustness[0]) and np.isfinite(robustness[1])

    # Without a part, with a torn one, and with a recording that has changed since.
    before = times_of(folder)
    os.unlink(on_cluster.parts[2])
    (folder / ".torn.part").write_text('{"file": ')
    Path(recordings[0]).touch()
    again = fleet.assess(requirements, recordings, client, batch=23, folder=folder)
    assert told(again.lines()) == wanted
    after = times_of(folder)
    assert len(after) == len(before), "the part of the old state is gone"
    kept = [name for name in before if after.get(name) == before[name]]
    assert len(kept) == len(before) - 2

    # Other requirements have parts of their own.
    stricter = vorm.parse(TEXT, parameters={"limit": 10.0})
    other = fleet.assess(stricter, recordings, client, batch=23, folder=folder)
    assert not set(other.parts) & set(again.parts)
    assert other.counts["FAIL"] > again.counts["FAIL"]
    assert told(again.lines()) == wanted


def test_workers_that_die_change_nothing(
    program: Path, tmp_path: Path, recordings: list[str], client: Any
) -> None:
    wanted = expected(program, tmp_path, recordings)
    client.register_worker_plugin(SlowWorker())
    stop = threading.Event()

    def kill() -> None:
        for _ in range(5):
            if stop.wait(random.uniform(0.2, 1.2)):
                return
            pids = list(client.run(os.getpid).values())
            os.kill(random.choice(pids), signal.SIGKILL)

    killer = threading.Thread(target=kill)
    killer.start()
    run = fleet.assess(vorm.parse(TEXT), recordings, client, batch=10)
    stop.set()
    killer.join()
    assert told(run.lines()) == wanted


def test_a_recording_that_kills_its_workers_is_one_error(
    program: Path, tmp_path: Path, recordings: list[str]
) -> None:
    some = recordings[:40]
    wanted = expected(program, tmp_path, some)
    folder = tmp_path / "parts"
    with dask.config.set({"distributed.scheduler.allowed-failures": 0}), distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, dashboard_address=None
    ) as cluster, distributed.Client(cluster) as client:
        client.register_worker_plugin(DeadlyRecording(some[17]))
        run = fleet.assess(vorm.parse(TEXT), some, client, batch=20, folder=folder)
    lines = told(run.lines())
    assert lines[:17] + lines[18:] == wanted[:17] + wanted[18:]
    assert lines[17]["recording"] == some[17]
    assert "each worker that assessed it died" in lines[17]["error"]
    # It is not tried again, and without the part of its batch it is.
    before = times_of(folder)
    again = fleet.assess(vorm.parse(TEXT), some, batch=20, folder=folder)
    assert told(again.lines()) == lines and times_of(folder) == before
    os.unlink(next(path for path in again.parts if path in lines[17]["error"]))
    assert told(fleet.assess(vorm.parse(TEXT), some, batch=20, folder=folder).lines()) == wanted


def test_what_changed_is_assessed_again(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    requirements = vorm.parse(TEXT)
    passes, fails = "time,speed\n0,1\n1,2\n", "time,speed\n0,1\n1,99\n"

    def failures(*paths: str) -> int:
        return fleet.assess(requirements, paths, folder=tmp_path / "parts").counts["FAIL"]

    # Beside what is no recording, such as a link that leads nowhere.
    drive = tmp_path / "drive"
    drive.mkdir()
    (drive / "notes").symlink_to(tmp_path / "nowhere")
    (drive / "a.csv").write_text(passes)
    assert failures(str(drive)) == 0
    (drive / "a.csv").write_text(passes + "2,99\n")
    assert failures(str(drive)) == 1

    # Relative paths are other files in another folder, even of the same size and time.
    for name, table, count in (("one", passes, 0), ("two", fails.replace("99", "9e9"), 1)):
        folder = tmp_path / name
        folder.mkdir()
        (folder / "a.csv").write_text(table.ljust(40, "\n"))
        os.utime(folder / "a.csv", (0, 0))
        monkeypatch.chdir(folder)
        assert failures("a.csv") == count
    assert len(times_of(tmp_path / "parts")) == 3


def test_workers_refuse_paths_of_another_folder(
    tmp_path: Path, client: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    (tmp_path / "a.csv").write_text("time,speed\n0,99\n")
    with pytest.raises(vorm.Error, match="relative paths are meant in"):
        fleet.assess(vorm.parse(TEXT), ["a.csv"], client)
    assert fleet.assess(vorm.parse(TEXT), [tmp_path / "a.csv"], client).counts["FAIL"] == 1


def test_refuses_what_cannot_be_used_before_it_starts(tmp_path: Path, client: Any) -> None:
    requirements = vorm.parse(TEXT)
    with pytest.raises(vorm.Error, match="standard input"):
        fleet.assess(requirements, ["a.csv", "-"])
    with pytest.raises(vorm.Error, match="paths is one path"):
        fleet.assess(requirements, "a.csv", client)
    with pytest.raises(vorm.Error, match="batch is 0"):
        fleet.assess(requirements, ["a.csv"], client, batch=0)
    with pytest.raises(vorm.Error, match="nobody"):
        fleet.assess(requirements, ["a.csv"], client, only="nobody")
    with pytest.raises(TypeError):
        bool(fleet.assess(requirements, []))
    assert len(fleet.assess(requirements, [], client).verdicts) == 0
    blocked = tmp_path / "file"
    blocked.write_text("")
    with pytest.raises(OSError):
        fleet.assess(requirements, ["a.csv"], client, folder=blocked)


class Patched:
    """The engine as workers know it, with something that happens before each batch."""

    def __init__(self, before: Any) -> None:
        from vorm import _vorm

        self.version = _vorm.version
        self.File = _vorm.File
        self.Run = self
        self._run = _vorm.Run
        self._before = before

    def lines(self, file: Any, paths: list[str], *rest: Any) -> list[str]:
        self._before(paths)
        return self._run.lines(file, paths, *rest)


class SlowWorker(distributed.WorkerPlugin):  # type: ignore[misc]
    """Long enough for workers to be killed within a batch."""

    def setup(self, worker: Any) -> None:
        from vorm import _fleet_batches

        setattr(_fleet_batches, "_vorm", Patched(lambda paths: time.sleep(0.2)))


class DeadlyRecording(distributed.WorkerPlugin):  # type: ignore[misc]
    """A recording that kills the process that assesses it."""

    def __init__(self, path: str) -> None:
        self._path = path

    def setup(self, worker: Any) -> None:
        from vorm import _fleet_batches

        def die(paths: list[str]) -> None:
            if self._path in paths:
                os.kill(os.getpid(), signal.SIGKILL)

        setattr(_fleet_batches, "_vorm", Patched(die))
