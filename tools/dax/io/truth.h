// Known parts of a scene, and how well measurements agree with them.
#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "daxi/blob_select.h"

namespace dax::tool {

struct TruePart {
  std::string kind;
  double x = 0;  // centroid, pixel centres are integers
  double y = 0;
  double area = 0;              // pixels
  std::optional<double> angle;  // of the long side, degrees from x towards y
  double anglePeriod = 180;     // degrees after which the shape looks the same
};

struct Truth {
  int width = 0;
  int height = 0;
  std::vector<TruePart> parts;
};

std::string truthToJson(const Truth& truth);

// Throws Failure(kCannotRead).
Truth readTruth(const std::filesystem::path& path);

struct Tolerances {
  double centre = 0.5;  // pixels
  double area = 3;      // per cent
  double angle = 3;     // degrees
};

// Errors of one quantity over all parts that were found.
struct ErrorStatistics {
  double mean = 0;  // of the absolute errors
  double rms = 0;
  double worst = 0;
  double tolerance = 0;
  bool agrees() const { return worst <= tolerance; }
};

struct TruthComparison {
  size_t parts = 0;
  size_t found = 0;
  size_t missed = 0;
  size_t foundTwice = 0;
  size_t unexpected = 0;  // blobs without a part
  ErrorStatistics centre;
  ErrorStatistics area;
  ErrorStatistics angle;

  bool agrees() const;
  std::string text() const;
  nlohmann::ordered_json json() const;
};

// Matches each blob to the part with the nearest centre within the radius of a disc of the part's area. Of several
// blobs at a part the nearest is used.
TruthComparison compare(const Truth& truth, std::span<const BlobInfo> blobs, const Tolerances& tolerances);

}  // namespace dax::tool
