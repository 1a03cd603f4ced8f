"""The wheel works in an environment that has nothing of the build."""

from __future__ import annotations

import os
import subprocess
from pathlib import Path

CODE = """
import vorm
print(vorm.intervals("x < 2", {"x": ([0, 1], [1, 3])}).values.tolist())
names = {line.split()[-1] for line in open("/proc/self/maps") if "/lib" in line}
print(*sorted(n for n in names if any(l in n for l in ("vorm", "date-tz", "pugixml", "zstd"))))
"""


def test_a_wheel_brings_its_libraries(tmp_path: Path) -> None:
    environment = {name: text for name, text in os.environ.items() if name != "PYTHONPATH"}

    def run(*command: str) -> str:
        done = subprocess.run(
            command, env=environment, cwd=tmp_path, capture_output=True, text=True
        )
        assert done.returncode == 0, done.stdout + done.stderr
        return done.stdout

    python = str(tmp_path / "venv" / "bin" / "python")
    run("/usr/bin/python3", "-m", "venv", "--system-site-packages", "venv")
    run(python, "-m", "pip", "install", "--quiet", "--no-index", "--no-deps", os.environ["WHEEL"])
    intervals, libraries = run(python, "-c", CODE).splitlines()
    assert intervals == "[[1.0, 1.0]]"
    assert len(libraries.split()) >= 6
    assert all(name.startswith(str(tmp_path)) for name in libraries.split()), libraries
    assert "--vorm-report" in run(python, "-m", "pytest", "--help")
