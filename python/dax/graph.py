"""Graphs of poses and points: estimates that agree best with measurements between them.

Vertices are poses of the plane "SE2" (x, y, theta), poses of space "SE3" (t, rotation vector), points "point2" and
"point3", and vectors of up to six numbers "vector". Edges measure them: "relative" poses, "prior" for one vertex,
"landmark" for a point seen from a pose, "projection" for its picture (u, v, fx, fy, cx, cy), "plane" for a point beside
a plane (p, n, d), both of frames of poses. Each has an information matrix and, if wanted, a robust kernel. Results are
the same bits on every machine.
"""
import warnings
from typing import Any, Callable, NamedTuple, Optional, Union

import numpy as np
from numpy.typing import ArrayLike

from ._arrays import Array, choice, numbers, pointer
from ._interface import ffi
from ._library import call, function, memory, needed, text
from ._records import view
from .errors import Error

NAMESPACE = True
__all__ = ["Graph", "Result", "TextError", "read"]

_VERTICES = {"SE2": 0, "SE3": 1, "point2": 2, "point3": 3, "vector": 4}
_EDGES = {"relative": 0, "prior": 1, "landmark": 2, "projection": 3, "plane": 4}
_KERNELS = {"none": 0, "huber": 1, "cauchy": 2, "tukey": 3, "geman-mcclure": 4}
_SOLVERS = {"jacobian": 0, "cg": 2, "normal": 3, "blocks": 4}
_REASONS = {
    1: "words are missing",
    2: "a word is no number, or one out of range",
    3: "the norm of a quaternion is not 1",
    4: "the id of a vertex was there before",
    5: "there is no such vertex, or it is of another kind",
    6: "the information matrix is not positive semi-definite",
}
_NOT_CONVERGED = -34


class TextError(ValueError):
    """A line of a text that is wrong; line: its number, from 1."""

    def __init__(self, line: int, reason: str) -> None:
        super().__init__(f"line {line}: {reason}")
        self.line = line


class Result(NamedTuple):
    """What an optimisation did.

    initial, final: energies before and after. iterations: steps tried, of which `accepted` were taken. converged:
    whether it ended before the limit of iterations. parameters, residuals: how many. components: of the graph; held:
    how many vertices were held where they were since nothing else held their component, first_held: the lowest id of
    those, or None; loose: components that only priors of too low rank hold. weightless: edges to which kernels give
    weight 0.
    """

    initial: float
    final: float
    iterations: int
    accepted: int
    converged: bool
    parameters: int
    residuals: int
    components: int
    held: int
    first_held: Optional[int]
    loose: int
    weightless: int


