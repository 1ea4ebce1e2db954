#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <limits>
#include <memory>

#include "base/text.h"
#include "cloud/cloud_file.h"
#include "command/commands.h"
#include "draw/range_picture.h"
#include "io/image_file.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "io/picture.h"
#include "io/picture_file.h"
#include "model/range_convert.h"
#include "report/range_info.h"
#include "scene/range_scene.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

constexpr int kBias = 1 << 15;

struct RangeOptions {
  std::string input;
  std::string output;
  std::string mask;
  std::string scale;
  std::string offset;
  std::string limits;
  std::string size = "900x600";
  int bias = kBias;
  int maxSize = 100;
  int difference = 50;
  int64_t seed = 1;
  bool json = false;
  bool text = false;
};

DAX3D_VECTOR_32F parseVector(const char* option, const std::string& text) {
  const auto v = parseNumbers(text, 3);
  if (!v) reject(std::string(option) + ": " + inQuotes(text) + " is not X,Y,Z");
  return {static_cast<float>((*v)[0]), static_cast<float>((*v)[1]), static_cast<float>((*v)[2])};
}

std::optional<RangeHeader> parseHeader(const RangeOptions& options) {
  if (options.scale.empty() && options.offset.empty()) return std::nullopt;
  RangeHeader header;
  if (!options.scale.empty()) header.scale = parseVector("--scale", options.scale);
  if (!options.offset.empty()) header.offset = parseVector("--offset", options.offset);
  constexpr float kMin = std::numeric_limits<float>::epsilon();
  if (!(std::abs(header.scale.x) > kMin && std::abs(header.scale.y) > kMin && header.scale.z >= kMin)) {
    reject("--scale: x and y must be above 1.2e-7 or below -1.2e-7, z must be above 1.2e-7");
  }
  return header;
}

bool isPicture(const fs::path& path) {
  return path.extension() == ".png" || path.extension() == ".tif" || path.extension() == ".tiff";
}

bool isOtherName(const fs::path& path) {
  return hasImageExtension(path) || hasCloudExtension(path);
}

// A range file with such a name would be taken for a picture or cloud.
void requireRangeName(const fs::path& path) {
  if (isOtherName(path)) reject(printable(path.string()) + ": is the name of a picture or cloud; OUT is a range file");
}

RangeImage readRangePicture(const RangeOptions& options, const RangeHeader& header) {
  const ImageFile file = ImageFile::read(options.input);
  if (file.maxValue() == 255) {
    throw Failure(ExitStatus::kCannotRead, printable(options.input) + ": does not have 16 bits a pixel");
  }
  if (file.pages() > 1) say(options.input, "the first of " + std::to_string(file.pages()) + " pages");
  std::optional<GreyImage> mask;
  if (!options.mask.empty()) mask = readMask(options.mask);
  return fromPicture(file.toGrey16(), mask ? &*mask : nullptr, options.bias, header);
}

RangeImage readPoints(const RangeOptions& options, const std::optional<RangeHeader>& header) {
  const Cloud cloud = readCloud(options.input);
  Projection done;
  RangeImage image = fromCloud(cloud, header, done);
  const std::string all = " of " + std::to_string(cloud.size()) + " points ";
  if (done.resampled) {
    const DAX3D_VECTOR_32F& step = image.record().scale;
    say(options.input, "no lattice of columns, rows and values: resampled in steps of " + shortest(step.x) + ", " +
                           shortest(step.y) + ", " + shortest(step.z));
  }
  if (done.hidden > 0) say(options.input, std::to_string(done.hidden) + all + "hidden by higher ones of their pixel");
  if (done.outside > 0) say(options.input, std::to_string(done.outside) + all + "outside the range image");
  if (done.offsetLoss > 1e-3) {
    say(options.output, "far from 0: the offset, a float, is off by " + fixed(done.offsetLoss, 3) + " steps");
  }
  return image;
}

void writePictures(const RangeImage& image, const RangeOptions& options) {
  const Grey16Image picture = toPicture(image, options.bias);
  writeFile(options.output, fs::path(options.output).extension() == ".png" ? encodePng(picture) : encodeTiff(picture));
  if (!options.mask.empty()) writePicture(options.mask, maskPicture(image));
}

