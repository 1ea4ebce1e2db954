// Which twin of a kernel runs.
//
// Kernels lie in namespace portable; their NEON twins, of the same names and signatures, in namespace neon, in a header
// that ends in _neon.h. Without NEON kernels that header only includes its portable sibling, and neon is an alias of
// portable: callers write `usesNeon(isa) ? neon::row : portable::row` and need no #if.
#pragma once

#include "frame/cpu_feature.h"

#if !DAX_HAVE_NEON
namespace dax {
namespace portable {}
namespace neon = portable;
}  // namespace dax
#endif