class Graph:
    """A graph, empty at first.

    >>> g = dax.graph.Graph()
    >>> for k in range(4):
    ...     g.add_vertex(k, "SE2", [k, 0.1 * k, 0])
    >>> for k in range(3):
    ...     g.add_edge("relative", (k, k + 1), [1, 0, 0])
    >>> g.optimise().final < 1e-20, g.estimate(3).round(6) + 0
    (True, array([3., 0., 0.]))
    """

    def __init__(self) -> None:
        self._make(16, 32)

    def _make(self, vertices: int, edges: int) -> None:
        self._record = ffi.new("PrgoGraph*")
        self._memory = memory(needed("PRGO_GRAPH_BufferSize", vertices, edges))
        call("PRGO_GRAPH_Init", self._record, vertices, edges, self._memory)

    def _reserve(self) -> None:
        """Makes room for one more vertex and edge: twice as much where there is none."""
        old, kept = self._record, self._memory
        if old.vertexCount < old.vertexCapacity and old.edgeCount < old.edgeCapacity:
            return
        self._make(2 * old.vertexCapacity, 2 * old.edgeCapacity)
        for k in range(old.vertexCount):
            call("PRGO_GRAPH_AddVertex", self._record, old.vertices + k)
        for k in range(old.edgeCount):
            call("PRGO_GRAPH_AddEdge", self._record, old.edges + k)
        del kept

    def add_vertex(self, id: int, kind: str, estimate: ArrayLike, fixed: bool = False) -> None:
        """Adds a vertex of a kind of those above."""
        values = numbers("estimate", estimate, (None,), np.float64)
        record = ffi.new("PrgoVertex*", {"id": id, "type": choice("kind", kind, _VERTICES), "isFixed": bool(fixed)})
        record.size = len(values)
        _fill("estimate", record.estimate, values, {0: 3, 1: 6, 2: 2, 3: 3}.get(record.type))
        self._reserve()
        call("PRGO_GRAPH_AddVertex", self._record, record)

    def add_edge(
        self,
        kind: str,
        vertices: Union[int, tuple[int, int]],
        measurement: ArrayLike,
        information: Optional[ArrayLike] = None,
        kernel: str = "none",
        width: float = 0.0,
    ) -> None:
        """Adds an edge between two vertices, or for a prior of one. information: a matrix, its diagonal, or 1 by
        default. kernel: "none", "huber", "cauchy", "tukey" or "geman-mcclure", of a width in units of the whitened
        residual, or its default."""
        ends = (vertices, 0) if isinstance(vertices, (int, np.integer)) else tuple(vertices)
        values = numbers("measurement", measurement, (None,), np.float64)
        n = {"projection": 2, "plane": 1}.get(kind, len(values))
        if not 1 <= n <= 6 or len(ends) != 2 or len(values) != {"projection": 6, "plane": 7}.get(kind, n):
            raise ValueError("measurement: not as many numbers as this kind of edge between two vertices has")
        matrix = np.eye(n) if information is None else np.asarray(information, np.float64)
        matrix = np.diag(matrix) if matrix.ndim == 1 else matrix
        if matrix.shape != (n, n) or not np.array_equal(matrix, matrix.T, equal_nan=True):
            raise ValueError(f"information: a symmetric matrix of shape {(n, n)} is needed")
        record = ffi.new("PrgoEdge*", {"vertices": list(ends), "type": choice("kind", kind, _EDGES)})
        record.kernel, record.kernelWidth = choice("kernel", kernel, _KERNELS), width
        self._check_size(record, ends[0], n)
        _fill("measurement", record.measurement, values)
        _fill("information", record.information, matrix[np.triu_indices(n)])
        self._reserve()
        call("PRGO_GRAPH_AddEdge", self._record, record)

    def _check_size(self, record: Any, first: int, n: int) -> None:
        """Refuses a measurement of another size than the edge's, where its first vertex is known."""
        found = self.vertices
        found = found[found["id"] == first] if record.type < 2 else found[:0]
        if len(found) and found["size"][0] != n:
            raise ValueError(f"measurement: {n} numbers, needed are {found['size'][0]}")

    def fix(self, id: int, fixed: bool = True) -> None:
        """Leaves a vertex where it is from now on, or lets it go."""
        call("PRGO_GRAPH_Fix", self._record, id, int(fixed))

    def estimate(self, id: int) -> Array:
        """Where a vertex is."""
        values = np.zeros(6)
        call("PRGO_GRAPH_Estimate", self._record, id, pointer(values, "double"))
        return values[: self._size(id)].copy()

    def set_estimate(self, id: int, estimate: ArrayLike) -> None:
        """Puts a vertex elsewhere."""
        values = numbers("estimate", estimate, (None,), np.float64)
        padded = np.zeros(6)
        padded[: min(len(values), 6)] = values[:6]
        if id in self.vertices["id"] and len(values) != self._size(id):
            raise ValueError(f"estimate: {len(values)} numbers, needed are {self._size(id)}")
        call("PRGO_GRAPH_SetEstimate", self._record, id, pointer(padded, "double"))

    def _size(self, id: int) -> int:
        known = self.vertices
        return int(known["size"][known["id"] == id][0])

    @property
    def vertices(self) -> Array:
        """Records of id, type, size, isFixed, isHeld and estimate, in the order of their addition: a copy."""
        return view("PrgoVertex", self._record.vertices, self._record.vertexCount, self).copy()

    @property
    def edges(self) -> Array:
        """Records of vertices, type, kernel, kernelWidth, measurement and information: a copy."""
        return view("PrgoEdge", self._record.edges, self._record.edgeCount, self).copy()

    @property
    def energy(self) -> float:
        """Half the sum of the kernels of all edges' squared residuals."""
        value = ffi.new("double*")
        call("PRGO_GRAPH_Energy", self._record, value)
        return float(value[0])

    def optimise(
        self,
        solver: str = "normal",
        *,
        max_iterations: int = 100,
        energy_tolerance: float = 1e-12,
        step_tolerance: float = 1e-10,
        initial_damping: float = 1e-6,
        smallest_damping: float = 1e-12,
        damping_factor: float = 10.0,
        verbose: bool = False,
        progress: Optional[Callable[[int, float, float, bool], None]] = None,
    ) -> Result:
        """Moves all vertices that are not fixed to where the energy is least. solver: "normal" equations or "jacobian"
        by sparse Cholesky factors, conjugate gradients "cg", or "blocks" of poses and points. progress(iteration,
        before, after, accepted) is called with the energies of each step; what it raises ends the call."""
        cfg = ffi.new("PrgoCfg*")
        call("PRGO_CORE_DefaultCfg", cfg)
        cfg.solverType, cfg.maxIterations = choice("solver", solver, _SOLVERS), max_iterations
        cfg.energyTolerance, cfg.stepTolerance = energy_tolerance, step_tolerance
        cfg.initialDamping, cfg.smallestDamping = initial_damping, smallest_damping
        cfg.dampingFactor, cfg.verbose = damping_factor, bool(verbose)
        raised: list[BaseException] = []

        def report(iteration: int, before: float, after: float, accepted: int, _: Any) -> int:
            try:
                if progress:
                    progress(iteration, before, after, bool(accepted))
            except BaseException as error:  # handed on below
                raised.append(error)
            return len(raised)

        watcher = ffi.callback("PrgoProgress", report)
        cfg.progress = watcher if progress else ffi.NULL
        result, size = ffi.new("PrgoResult*"), ffi.new("uint64_t*", needed("PRGO_CORE_BufferSize", self._record, cfg))
        status = function("PRGO_CORE_optimize")(self._record, cfg, result, memory(size[0]), size)
        if raised:
            raise raised[0]
        if status not in (0, _NOT_CONVERGED):
            raise Error("PRGO_CORE_optimize", status, text(status))
        if status:
            warnings.warn(f"the limit of {max_iterations} iterations was reached", stacklevel=2)
        return Result(
            result.initialEnergy,
            result.finalEnergy,
            result.iterations,
            result.accepted,
            status == 0,
            result.parameters,
            result.residuals,
            result.components,
            result.heldVertices,
            result.firstHeld if result.heldVertices else None,
            result.looseComponents,
            result.weightlessEdges,
        )

    def marginals(self, ids: ArrayLike) -> list[Array]:
        """Covariances of the estimates of vertices, a matrix each, by the step (of poses X Exp(step)) at the minimum;
        zeros of those that are fixed or held. A graph that does not determine its estimates raises dax.Error.

        >>> g = dax.graph.Graph()
        >>> g.add_vertex(7, "point2", [1, 2])
        >>> g.add_edge("prior", 7, [1, 2], [4, 25])
        >>> g.marginals([7])[0].round(6)
        array([[0.25, 0.  ],
               [0.  , 0.04]])
        """
        wanted = numbers("ids", ids, (None,), np.int64).copy()
        found = np.zeros((len(wanted), 36))
        size = ffi.new("uint64_t*", needed("PRGO_CORE_MarginalsBufferSize", self._record))
        call(
            "PRGO_CORE_Marginals",
            self._record,
            pointer(wanted, "int64_t"),
            len(wanted),
            pointer(found, "double"),
            memory(size[0]),
            size,
        )
        sizes = [self._size(int(each)) for each in wanted]
        return [each[: n * n].reshape(n, n) for each, n in zip(found, sizes)]

    def to_text(self) -> str:
        """The graph in the common text format, one line for each vertex and edge."""
        size, none = ffi.new("uint64_t*"), ffi.new("char[1]")
        status = function("PRGO_GRAPH_WriteText")(self._record, none, size)
        if status not in (0, -32):
            raise Error("PRGO_GRAPH_WriteText", status, text(status))
        content = memory(size[0])
        call("PRGO_GRAPH_WriteText", self._record, content, size)
        return bytes(ffi.buffer(content, size[0])).decode("ascii")


