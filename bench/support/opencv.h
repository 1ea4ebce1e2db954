// Images of the benchmarks as OpenCV sees them.
#pragma once

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace bench {

// A view of the same pixels; it does not keep them alive.
template <class T>
cv::Mat viewOf(const Image<T>& image) {
  return cv::Mat(image.size.height, image.size.width, cv::traits::Type<T>::value, image.data());
}

// OpenCV on one thread, as the library's functions are.
struct OpenCvPeer : Peer {
  OpenCvPeer(const char* operation, std::function<Task()> prepare)
      : Peer(operation, "opencv", [prepare = std::move(prepare)] {
          cv::setNumThreads(1);
          return prepare();
        }) {}
};

}  // namespace bench
