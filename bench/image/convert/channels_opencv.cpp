#include "bench/image/convert/channels_bench.h"
#include "bench/support/opencv.h"

namespace {

using namespace bench::channels;

cv::Mat interleaved(const bench::Image<uint8_t>& image, int channels) {
  return cv::Mat(bench::kSize.height, bench::kSize.width, CV_8UC(channels), image.data());
}

const bench::OpenCvPeer operations[] = {
    {"split, 8u C3",
     [] {
       const Planes p;
       return bench::Task{
           [=] {
             cv::Mat planes[3] = {bench::viewOf(p.plane[0]), bench::viewOf(p.plane[1]), bench::viewOf(p.plane[2])};
             cv::split(interleaved(p.colour, 3), planes);
           },
           [=] { return p.digestOfPlanes(); }};
     }},
    {"merge, 8u C3",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            const cv::Mat planes[3] = {bench::viewOf(p.plane[0]), bench::viewOf(p.plane[1]),
                                                       bench::viewOf(p.plane[2])};
                            cv::Mat dst = interleaved(p.result, 3);
                            cv::merge(planes, 3, dst);
                          },
                          [=] { return bench::digest(p.result); }};
     }},
    {"swap, 8u C3",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            cv::Mat dst = interleaved(p.result, 3);
                            cv::cvtColor(interleaved(p.colour, 3), dst, cv::COLOR_BGR2RGB);
                          },
                          [=] { return bench::digest(p.result); }};
     }},
    {"add a channel, 8u C3 to C4",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            cv::Mat dst = interleaved(p.opaque, 4);
                            cv::cvtColor(interleaved(p.colour, 3), dst, cv::COLOR_BGR2BGRA);
                          },
                          [=] { return bench::digest(p.opaque); }};
     }},
    {"pick, 8u C3",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            cv::Mat dst = bench::viewOf(p.plane[0]);
                            cv::extractChannel(interleaved(p.colour, 3), dst, 1);
                          },
                          [=] { return bench::digest(p.plane[0]); }};
     }},
    {"copy with a mask, 8u",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            cv::Mat dst = bench::viewOf(p.plane[0]);
                            cv::Mat(bench::kSize.height, bench::kSize.width, CV_8UC1, p.colour.data())
                                .copyTo(dst, bench::viewOf(p.mask));
                          },
                          [=] { return bench::digest(p.plane[0]); }};
     }},
    {"set with a mask, 8u C3",
     [] {
       const Planes p;
       return bench::Task{[=] {
                            cv::Mat dst = interleaved(p.result, 3);
                            dst.setTo(cv::Scalar(1, 2, 3), bench::viewOf(p.mask));
                          },
                          [=] { return bench::digest(p.result); }};
     }},
};

}  // namespace
