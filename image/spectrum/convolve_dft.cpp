#include "image/spectrum/convolve_dft.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/spectrum/spectrum.h"
#include "image/transform/fourier_plan.h"

namespace dax {
namespace {

constexpr int32_t kMaxConvolveSide = 1 << 20;

DaxiSize paddedSize(DaxiSize a, DaxiSize b) {
  return {smoothSide(a.width + b.width - 1), smoothSide(a.height + b.height - 1)};
}

// Sums over all rectangles that begin in the corner of a picture; row and column 0 are 0.
struct CornerSums {
  double* sums;
  DaxiSize size;
  double at(int32_t x, int32_t y) const { return sums[ptrdiff_t{y} * (size.width + 1) + x]; }
  // Over the columns x0..x1 - 1 and rows y0..y1 - 1.
  double over(int32_t x0, int32_t x1, int32_t y0, int32_t y1) const {
    return (at(x1, y1) - at(x0, y1)) - (at(x1, y0) - at(x0, y0));
  }
  double all() const { return at(size.width, size.height); }
};

uint64_t cornerCount(DaxiSize size) {
  return (static_cast<uint64_t>(size.width) + 1) * (static_cast<uint64_t>(size.height) + 1);
}

template <class T>
struct ConvolveBuffer {
  ConvolveBuffer(DaxiSize srcSize, DaxiSize kernelSize) : padded(paddedSize(srcSize, kernelSize)) {
    uint64_t planBytes = 0, workBytes = 0;
    dftPlanSize<T>(padded, &planBytes);
    dftBufferSize<T>(padded, &workBytes);
    plan = layout.add<uint8_t>(planBytes);
    work = layout.add<uint8_t>(workBytes);
    picture = layout.add<T>(pixelsOf(padded));
    for (auto& spectrum : spectra) spectrum = layout.add<ComplexOf<T>>(pixelsOf(halfSpectrum(padded)));
    srcSums = layout.add<double>(cornerCount(srcSize));
    kernelSums = layout.add<double>(cornerCount(kernelSize));
  }
  BufferLayout layout;
  DaxiSize padded;
  BufferPiece<uint8_t> plan, work;
  BufferPiece<T> picture;
  BufferPiece<ComplexOf<T>> spectra[2];
  BufferPiece<double> srcSums, kernelSums;
};

// A source, perhaps turned by half a circle.
template <class T>
struct Operand2d {
  const T* data;
  int32_t step;
  DaxiSize size;
  bool isTurned;
  T at(int32_t x, int32_t y) const {
    return isTurned ? rowAt(data, step, size.height - 1 - y)[size.width - 1 - x] : rowAt(data, step, y)[x];
  }
};

template <class T>
CornerSums cornerSums(const Operand2d<T>& from, double* sums) {
  const ptrdiff_t step = ptrdiff_t{from.size.width} + 1;
  std::fill_n(sums, step, 0.0);
  for (int32_t y = 0; y < from.size.height; ++y) {
    double* const row = sums + (y + 1) * step;
    double sum = row[0] = 0;
    for (int32_t x = 0; x < from.size.width; ++x) sum += from.at(x, y), row[x + 1] = row[x + 1 - step] + sum;
  }
  return {sums, from.size};
}

// The mean as a T, by a call of its own: where GCC 12 inlines two of them, its vectors for x86-64 skip the rounding to
// single precision on the way back to doubles.
template <class T>
[[gnu::noinline]] T meanOf(const CornerSums& sums) {
  return static_cast<T>(sums.all() / static_cast<double>(pixelsOf(sums.size)));
}

// Without the mean, zeros around it.
template <class T>
void pad(const Operand2d<T>& from, T mean, DaxiSize padded, T* to) {
  for (int32_t y = 0; y < padded.height; ++y, to += padded.width) {
    const int32_t width = y < from.size.height ? from.size.width : 0;
    for (int32_t x = 0; x < width; ++x) to[x] = from.at(x, y) - mean;
    std::fill(to + width, to + padded.width, T{0});
  }
}

DaxiSize partSize(DaxiSize srcSize, DaxiSize kernelSize, int32_t part) {
  const int32_t w = kernelSize.width - 1, h = kernelSize.height - 1;
  if (part == DAXI_CONVOLVE_SAME) return srcSize;
  const int32_t sign = part == DAXI_CONVOLVE_FULL ? 1 : -1;
  return {srcSize.width + sign * w, srcSize.height + sign * h};
}

// Of the full result, the coordinate at which a part begins.
int32_t partStart(int32_t kernelSide, int32_t part) {
  if (part == DAXI_CONVOLVE_FULL) return 0;
  return part == DAXI_CONVOLVE_SAME ? (kernelSide - 1) / 2 : kernelSide - 1;
}

DaxStatus checkSides(DaxiSize srcSize, DaxiSize kernelSize, DaxStatus code) {
  DAX_REQUIRE(atLeast(srcSize, 1) && atMost(srcSize, kMaxConvolveSide), code);
  DAX_REQUIRE(atLeast(kernelSize, 1) && atMost(kernelSize, kMaxConvolveSide), code);
  return DAX_STS_OK;
}

DaxStatus checkPart(DaxiSize srcSize, DaxiSize kernelSize, int32_t part, DaxStatus code) {
  DAX_REQUIRE_OK(checkSides(srcSize, kernelSize, code));
  DAX_REQUIRE(part >= DAXI_CONVOLVE_FULL && part <= DAXI_CONVOLVE_VALID, DAX_STS_BAD_PARAM);
  const bool fits = kernelSize.width <= srcSize.width && kernelSize.height <= srcSize.height;
  DAX_REQUIRE(part != DAXI_CONVOLVE_VALID || fits, code);
  return DAX_STS_OK;
}

// s = s' + p and k = k' + q: sum s k = sum s' k' + p sum k + q sum s - p q n over the n pixels on which the kernel lies.
struct AddedBack {
  CornerSums src, kernel;
  double srcMean, kernelMean;
  double at(int32_t x, int32_t y) const {
    const int32_t x0 = std::max(x - kernel.size.width + 1, 0), x1 = std::min(x + 1, src.size.width);
    const int32_t y0 = std::max(y - kernel.size.height + 1, 0), y1 = std::min(y + 1, src.size.height);
    const double count = static_cast<double>(x1 - x0) * (y1 - y0);
    const double ofKernel = kernel.over(x - x1 + 1, x - x0 + 1, y - y1 + 1, y - y0 + 1);
    return (srcMean * ofKernel + kernelMean * src.over(x0, x1, y0, y1)) - srcMean * kernelMean * count;
  }
};

template <class T>
DaxStatus convolvePadded(PoolThreads on, const Operand2d<T>& src, const Operand2d<T>& kernel, T srcMean, T kernelMean,
                         const ConvolveBuffer<T>& at, void* buffer) {
  const DaxiSize padded = at.padded, half = halfSpectrum(padded);
  T* const picture = at.picture.in(buffer);
  void *const plan = at.plan.in(buffer), *const work = at.work.in(buffer);
  DAX_REQUIRE_OK(dftPlanInit<T>(padded, plan));
  const Operand2d<T>* const operands[2] = {&src, &kernel};
  const T means[2] = {srcMean, kernelMean};
  ComplexOf<T>* const spectra[2] = {at.spectra[0].in(buffer), at.spectra[1].in(buffer)};
  for (int i = 0; i < 2; ++i) {
    pad(*operands[i], means[i], padded, picture);
    DAX_REQUIRE_OK(dftRealForward<T>(on, picture, padded.width, spectra[i], half.width, padded, T{1}, plan, work));
  }
  DAX_REQUIRE_OK(
      productOfSpectra<false>(on, spectra[0], half.width, spectra[1], half.width, spectra[0], half.width, half));
  const auto scale = static_cast<T>(1 / (static_cast<double>(padded.width) * padded.height));
  return dftRealBackward<T>(on, spectra[0], half.width, picture, padded.width, padded, scale, plan, work);
}

}  // namespace

template <bool kCorrelate, class T>
DaxStatus convolveDft(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, const T* kernel,
                      int32_t kernelStep, DaxiSize kernelSize, T* dst, int32_t dstStep, int32_t part, void* buffer) {
  DAX_REQUIRE(src && kernel && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPart(srcSize, kernelSize, part, DAX_STS_BAD_SIZE));
  const DaxiSize dstSize = partSize(srcSize, kernelSize, part);
  DAX_REQUIRE(srcSize.width <= srcStep && kernelSize.width <= kernelStep, DAX_STS_BAD_STEP);
  DAX_REQUIRE(dstSize.width <= dstStep, DAX_STS_BAD_STEP);

  const ConvolveBuffer<T> at(srcSize, kernelSize);
  const Operand2d<T> a = {src, srcStep, srcSize, false}, b = {kernel, kernelStep, kernelSize, kCorrelate};
  const CornerSums srcSums = cornerSums(a, at.srcSums.in(buffer)), kernelSums = cornerSums(b, at.kernelSums.in(buffer));
  const T srcMean = meanOf<T>(srcSums), kernelMean = meanOf<T>(kernelSums);
  DAX_REQUIRE_OK(convolvePadded(on, a, b, srcMean, kernelMean, at, buffer));

  const AddedBack means = {srcSums, kernelSums, srcMean, kernelMean};
  const int32_t left = partStart(kernelSize.width, part), top = partStart(kernelSize.height, part);
  const T* const picture = at.picture.in(buffer);
  return runRows(on, dstSize.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const T* const from = picture + ptrdiff_t{y + top} * at.padded.width + left;
      T* const to = rowAt(dst, dstStep, y);
      for (int32_t x = 0; x < dstSize.width; ++x) to[x] = static_cast<T>(from[x] + means.at(x + left, y + top));
    }
  });
}

