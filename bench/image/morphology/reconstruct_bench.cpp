#include "daxi/reconstruct.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/thin.h"
#include "daxi/watershed.h"

namespace {

using bench::Image;
using bench::kSize;

std::shared_ptr<std::vector<double>> bufferOf(uint64_t bytes) {
  return std::make_shared<std::vector<double>>(bytes / sizeof(double) + 1);
}

// Corridors that wind over the whole image, rising from their start: each pixel has to wait for the one before it.
Image<uint8_t> corridors() {
  const Image<uint8_t> image(kSize);
  for (int32_t y = 0; y < kSize.height; ++y) {
    uint8_t* const row = image.data() + static_cast<size_t>(y) * static_cast<size_t>(kSize.width);
    for (int32_t x = 0; x < kSize.width; ++x) row[x] = y % 2 == 0 || x == (y % 4 == 1 ? kSize.width - 1 : 0) ? 200 : 0;
  }
  return image;
}

template <class T>
bench::Task prepareHMaxima(const Image<T>& from, T h, DaxStatus (*query)(DaxiSize, int32_t, uint64_t*),
                           DaxStatus (*function)(const T*, int32_t, T*, int32_t, DaxiSize, T, int32_t, void*)) {
  const Image<T> to(kSize);
  uint64_t bytes = 0;
  bench::require(query(kSize, 8, &bytes));
  const auto buffer = bufferOf(bytes);
  return {
      [=] { bench::require(function(from.data(), kSize.width, to.data(), kSize.width, kSize, h, 8, buffer->data())); }};
}

// From one pixel at the start of the corridors.
bench::Task prepareCorridors() {
  const Image<uint8_t> mask = corridors(), marker(kSize), to(kSize);
  marker.data()[0] = 200;
  uint64_t bytes = 0;
  bench::require(DAXI_ReconstructDilateBufferSize_8u(kSize, 4, &bytes));
  const auto buffer = bufferOf(bytes);
  return {[=] {
    bench::require(DAXI_ReconstructDilate_8u_C1R(marker.data(), kSize.width, mask.data(), kSize.width, to.data(),
                                                 kSize.width, kSize, 4, buffer->data()));
  }};
}

template <class Function>
bench::Task prepareMask(DaxStatus (*query)(DaxiSize, uint64_t*), Function function) {
  const Image<uint8_t> from = bench::smoothBlobMask();
  const Image<uint8_t> to(kSize);
  uint64_t bytes = 0;
  bench::require(query(kSize, &bytes));
  const auto buffer = bufferOf(bytes);
  return {
      [=] { bench::require(function(from.data(), kSize.width, to.data(), kSize.width, kSize, 0, buffer->data())); }};
}

bench::Task prepareFillHoles() {
  const Image<uint8_t> from = bench::smoothBlobMask();
  const Image<uint8_t> to(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_FillHolesBufferSize_8u(kSize, 8, &bytes));
  const auto buffer = bufferOf(bytes);
  return {[=] {
    bench::require(DAXI_FillHoles_8u_C1R(from.data(), kSize.width, to.data(), kSize.width, kSize, 8, buffer->data()));
  }};
}

// A marker every 40 rows and columns.
bench::Task prepareWatershed() {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<int32_t> labels(kSize);
  uint64_t bytes = 0;
  bench::require(DAXI_WatershedBufferSize_8u32s(kSize, 8, &bytes));
  const auto buffer = bufferOf(bytes);
  return {[=] {
    std::fill(labels.pixels->begin(), labels.pixels->end(), 0);
    for (size_t i = 0; i < labels.pixels->size(); i += 76840) labels.data()[i] = static_cast<int32_t>(i) + 1;
    bench::require(
        DAXI_Watershed_8u32s_C1R(from.data(), kSize.width, labels.data(), kSize.width, kSize, 8, buffer->data()));
  }};
}

const bench::Own operations[] = {
    {"h-maxima of noise, 8u", 0,
     [] {
       return prepareHMaxima<uint8_t>(bench::noise<uint8_t>(), 40, DAXI_HMaximaBufferSize_8u, DAXI_HMaxima_8u_C1R);
     }},
    {"h-maxima of noise, 32f", 0,
     [] { return prepareHMaxima<float>(bench::noise<float>(), 40, DAXI_HMaximaBufferSize_32f, DAXI_HMaxima_32f_C1R); }},
    {"reconstruction of winding corridors, 8u", 0, prepareCorridors},
    {"holes of blobs, 8u", 0, prepareFillHoles},
    {"thinning of blobs", 0, [] { return prepareMask(DAXI_ThinBufferSize_8u, DAXI_Thin_8u_C1R); }},
    {"watershed of noise, 8u", 0, prepareWatershed},
};

}  // namespace
