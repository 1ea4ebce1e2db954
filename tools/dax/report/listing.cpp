#include "report/listing.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "model/blob_features.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string levels(const Inspection& inspection) {
  const std::string low = std::to_string(inspection.low);
  return inspection.low == inspection.high ? low : low + ".." + std::to_string(inspection.high);
}

bool hasLevels(const Threshold& threshold) {
  return !threshold.method || threshold.method->local < 0;
}

// Local thresholds have no level of their own.
std::string thresholdOf(const Inspection& inspection, const Threshold& threshold) {
  return std::string("threshold ") + threshold.name() + (hasLevels(threshold) ? " " + levels(inspection) : "");
}

// "200..": the range that refused a region, as given.
std::string limitOf(std::string_view by, const InspectionSettings& settings) {
  const auto byClass = settings.limits.find("class-area");
  if (by == "area" && byClass != settings.limits.end()) return byClass->second;
  const auto found = settings.limits.find(std::string(by));
  return found == settings.limits.end() ? std::string() : found->second;
}

// The columns of a table behind its first one.
class TableColumns {
 public:
  TableColumns(const InspectionSettings& settings, bool scored)
      : settings_(settings), features_(features(settings)), scored_(scored) {
    std::erase_if(features_, [](const Feature& feature) { return !feature.isInTable; });
  }

  Fields titles(std::string first) const {
    Fields titles{std::move(first)};
    for (const Feature& feature : features_) titles.push_back(feature.title());
    if (scored_) titles.emplace_back("score");
    return titles;
  }

  Fields line(std::string first, const Blob& blob) const {
    Fields fields{std::move(first)};
    for (const Feature& feature : features_) {
      const bool isScaled = settings_.mmPerPixel && feature.dimension > 0;
      fields.push_back(fixed(valueOf(feature, blob, settings_.mmPerPixel), feature.decimals + (isScaled ? 2 : 0)));
    }
    if (scored_) fields.push_back(fixed(blob.score, 3));
    return fields;
  }

 private:
  const InspectionSettings& settings_;
  std::vector<Feature> features_;
  bool scored_;
};

void writeSection(std::ostream& out, const Outcome& outcome, const InspectionSettings& settings) {
  out << outcome.file << ": " << summary(outcome.inspection, settings) << '\n';
  if (!outcome.inspection.blobs.empty()) writeColumns(out, blobTable(outcome.inspection, settings));
  if (!settings.rejected) return;
  out << "rejected: " << outcome.inspection.rejected.size() << " regions\n";
  if (!outcome.inspection.rejected.empty()) writeColumns(out, rejectedTable(outcome.inspection, settings));
}

Json toJson(const Blob& blob, const InspectionSettings& settings, bool scored) {
  Json json{{"label", blob.label}};
  for (const Feature& feature : features(settings)) {
    json[std::string(feature.name)] = decimal(valueOf(feature, blob, settings.mmPerPixel));
  }
  json["score"] = scored ? Json(decimal(blob.score)) : Json();
  return json;
}

