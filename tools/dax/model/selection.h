// Blob selection, and the reasons for rejected blobs.
#pragma once

#include <string_view>
#include <vector>

#include "base/workers.h"
#include "daxi/blob_select_v4.h"
#include "io/grey_image.h"

namespace dax::tool {

// Input of a selection.
struct Labelled {
  const GreyImage& image;
  const DaxiDomainList& domains;
};

// The selected blobs, in order. Areas are tested by class if cfg.perClass is set.
std::vector<BlobInfo> select(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const Workers& workers);

struct Rejection {
  BlobInfo blob;        // with every feature, but no score
  std::string_view by;  // the first filter that rejected it; "count": beyond the maximum number of blobs
};

// The blobs that were not selected, in the order of the configuration. Throws Failure(kRefused) for an image with more
// regions than one selection can hold.
std::vector<Rejection> findRejected(const Labelled& labelled, const BlobSelectV4Cfg& cfg,
                                    const std::vector<BlobInfo>& kept, const Workers& workers);

}  // namespace dax::tool
