/* Optimisation of graphs: the estimates of least energy, by the solvers of prmt.h.
 *
 *   solverType  solver                     linear system
 *   0           PRMT_LM_Process_f64        Jacobian, sparse Cholesky of J^T J
 *   2           PRMT_LM_CG_Process_f64     Jacobian, conjugate gradients
 *   3           PRMT_LM_HMSP_Process_f64   normal equations, sparse Cholesky: the default, and the fastest
 *   any other   PRMT_LM_HBLK_Process_f64   blocks of poses and of points, Schur complement. Without points dense
 *
 * All have the same minima: energy, gradient and weights of kernels are exact in each.
 *
 * Gauge: measurements between vertices leave a component of the graph free to move as a whole. Where no vertex of a component
 * is fixed and none has a prior, the pose of lowest id is held (of a component without poses the vertex of lowest id), for
 * this call; isHeld of the vertex and the result tell. Priors that do not determine the component leave what they leave; nothing
 * is held then, the damping keeps the equations regular, and the result counts such components when no single one of their priors is of
 * full rank on a vertex of the largest size.
 *
 * Projections alone leave the scale free besides: then, of the pose of second lowest id, that number of the step is held that lies
 * most along the way from the first pose.
 *
 * Scale: before the first step each variable is multiplied by a power of two that brings the diagonal of J^T J into [1/2, 2),
 * so that damping and stepTolerance mean the same in any unit. The solvers' tolerance of energy is energyTolerance times the
 * energy at the start; when that falls more than a thousandfold, the solver goes on with the tolerance of the energy reached, at most
 * three times.
 *
 * Checks, in order: a pointer null, of a graph its memory included -> -21; a field of cfg out of its range -> -26; buffer
 * too small -> -32. Then: the energy at the start not finite -> -31; normal equations that cannot be solved -> -33;
 * maxIterations reached -> -34. Estimates and the result are written with 0 and -34 only. Thread-safe on distinct graphs. Results are
 * the same bits on every machine. */
#ifndef PRGO_OPTIMISE_H
#define PRGO_OPTIMISE_H

#include "graph.h"

DAX_BEGIN_DECLS

/* Told after each iteration: its number from 0, the energy before it and after it, and whether the step was accepted.
 * A value other than 0 ends the call, which returns it and changes nothing. */
typedef int32_t (*PrgoProgress)(int32_t iteration, double before, double after, int32_t isAccepted, void* user);

typedef struct PrgoCfg {
  int32_t solverType;     /* as above; default 3 */
  int32_t maxIterations;  /* positive; default 100 */
  double energyTolerance; /* share of the energy; 0..1; default 1e-12 */
  double stepTolerance;   /* of the scaled variables; at least 0; default 1e-10 */
  double initialDamping;  /* at least 0; default 1e-6 */
  double smallestDamping; /* at least 0; default 1e-12 */
  double dampingFactor;   /* at least 1; default 10 */
  uint8_t verbose;        /* 0 or 1; default 0. 1: the solver prints its iterations to standard output */
  PrgoProgress progress;  /* may be null; default null */
  void* user;             /* for progress; may be null */
} PrgoCfg;

typedef struct PrgoResult {
  double initialEnergy;
  double finalEnergy;
  double stepNorm;         /* of the last accepted step, in scaled variables; 0 without one */
  int32_t iterations;      /* steps tried */
  int32_t accepted;        /* steps taken */
  int32_t parameters;      /* n: numbers that were free */
  int32_t residuals;       /* m: numbers measured */
  int32_t components;      /* of the graph */
  int32_t heldVertices;    /* for the gauge */
  int64_t firstHeld;       /* lowest id of those; -1 without one */
  int32_t heldScales;      /* components of pictures alone, of which a number of a second pose was held */
  int32_t looseComponents; /* without a fixed vertex, with priors none of which is of full rank */
  int32_t weightlessEdges; /* edges on which the kernel has weight 0 at the end: outliers, or a bad start */
  int32_t firstWeightless; /* lowest index of those; -1 without one */
} PrgoResult;

/* Writes the defaults. A null pointer -> -21. */
DAX_API int32_t PRGO_CORE_DefaultCfg(PrgoCfg* cfg);

/* Bytes that PRGO_CORE_optimize needs for this graph and configuration. The order of elimination is found for it, in the
 * graph's own memory, so this takes about as long as an iteration; of solver type 2, and of others than 0, 2 and 3, only sizes
 * count. What those others need beyond 1 GB for a dense system -> -32, with the need stored. Checks as above. */
DAX_API int32_t PRGO_CORE_BufferSize(const PrgoGraph* graph, const PrgoCfg* cfg, uint64_t* bytes);

/* Optimises the estimates of all vertices that are not fixed. bytes: the size of buffer; with -32 the size needed is
 * stored. A graph without edges, or without free vertices, is left as it is, with 0. */
DAX_API int32_t PRGO_CORE_optimize(PrgoGraph* graph, const PrgoCfg* cfg, PrgoResult* result, void* buffer,
                                   uint64_t* bytes);

DAX_END_DECLS

#endif
