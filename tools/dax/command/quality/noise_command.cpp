// dax noise: of images, of frames of a scene, and of a camera.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/columns.h"
#include "base/text.h"
#include "command/commands.h"
#include "command/number_option.h"
#include "draw/series_plot.h"
#include "io/inputs.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "quality/image_noise.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

struct NoiseOptions {
  std::vector<std::string> inputs;
  bool frames = false;
  std::string dark, exposures, plot;
  std::optional<double> white;
  bool json = false;
};

std::vector<std::filesystem::path> filesOf(const std::vector<std::string>& inputs) {
  std::vector<std::filesystem::path> files;
  for (const Job& job : planJobs(inputs, {}, {})) files.push_back(job.input);
  return files;
}

double whiteOf(const NoiseOptions& options, const Picture& picture) {
  return options.white.value_or(picture.maxValue);
}

std::string significant(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", value);
  return text;
}

Json levelsJson(const std::vector<LevelNoise>& levels, const char* members) {
  Json json = Json::array();
  for (const LevelNoise& each : levels) {
    json.push_back({{"level", each.level}, {"deviation", each.deviation}, {members, each.count}});
  }
  return json;
}

void writeLevels(const std::vector<LevelNoise>& levels, const char* members) {
  if (levels.empty()) return;
  std::vector<Fields> lines{{"level", "deviation", members}};
  for (const LevelNoise& each : levels) {
    lines.push_back({fixed(each.level, 1), fixed(each.deviation, 3), std::to_string(each.count)});
  }
  std::cout << '\n';
  writeColumns(std::cout, lines);
}

void plotLevels(const std::string& plot, const std::string& name, const std::vector<LevelNoise>& levels) {
  if (plot.empty()) return;
  Series series{"deviation of the noise, grey levels", {}, {}, true, true};
  for (const LevelNoise& each : levels) series.x.push_back(each.level), series.y.push_back(each.deviation);
  writeFile(plot, drawSeries({"noise of " + name, "grey level", "deviation"}, {series}));
}

// --- Images, each for itself ---

struct NoiseResult {
  std::string file;  // printable
  DaxiSize size{};
  int depth = 0;
  PictureNoise noise{};
  std::optional<Failure> failure;
};

NoiseResult noiseOfFile(const NoiseOptions& options, const std::filesystem::path& file) {
  NoiseResult result;
  result.file = printable(file.string());
  try {
    const Picture picture = readPicture(file);
    result.size = picture.grey.size;
    result.depth = picture.depth();
    result.noise = measureNoise(picture, whiteOf(options, picture));
    plotLevels(options.plot, result.file, result.noise.levels);
  } catch (const Failure& failure) {
    const bool isNamed = failure.status() != ExitStatus::kRefused;
    result.failure = {failure.status(), isNamed ? failure.what() : result.file + ": " + failure.what()};
  }
  return result;
}

void writeNoiseJson(const std::vector<NoiseResult>& results) {
  Json json = runJson();
  json["images"] = Json::array();
  for (const NoiseResult& each : results) {
    Json image{{"file", each.file}};
    if (each.failure) {
      image["error"] = each.failure->what();
    } else {
      image["width"] = each.size.width;
      image["height"] = each.size.height;
      image["depth"] = each.depth;
      image["deviation"] = {{"mad", each.noise.mad}, {"immerkaer", each.noise.immerkaer}};
      image["levels"] = levelsJson(each.noise.levels, "blocks");
    }
    json["images"].push_back(image);
  }
  std::cout << json.dump(2) << '\n';
}

void writeNoiseTable(const std::vector<NoiseResult>& results) {
  std::vector<Fields> lines{{"image", "size", "bits", "noise (MAD)", "Immerkaer"}};
  for (const NoiseResult& each : results) {
    if (each.failure) continue;
    lines.push_back({each.file, std::to_string(each.size.width) + " x " + std::to_string(each.size.height),
                     std::to_string(each.depth), fixed(each.noise.mad, 3), fixed(each.noise.immerkaer, 3)});
  }
  if (lines.size() > 1) writeColumns(std::cout, lines);
  if (results.size() == 1) writeLevels(results.front().noise.levels, "blocks");
}

