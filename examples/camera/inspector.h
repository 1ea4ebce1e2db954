// Finds and measures the bright objects of grey frames: threshold, labelling, selection on the host's pool.
#pragma once

#include <dax.h>
#include <daxhost.h>
#include <daxi.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "camera.h"

namespace live {

// The library rejected a frame or the configuration.
struct InspectionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Inspector {
 public:
  // At most maxCount objects of at least minArea pixels, the largest first; threads 0: one per processor.
  Inspector(uint32_t threads, float minArea, int32_t maxCount);
  ~Inspector();
  Inspector(const Inspector&) = delete;
  Inspector& operator=(const Inspector&) = delete;

  // The objects of a frame, valid until the next call. Memory grows to the need of the largest frame.
  const std::vector<BlobInfo>& inspect(const Frame& frame);

 private:
  void reserve(DaxiSize size);

  std::unique_ptr<void, void (*)(void*)> pool_;
  uint32_t threads_;
  BlobSelectCfg cfg_{};
  DaxiSize size_{};
  DaxiBlobModel* model_ = nullptr;
  std::vector<uint8_t> mask_;
  std::unique_ptr<char[]> buffer_;
  std::vector<BlobInfo> room_, found_;
};

}  // namespace live
