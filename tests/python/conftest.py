"""What the tests of the module share."""

from __future__ import annotations

import os
from pathlib import Path

import pytest

pytest_plugins = ["pytester"]


@pytest.fixture(scope="session")
def program() -> Path:
    """The program of the same build."""
    return Path(os.environ["ASSESS"])