ExitStatus runImages(const NoiseOptions& options) {
  const auto files = filesOf(options.inputs);
  if (files.size() > 1 && !options.plot.empty()) reject("--plot: of one image, or with --frames or --dark");
  std::vector<NoiseResult> results;
  results.reserve(files.size());
  for (const auto& file : files) results.push_back(noiseOfFile(options, file));
  (options.json ? writeNoiseJson : writeNoiseTable)(results);
  finishOutput();
  for (const NoiseResult& each : results) {
    if (each.failure) report(*each.failure);
  }
  if (results.size() == 1 && results.front().failure) return results.front().failure->status();
  const bool failed = std::any_of(results.begin(), results.end(), [](const auto& r) { return r.failure.has_value(); });
  return failed ? ExitStatus::kSomeFailed : ExitStatus::kOk;
}

// --- Frames of a scene ---

Json noiseJson(const DaxiFrameNoise& noise) {
  return {{"mean", noise.mean}, {"variance", noise.variance}, {"black", noise.black}, {"white", noise.white}};
}

ExitStatus runFrames(const NoiseOptions& options) {
  const auto files = filesOf(options.inputs);
  const std::vector<Picture> frames = readFrames(files);
  const StackNoise found = measureFrames(frames, whiteOf(options, frames.front()));
  const std::string name = std::to_string(files.size()) + " frames";
  plotLevels(options.plot, name, found.levels);
  if (options.json) {
    Json json = runJson();
    for (const auto& file : files) json["frames"].push_back(printable(file.string()));
    json.update(noiseJson(found.noise));
    json["deviation"] = found.deviation;
    json["levels"] = levelsJson(found.levels, "pixels");
    std::cout << json.dump(2) << '\n';
  } else {
    std::cout << name << ": mean " << fixed(found.noise.mean, 2) << ", noise " << fixed(found.deviation, 3) << '\n';
    writeLevels(found.levels, "pixels");
  }
  finishOutput();
  return ExitStatus::kOk;
}

// --- A camera ---

struct TransferInput {
  std::string folder;  // printable
  size_t frames;
};

// Frames are read exposure by exposure.
DaxiFrameNoise noiseOfFolder(const NoiseOptions& options, const std::string& folder, TransferInput& input) {
  const std::vector<Picture> frames = readFrames(filesOf({folder}));
  input = {printable(folder), frames.size()};
  return measureFrames(frames, whiteOf(options, frames.front())).noise;
}

std::vector<std::string> flagsOf(uint32_t flags) {
  std::vector<std::string> names;
  if (flags & DAXI_PHOTON_TRANSFER_QUANTISED) names.emplace_back("quantised");
  if (flags & DAXI_PHOTON_TRANSFER_CLIPPED_DARK) names.emplace_back("clipped_dark");
  if (flags & DAXI_PHOTON_TRANSFER_NOT_SATURATED) names.emplace_back("not_saturated");
  if (flags & DAXI_PHOTON_TRANSFER_NO_LINEARITY) names.emplace_back("no_linearity");
  return names;
}

using TransferPoints = std::vector<DaxiPhotonTransferPoint>;

