// The last report, as JSON.
#pragma once

#include <string>
#include <vector>

#include "inspector.h"
#include "statistics.h"

namespace live {

// The last frame and its objects.
struct LastFrame {
  uint64_t id = 0;
  int32_t width = 0, height = 0;
  std::vector<BlobInfo> objects;
};

// Replaces the file atomically, so that a reader never sees half a report. False when it cannot be written.
bool writeReport(const std::string& path, const std::string& camera, const Statistics& statistics,
                 const LastFrame& last);

}  // namespace live
