#include <memory>
#include <vector>

#include "bench/support/opencv.h"

namespace {

using bench::Image;
using MakeMask = Image<uint8_t> (*)(DaxiSize);

struct Blob {
  cv::Moments moments;
  cv::RotatedRect box;
  double perimeter;
};

Blob measure(const std::vector<cv::Point>& contour) {
  return {cv::moments(contour), cv::minAreaRect(contour), cv::arcLength(contour, true)};
}

// All outputs live on from call to call, so that none of them is allocated anew.
struct Labelled {
  cv::Mat labels, stats, centroids;
  int count = 0;
};

// Calls label(mask, labelled).
template <class Label>
bench::Task prepare(MakeMask makeMask, Label label) {
  const Image<uint8_t> mask = makeMask(bench::kSize);
  auto labelled = std::make_shared<Labelled>();
  // The count includes the background.
  return {[=] { label(bench::viewOf(mask), *labelled); }, [=] { return static_cast<uint64_t>(labelled->count - 1); }};
}

bench::Task prepareLabelling(MakeMask makeMask) {
  return prepare(makeMask, [](const cv::Mat& mask, Labelled& out) {
    out.count = cv::connectedComponents(mask, out.labels, 8, CV_32S);
  });
}

bench::Task prepareBasicFeatures(MakeMask makeMask) {
  return prepare(makeMask, [](const cv::Mat& mask, Labelled& out) {
    out.count = cv::connectedComponentsWithStats(mask, out.labels, out.stats, out.centroids, 8, CV_32S);
  });
}

// The outer contours of all blobs, those within holes of others too, and of each what the library measures.
bench::Task prepareContourFeatures(MakeMask makeMask) {
  const Image<uint8_t> mask = makeMask(bench::kSize);
  auto blobs = std::make_shared<std::vector<Blob>>();
  return {[=] {
            std::vector<std::vector<cv::Point>> contours;
            std::vector<cv::Vec4i> hierarchy;
            cv::findContours(bench::viewOf(mask), contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
            blobs->clear();
            for (size_t i = 0; i < contours.size(); ++i) {
              const bool isHole = hierarchy[i][3] >= 0;
              if (!isHole) blobs->push_back(measure(contours[i]));
            }
          },
          [=] { return uint64_t{blobs->size()}; }};
}

constexpr auto smooth = bench::smoothBlobMask;
constexpr auto raw = bench::rawNoiseMask;

const bench::OpenCvPeer operations[] = {
    {"labelling, smooth blobs", [] { return prepareLabelling(smooth); }},
    {"labelling + basic features, smooth blobs", [] { return prepareBasicFeatures(smooth); }},
    {"labelling + all features, smooth blobs", [] { return prepareContourFeatures(smooth); }},
    {"labelling, raw noise", [] { return prepareLabelling(raw); }},
    {"labelling + basic features, raw noise", [] { return prepareBasicFeatures(raw); }},
};

}  // namespace
