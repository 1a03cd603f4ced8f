"""What is raised: input that cannot be used, and requirements that do not hold."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

if TYPE_CHECKING:
    from vorm._run import Run


class Error(ValueError):
    """Input that cannot be used: what is wrong, where, and what to do about it.

    As a text it is the whole message. What is not known of `file`, `line`, `column`, `excerpt` (the
    line in question) and `advice` is None.
    """

    def __init__(
        self,
        text: str,
        file: str | None = None,
        line: int | None = None,
        column: int | None = None,
        excerpt: str | None = None,
        advice: str | None = None,
    ) -> None:
        super().__init__(text)
        self.file = file
        self.line = line
        self.column = column
        self.excerpt = excerpt
        self.advice = advice

    def __reduce__(self) -> tuple[Any, ...]:
        parts = (self.file, self.line, self.column, self.excerpt, self.advice)
        return type(self), (self.args[0], *parts)


def error(message: str, advice: str | None = None) -> Error:
    """An error of data in memory, whose advice stands below what is wrong."""
    text = message if advice is None else f"{message}\n  {advice}"
    return Error(text, advice=advice)


def checked_text(text: Any, what: str) -> str:
    """The text, if it is one that the engine reads: UTF-8."""
    if not isinstance(text, str):
        raise error(f"{what} is no text, but of the type {type(text).__name__}")
    try:
        text.encode()
    except UnicodeEncodeError:
        raise error(f"{what} is no valid text: {text!r} has half a character") from None
    return text


class Failed(AssertionError):
    """Requirements do not hold. `run` tells all that became of them; another process gets none."""

    def __init__(self, text: str, run: Run | None) -> None:
        super().__init__(text)
        self.run = run

    def __reduce__(self) -> tuple[Any, ...]:
        return Failed, (self.args[0], None)