def _fill(name: str, target: Any, values: Array, size: Optional[int] = None) -> None:
    if len(values) > len(target) or (size is not None and len(values) != size):
        raise ValueError(f"{name}: {len(values)} numbers, needed are {size or len(target)}")
    for k, value in enumerate(values):
        target[k] = value


def read(content: Union[str, bytes]) -> Graph:
    """The graph of a text in the common format: VERTEX_SE2, VERTEX_SE3:QUAT, EDGE_SE2, EDGE_SE3:QUAT, FIX and others.
    Lines of other tags are passed over with a warning; a wrong line raises TextError.

    >>> g = dax.graph.read("VERTEX_SE2 0 0 0 0\\nVERTEX_SE2 1 2 0 0\\nEDGE_SE2 0 1 1 0 0 1 0 0 1 0 1")
    >>> g.energy
    0.5
    """
    data = content.encode() if isinstance(content, str) else bytes(content)
    source, info = ffi.from_buffer("char[]", data or b"\n"), ffi.new("PrgoTextInfo*")
    call("PRGO_GRAPH_CountText", source, len(data), info)
    graph = Graph()
    graph._make(max(info.vertices, 1), max(info.edges, 1))
    status = function("PRGO_GRAPH_ReadText")(graph._record, source, len(data), info)
    if info.line and status:
        raise TextError(int(info.line), _REASONS[info.reason])
    if status:
        raise Error("PRGO_GRAPH_ReadText", status, text(status))
    if info.unknown:
        warnings.warn(f"{info.unknown} lines of unknown tags were passed over", stacklevel=2)
    return graph
