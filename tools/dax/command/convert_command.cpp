// dax convert: the steps of tools/dax/convert, one after the other, between reading and writing.
#include <CLI/CLI.hpp>
#include <cctype>
#include <iostream>
#include <map>
#include <memory>

#include "base/text.h"
#include "command/commands.h"
#include "convert/convert_step.h"
#include "io/image_file.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct ConvertOptions {
  std::string input;
  std::string output;
  std::string format;
  std::string compression = "lzw";
  int quality = 95;
  int level = 6;
  std::map<const ConvertOption*, std::string> values;
  std::map<const ConvertOption*, CLI::Option*> given;
};

const std::map<std::string, int32_t> kConvertFormats = {
    {"bmp", DAXI_IMAGE_BMP},   {"pgm", DAXI_IMAGE_PNM},  {"ppm", DAXI_IMAGE_PNM},  {"pnm", DAXI_IMAGE_PNM},
    {"pfm", DAXI_IMAGE_PFM},   {"raw", DAXI_IMAGE_RAW},  {"png", DAXI_IMAGE_PNG},  {"jpg", DAXI_IMAGE_JPEG},
    {"jpeg", DAXI_IMAGE_JPEG}, {"tif", DAXI_IMAGE_TIFF}, {"tiff", DAXI_IMAGE_TIFF}};

int32_t formatOf(const ConvertOptions& options) {
  std::string name = options.format;
  if (name.empty()) {
    const std::string ending = fs::path(options.output).extension().string();
    for (const char c : ending) {
      if (c != '.') name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
  }
  const auto found = kConvertFormats.find(name);
  if (found != kConvertFormats.end()) return found->second;
  reject(printable(options.output) +
         ": no ending of a format that is written (png, jpg, tif, bmp, pgm, ppm, pfm, raw)");
}

DaxiImageWriteCfg writeCfg(const ConvertOptions& options) {
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = formatOf(options);
  cfg.quality = options.quality, cfg.level = options.level;
  cfg.compression = options.compression == "none" ? 0 : options.compression == "lzw" ? 1 : 2;
  return cfg;
}

// In the order in which steps work, whatever that of the command line.
std::vector<ConvertStep> stepsOf(const ConvertOptions& options) {
  std::vector<ConvertStep> steps;
  for (const ConvertOption* option : convertOptions()) {
    if (options.given.at(option)->count() == 0) continue;
    const std::string& value = options.values.at(option);
    ConvertStep step = option->parse(value);
    if (!step) reject(std::string(option->name) + ": " + inQuotes(value) + " is not " + option->form);
    steps.push_back(std::move(step));
  }
  return steps;
}

ExitStatus runConvert(const ConvertOptions& options) {
  const DaxiImageWriteCfg cfg = writeCfg(options);
  const std::vector<ConvertStep> steps = stepsOf(options);
  requireOther("OUT", options.output, {{"the input", options.input}});
  Samples samples = readSamples(options.input, false);
  if (samples.record.pages > 1) {
    std::cerr << "dax: " << printable(options.input) << ": the first of " << samples.record.pages << " pages\n";
  }
  for (const ConvertStep& step : steps) samples = step(samples);
  // Fewer bits than 8 are kept where the format has them.
  DaxiImageRecord& record = samples.record;
  const bool packs = cfg.format == DAXI_IMAGE_PNG && record.channels == 1 && record.type == DAXI_SAMPLE_8U;
  if (!packs) record.bits = 0;
  try {
    writeFile(options.output, encode(samples.record, samples.bytes.data(), cfg));
  } catch (const Failure& failure) {
    const std::string what = failure.what(), name = printable(options.output);
    throw Failure(failure.status(), what.starts_with(name) ? what : name + ": " + what);
  }
  return ExitStatus::kOk;
}

Command addConvert(CLI::App& app) {
  CLI::App* command = app.add_subcommand("convert", "Convert an image: its file format, its bits");
  auto options = std::make_shared<ConvertOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM, PFM); turned upright")
      ->required()
      ->type_name("");
  command->add_option("OUT", options->output, "the result; its ending tells the format")->required()->type_name("");
  for (const ConvertOption* option : convertOptions()) {
    options->given[option] =
        command->add_option(option->name, options->values[option], option->help)->type_name(option->valueName);
    options->given[option]->group("Steps, in this order");
  }
  command->add_option("--format", options->format, "png, jpg, tif, bmp, pgm, ppm, pfm or raw [the ending]")
      ->type_name("FORMAT")
      ->group("File");
  command->add_option("--quality", options->quality, "of JPEG, 1..100 [95]")
      ->check(CLI::Range(1, 100))
      ->type_name("N")
      ->group("File");
  command->add_option("--level", options->level, "how hard PNG and deflated TIFF are compressed, 0..9 [6]")
      ->check(CLI::Range(0, 9))
      ->type_name("N")
      ->group("File");
  command->add_option("--compression", options->compression, "of TIFF: none, lzw or deflate [lzw]")
      ->check(CLI::IsMember({"none", "lzw", "deflate"}))
      ->type_name("KIND")
      ->group("File");
  command->footer(
      "Examples:\n"
      "  dax convert scan.tif scan.png\n"
      "  dax convert scan.tif view.jpg --bits 8 --quality 90\n"
      "  dax convert heights.pfm heights.tif --compression deflate\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runConvert(*options); }};
}

const CommandRegistration convertRegistration("convert", addConvert);

}  // namespace
}  // namespace dax::tool
