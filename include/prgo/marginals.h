/* How sure the estimates of a graph are. */
#ifndef PRGO_MARGINALS_H
#define PRGO_MARGINALS_H

#include "graph.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for PRGO_CORE_Marginals. The order of elimination is found for it, in the graph's own memory. A null
 * pointer, of the graph's memory included -> -21. */
DAX_API int32_t PRGO_CORE_MarginalsBufferSize(const PrgoGraph* graph, uint64_t* bytes);

/* Covariances of the estimates of the vertices ids[0] .. ids[count - 1]: of vertex k a symmetric matrix of its size, row by row,
 * in the first size * size of the numbers covariances[36 k] ...; the other numbers are 0. They are those of the step d (of poses
 * X Exp(d)) at the estimates where the graph is, which should be those of least energy: the diagonal blocks of
 * (sum of rho' J^T Omega J)^-1, without a factor for the size of the residuals. A vertex that is fixed, or held for the gauge
 * (prgo/optimise.h), has zeros. By selected inversion: the time is some times that of an iteration, whatever the count.
 *
 * Checks, in order: a pointer null, of the graph its memory included -> -21; count < 1, or an id that the graph does not
 * have -> -26; buffer too small -> -32, with the need stored in bytes. Then: a derivative not finite -> -31; a pivot below 1e-12
 * of its diagonal element, so that the graph does not determine the estimates -> -33. A failed call writes nothing but the
 * buffer and bytes. Thread-safe on distinct graphs. The same bits on every machine. */
DAX_API int32_t PRGO_CORE_Marginals(const PrgoGraph* graph, const int64_t* ids, int32_t count, double* covariances,
                                    void* buffer, uint64_t* bytes);

DAX_END_DECLS

#endif
