/* How the library's functions are declared: C linkage and, on ELF, default visibility. Everything else stays hidden. */
#ifndef DAX_API_H
#define DAX_API_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define DAX_BEGIN_DECLS extern "C" {
#define DAX_END_DECLS }
#else
#define DAX_BEGIN_DECLS
#define DAX_END_DECLS
#endif

#define DAX_API __attribute__((visibility("default")))
/* A function that the host exports and the library imports. Weak: a host without it gets a single-threaded library. */
#define DAX_HOST_IMPORT __attribute__((visibility("default"), weak))

#endif
