// Windows of signals and pictures.
#pragma once

#include <cstdint>

#include "daxi/window_function.h"
#include "frame/tiles.h"

namespace dax {

// `count` weights of a configuration that has been checked.
template <class T>
void windowWeights(int32_t count, const DaxiWindowCfg& cfg, T* weights);

DaxStatus applyWindowBufferSize(DaxiSize size, uint64_t* bytes);
template <class T, class D>
DaxStatus applyWindow(PoolThreads on, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,
                      const DaxiWindowCfg* cfg, void* buffer);

}  // namespace dax