// From a picture or a cloud.
ExitStatus makeRange(const RangeOptions& options) {
  const fs::path input = options.input;
  const bool picture = isPicture(input);
  if (!picture && !hasCloudExtension(input)) {
    reject("range convert: of " + printable(options.input) + " and " + printable(options.output) +
           " one must be a 16-bit picture (.png, .tif) or a cloud (.ply, .pcd)");
  }
  requireRangeName(options.output);
  if (!picture && !options.mask.empty()) reject("--mask: goes with pictures");
  const std::optional<RangeHeader> header = parseHeader(options);
  const RangeImage image =
      picture ? readRangePicture(options, header.value_or(RangeHeader())) : readPoints(options, header);
  image.write(options.output);
  return ExitStatus::kOk;
}

ExitStatus convert(const RangeOptions& options) {
  const fs::path output = options.output;
  if (!isPicture(output) && !hasCloudExtension(output)) return makeRange(options);
  if (isOtherName(options.input)) {
    reject("range convert: one of " + printable(options.input) + " and " + printable(options.output) +
           " must be a range file");
  }
  if (!options.scale.empty() || !options.offset.empty()) reject("--scale, --offset: the range file has its own");
  if (!options.mask.empty() && !isPicture(output)) reject("--mask: goes with pictures");
  requirePictureName("--mask", options.mask);
  requireOther("--mask", options.mask, {{"the input", options.input}, {"the picture", options.output}});
  const RangeImage image = RangeImage::read(options.input);
  if (isPicture(output)) {
    writePictures(image, options);
  } else {
    writeCloud(output, image.toCloud(), options.text);
  }
  return ExitStatus::kOk;
}

ExitStatus info(const RangeOptions& options) {
  const RangeImage image = RangeImage::read(options.input);
  print(options.json ? rangeInfoJson(printable(options.input), image) : rangeInfoText(image));
  return ExitStatus::kOk;
}

ExitStatus render(const RangeOptions& options) {
  requireEnding("OUT", options.output, {".png"});
  std::optional<OpenRange> limits;
  if (!options.limits.empty()) {
    limits = parseRange(options.limits);
    if (!limits) reject("--limits: " + inQuotes(options.limits) + " is no range such as 1..2, 1.. or ..2");
  }
  const RangeImage image = RangeImage::read(options.input);
  auto [low, high] = usualHeights(image);
  if (limits && limits->min) low = static_cast<float>(*limits->min);
  if (limits && limits->max) high = static_cast<float>(*limits->max);
  if (limits && low > high) {
    reject("--limits: " + inQuotes(options.limits) + " holds none of the usual heights; give both ends");
  }
  writeFile(options.output, drawHeights(image, low, high));
  return ExitStatus::kOk;
}

ExitStatus despeckle(const RangeOptions& options) {
  requireRangeName(options.output);
  RangeImage image = RangeImage::read(options.input);
  const size_t cleared = image.clearSpeckles(options.maxSize, options.difference);
  image.write(options.output);
  print(std::to_string(cleared) + " of " + std::to_string(image.values().size()) + " pixels cleared\n");
  return ExitStatus::kOk;
}

ExitStatus scene(const RangeOptions& options) {
  requireRangeName(options.output);
  const auto sides = parseIntegerPair(options.size, 'x', 150, 8192);
  if (!sides) reject("--size: " + inQuotes(options.size) + " is not WxH with sides of 150..8192");
  renderRangeScene({sides->first, sides->second}, static_cast<uint64_t>(options.seed)).write(options.output);
  return ExitStatus::kOk;
}

using RangeStep = ExitStatus (*)(const RangeOptions&);
using RangeSteps = std::vector<std::pair<CLI::App*, RangeStep>>;

CLI::App* addStep(CLI::App& range, RangeSteps& steps, RangeStep step, const char* name, const char* help) {
  CLI::App* const app = range.add_subcommand(name, help);
  app->footer(kExitStatusHelp);
  steps.emplace_back(app, step);
  return app;
}

void addInput(CLI::App& app, RangeOptions& options, const char* help) {
  app.add_option("IN", options.input, help)->required()->type_name("");
}

