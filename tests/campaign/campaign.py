"""What the pieces of the campaign share: the program, its input, and what went wrong."""

from __future__ import annotations

import json
import math
import os
import subprocess
import sys
import tempfile
from collections.abc import Callable
from html.parser import HTMLParser
from pathlib import Path
from xml.etree import ElementTree

ROOT = Path(__file__).resolve().parent.parent.parent
BUILT = ROOT / "build" / "release" / "apps" / "assess" / "assess"
ASSESS = str(Path(os.environ.get("VORM_ASSESS", BUILT)).resolve())
# The same input then gives the same page.
ENVIRONMENT = os.environ | {"SOURCE_DATE_EPOCH": "86400"}

REQUIREMENTS = """\
[signals]
speed = { interpolation = "linear" }

[[assessment]]
name = "slow"
formula = "speed <= 29"

[[assessment]]
name = "brakes work"
formula = "brake > 40 -> eventually[0, 2 s](speed < 12)"

[[assessment]]
name = "never triggered"
formula = "brake > 100 -> speed > 0"
"""


class Findings:
    """What does not hold: told as it is found, and in the end by the exit code."""

    def __init__(self) -> None:
        self._count = 0

    def require(self, holds: bool, what: str) -> None:
        if not holds:
            self._count += 1
            print(f"FAILED: {what}", file=sys.stderr, flush=True)

    def exit_code(self) -> int:
        return 1 if self._count else 0


def write_recording(path: Path, rows: int, seed: int) -> None:
    lines = ["time,speed,brake"]
    for row in range(rows):
        speed = 20 + 10 * math.sin(row / 7 + seed)
        lines.append(f"{row / 10},{speed:.3f},{(row * 7 + seed) % 50}")
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def write_input(folder: Path, recordings: int, rows: int) -> list[str]:
    """Requirements in `a.toml` and recordings, of which the paths are given back."""
    (folder / "a.toml").write_text(REQUIREMENTS, encoding="utf-8")
    paths = [f"r{number}.csv" for number in range(recordings)]
    for number, path in enumerate(paths):
        write_recording(folder / path, rows, number)
    return paths


def assess(folder: Path, *arguments: str) -> subprocess.CompletedProcess[bytes]:
    return subprocess.run(
        [ASSESS, *arguments], cwd=folder, env=ENVIRONMENT, check=False, capture_output=True
    )


def content(path: Path) -> bytes | None:
    """Nothing where there is no file."""
    return path.read_bytes() if path.exists() else None


def temporaries(folder: Path) -> list[str]:
    """The names under which reports are written before they take their place."""
    return [name for name in os.listdir(folder) if name.endswith(".part")]


class _Islands(HTMLParser):
    """Collects the data of the plots of a page."""

    def __init__(self) -> None:
        super().__init__()
        self._is_inside = False
        self.texts: list[str] = []

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        self._is_inside = tag == "script" and ("type", "application/json") in attrs

    def handle_data(self, data: str) -> None:
        if self._is_inside:
            self.texts.append(data)
            self._is_inside = False


def require_complete(name: str, text: bytes, recordings: int) -> None:
    """Throws where a report that ends in the suffix of that name is not whole."""
    if name.endswith(".json"):
        complete = len(json.loads(text)["recordings"]) == recordings
    elif name.endswith(".xml"):
        complete = len(list(ElementTree.fromstring(text).iter("testsuite"))) == recordings
    elif name.endswith(".html"):
        islands = _Islands()
        islands.feed(text.decode("utf-8"))
        signals = [json.loads(island)["signals"] for island in islands.texts]
        complete = text.endswith(b"</body>\n</html>\n") and len(signals) == recordings
    else:
        complete = b" passed, " in text.rstrip(b"\n").rsplit(b"\n", 1)[-1]
    if not complete:
        raise SystemExit(f"the run that nothing interrupts gives a {name} that is not whole")


def campaign(piece: Callable[[Path, Findings], None]) -> int:
    """Runs a piece in a folder of its own."""
    findings = Findings()
    with tempfile.TemporaryDirectory(prefix="campaign_") as folder:
        piece(Path(folder), findings)
    return findings.exit_code()


def print_figures(heads: list[str], rows: list[list[str]]) -> None:
    """A table in Markdown."""
    widths = [max(map(len, column)) for column in zip(heads, *rows)]
    for cells in [heads, ["-" * width for width in widths], *rows]:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(cells, widths)) + " |")
