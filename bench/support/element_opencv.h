// The same operations of OpenCV.
#pragma once

#include "bench/support/element.h"
#include "bench/support/opencv.h"

namespace bench {

template <class T, class D, class Call>
Task openCvOfOne(Call call, bool same = true) {
  return prepareOne<T, D>(
      [=](const Image<T>& from, const Image<D>& to) {
        cv::Mat dst = viewOf(to);
        call(viewOf(from), dst);
      },
      same);
}

template <class T, class D, class Call>
Task openCvOfTwo(Call call, bool same = true) {
  return prepareTwo<T, D>(
      [=](const Image<T>& first, const Image<T>& second, const Image<D>& to) {
        cv::Mat dst = viewOf(to);
        call(viewOf(first), viewOf(second), dst);
      },
      same);
}

}  // namespace bench
