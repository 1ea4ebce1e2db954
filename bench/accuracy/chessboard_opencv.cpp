#include <opencv2/calib3d.hpp>
#include <opencv2/imgcodecs.hpp>

#include "bench/accuracy/chessboard_detectors.h"

namespace accuracy {
namespace {

template <class Find>
Found peer(const Image& image, ChessboardPatternSize pattern, Find find) {
  cv::setNumThreads(1);
  const cv::Mat view(image.size().height, image.size().width, CV_8U, const_cast<uint8_t*>(image.data()),
                     static_cast<size_t>(image.step()));
  std::vector<cv::Point2f> points;
  Found result;
  if (!find(view, cv::Size(pattern.columns, pattern.rows), points)) return result;
  result.columns = pattern.columns, result.rows = pattern.rows;
  for (const cv::Point2f& p : points) result.corners.push_back({p.x, p.y});
  return result;
}

}  // namespace

const std::vector<Detector>& peerDetectors() {
  static const std::vector<Detector> all = {
      {"OpenCV, quads",
       [](const Image& i, ChessboardPatternSize p) {
         return peer(
             i, p, [](const cv::Mat& m, cv::Size s, auto& points) { return cv::findChessboardCorners(m, s, points); });
       },
       true},
      {"OpenCV, sectors",
       [](const Image& i, ChessboardPatternSize p) {
         return peer(i, p, [](const cv::Mat& m, cv::Size s, auto& points) {
           return cv::findChessboardCornersSB(m, s, points);
         });
       },
       true},
  };
  return all;
}

bool readPhotograph(const char* path, std::vector<uint8_t>& pixels, DaxiSize& size) {
  const cv::Mat image = cv::imread(path, cv::IMREAD_GRAYSCALE);
  if (image.empty() || !image.isContinuous()) return false;
  pixels.assign(image.data, image.data + image.total());
  size = {image.cols, image.rows};
  return true;
}

}  // namespace accuracy
