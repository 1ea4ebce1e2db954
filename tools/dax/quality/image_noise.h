// The noise of pictures: of one, of frames of a scene, and of a camera by frames of many exposures.
#pragma once

#include <cstdint>
#include <vector>

#include "daxi/photon_transfer.h"
#include "io/picture.h"

namespace dax::tool {

struct LevelNoise {
  double level, deviation;
  uint64_t count;  // of blocks, or of pixels
};

struct PictureNoise {
  double mad, immerkaer;           // deviations
  std::vector<LevelNoise> levels;  // none where the picture is too small
};

struct StackNoise {
  DaxiFrameNoise noise;
  double deviation;  // without that of rounding
  std::vector<LevelNoise> levels;
};

// white: the value from which pixels are clipped, in those of the file. All throw Failure(kRefused).
PictureNoise measureNoise(const Picture& picture, double white);

// Of what readFrames() returned.
StackNoise measureFrames(const std::vector<Picture>& frames, double white);

// Reads frames, and throws Failure(kRefused) where they are fewer than two or differ in size or range.
std::vector<Picture> readFrames(const std::vector<std::filesystem::path>& files);

DaxiPhotonTransfer measureTransfer(const std::vector<DaxiPhotonTransferPoint>& points);

}  // namespace dax::tool
