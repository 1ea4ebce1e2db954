// An image and what is around it, for filters that take rows in strips and need no work buffer.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/rows.h"
#include "image/border/border_index.h"

namespace dax {

template <class T>
struct StripImage {
  const T* src;
  int32_t step;
  DaxiSize size;
  int32_t border;
  T value;

  bool isInMemory() const { return border == DAXI_BORDER_IN_MEMORY; }

  // Null for a row of a constant border.
  const T* row(int64_t y) const {
    if (isInMemory() || (y >= 0 && y < size.height)) return src + y * step;
    if (!hasBorderIndex(border)) return nullptr;
    return rowAt(src, step, static_cast<int32_t>(borderIndex(y, size.height, border)));
  }
};

}  // namespace dax