void addOutput(CLI::App& app, RangeOptions& options, const char* help) {
  app.add_option("OUT", options.output, help)->required()->type_name("");
}

void addConvert(CLI::App& range, RangeSteps& steps, RangeOptions& options) {
  CLI::App& app = *addStep(range, steps, convert, "convert", "Convert to and from 16-bit pictures and point clouds");
  addInput(app, options, "range file, 16-bit picture (.png, .tif) or cloud (.ply, .pcd)");
  addOutput(app, options, "picture or cloud, by its name; any other name: range file");
  app.add_option("--mask", options.mask,
                 "picture of the validity: read beside a picture, or\nwritten beside one; white is valid")
      ->type_name("PICTURE");
  app.add_option("--bias", options.bias, "grey value of the range value 0 [32768]")
      ->check(CLI::Range(0, 65535))
      ->type_name("N");
  app.add_option("--scale", options.scale,
                 "of a new range file: length a column, a row, a count\n[1,1,1; for clouds the lattice of the points]")
      ->type_name("X,Y,Z");
  app.add_option("--offset", options.offset, "of a new range file: place of pixel 0,0 and value 0")->type_name("X,Y,Z");
  app.add_flag("--ascii", options.text, "write clouds as text");
  app.footer(
      "Without --mask the black pixels of a picture are invalid. A cloud is seen along z: at one\n"
      "pixel the highest point stays.\n\n" +
      std::string(kExitStatusHelp));
}

void addSteps(CLI::App& range, RangeSteps& steps, RangeOptions& options) {
  CLI::App* app = addStep(range, steps, info, "info", "Tell what a range file holds");
  addInput(*app, options, "range file");
  app->add_flag("--json", options.json, "as JSON");
  addConvert(range, steps, options);
  app = addStep(range, steps, render, "render", "Draw heights in colours");
  addInput(*app, options, "range file");
  addOutput(*app, options, "the picture, .png");
  app->add_option("--limits", options.limits,
                  "heights of the first and last colour [those of the middle\n98 % of the pixels]")
      ->type_name("A..B");
  app = addStep(range, steps, despeckle, "despeckle", "Clear small patches that stand apart");
  addInput(*app, options, "range file");
  addOutput(*app, options, "range file");
  app->add_option("--size", options.maxSize, "maximum size of a patch, pixels [100]")
      ->check(CLI::Range(0, 1 << 30))
      ->type_name("N");
  app->add_option("--step", options.difference,
                  "difference that sets neighbours apart, in counts: heights are\ncounts times the scale of z [50]")
      ->check(CLI::Range(1, 1 << 17))
      ->type_name("N");
  app = addStep(range, steps, scene, "scene", "Make a sample: machined parts, with noise, reflections, drop-outs");
  addOutput(*app, options, "range file");
  app->add_option("--size", options.size, "sides in pixels, 150..8192 [900x600]")->type_name("WxH");
  app->add_option("--seed", options.seed, "which of many scenes [1]")->check(CLI::NonNegativeNumber)->type_name("N");
}

Command addRange(CLI::App& app) {
  CLI::App* const range = app.add_subcommand("range", "Look at range images, and convert them");
  auto options = std::make_shared<RangeOptions>();
  auto steps = std::make_shared<RangeSteps>();
  range->require_subcommand(1);
  addSteps(*range, *steps, *options);
  range->footer(
      "Examples:\n"
      "  dax range scene parts.range\n"
      "  dax range info parts.range\n"
      "  dax range despeckle parts.range clean.range --size 60 --step 300\n"
      "  dax range render clean.range heights.png\n"
      "  dax range convert clean.range heights.tif --mask valid.png\n"
      "  dax range convert clean.range parts.ply\n\n"
      "dax range COMMAND --help tells all of a command.\n\n" +
      std::string(kExitStatusHelp));
  return {range, [options, steps] {
            for (const auto& [command, step] : *steps) {
              if (command->parsed()) return step(*options);
            }
            return ExitStatus::kUsage;
          }};
}

const CommandRegistration rangeRegistration("range", addRange);

}  // namespace
}  // namespace dax::tool
