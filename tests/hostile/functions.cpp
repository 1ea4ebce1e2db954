// The list is made from the public headers at build time; the compiler supplies the types.
#include "dax.h"
#include "daxi.h"
#include "tests/hostile/function.h"
#include "zur.h"
#if __has_include("dax3dpcl.h")
#include "dax3dpcl.h"
#endif
#if __has_include("prmt.h")
#include "prmt.h"
#endif

namespace dax::hostile {

const std::vector<Function>& allFunctions() {
#define HOSTILE_PROTOTYPE(name, returns, ...) describe(#name, returns, &(name), {__VA_ARGS__}),
  static const std::vector<Function> functions = {
#include "prototypes.inc"
  };
#undef HOSTILE_PROTOTYPE
  return functions;
}

}  // namespace dax::hostile
