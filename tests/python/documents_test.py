"""What the documents show in Python runs, and gives what stands below it.

A block that begins with ```python runs in one namespace with those above it, in a folder with the
simulated drive; a block of text right below it is what a notebook would show. One that begins with
```python untested does not run.
"""

from __future__ import annotations

import ast
import os
import re
import subprocess
from contextlib import redirect_stdout
from io import StringIO
from pathlib import Path
from typing import Any

import pytest

ROOT = Path(__file__).resolve().parents[2]
BLOCK = re.compile(r"^```python\n(.*?)^```\n(?:\n```text\n(.*?)^```\n)?", re.DOTALL | re.MULTILINE)


def shown(code: str, names: dict[str, Any]) -> str:
    """What a notebook shows below the code: its output, and the value of a last expression."""
    tree = ast.parse(code)
    last = tree.body.pop() if tree.body and isinstance(tree.body[-1], ast.Expr) else None
    output = StringIO()
    with redirect_stdout(output):
        exec(compile(tree, "block", "exec"), names)
        if isinstance(last, ast.Expr):
            value = eval(compile(ast.Expression(last.value), "block", "eval"), names)
            print("" if value is None else repr(value), end="")
    return output.getvalue()


def blocks_of(name: str) -> list[tuple[str, str]]:
    return BLOCK.findall((ROOT / name).read_text())


# Who runs the blocks of a language, by the first word of the fence.
RUN_HERE = {
    "README.md",
    "docs/python.md",
    "docs/python_files.md",
    "docs/fleets.md",
    "docs/exactness.md",
}
RUN_ELSEWHERE = {
    ("README.md", "toml"): "tests/examples/check_readme",
    ("README.md", "cmake"): "tests/consumer/CMakeLists.txt",
    ("docs/tutorial.md", "console"): "tests/examples/check_tutorial",
    ("docs/tutorial.md", "toml"): "tests/examples/check_tutorial",
}


def test_every_block_has_a_runner() -> None:
    pages = [ROOT / "README.md", *(ROOT / "docs").rglob("*.md")]
    for page in pages:
        name = str(page.relative_to(ROOT))
        for language in re.findall(r"^```(\w+)", page.read_text(), re.MULTILINE):
            is_run = language == "python" and name in RUN_HERE
            assert (
                is_run or language == "text" or (name, language) in RUN_ELSEWHERE
            ), f"nobody runs the blocks in {language} of {name}"


@pytest.mark.parametrize("name", sorted(RUN_HERE))
def test_documents_show_what_happens(
    name: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    (tmp_path / "drive.toml").write_text((ROOT / "examples/drive/drive.toml").read_text())
    subprocess.run([os.environ["SIMULATE_DRIVE"], "drive"], check=True, stdout=subprocess.DEVNULL)
    names: dict[str, Any] = {}
    blocks = blocks_of(name)
    assert blocks
    for code, text in blocks:
        result = shown(code, names)
        if text:
            assert result.rstrip() == text.rstrip(), code
