// dax convert: the steps of tools/dax/convert, one after the other, between reading and writing.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <new>

#include "base/text.h"
#include "base/workers.h"
#include "command/commands.h"
#include "convert/channels.h"
#include "convert/convert_step.h"
#include "io/image_file.h"
#include "io/inputs.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct ConvertOptions {
  std::vector<std::string> inputs;
  std::string output;
  std::string format;
  std::string compression = "lzw";
  int quality = 95;
  int level = 6;
  bool merge = false, split = false;
  std::map<const ConvertOption*, std::string> values;
  std::map<const ConvertOption*, CLI::Option*> given;
};

bool haveSeveralResults(const ConvertOptions& options) {
  return !options.merge && areSeveral(options.inputs);
}

int32_t formatOf(const ConvertOptions& options) {
  std::string name = options.format;
  if (name.empty() && haveSeveralResults(options)) reject("--format: of several images it must be told");
  if (name.empty()) name = formatName(options.output);
  if (const auto found = imageFormatOf(name)) return *found;
  const std::string formats = "png, jpg, tif, bmp, pgm, ppm, pfm, raw";
  if (!options.format.empty()) reject("--format: " + inQuotes(options.format) + " is none of " + formats);
  reject(printable(options.output) + ": no ending of a format that is written (" + formats + ")");
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

// Why a format does not hold an image, and what helps; empty where it does.
std::string misfitOf(const DaxiImageRecord& record, int32_t format) {
  const bool is8 = record.type == DAXI_SAMPLE_8U, is32 = record.type == DAXI_SAMPLE_32F;
  switch (format) {
    case DAXI_IMAGE_PFM:
      if (!is32) return "PFM holds floats: --bits 32f";
      break;
    case DAXI_IMAGE_PNM:
    case DAXI_IMAGE_PNG:
      if (is32) return "the format holds no floats: --bits 16 or 8, or tif or pfm";
      break;
    case DAXI_IMAGE_BMP:
    case DAXI_IMAGE_JPEG:
      if (!is8) return "the format holds 8 bits: --bits 8";
      break;
  }
  const bool isOpaque = record.channels == 1 || record.channels == 3;
  const bool holdsOpacity = format == DAXI_IMAGE_PNG || format == DAXI_IMAGE_TIFF || format == DAXI_IMAGE_RAW ||
                            (format == DAXI_IMAGE_BMP && record.channels == 4);
  if (isOpaque || holdsOpacity) return "";
  return "the format holds no opacity, which --channels " + std::string(record.channels == 2 ? "0" : "0,1,2") +
         " drops";
}

// The channels of other colour spaces, and the range of 9 to 15 bits, which only PNM tells.
void sayWhatFilesDoNot(const fs::path& path, const Samples& samples, int32_t format) {
  const DaxiImageRecord& record = samples.record;
  if (record.type == DAXI_SAMPLE_16U && record.maxValue != 65535 && format != DAXI_IMAGE_PNM) {
    say(path.string(),
        "white is " + std::to_string(record.maxValue) + ", which the file does not tell; --bits 16 stretches");
  }
  if (samples.names.empty()) return;
  std::string names;
  for (const std::string& each : samples.names) names += (names.empty() ? "" : ", ") + each;
  say(path.string(), (samples.names.size() == 1 ? "channel " : "channels ") + names + " (" + samples.coding + ")");
}

std::string encoded(const Samples& samples, const DaxiImageWriteCfg& cfg, const std::string& name) {
  const std::string misfit = misfitOf(samples.record, cfg.format);
  if (!misfit.empty()) throw Failure(ExitStatus::kCannotWrite, name + ": cannot be encoded: " + misfit);
  try {
    return encode(samples.record, samples.bytes.data(), cfg);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), name + ": " + failure.what());
  }
}

void writeSamples(const fs::path& path, Samples& samples, const DaxiImageWriteCfg& cfg) {
  // Fewer bits than 8 are kept where the format has them.
  DaxiImageRecord& record = samples.record;
  const bool packs = cfg.format == DAXI_IMAGE_PNG && record.channels == 1 && record.type == DAXI_SAMPLE_8U;
  if (!packs) record.bits = 0;
  writeFile(path, encoded(samples, cfg, printable(path.string())));
  sayWhatFilesDoNot(path, samples, cfg.format);
}

// "disc-0.png" for channel 0 of "disc.png"
fs::path channelName(const fs::path& path, int32_t channel) {
  fs::path name = path.stem();
  name += "-" + std::to_string(channel) + path.extension().string();
  return path.parent_path() / name;
}

void writeResult(const ConvertOptions& options, const fs::path& path, Samples& samples, const DaxiImageWriteCfg& cfg) {
  if (!options.split) return writeSamples(path, samples, cfg);
  for (int32_t channel = 0; channel < samples.record.channels; ++channel) {
    const fs::path name = channelName(path, channel);
    for (const std::string& input : options.inputs) requireOther("--split", name, {{"an input", input}});
    Samples one = arranged(samples, {channel});
    writeSamples(name, one, cfg);
  }
}

Samples readUpright(const std::string& input) {
  Samples samples = readSamples(input, false);
  if (samples.record.pages > 1) say(input, "the first of " + std::to_string(samples.record.pages) + " pages");
  return samples;
}

// `name`: what messages are about.
Samples stepped(const std::string& name, Samples samples, const std::vector<ConvertStep>& steps) {
  try {
    for (const ConvertStep& step : steps) {
      samples = step(samples);
      if (!samples.note.empty()) say(name, samples.note);
    }
  } catch (const Failure& failure) {
    throw Failure(failure.status(), printable(name) + ": " + failure.what());
  }
  return samples;
}

