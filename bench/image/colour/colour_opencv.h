// The peer's conversions of colours and mosaics: cvtColor.
#pragma once

#include "bench/support/opencv.h"

namespace bench {

// An image of noise with so many channels into one with others. Its rounding differs from ours: results are not compared.
template <class T>
Task convertColour(int code, int channelsFrom, int channelsTo, DaxiSize fromSize = kSize) {
  const Image<T> from = noise<T>({channelsFrom * fromSize.width, fromSize.height});
  const Image<T> to({channelsTo * kSize.width, kSize.height});
  return {[=] {
            cv::Mat dst = viewOf(to).reshape(channelsTo);
            cv::cvtColor(viewOf(from).reshape(channelsFrom), dst, code);
          },
          nullptr};
}

}  // namespace bench
