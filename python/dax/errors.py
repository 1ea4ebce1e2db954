"""Failures as exceptions."""
from ._contracts import CLAUSES


class Error(Exception):
    """A call that the library refused or could not finish. Nothing was written.

    function: the C function; status: its code; clauses: what its contract says about the code.
    """

    def __init__(self, function, status, text):
        self.function = function
        self.status = status
        self.clauses = tuple(CLAUSES.get(function, {}).get(status, ()))
        reasons = ": " + "; or ".join(self.clauses) if self.clauses else ""
        super().__init__(f"{function} returned {status:#x}, {text}{reasons}")