void writeTransferJson(const std::vector<TransferInput>& inputs, const TransferPoints& points,
                       const DaxiPhotonTransfer& found) {
  const bool hasLine = !(found.flags & DAXI_PHOTON_TRANSFER_NO_LINEARITY);
  const auto ofLine = [=](double value) { return hasLine ? Json(value) : Json(); };
  Json json = runJson();
  json["gain"] = found.gain;
  json["gain_standard_error"] = found.gainError;
  json["read_noise"] = found.readNoise;
  json["dark_level"] = found.darkLevel;
  json["saturation"] = found.saturation;
  json["full_well"] = found.fullWell;
  json["dynamic_range"] = found.dynamicRange;
  json["max_snr"] = found.maxSnr;
  json["responsivity"] = ofLine(found.responsivity);
  json["linearity_error"] = ofLine(found.linearityError);
  json["linearity_span"] = ofLine(found.linearitySpan);
  json["flags"] = flagsOf(found.flags);
  for (size_t i = 0; i < points.size(); ++i) {
    json["points"].push_back({{"folder", inputs[i].folder},
                              {"frames", inputs[i].frames},
                              {"exposure", points[i].exposure},
                              {"bright", noiseJson(points[i].bright)},
                              {"dark", noiseJson(points[i].dark)}});
  }
  std::cout << json.dump(2) << '\n';
}

void writeTransferTable(const std::vector<TransferInput>& inputs, const TransferPoints& points,
                        const DaxiPhotonTransfer& found) {
  std::vector<Fields> lines{{"folder", "frames", "signal", "variance"}};
  for (size_t i = 0; i < points.size(); ++i) {
    lines.push_back({inputs[i].folder, std::to_string(inputs[i].frames),
                     fixed(points[i].bright.mean - points[i].dark.mean, 2),
                     fixed(points[i].bright.variance - points[i].dark.variance, 3)});
  }
  writeColumns(std::cout, lines);
  const bool isBound = found.flags & DAXI_PHOTON_TRANSFER_QUANTISED;
  std::cout << "\ngain             " << significant(found.gain) << " +- " << significant(found.gainError)
            << " grey levels per electron\n"
            << "read noise       " << (isBound ? "below " : "") << significant(found.readNoise) << " electrons\n"
            << "dark level       " << significant(found.darkLevel) << '\n'
            << "saturation       " << significant(found.saturation) << " grey levels above it, "
            << significant(found.fullWell) << " electrons\n"
            << "dynamic range    " << significant(found.dynamicRange) << " : 1, "
            << fixed(20 * std::log10(found.dynamicRange), 1) << " dB\n"
            << "largest SNR      " << significant(found.maxSnr) << " : 1, " << fixed(20 * std::log10(found.maxSnr), 1)
            << " dB\n";
  if (found.flags & DAXI_PHOTON_TRANSFER_NO_LINEARITY) return;
  std::cout << "linearity error  " << significant(found.linearityError) << " %, span "
            << significant(found.linearitySpan) << " %\n";
}

std::string plotTransfer(const TransferPoints& points, const DaxiPhotonTransfer& found) {
  Series measured{"variance over time, less that of the dark", {}, {}, true, false};
  Series line{"gain " + significant(found.gain) + ", to 70 % of saturation", {0}, {0}, false, true};
  for (const DaxiPhotonTransferPoint& each : points) {
    measured.x.push_back(each.bright.mean - each.dark.mean);
    measured.y.push_back(each.bright.variance - each.dark.variance);
  }
  line.x.push_back(0.7 * found.saturation);
  line.y.push_back(0.7 * found.saturation * found.gain);
  const auto at = static_cast<size_t>(found.saturated);
  const Series saturation{"saturation", {measured.x[at], measured.x[at]}, {0, measured.y[at]}, false, true};
  return drawSeries({"photon transfer curve", "signal, grey levels above the dark", "variance"},
                    {measured, line, saturation});
}

void sayWarnings(uint32_t flags) {
  const auto warn = [&](uint32_t flag, const char* text) {
    if (flags & flag) std::cerr << "dax: " << text << '\n';
  };
  warn(DAXI_PHOTON_TRANSFER_QUANTISED, "the noise in the dark is less than that of rounding: read noise is a bound");
  warn(DAXI_PHOTON_TRANSFER_CLIPPED_DARK, "over 0.5 % of the dark pixels are black: the black level is too low");
  warn(DAXI_PHOTON_TRANSFER_NOT_SATURATED, "no exposure saturates: saturation is at least what is told");
}