void mergeAll(const ConvertOptions& options, const std::vector<ConvertStep>& steps, const DaxiImageWriteCfg& cfg) {
  const size_t count = options.inputs.size();
  if (count < 2 || count > 4) reject("--merge: two to four images, a channel each");
  for (const std::string& input : options.inputs) requireOther("OUT", options.output, {{"an input", input}});
  std::vector<Samples> planes;
  for (const std::string& input : options.inputs) planes.push_back(readUpright(input));
  Samples samples = stepped(options.output, merged(planes), steps);
  writeResult(options, options.output, samples, cfg);
}

ExitStatus convertAll(const ConvertOptions& options, const std::vector<ConvertStep>& steps,
                      const DaxiImageWriteCfg& cfg) {
  std::vector<Failure> failures;
  const auto conversions = planConversions(options.inputs, options.output, "." + options.format);
  Progress progress(conversions.size(), "images");
  for (const Conversion& conversion : conversions) {
    const std::string input = conversion.input.string();
    try {
      Samples samples = stepped(input, readUpright(input), steps);
      writeResult(options, conversion.output, samples, cfg);
      const bool isRenamed = conversion.output.stem() != conversion.input.stem();
      if (haveSeveralResults(options) && isRenamed) say(input, "written as " + printable(conversion.output.string()));
    } catch (const Failure& failure) {
      failures.push_back(failure);
    } catch (const std::bad_alloc&) {
      failures.emplace_back(ExitStatus::kInternal, printable(input) + ": out of memory");
    }
    progress.advance();
  }
  if (failures.empty()) return ExitStatus::kOk;
  if (conversions.size() == 1) throw failures.front();
  std::for_each(failures.begin(), failures.end(), report);
  return ExitStatus::kSomeFailed;
}

ExitStatus runConvert(const ConvertOptions& options) {
  const DaxiImageWriteCfg cfg = writeCfg(options);
  const std::vector<ConvertStep> steps = stepsOf(options);
  if (!options.merge) return convertAll(options, steps, cfg);
  mergeAll(options, steps, cfg);
  return ExitStatus::kOk;
}

// The last name on the command line is that of the result.
void addNames(CLI::App& command, ConvertOptions& options) {
  command
      .add_option_function<std::vector<std::string>>(
          "IN",
          [&](const std::vector<std::string>& names) {
            options.inputs = names;
            if (names.size() < 2) return;
            options.inputs.pop_back();
            command.get_option("OUT")->add_result(names.back());
          },
          "images (PNG, JPEG, TIFF, BMP, PGM, PPM, PFM), turned upright, or\n"
          "folders of all but PFM, with the folders in them")
      ->required()
      ->type_name("");
  command
      .add_option("OUT", options.output,
                  "the result, which replaces a file of its name; its ending\n"
                  "tells the format. Of several images a folder, which is made\n"
                  "where it is missing; results are named like the images, and a\n"
                  "second a.png a-2.png")
      ->required()
      ->type_name("");
}

void addFileOptions(CLI::App& command, ConvertOptions& options) {
  command.add_option("--format", options.format, "png, jpg, tif, bmp, pgm, ppm, pfm or raw [the ending]")
      ->type_name("FORMAT")
      ->group("File");
  command.add_option("--quality", options.quality, "of JPEG, 1..100 [95]")
      ->check(CLI::Range(1, 100))
      ->type_name("N")
      ->group("File");
  command.add_option("--level", options.level, "how hard PNG and deflated TIFF are compressed, 0..9 [6]")
      ->check(CLI::Range(0, 9))
      ->type_name("N")
      ->group("File");
  command.add_option("--compression", options.compression, "of TIFF: none, lzw or deflate [lzw]")
      ->check(CLI::IsMember({"none", "lzw", "deflate"}))
      ->type_name("KIND")
      ->group("File");
  command.add_flag("--merge", options.merge, "the images are the channels of one")->group("File");
  command.add_flag("--split", options.split, "a file for each channel: OUT-0.png, OUT-1.png, ...")->group("File");
}

Command addConvert(CLI::App& app) {
  CLI::App* command = app.add_subcommand("convert", "Convert images: file formats, bits, colours, channels, values");
  auto options = std::make_shared<ConvertOptions>();
  addNames(*command, *options);
  for (const ConvertOption* option : convertOptions()) {
    options->given[option] =
        command->add_option(option->name, options->values[option], option->help)->type_name(option->valueName);
    options->given[option]->group("Steps, in this order");
  }
  addFileOptions(*command, *options);
  command->footer(
      "A step refuses what it does not take, and tells what helps. Results in other colour spaces than\n"
      "red, green, blue are files like others: their channels are told, and --from turns them back.\n"
      "Examples:\n"
      "  dax convert scan.tif view.jpg --bits 8 --quality 90\n"
      "  dax convert heights.pfm heights.tif --compression deflate\n"
      "  dax convert raw.pgm colours.png --debayer rggb\n"
      "  dax convert photo.jpg hue.png --to hsv --pick 0\n"
      "  dax convert photo.jpg lab.tif --read-as 32f --to lab\n"
      "  dax convert dark.png bright.png --normalise 1..99 --gamma 0.6\n"
      "  dax convert mixed.tif apart.tif --unmix 0.8,0.1,0,0.2,0.8,0.1,0,0.1,0.9\n"
      "  dax convert radiograph.tif detail.png --read-as 16 --equalise clahe:8x8:3 --bits 8\n"
      "  dax convert recordings/ grey/ --format png --grey 601\n"
      "  dax convert red.png green.png blue.png colours.png --merge\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runConvert(*options); }};
}

const CommandRegistration convertRegistration("convert", addConvert);

}  // namespace
}  // namespace dax::tool
