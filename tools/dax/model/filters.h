// Blob filters, their weights, and sort keys, by the names that they have on the command line.
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
  double least;           // of the feature, in units of the command line
  double most;            // infinite: none
  double unit;            // library units per unit of the command line
  const char* help;
  void (*setRange)(BlobSelectCfg& cfg, DaxiRange range);
  float& (*weight)(BlobSelectCfg& cfg);
};

std::span<const Filter> filters();
const Filter* findFilter(std::string_view name);

// Switches a filter on. An open end becomes the least or the most that the feature can be; a range without an upper end
// has no middle to score by, so its weight is 0, that of others 1. False when the range lies outside the feature's.
bool activate(BlobSelectCfg& cfg, const Filter& filter, const OpenRange& range);

// True when the weights of the active filters sum to more than 0: blobs get a score.
bool isScored(const BlobSelectCfg& cfg);

struct SortKey {
  std::string_view name;
  uint32_t key;  // DAXI_BLOB_KEY_...
};
std::span<const SortKey> sortKeys();

}  // namespace dax::tool
