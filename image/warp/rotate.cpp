#include "image/warp/rotate.h"

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/warp/rotate_neon.h"
#include "image/warp/rotate_portable.h"

namespace dax {
namespace {

constexpr bool isQuarter(int32_t quarters) {
  return quarters % 2 == 1;
}

// --- Checks ---

template <class... Planes>
DaxStatus checkThere(DaxiSize size, const Planes&... planes) {
  DAX_REQUIRE((... && planes.isThere()), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

DaxStatus checkAxis(int32_t axis) {
  DAX_REQUIRE(axis >= DAXI_MIRROR_COLUMNS && axis <= DAXI_MIRROR_BOTH, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkQuarters(int32_t quarters) {
  DAX_REQUIRE(quarters >= 0 && quarters <= 3, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class Void>
DaxStatus checkRow(const MovedPlanes<Void>& planes, int32_t width) {
  DAX_REQUIRE(rowFits(width, planes.step, planes.channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

DaxStatus checkSquare(DaxiSize size) {
  DAX_REQUIRE(size.width == size.height, DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

// --- Planes ---

template <class Pixel, class Void>
MovedRows<Pixel> rowsOf(const MovedPlanes<Void>& planes, int32_t plane) {
  return {static_cast<typename MovedRows<Pixel>::Byte*>(planes.data[plane]),
          ptrdiff_t{planes.step} * planes.elementBytes};
}

// Calls use(a pixel of the size) -> DaxStatus.
template <class Use>
DaxStatus withPixel(int32_t elementBytes, int32_t channels, const Use& use) {
  const auto withElement = [&](auto element) {
    using Element = decltype(element);
    return channels == 1 ? use(MovedPixel<Element, 1>{}) : use(MovedPixel<Element, 3>{});
  };
  switch (elementBytes) {
    case 1:
      return withElement(uint8_t{});
    case 2:
      return withElement(uint16_t{});
    case 4:
      return withElement(uint32_t{});
    default:
      return withElement(uint64_t{});
  }
}

// Calls use(rows of the source, rows of the destination, first, end) for bands of the source's rows of all planes.
template <class Use>
DaxStatus forEachPlane(PoolThreads on, const MovedFrom& src, const MovedTo& dst, int32_t height, const Use& use) {
  return withPixel(src.elementBytes, src.channels, [&](auto pixel) {
    using Pixel = decltype(pixel);
    return runRows(on, height, [&](int32_t first, int32_t end) {
      for (int32_t k = 0; k < src.count; ++k) use(rowsOf<const Pixel>(src, k), rowsOf<Pixel>(dst, k), first, end);
    });
  });
}

template <class Use>
DaxStatus forEachPlane(const MovedTo& image, const Use& use) {
  return withPixel(image.elementBytes, image.channels, [&](auto pixel) -> DaxStatus {
    for (int32_t k = 0; k < image.count; ++k) use(rowsOf<decltype(pixel)>(image, k));
    return DAX_STS_OK;
  });
}

// --- Mirroring ---

template <class Pixel>
void reverseRow(const Pixel* src, Pixel* dst, int32_t count, int32_t isa) {
  usesNeon(isa) ? neon::reversePixels(src, dst, count) : portable::reversePixels(src, dst, count);
}

// Columns, rows, both or none of them in reverse order.
DaxStatus mirrorBy(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size, bool columns, bool rows) {
  return forEachPlane(on, src, dst, size.height,
                      [&, isa = currentIsa()](auto from, auto to, int32_t first, int32_t end) {
                        const auto target = rows ? to.upwards(size.height) : to;
                        for (int32_t y = first; y < end; ++y) {
                          if (columns) {
                            reverseRow(from[y], target[y], size.width, isa);
                          } else {
                            std::copy_n(from[y], size.width, target[y]);
                          }
                        }
                      });
}

// Exchanges left[i] and right[count - 1 - i], of runs that are apart.
template <class Pixel>
void exchangeReversed(Pixel* left, Pixel* right, int32_t count, int32_t isa) {
  constexpr int32_t kChunk = 128;
  Pixel chunk[kChunk];
  for (int32_t done = 0; done < count;) {
    const int32_t n = std::min(kChunk, count - done);
    Pixel* const other = right + (count - done - n);
    std::copy_n(left + done, n, chunk);
    reverseRow(other, left + done, n, isa);
    reverseRow(chunk, other, n, isa);
    done += n;
  }
}

template <class Pixel>
void reverseInPlace(Pixel* row, int32_t width, int32_t isa) {
  exchangeReversed(row, row + (width - width / 2), width / 2, isa);
}

template <class Pixel>
void mirrorColumns(MovedRows<Pixel> rows, DaxiSize size) {
  for (int32_t y = 0; y < size.height; ++y) reverseInPlace(rows[y], size.width, currentIsa());
}

template <class Pixel>
void mirrorUpsideDown(MovedRows<Pixel> rows, DaxiSize size, bool reverses) {
  for (int32_t y = 0; y < size.height / 2; ++y) {
    Pixel *const upper = rows[y], *const lower = rows[size.height - 1 - y];
    if (reverses) {
      exchangeReversed(upper, lower, size.width, currentIsa());
    } else {
      std::swap_ranges(upper, upper + size.width, lower);
    }
  }
  if (reverses && size.height % 2 == 1) reverseInPlace(rows[size.height / 2], size.width, currentIsa());
}

// --- Rows that become columns ---

// Tiles of at most 4 KiB: the lines of the cache that hold their columns are used whole before they go.
template <class Pixel>
constexpr int32_t kTileSide = sizeof(Pixel) == 1    ? 64
                              : sizeof(Pixel) <= 4  ? 32
                              : sizeof(Pixel) <= 16 ? 16
                                                    : 8;

template <class Pixel>
void transposeOneTile(MovedRows<const Pixel> src, MovedRows<Pixel> dst, int32_t width, int32_t height, int32_t isa) {
  usesNeon(isa) ? neon::transposeTile(src, dst, width, height) : portable::transposeTile(src, dst, width, height);
}

// Where the tile at i begins: what is left of `end` is at least as much as vectors take, where there is so much from `first` on.
int32_t tileStart(int32_t i, int32_t first, int32_t end) {
  constexpr int32_t kMinSide = 16;
  return std::max(first, std::min(i, end - kMinSide));
}

// dst(y, x) = src(x, y) for rows first..end - 1 of the source. Tiles are four times as high as wide: high ones begin less often.
template <class Pixel>
void transposeRows(MovedRows<const Pixel> src, MovedRows<Pixel> dst, int32_t width, int32_t first, int32_t end) {
  constexpr int32_t kWidth = kTileSide<Pixel>, kHeight = 4 * kWidth;
  const int32_t isa = currentIsa();
  for (int32_t row = first; row < end; row += kHeight) {
    const int32_t y = tileStart(row, first, end), height = std::min(row + kHeight, end) - y;
    for (int32_t column = 0; column < width; column += kWidth) {
      const int32_t x = tileStart(column, 0, width);
      transposeOneTile(src.from(x, y), dst.from(y, x), std::min(column + kWidth, width) - x, height, isa);
    }
  }
}

// Exchanges the tiles on the two sides of the diagonal.
template <class Pixel>
void transposeSquare(MovedRows<Pixel> rows, int32_t side) {
  constexpr int32_t kSide = kTileSide<Pixel>;
  const int32_t isa = currentIsa();
  Pixel kept[kSide * kSide];
  const MovedRows<Pixel> tile{reinterpret_cast<uint8_t*>(kept), kSide * sizeof(Pixel)};
  for (int32_t y = 0; y < side; y += kSide) {
    const int32_t height = std::min(kSide, side - y);
    for (int32_t x = y; x < side; x += kSide) {
      const int32_t width = std::min(kSide, side - x);
      const MovedRows<Pixel> right = rows.from(x, y), left = rows.from(y, x);
      transposeOneTile(right.readOnly(), tile, width, height, isa);
      if (x > y) transposeOneTile(left.readOnly(), right, height, width, isa);
      for (int32_t i = 0; i < width; ++i) std::copy_n(tile[i], height, left[i]);
    }
  }
}

}  // namespace

// --- Workers ---

DaxStatus mirrorPixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size, int32_t axis) {
  DAX_REQUIRE_OK(checkThere(size, src, dst));
  DAX_REQUIRE_OK(checkAxis(axis));
  DAX_REQUIRE_OK(checkRow(src, size.width));
  DAX_REQUIRE_OK(checkRow(dst, size.width));
  return mirrorBy(on, src, dst, size, axis != DAXI_MIRROR_ROWS, axis != DAXI_MIRROR_COLUMNS);
}

DaxStatus mirrorPixels(const MovedTo& image, DaxiSize size, int32_t axis) {
  DAX_REQUIRE_OK(checkThere(size, image));
  DAX_REQUIRE_OK(checkAxis(axis));
  DAX_REQUIRE_OK(checkRow(image, size.width));
  return forEachPlane(image, [&](auto rows) {
    axis == DAXI_MIRROR_COLUMNS ? mirrorColumns(rows, size) : mirrorUpsideDown(rows, size, axis == DAXI_MIRROR_BOTH);
  });
}

DaxStatus transposePixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size) {
  DAX_REQUIRE_OK(checkThere(size, src, dst));
  DAX_REQUIRE_OK(checkRow(src, size.width));
  DAX_REQUIRE_OK(checkRow(dst, size.height));
  return forEachPlane(on, src, dst, size.height, [&](auto from, auto to, int32_t first, int32_t end) {
    transposeRows(from, to, size.width, first, end);
  });
}

DaxStatus transposePixels(const MovedTo& image, DaxiSize size) {
  DAX_REQUIRE_OK(checkThere(size, image));
  DAX_REQUIRE_OK(checkSquare(size));
  DAX_REQUIRE_OK(checkRow(image, size.width));
  return forEachPlane(image, [&](auto rows) { transposeSquare(rows, size.width); });
}

// A quarter turn is a transposition of the rows in reverse order, three are one into rows in reverse order.
DaxStatus rotatePixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size, int32_t quarters) {
  DAX_REQUIRE_OK(checkThere(size, src, dst));
  DAX_REQUIRE_OK(checkQuarters(quarters));
  DAX_REQUIRE_OK(checkRow(src, size.width));
  DAX_REQUIRE_OK(checkRow(dst, isQuarter(quarters) ? size.height : size.width));
  if (!isQuarter(quarters)) return mirrorBy(on, src, dst, size, quarters == 2, quarters == 2);
  return forEachPlane(on, src, dst, size.height, [&](auto from, auto to, int32_t first, int32_t end) {
    quarters == 1 ? transposeRows(from.upwards(size.height), to, size.width, first, end)
                  : transposeRows(from, to.upwards(size.width), size.width, first, end);
  });
}

DaxStatus rotatePixels(const MovedTo& image, DaxiSize size, int32_t quarters) {
  DAX_REQUIRE_OK(checkThere(size, image));
  if (quarters != 0 && quarters != 2) DAX_REQUIRE_OK(checkSquare(size));
  DAX_REQUIRE_OK(checkQuarters(quarters));
  if (quarters == 0) return checkRow(image, size.width);
  if (quarters == 2) return mirrorPixels(image, size, DAXI_MIRROR_BOTH);
  DAX_REQUIRE_OK(transposePixels(image, size));
  return mirrorPixels(image, size, quarters == 1 ? DAXI_MIRROR_COLUMNS : DAXI_MIRROR_ROWS);
}

}  // namespace dax
