// Grey reconstruction and what is made of it.
#pragma once

#include <cstdint>

#include "daxi/reconstruct.h"

namespace dax {

template <class T>
DaxStatus reconstructionBufferSize(DaxiSize size, int32_t connectivity, uint64_t* bytes);

template <class T>
DaxStatus regionalBufferSize(DaxiSize size, int32_t connectivity, uint64_t* bytes);

template <bool isErosion, class T>
DaxStatus reconstruct(const T* marker, int32_t markerStep, const T* mask, int32_t maskStep, T* dst, int32_t dstStep,
                      DaxiSize size, int32_t connectivity, void* buffer);

template <class T>
DaxStatus fillHoles(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                    void* buffer);

template <class T>
DaxStatus clearBorder(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity,
                      void* buffer);

template <bool isMinima, class T>
DaxStatus hExtrema(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T h, int32_t connectivity,
                   void* buffer);

template <bool isMinima, class T>
DaxStatus regionalExtrema(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                          int32_t connectivity, void* buffer);

}  // namespace dax