#define DAX_CONVOLVE_DFT(T)                                                                                        \
  template DaxStatus convolveDft<false>(PoolThreads, const T*, int32_t, DaxiSize, const T*, int32_t, DaxiSize, T*, \
                                        int32_t, int32_t, void*);                                                  \
  template DaxStatus convolveDft<true>(PoolThreads, const T*, int32_t, DaxiSize, const T*, int32_t, DaxiSize, T*,  \
                                       int32_t, int32_t, void*);
DAX_CONVOLVE_DFT(float)
DAX_CONVOLVE_DFT(double)
#undef DAX_CONVOLVE_DFT

template <class T>
static DaxStatus convolveBufferSize(DaxiSize srcSize, DaxiSize kernelSize, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSides(srcSize, kernelSize, DAX_STS_BAD_PARAM));
  return ConvolveBuffer<T>(srcSize, kernelSize).layout.store(bytes);
}

}  // namespace dax

DaxStatus DAXI_ConvolveDftSize(DaxiSize srcSize, DaxiSize kernelSize, int32_t part, DaxiSize* dstSize) {
  DAX_REQUIRE(dstSize, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPart(srcSize, kernelSize, part, DAX_STS_BAD_PARAM));
  *dstSize = dax::partSize(srcSize, kernelSize, part);
  return DAX_STS_OK;
}

DaxStatus DAXI_ConvolveDftBufferSize_32f(DaxiSize srcSize, DaxiSize kernelSize, uint64_t* bytes) {
  return dax::convolveBufferSize<float>(srcSize, kernelSize, bytes);
}

DaxStatus DAXI_ConvolveDftBufferSize_64f(DaxiSize srcSize, DaxiSize kernelSize, uint64_t* bytes) {
  return dax::convolveBufferSize<double>(srcSize, kernelSize, bytes);
}