Json toJson(const Outcome& outcome, const InspectionSettings& settings) {
  Json json{{"file", outcome.file}};
  if (outcome.failure) {
    json["error"] = outcome.failure->what();
    return json;
  }
  const Inspection& inspection = outcome.inspection;
  json["width"] = inspection.size.width;
  json["height"] = inspection.size.height;
  json["threshold"] = settings.byClass ? Json()
                                       : Json{{"method", settings.threshold.name()},
                                              {"low", hasLevels(settings.threshold) ? Json(inspection.low) : Json()},
                                              {"high", hasLevels(settings.threshold) ? Json(inspection.high) : Json()}};
  json["depth"] = inspection.depth;
  json["levels"] = inspection.levels ? Json{inspection.levels->low, inspection.levels->high} : Json();
  if (!inspection.note.empty()) json["note"] = inspection.note;
  json["regions"] = inspection.regions;
  json["blobs"] = Json::array();
  if (settings.expected) {
    const OpenRange& range = *settings.expected;
    json["expected"] = {{"min", range.min ? Json(*range.min) : Json()},
                        {"max", range.max ? Json(*range.max) : Json()},
                        {"met", inspection.met}};
  }
  for (const Blob& blob : inspection.blobs) json["blobs"].push_back(toJson(blob, settings, inspection.scored));
  if (!settings.rejected) return json;
  json["rejected"] = Json::array();
  for (const auto& [blob, by] : inspection.rejected) {
    json["rejected"].push_back(toJson(blob, settings, false));
    json["rejected"].back()["rejected_by"] = by;
    json["rejected"].back()["limit"] = limitOf(by, settings);
  }
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

// Text before and after the features of a line.
struct CsvEnds {
  std::string file;
  std::string number;
  std::string score;
  std::string_view rejectedBy;
};

void writeCsvLine(std::ostream& out, const Blob& blob, const InspectionSettings& settings,
                  const std::vector<Feature>& features, const CsvEnds& ends) {
  out << ends.file << ',' << ends.number << ',' << blob.label;
  for (const Feature& feature : features) out << ',' << shortest(valueOf(feature, blob, settings.mmPerPixel));
  out << ',' << ends.score;
  if (settings.rejected) out << ',' << ends.rejectedBy << ',';
  if (!ends.rejectedBy.empty()) out << limitOf(ends.rejectedBy, settings);
  out << '\n';
}

Fields timeFields(const std::string& name, const StageTimes& times) {
  Fields fields;
  for (size_t i = 0; i < kStageNames.size(); ++i) fields.push_back(fixed(1e3 * times.of(static_cast<Stage>(i)), 2));
  fields.push_back(fixed(1e3 * times.total(), 2));
  fields.push_back(name);
  return fields;
}

}  // namespace

std::string summary(const Inspection& inspection, const InspectionSettings& settings) {
  const std::string means = settings.byClass ? "classes" : thresholdOf(inspection, settings.threshold);
  return std::to_string(inspection.size.width) + " x " + std::to_string(inspection.size.height) + ", " + means + ", " +
         std::to_string(inspection.blobs.size()) + " of " + std::to_string(inspection.regions) + " regions" +
         (settings.mmPerPixel ? ", in millimetres" : "") + (inspection.met ? "" : ": not the expected number");
}

std::vector<Fields> blobTable(const Inspection& inspection, const InspectionSettings& settings) {
  const TableColumns columns(settings, inspection.scored);
  std::vector<Fields> lines{columns.titles("#")};
  for (const Blob& blob : inspection.blobs) lines.push_back(columns.line(std::to_string(lines.size()), blob));
  return lines;
}

std::vector<Fields> rejectedTable(const Inspection& inspection, const InspectionSettings& settings) {
  const TableColumns columns(settings, false);
  std::vector<Fields> lines{columns.titles("rejected by")};
  for (const auto& [blob, by] : inspection.rejected) {
    lines.push_back(columns.line(by + " " + limitOf(by, settings), blob));
  }
  return lines;
}

void writeTable(std::ostream& out, const Listing& listing) {
  bool first = true;
  for (const Outcome& outcome : listing.outcomes) {
    if (outcome.failure) continue;
    if (!first) out << '\n';
    first = false;
    writeSection(out, outcome, listing.settings);
  }
  if (listing.truth) out << '\n' << listing.truth->text();
}

void writeJson(std::ostream& out, const Listing& listing) {
  Json json = runJson(listing.settings.mmPerPixel ? "millimetre" : "pixel");
  json["images"] = Json::array();
  for (const Outcome& outcome : listing.outcomes) json["images"].push_back(toJson(outcome, listing.settings));
  if (listing.truth) json["truth"] = listing.truth->json();
  out << json.dump(2) << '\n';
}

void writeCsv(std::ostream& out, const Listing& listing) {
  const InspectionSettings& settings = listing.settings;
  const std::vector<Feature> listed = features(settings);
  out << "file,number,label";
  for (const Feature& feature : listed) out << ',' << feature.name;
  out << ",score" << (settings.rejected ? ",rejected_by,limit\n" : "\n");
  for (const Outcome& outcome : listing.outcomes) {
    const Inspection& inspection = outcome.inspection;
    const std::string file = csvField(outcome.file);
    size_t number = 0;
    for (const Blob& blob : inspection.blobs) {
      const std::string score = inspection.scored ? shortest(blob.score) : "";
      writeCsvLine(out, blob, settings, listed, {file, std::to_string(++number), score, ""});
    }
    for (const auto& [blob, by] : inspection.rejected) writeCsvLine(out, blob, settings, listed, {file, "", "", by});
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
