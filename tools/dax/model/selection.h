// Blob selection, and the reasons for rejected blobs.
#pragma once

#include <string>
#include <vector>

#include "base/workers.h"
#include "daxi/blob_select_v4.h"
#include "io/grey_image.h"
#include "model/blob.h"

namespace dax::tool {

// Input of a selection.
struct Labelled {
  const GreyImage& image;
  const DaxiDomainList& domains;
};

// The selected blobs, in order. Areas are tested by class if cfg.perClass is set.
std::vector<Blob> select(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const Workers& workers);

// The reason of a rejection: beyond the maximum number of blobs.
inline constexpr const char* kByCount = "count";

struct Rejection {
  Blob blob;       // with every feature, but no score
  std::string by;  // the first filter that rejected it, or kByCount
};

// The blobs that were not selected, in the order of the configuration. Throws Failure(kRefused) for an image with more
// regions than one selection can hold.
std::vector<Rejection> findRejected(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const std::vector<Blob>& kept,
                                    const Workers& workers);

}  // namespace dax::tool
