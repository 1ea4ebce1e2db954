#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "base/text.h"
#include "io/truth.h"
#include "model/blob.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

double distance(const TruePart& part, const BlobInfo& blob) {
  return std::hypot(blob.centroidX - part.x, blob.centroidY - part.y);
}

const TruePart* partAt(const Truth& truth, const BlobInfo& blob) {
  const auto nearest =
      std::min_element(truth.parts.begin(), truth.parts.end(),
                       [&](const TruePart& a, const TruePart& b) { return distance(a, blob) < distance(b, blob); });
  if (nearest == truth.parts.end()) return nullptr;
  return distance(*nearest, blob) <= std::sqrt(nearest->area / std::numbers::pi) ? &*nearest : nullptr;
}

ErrorStatistics statistics(const std::vector<double>& errors, double tolerance) {
  ErrorStatistics result;
  result.tolerance = tolerance;
  double squares = 0;
  for (const double error : errors) {
    result.mean += std::abs(error) / static_cast<double>(errors.size());
    squares += error * error;
    result.worst = std::max(result.worst, std::abs(error));
  }
  if (!errors.empty()) result.rms = std::sqrt(squares / static_cast<double>(errors.size()));
  return result;
}

class Errors {
 public:
  void add(const TruePart& part, const BlobInfo& blob) {
    centre_.push_back(distance(part, blob));
    area_.push_back(100 * (blob.area / part.area - 1));
    if (part.angle) angle_.push_back(std::remainder(degrees(blob.boxAngle) - *part.angle, part.anglePeriod));
  }

  void store(TruthComparison& result, const Tolerances& tolerances) const {
    result.centre = statistics(centre_, tolerances.centre);
    result.area = statistics(area_, tolerances.area);
    result.angle = statistics(angle_, tolerances.angle);
  }

 private:
  std::vector<double> centre_;
  std::vector<double> area_;
  std::vector<double> angle_;
};

struct Row {
  const char* name;
  const char* unit;
  const ErrorStatistics& statistics;
};

std::vector<Row> rows(const TruthComparison& comparison) {
  return {{"centre", "px", comparison.centre}, {"area", "%", comparison.area}, {"angle", "deg", comparison.angle}};
}

std::string line(const Row& row) {
  const ErrorStatistics& s = row.statistics;
  char text[160];
  std::snprintf(text, sizeof text, "  %-7s error %-4s mean %7.3f   rms %7.3f   worst %7.3f   allowed %g%s\n", row.name,
                row.unit, s.mean, s.rms, s.worst, s.tolerance, s.agrees() ? "" : "   EXCEEDED");
  return text;
}

}  // namespace

bool TruthComparison::agrees() const {
  return missed + foundTwice + unexpected == 0 && centre.agrees() && area.agrees() && angle.agrees();
}

std::string TruthComparison::text() const {
  std::string result = "truth: " + std::to_string(found) + " of " + std::to_string(parts) + " parts found, " +
                       std::to_string(missed) + " missed, " + std::to_string(foundTwice) + " found twice, " +
                       std::to_string(unexpected) + " unexpected\n";
  for (const Row& row : rows(*this)) result += line(row);
  return result + (agrees() ? "  the measurements agree with the truth\n" : "  the measurements DISAGREE\n");
}

Json TruthComparison::json() const {
  Json result{{"agrees", agrees()},        {"parts", parts},          {"found", found}, {"missed", missed},
              {"found_twice", foundTwice}, {"unexpected", unexpected}};
  for (const auto& [name, unit, s] : rows(*this)) {
    result[std::string(name) + "_error"] =
        Json{{"mean", s.mean}, {"rms", s.rms}, {"worst", s.worst}, {"tolerance", s.tolerance}};
  }
  return result;
}

TruthComparison compare(const Truth& truth, std::span<const BlobInfo> blobs, const Tolerances& tolerances) {
  std::vector<std::vector<const BlobInfo*>> blobsOfPart(truth.parts.size());
  TruthComparison result;
  for (const BlobInfo& blob : blobs) {
    const TruePart* part = partAt(truth, blob);
    if (part) {
      blobsOfPart[static_cast<size_t>(part - truth.parts.data())].push_back(&blob);
    } else {
      ++result.unexpected;
    }
  }
  Errors errors;
  for (size_t i = 0; i < truth.parts.size(); ++i) {
    const TruePart& part = truth.parts[i];
    const auto& found = blobsOfPart[i];
    result.foundTwice += found.size() > 1 ? 1 : 0;
    if (found.empty()) continue;
    ++result.found;
    errors.add(part, **std::min_element(found.begin(), found.end(), [&](const BlobInfo* a, const BlobInfo* b) {
                 return distance(part, *a) < distance(part, *b);
               }));
  }
  result.parts = truth.parts.size();
  result.missed = result.parts - result.found;
  errors.store(result, tolerances);
  return result;
}

}  // namespace dax::tool
