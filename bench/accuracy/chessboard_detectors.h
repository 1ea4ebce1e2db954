// The detectors that are compared, behind one face.
#pragma once

#include <vector>

#include "daxi.h"
#include "tests/support/test_image.h"

namespace accuracy {

using Image = dax::test::TestImage<uint8_t>;

struct Found {
  int32_t columns = 0, rows = 0;  // 0: no board
  std::vector<DaxiPoint32f> corners;
};

// The size is for those that must know it.
struct Detector {
  const char* name;
  Found (*find)(const Image& image, ChessboardPatternSize pattern);
  bool knowsSize;
};

// The library's, then the peer's where there is one.
const std::vector<Detector>& detectors();
const std::vector<Detector>& peerDetectors();

// A grey photograph; false where it cannot be read, or nothing here can read it.
bool readPhotograph(const char* path, std::vector<uint8_t>& pixels, DaxiSize& size);

}  // namespace accuracy
