#include "bench/image/colour/colour_opencv.h"

namespace {

// Its pattern is named by the pixels behind the first row and column. It copies border pixels from inside.
const bench::OpenCvPeer operations[] = {
    {"Bayer to colour, bilinear, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_BayerBG2RGB, 1, 3); }},
    {"Bayer to colour, bilinear, 16u", [] { return bench::convertColour<uint16_t>(cv::COLOR_BayerBG2RGB, 1, 3); }},
    {"Bayer to colour, edge-aware, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_BayerBG2RGB_EA, 1, 3); }},
    {"Bayer to colour, edge-aware, 16u", [] { return bench::convertColour<uint16_t>(cv::COLOR_BayerBG2RGB_EA, 1, 3); }},
    {"Bayer to grey, bilinear, 8u", [] { return bench::convertColour<uint8_t>(cv::COLOR_BayerBG2GRAY, 1, 1); }},
};

}  // namespace
