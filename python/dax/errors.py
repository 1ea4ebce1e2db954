"""Failures as exceptions."""
from typing import Any

from ._contracts import CLAUSES, TEXTS

__all__ = ["Error"]


class Error(Exception):
    """A call that the library refused or could not finish. Nothing was written.

    function: the C function; status: its code; clauses: what its contract says about the code.
    """

    def __init__(self, function: str, status: int, text: str) -> None:
        self.function = function
        self.status = status
        self.clauses = tuple(CLAUSES.get(function, {}).get(status, ()))
        reasons = ": " + "; or ".join(self.clauses) if self.clauses else ""
        code = f"{status:#x}" if status >= 0 else str(status)
        super().__init__(f"{function} returned {code}, {TEXTS.get(status, text)}{reasons}")
        self._text = text

    def __reduce__(self) -> tuple[Any, ...]:
        return Error, (self.function, self.status, self._text), {"args": self.args}  # comes out of other processes
