#include "bench/image/colour/colour_opencv.h"

namespace {

const bench::OpenCvPeer operations[] = {
    {"NV12 to RGB",
     [] {
       const DaxiSize planes = {bench::kSize.width, bench::kSize.height * 3 / 2};
       return bench::convertColour<uint8_t>(cv::COLOR_YUV2RGB_NV12, 1, 3, planes);
     }},
    {"YUYV to RGB", [] { return bench::convertColour<uint8_t>(cv::COLOR_YUV2RGB_YUYV, 2, 3); }},
};

}  // namespace