ExitStatus runTransfer(const NoiseOptions& options) {
  TransferPoints points(options.inputs.size());
  std::vector<TransferInput> inputs(points.size());
  if (!options.exposures.empty()) {
    const auto exposures = parseNumbers(options.exposures, points.size());
    const auto isRight = [](double each) { return each >= 0; };
    if (!exposures || !std::all_of(exposures->begin(), exposures->end(), isRight)) {
      reject("--exposures: " + inQuotes(options.exposures) + " is not " + std::to_string(points.size()) +
             " numbers from 0 on, one for each folder");
    }
    for (size_t i = 0; i < points.size(); ++i) points[i].exposure = (*exposures)[i];
  }
  TransferInput darkInput;
  const DaxiFrameNoise dark = noiseOfFolder(options, options.dark, darkInput);
  for (size_t i = 0; i < points.size(); ++i) {
    points[i].bright = noiseOfFolder(options, options.inputs[i], inputs[i]);
    points[i].dark = dark;
  }
  const DaxiPhotonTransfer found = measureTransfer(points);
  if (!options.plot.empty()) writeFile(options.plot, plotTransfer(points, found));
  (options.json ? writeTransferJson : writeTransferTable)(inputs, points, found);
  finishOutput();
  sayWarnings(found.flags);
  return ExitStatus::kOk;
}

ExitStatus runNoise(const NoiseOptions& options) {
  requireEnding("--plot", options.plot, {".svg"});
  if (!options.exposures.empty() && options.dark.empty()) reject("--exposures: only with --dark");
  if (!options.dark.empty()) return runTransfer(options);
  return options.frames ? runFrames(options) : runImages(options);
}

Command addNoise(CLI::App& app) {
  CLI::App* command = app.add_subcommand("noise", "Noise of images, of frames of a scene, gain of a camera");
  auto options = std::make_shared<NoiseOptions>();
  command
      ->add_option("IMAGE", options->inputs,
                   "images (PNG, JPEG, TIFF, BMP, PGM, PPM), or folders of them,\n"
                   "taken as grey; with --dark folders, each with the frames of an\n"
                   "exposure")
      ->required()
      ->type_name("");
  auto* frames = command->add_flag("--frames", options->frames, "the images are frames of one scene that stands still");
  command
      ->add_option("--dark", options->dark,
                   "photon transfer: the folder of the frames without light, two or\n"
                   "more as in the other folders")
      ->type_name("FOLDER")
      ->excludes(frames);
  command
      ->add_option("--exposures", options->exposures,
                   "with --dark: the light of each folder, in any unit, for the\n"
                   "linearity")
      ->type_name("A,B,...");
  command
      ->add_option("--white", options->white,
                   "value from which pixels are clipped, 4095 for 12 bits in files of\n"
                   "16 [the largest that the file can hold]")
      ->check(numberOf(1, 65536))
      ->type_name("N");
  command->add_flag("--json", options->json, "JSON instead of tables");
  command->add_option("--plot", options->plot, "also draw the noise by grey level, or the photon transfer curve, .svg")
      ->type_name("PICTURE");
  command->footer(
      "Noise is told as its standard deviation in grey levels, without that of rounding. Of one image it\n"
      "comes from what remains of the finest detail: MAD, the median, stands texture and edges; Immerkaer\n"
      "is for smooth images. Frames tell what changes over time. The photon transfer curve is that of\n"
      "EMVA 1288. Images that were sharpened, smoothed, compressed or made of a colour pattern have noise\n"
      "of neighbours that depend on each other, which one image tells wrong.\n"
      "Examples:\n"
      "  dax noise part.png\n"
      "  dax noise --frames recording/ --plot noise.svg\n"
      "  dax noise e1/ e2/ e3/ e4/ e5/ e6/ --dark dark/ --exposures 1,2,4,8,16,32 --plot curve.svg\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runNoise(*options); }};
}

const CommandRegistration noiseRegistration("noise", addNoise);

}  // namespace
}  // namespace dax::tool
