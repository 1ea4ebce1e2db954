"""What the solvers call back: functions of the user's, as C callbacks."""
from typing import Any, Callable, Optional

import numpy as np
from numpy.typing import ArrayLike

from .._arrays import numbers, pointer
from .._interface import ffi
from .._library import call, function, memory, text
from ..errors import Error
from .results import Trace, Vector
from .sparse import Filler

Residuals = Callable[[Vector], ArrayLike]
Update = Callable[[Vector, Vector], ArrayLike]

_RAISED = 1  # status of a callback that raised an exception
_TOO_SMALL = -32
_MODEST = 1 << 26  # bytes to try first where the worst pattern would need more


class Memo:
    """A function of x that remembers its last value, and counts its calls. `keep` turns what it returns, which may be
    one array that all calls write, into what stays."""

    def __init__(self, function: Callable[[Vector], Any], keep: Callable[[Any], Any] = np.array) -> None:
        self.function, self.keep, self.calls = function, keep, 0
        self.at: Optional[bytes] = None

    def __call__(self, x: Vector) -> Any:
        place = x.tobytes()
        if self.at != place:
            self.calls += 1
            self.value = self.keep(self.function(x))
            self.at = place
        return self.value


class Callbacks:
    """The callbacks of one call, and the first exception that one of them raised."""

    def __init__(self, update: Optional[Update], rate: Callable[[Vector], float] = lambda r: float(r @ r) / 2) -> None:
        """rate: the energy of residuals."""
        self.trace, self.rate, self.differencing = Trace(), rate, False
        self.error: Optional[BaseException] = None
        self.user = ffi.new("char[1]")
        self.kept: list[Any] = []
        self.update = self._update(update)

    def callback(self, ctype: str, function: Callable[..., None]) -> Any:
        """A function as a callback; an exception ends the call that it was called from."""

        def guarded(*arguments: Any) -> int:
            function(*arguments)
            return 0

        made = ffi.callback(ctype, guarded, error=_RAISED, onerror=self._keep)
        self.kept.append(made)
        return made

    def _keep(self, kind: Any, error: BaseException, trace: Any) -> None:
        self.error = self.error or error.with_traceback(trace)

    def _update(self, update: Optional[Update]) -> Any:
        def apply(x: Any, step: Any, n: int, user: Any) -> None:
            at, by = array_at(x, n), array_at(step, n)
            if not self.differencing:
                self.trace.stepped(by)
            if update is None:
                at += by
            else:
                at[:] = numbers("update", update(at.copy(), by.copy()), (n,), np.float64)

        return self.callback("PrmtUpdateFunction", apply)

    def residuals(self, function: Residuals, size: int) -> Any:
        def apply(x: Any, n: int, m: int, user: Any, values: Any) -> None:
            result = array_at(values, m)
            result[:] = numbers("residuals", function(array_at(x, n).copy()), (size,), np.float64)
            if not self.differencing:
                self.trace.evaluated(self.rate(result))

        return self.callback("PrmtResidualFunction", apply)

    def energy(self, function: Callable[[Vector], float]) -> Any:
        def apply(x: Any, n: int, m: int, user: Any, value: Any) -> None:
            value[0] = float(function(array_at(x, n).copy()))
            self.trace.evaluated(value[0])

        return self.callback("PrmtEnergyFunction", apply)

    def matrix(self, ctype: str, function: Callable[..., Any], filler: Filler) -> Any:
        def apply(x: Any, n: int, m: int, user: Any, matrix: Any) -> None:
            filler.fill(matrix, function(array_at(x, n).copy()))

        return self.callback(ctype, apply)

    def normal(self, function: Callable[[Vector, float, Any], Any], filler: Filler) -> Any:
        def apply(x: Any, n: int, damping: float, user: Any, matrix: Any, right: Any) -> None:
            filler.fill(matrix, function(array_at(x, n).copy(), damping, right))

        return self.callback("PrmtNormalFunction", apply)

    def differences(self, functions: Any, n: int, m: int) -> Any:
        scratch = memory(8 * (2 * m + 2 * n))

        def apply(x: Any, n: int, m: int, user: Any, matrix: Any) -> None:
            address = ffi.cast("double*", scratch)
            self.differencing = True
            try:
                call("PRMT_JacNum_Process_f64", x, n, m, user, functions.residuals, functions.update, matrix, address)
            finally:
                self.differencing = False

        return self.callback("PrmtJacobianFunction", apply)

    def call(self, name: str, *arguments: Any) -> int:
        """The status of a solver, 0 or too small a buffer; everything else is raised."""
        status = int(function(name)(*arguments))
        if self.error is not None:
            raise self.error
        if status not in (0, _TOO_SMALL):
            raise Error(name, status, text(status))
        return status

    def solve(self, name: str, max_elements: int, x: Vector, *arguments: Any) -> float:
        """Calls a solver with as much memory as it turns out to need; returns the norm of the last step."""
        size = min(max_elements, _MODEST)
        error, step_norm = ffi.new("double*"), ffi.new("double*")
        while True:
            has = ffi.new("uint64_t*", size)
            self.trace.restart()
            status = self.call(name, pointer(x, "double"), *arguments, error, step_norm, memory(size), has)
            if status == 0:
                return float(step_norm[0])
            size = min(max_elements, max(int(has[0]), 2 * size))


def array_at(address: Any, count: int) -> Vector:
    """Doubles at an address, as an array in their memory."""
    return np.frombuffer(ffi.buffer(address, 8 * count), np.float64)
