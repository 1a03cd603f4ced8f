"""Requirements: assessment files, read from a path, a text or a dict."""

from __future__ import annotations

import json
import numbers
import os
from collections.abc import Mapping
from typing import Any

from vorm import _vorm
from vorm._errors import checked_text, error

Parameter = bool | int | float | str


class Requirements:
    """The content of an assessment file. Made by load and parse; can be pickled."""

    def __init__(
        self, text: str, name: str, parameters: Mapping[str, Parameter] | None = None
    ) -> None:
        self._text = text
        self._given = dict(parameters or {})
        self._file = _vorm.File(text, name, _settings(self._given))

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
    def parameters(self) -> dict[str, Parameter]:
        """The values of all parameters, given or as the file declares them."""
        return self._file.parameters

    @property
    def text(self) -> str:
        """The text of the file."""
        return self._text

    @property
    def file(self) -> _vorm.File:
        """What the engine knows of it."""
        return self._file

    def __reduce__(self) -> tuple[Any, ...]:
        return Requirements, (self._text, self.name, self._given)

    def __repr__(self) -> str:
        return f"<Requirements {self.name!r}: {', '.join(map(repr, self.assessments))}>"


def load(
    path: str | os.PathLike[str], *, parameters: Mapping[str, Parameter] | None = None
) -> Requirements:
    """Reads an assessment file. Raises Error, with file, line and column, for what is none.

    `parameters` are values in place of those in its table [parameters], of the same kinds.
    """
    name = path_text(path)
    return Requirements(_vorm.read_text(name), name, parameters)


def path_text(path: Any) -> str:
    """The path as a text."""
    try:
        name = os.fsdecode(path)
    except TypeError:
        raise error(f"{path!r} is no path") from None
    if "\0" in name:
        raise error(f"{name!r} is no path")
    return checked_text(name, "the path")


def parse(
    text: str | Mapping[str, Any], *, parameters: Mapping[str, Parameter] | None = None
) -> Requirements:
    """Requirements from the text of an assessment file, or from a dict of the same keys.

    `parameters` are those of load.
    """
    text = _toml(text) if isinstance(text, Mapping) else text
    text = checked_text(text, "the text of the requirements")
    return Requirements(text, "requirements", parameters)


def requirements_of(given: Requirements | str | os.PathLike[str]) -> Requirements:
    """Those given, or read from the path given."""
    if isinstance(given, Mapping):
        raise error("a dict is no requirements yet", "vorm.parse makes requirements of it")
    return given if isinstance(given, Requirements) else load(given)


def _settings(parameters: Mapping[str, Parameter]) -> list[tuple[str, str]]:
    return [
        (checked_text(name, "the name of a parameter"), _setting(name, value))
        for name, value in parameters.items()
    ]


def _setting(name: str, value: Any) -> str:
    if isinstance(value, str):
        return checked_text(value, f"the parameter {name!r}")
    if isinstance(value, numbers.Real):
        return _toml_value(value)
    raise error(
        f"the parameter {name!r} is of the type {type(value).__name__}",
        "it is a number, a bool or a text",
    )


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
