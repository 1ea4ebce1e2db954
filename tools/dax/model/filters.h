// Blob filters, their weights and sort keys, by their names on the command line.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/text.h"
#include "daxi/blob_select.h"

namespace dax::tool {

struct Filter {
  std::string_view name;  // "axis-ratio"
  uint32_t flag;          // DAXI_BLOB_BY_...
  double min;             // of the feature, in units of the command line
  double max;             // infinite: none
  double unit;            // library units per unit of the command line
  int dimension;          // 1: of lengths, 2: of areas, 0: neither
  const char* help;
  void (*setRange)(BlobSelectCfg& cfg, DaxiRange range);
  float& (*weight)(BlobSelectCfg& cfg);
};

std::span<const Filter> filters();
const Filter* findFilter(std::string_view name);

// Enables a filter. An open end becomes the minimum or maximum of the feature; a range without an upper end has no
// middle to score by, so its weight is 0, else 1. False if the range lies outside that of the feature.
// `scale`: pixels per unit of length of the range.
bool activate(BlobSelectCfg& cfg, const Filter& filter, const OpenRange& range, double scale = 1);

// Whether the weights of the active filters sum to more than 0: then blobs get a score.
bool isScored(const BlobSelectCfg& cfg);

struct SortKey {
  std::string_view name;
  uint32_t key;  // DAXI_BLOB_KEY_...
};
std::span<const SortKey> sortKeys();

}  // namespace dax::tool
