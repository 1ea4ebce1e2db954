// Spectra number by number.
#pragma once

#include <cstdint>

#include "daxi/spectrum.h"
#include "frame/tiles.h"

namespace dax {

struct MagnitudeOp;
struct PhaseOp;
struct LogSpectrumOp;

template <class C>
using PartOf = decltype(C::re);

template <class Op, class C>
DaxStatus ofSpectrum(PoolThreads on, const C* src, int32_t srcStep, PartOf<C>* dst, int32_t dstStep, DaxiSize size);

template <bool kConjugate, class C>
DaxStatus productOfSpectra(PoolThreads on, const C* src1, int32_t step1, const C* src2, int32_t step2, C* dst,
                           int32_t dstStep, DaxiSize size);

template <class T>
DaxStatus shiftQuadrants(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                         int32_t back);

}  // namespace dax
