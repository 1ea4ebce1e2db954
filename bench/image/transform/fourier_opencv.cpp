#include "bench/image/transform/fourier_bench.h"
#include "bench/support/opencv.h"

namespace {

template <class T, class Transform>
bench::Task prepare(DaxiSize size, int type, Transform transform) {
  const auto src = bench::complexNoise<T>(), dst = std::make_shared<std::vector<T>>(src->size());
  return {[=] {
            const cv::Mat from(size.height, size.width, type, src->data());
            cv::Mat to(size.height, size.width, type, dst->data());
            transform(from, to);
          },
          nullptr};  // adds in another order
}

void dft(const cv::Mat& from, cv::Mat& to) {
  cv::dft(from, to);
}

const bench::OpenCvPeer operations[] = {
    {"Fourier, 1024 x 1024 32fc", [] { return prepare<float>(bench::kSquare, CV_32FC2, dft); }},
    {"Fourier, 1024 x 1024 32f", [] { return prepare<float>(bench::kSquare, CV_32FC1, dft); }},
    {"Fourier, 1024 x 1024 64fc", [] { return prepare<double>(bench::kSquare, CV_64FC2, dft); }},
    {"Fourier, a row of 2^20 32fc", [] { return prepare<float>(bench::kRow, CV_32FC2, dft); }},
    {"cosine, 1024 x 1024 32f",
     [] {
       return prepare<float>(bench::kSquare, CV_32FC1, [](const cv::Mat& from, cv::Mat& to) { cv::dct(from, to); });
     }},
};

}  // namespace
