"""Requirements: assessment files, read from a path, a text or a dict."""

from __future__ import annotations

import json
import numbers
import os
from collections.abc import Mapping
from typing import Any

from vorm import _vorm
from vorm._errors import checked_text, error


class Requirements:
    """The content of an assessment file. Made by load and parse; can be pickled."""

    def __init__(self, text: str, name: str) -> None:
        self._text = text
        self._file = _vorm.File(text, name)

    @property
    def name(self) -> str:
        """The path, or what stands for it in messages."""
        return self._file.name

    @property
    def title(self) -> str:
        """What stands above reports, or an empty text."""
        return self._file.title

    @property
    def assessments(self) -> list[str]:
        """Their names, in the order of the file."""
        return self._file.assessments

    @property
    def text(self) -> str:
        """The text of the file."""
        return self._text

    @property
    def file(self) -> _vorm.File:
        """What the engine knows of it."""
        return self._file

    def __reduce__(self) -> tuple[Any, ...]:
        return Requirements, (self._text, self.name)

    def __repr__(self) -> str:
        return f"<Requirements {self.name!r}: {', '.join(map(repr, self.assessments))}>"


def load(path: str | os.PathLike[str]) -> Requirements:
    """Reads an assessment file. Raises Error, with file, line and column, for what is none."""
    name = path_text(path)
    return Requirements(_vorm.read_text(name), name)


def path_text(path: Any) -> str:
    """The path as a text."""
    try:
        name = os.fsdecode(path)
    except TypeError:
        raise error(f"{path!r} is no path") from None
    if "\0" in name:
        raise error(f"{name!r} is no path")
    return checked_text(name, "the path")


def parse(text: str | Mapping[str, Any]) -> Requirements:
    """Requirements from the text of an assessment file, or from a dict of the same keys."""
    text = _toml(text) if isinstance(text, Mapping) else text
    return Requirements(checked_text(text, "the text of the requirements"), "requirements")


def requirements_of(given: Requirements | str | os.PathLike[str]) -> Requirements:
    """Those given, or read from the path given."""
    if isinstance(given, Mapping):
        raise error("a dict is no requirements yet", "vorm.parse makes requirements of it")
    return given if isinstance(given, Requirements) else load(given)


def _toml(table: Mapping[str, Any]) -> str:
    return "".join(f"{_toml_text(str(key))} = {_toml_value(table[key])}\n" for key in table)


def _toml_value(value: Any) -> str:
    if isinstance(value, Mapping):
        pairs = (f"{_toml_text(str(key))} = {_toml_value(value[key])}" for key in value)
        return f"{{ {', '.join(pairs)} }}"
    if isinstance(value, (list, tuple)):
        return f"[{', '.join(map(_toml_value, value))}]"
    if isinstance(value, bool):
        return str(value).lower()
    if isinstance(value, numbers.Integral):
        return str(int(value))
    if isinstance(value, numbers.Real):
        return repr(float(value))
    if isinstance(value, str):
        return _toml_text(value)
    raise error(f"a value of the type {type(value).__name__} has no place among requirements")


def _toml_text(text: str) -> str:
    # Both formats escape alike, but for the one control character that JSON leaves as it is.
    return json.dumps(text, ensure_ascii=False).replace("\x7f", "\\u007f")
