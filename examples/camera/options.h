// The command line.
#pragma once

#include <cstdint>
#include <string>

namespace live {

struct Options {
  std::string camera;  // empty: the first one found
  bool fake = false;
  double framesPerSecond = 0;  // 0: the camera's own
  uint64_t frames = 0;         // 0: until interrupted
  float minArea = 20;
  int32_t maxCount = 1000;
  int queue = 8;  // frames that may wait for their inspection
  uint32_t threads = 0;
  double silence = 2;  // seconds without a frame after which a camera counts as lost
  std::string report = "camera-report.json";
};

// Exits with the usage on a wrong command line, and after --help.
Options parseOptions(int argc, char** argv);

}  // namespace live
