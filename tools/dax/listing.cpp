#include "listing.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>

#include "blob_features.h"
#include "text.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;
using Fields = std::vector<std::string>;

std::string levels(const Inspection& inspection) {
  const std::string low = std::to_string(inspection.low);
  return inspection.low == inspection.high ? low : low + ".." + std::to_string(inspection.high);
}

// Right-aligned columns two spaces apart.
void writeColumns(std::ostream& out, const std::vector<Fields>& lines) {
  std::vector<size_t> widths(lines.front().size());
  for (const Fields& line : lines) {
    for (size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  for (const Fields& line : lines) {
    for (size_t i = 0; i < widths.size(); ++i) out << "  " << std::setw(static_cast<int>(widths[i])) << line[i];
    out << '\n';
  }
}

void writeSection(std::ostream& out, const Outcome& outcome, const Threshold& threshold) {
  const Inspection& inspection = outcome.inspection;
  out << outcome.file << ": " << summary(inspection, threshold) << '\n';
  if (inspection.blobs.empty()) return;
  std::vector<Fields> lines{tableTitles(inspection.scored)};
  lines.front().insert(lines.front().begin(), "#");
  for (const BlobInfo& blob : inspection.blobs) {
    Fields fields = tableFields(blob, inspection.scored);
    fields.insert(fields.begin(), std::to_string(lines.size()));
    lines.push_back(std::move(fields));
  }
  writeColumns(out, lines);
}

// The shortest decimal again: a float handed over as a double would show digits that it does not have.
double decimal(float value) {
  return parseNumber(shortest(value)).value_or(0);
}

Json toJson(const BlobInfo& blob, bool scored) {
  Json json{{"label", blob.label}};
  for (const Feature& feature : features()) json[std::string(feature.name)] = decimal(feature.value(blob));
  json["score"] = scored ? Json(decimal(blob.score)) : Json();
  return json;
}

Json toJson(const Outcome& outcome, const Threshold& threshold) {
  Json json{{"file", outcome.file}};
  if (outcome.failure) {
    json["error"] = outcome.failure->what();
    return json;
  }
  const Inspection& inspection = outcome.inspection;
  json["width"] = inspection.size.width;
  json["height"] = inspection.size.height;
  json["threshold"] = {{"method", threshold.name()}, {"low", inspection.low}, {"high", inspection.high}};
  json["regions"] = inspection.regions;
  json["blobs"] = Json::array();
  for (const BlobInfo& blob : inspection.blobs) json["blobs"].push_back(toJson(blob, inspection.scored));
  return json;
}

// RFC 4180: fields with a comma or a quote are quoted, quotes doubled. Line breaks do not occur in printable text.
std::string csvField(const std::string& text) {
  if (text.find_first_of(",\"") == std::string::npos) return text;
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"') result += '"';
    result += c;
  }
  return result + "\"";
}

Fields timeFields(const std::string& name, const StageTimes& times) {
  Fields fields;
  for (size_t i = 0; i < kStageNames.size(); ++i) fields.push_back(fixed(1e3 * times.of(static_cast<Stage>(i)), 2));
  fields.push_back(fixed(1e3 * times.total(), 2));
  fields.push_back(name);
  return fields;
}

}  // namespace

std::string summary(const Inspection& inspection, const Threshold& threshold) {
  return std::to_string(inspection.size.width) + " x " + std::to_string(inspection.size.height) + ", threshold " +
         threshold.name() + " " + levels(inspection) + ", " + std::to_string(inspection.blobs.size()) + " of " +
         std::to_string(inspection.regions) + " regions";
}

Fields tableTitles(bool scored) {
  Fields titles;
  for (const Feature& feature : features()) {
    if (!feature.title.empty()) titles.emplace_back(feature.title);
  }
  if (scored) titles.emplace_back("score");
  return titles;
}

Fields tableFields(const BlobInfo& blob, bool scored) {
  Fields fields;
  for (const Feature& feature : features()) {
    if (!feature.title.empty()) fields.push_back(fixed(feature.value(blob), feature.decimals));
  }
  if (scored) fields.push_back(fixed(blob.score, 3));
  return fields;
}

void writeTable(std::ostream& out, const Listing& listing) {
  bool first = true;
  for (const Outcome& outcome : listing.outcomes) {
    if (outcome.failure) continue;
    if (!first) out << '\n';
    first = false;
    writeSection(out, outcome, listing.threshold);
  }
  if (listing.truth) out << '\n' << listing.truth->text();
}

void writeJson(std::ostream& out, const Listing& listing) {
  Json json{{"images", Json::array()}};
  for (const Outcome& outcome : listing.outcomes) json["images"].push_back(toJson(outcome, listing.threshold));
  if (listing.truth) json["truth"] = listing.truth->json();
  out << json.dump(2) << '\n';
}

void writeCsv(std::ostream& out, const Listing& listing) {
  out << "file,number,label";
  for (const Feature& feature : features()) out << ',' << feature.name;
  out << ",score\n";
  for (const Outcome& outcome : listing.outcomes) {
    const std::string file = csvField(outcome.file);
    size_t number = 0;
    for (const BlobInfo& blob : outcome.inspection.blobs) {
      out << file << ',' << ++number << ',' << blob.label;
      for (const Feature& feature : features()) out << ',' << shortest(feature.value(blob));
      out << ',' << (outcome.inspection.scored ? shortest(blob.score) : "") << '\n';
    }
  }
}

void writeTimes(std::ostream& out, std::span<const Outcome> outcomes) {
  std::vector<Fields> lines{Fields(kStageNames.begin(), kStageNames.end())};
  lines.front().insert(lines.front().end(), {"all", "milliseconds"});
  StageTimes total;
  for (const Outcome& outcome : outcomes) {
    lines.push_back(timeFields(outcome.file, outcome.times));
    total.add(outcome.times);
  }
  if (outcomes.size() > 1) lines.push_back(timeFields("total", total));
  writeColumns(out, lines);
}

}  // namespace dax::tool
