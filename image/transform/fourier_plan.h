// Discrete Fourier transforms for the library's other families: a plan, made once in the caller's memory, and workers
// that use it. They trust their arguments: sides 1..2^26, no null pointer, memory as large as the queries say.
//
// Forward is X(u, v) = sum x(x, y) e^(-2 pi i (u x / W + v y / H)), backward has e^(+...). What `scale` says is multiplied
// once at the end: 1 leaves the sums as they are, 1 / (W H) backward undoes forward. Steps count elements.
//
// All sides work; those without a prime factor above 7 are several times faster (smoothSide).
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"
#include "image/transform/dft_types.h"

namespace dax {

// A plan serves the complex and the real transforms of one size and type, in both directions and on any number of threads at
// once. It may be copied. Its address is a multiple of 8, its bytes are those of the query:
// 0x10000015 when they do not fit a signed 64-bit integer. T is float or double.
template <class T>
DaxStatus dftPlanSize(DaxiSize size, uint64_t* bytes);
template <class T>
DaxStatus dftPlanInit(DaxiSize size, void* plan);

// The work buffer of any of the transforms of this size, forms on a pool too; aligned as by malloc.
template <class T>
DaxStatus dftBufferSize(DaxiSize size, uint64_t* bytes);

// W x H complex numbers to as many; dst may be src, with the same step. The status is the pool's, 0 without one.
template <class T>
DaxStatus dftComplex(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep,
                     DaxiSize size, bool backward, T scale, const void* plan, void* buffer);

// W x H real numbers to the W / 2 + 1 first columns of their spectrum; src and dst do not overlap.
template <class T>
DaxStatus dftRealForward(PoolThreads on, const T* src, int32_t srcStep, ComplexOf<T>* dst, int32_t dstStep,
                         DaxiSize size, T scale, const void* plan, void* buffer);

// The real picture of such a half spectrum, which is kept. The imaginary parts of what columns 0 and (of even W) W / 2
// are after the backward transform along y are ignored. `size` is that of the picture; src and dst do not overlap.
template <class T>
DaxStatus dftRealBackward(PoolThreads on, const ComplexOf<T>* src, int32_t srcStep, T* dst, int32_t dstStep,
                          DaxiSize size, T scale, const void* plan, void* buffer);

}  // namespace dax
