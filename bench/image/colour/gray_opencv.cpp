#include "bench/image/colour/colour_opencv.h"

namespace {

const bench::OpenCvPeer operations[] = {
    {"grey of RGB, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_RGB2GRAY, 3, 1); }},
    {"grey of RGB, 16u", [] { return bench::convertColour<uint16_t>(cv::COLOR_RGB2GRAY, 3, 1); }},
    {"grey of RGB, 32f", [] { return bench::convertColour<float>(cv::COLOR_RGB2GRAY, 3, 1); }},
};

}  // namespace
