#include <opencv2/imgproc.hpp>

#include "bench/accuracy/warp_peer.h"
#include "daxi/interpolation.h"

namespace accuracy {
namespace {

// Its Lanczos kernel has four lobes, its cubic one the parameter -0.75.
int modeOf(int32_t interpolation) {
  switch (interpolation) {
    case DAXI_INTERPOLATION_LINEAR:
      return cv::INTER_LINEAR;
    case DAXI_INTERPOLATION_CUBIC:
      return cv::INTER_CUBIC;
    case DAXI_INTERPOLATION_AREA:
      return cv::INTER_AREA;
    default:
      return cv::INTER_LANCZOS4;
  }
}

template <class T>
cv::Mat viewOf(const std::vector<T>& pixels, DaxiSize size) {
  return {size.height, size.width, cv::DataType<T>::type, const_cast<T*>(pixels.data())};
}

}  // namespace

Bytes peerWarp(const Bytes& image, DaxiSize size, const double (&back)[9], int32_t interpolation) {
  Bytes result(image.size());
  const cv::Mat matrix(2, 3, CV_64F, const_cast<double*>(back));
  cv::Mat to = viewOf(result, size);
  cv::warpAffine(viewOf(image, size), to, matrix, to.size(), modeOf(interpolation) | cv::WARP_INVERSE_MAP,
                 cv::BORDER_REPLICATE);
  return result;
}

Bytes peerResize(const Bytes& image, DaxiSize from, DaxiSize to, int32_t interpolation) {
  Bytes result(static_cast<size_t>(to.width) * static_cast<size_t>(to.height));
  cv::Mat view = viewOf(result, to);
  cv::resize(viewOf(image, from), view, view.size(), 0, 0, modeOf(interpolation));
  return result;
}

bool peerShift(const std::vector<float>& first, const std::vector<float>& second, DaxiSize size, double (&shift)[2]) {
  // It windows its inputs in place.
  const cv::Mat a = viewOf(first, size).clone(), b = viewOf(second, size).clone();
  cv::Mat window;
  cv::createHanningWindow(window, a.size(), CV_32F);
  const cv::Point2d found = cv::phaseCorrelate(a, b, window);
  shift[0] = found.x, shift[1] = found.y;
  return true;
}

}  // namespace accuracy
