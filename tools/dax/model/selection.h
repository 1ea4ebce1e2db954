// Blob selection, and why the blobs that it did not keep were refused.
#pragma once

#include <string_view>
#include <vector>

#include "base/workers.h"
#include "daxi/blob_select_v4.h"
#include "io/grey_image.h"

namespace dax::tool {

// What a selection works on.
struct Labelled {
  const GreyImage& image;
  const DaxiDomainList& domains;
};

// The kept blobs, in their order. Areas are tested by class where cfg.perClass is set.
std::vector<BlobInfo> select(const Labelled& labelled, const BlobSelectV4Cfg& cfg, const Workers& workers);

struct Rejection {
  BlobInfo blob;        // with every feature, but no score
  std::string_view by;  // the first filter that refused it; "count": better blobs took all places
};

// The blobs that are not among those kept, in the order of the configuration. Throws Failure(kRefused) for an image of
// more regions than one selection can hold.
std::vector<Rejection> findRejected(const Labelled& labelled, const BlobSelectV4Cfg& cfg,
                                    const std::vector<BlobInfo>& kept, const Workers& workers);

}  // namespace dax::tool
