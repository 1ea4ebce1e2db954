#include "command/samples/samples_output.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <map>
#include <new>

#include "base/text.h"
#include "base/workers.h"
#include "command/commands.h"
#include "io/inputs.h"
#include "io/output_file.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, int32_t> kConvertFormats = {
    {"bmp", DAXI_IMAGE_BMP},   {"pgm", DAXI_IMAGE_PNM},  {"ppm", DAXI_IMAGE_PNM},  {"pnm", DAXI_IMAGE_PNM},
    {"pfm", DAXI_IMAGE_PFM},   {"raw", DAXI_IMAGE_RAW},  {"png", DAXI_IMAGE_PNG},  {"jpg", DAXI_IMAGE_JPEG},
    {"jpeg", DAXI_IMAGE_JPEG}, {"tif", DAXI_IMAGE_TIFF}, {"tiff", DAXI_IMAGE_TIFF}};

int32_t formatOf(const SamplesOptions& options, bool severalResults) {
  std::string name = options.format;
  if (name.empty() && severalResults) reject("--format: of several images it must be told");
  if (name.empty()) {
    const std::string ending = fs::path(options.output).extension().string();
    for (const char c : ending) {
      if (c != '.') name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
  }
  const auto found = kConvertFormats.find(name);
  if (found != kConvertFormats.end()) return found->second;
  const std::string formats = "png, jpg, tif, bmp, pgm, ppm, pfm, raw";
  if (!options.format.empty()) reject("--format: " + inQuotes(options.format) + " is none of " + formats);
  reject(printable(options.output) + ": no ending of a format that is written (" + formats + ")");
}

// Why a format does not hold an image, and what helps; empty where it does.
std::string misfitOf(const DaxiImageRecord& record, int32_t format, const std::string& with) {
  const bool is8 = record.type == DAXI_SAMPLE_8U, is32 = record.type == DAXI_SAMPLE_32F;
  switch (format) {
    case DAXI_IMAGE_PFM:
      if (!is32) return "PFM holds floats: " + with + "--bits 32f";
      break;
    case DAXI_IMAGE_PNM:
    case DAXI_IMAGE_PNG:
      if (is32) return "the format holds no floats: " + with + "--bits 16 or 8, or tif or pfm";
      break;
    case DAXI_IMAGE_BMP:
    case DAXI_IMAGE_JPEG:
      if (!is8) return "the format holds 8 bits: " + with + "--bits 8";
      break;
  }
  const bool isOpaque = record.channels == 1 || record.channels == 3;
  const bool holdsOpacity = format == DAXI_IMAGE_PNG || format == DAXI_IMAGE_TIFF || format == DAXI_IMAGE_RAW ||
                            (format == DAXI_IMAGE_BMP && record.channels == 4);
  if (isOpaque || holdsOpacity) return "";
  return "the format holds no opacity, which " + with + "--channels " + (record.channels == 2 ? "0" : "0,1,2") +
         " drops";
}

// The channels of other colour spaces, and the range of 9 to 15 bits, which only PNM tells.
void sayWhatFilesDoNot(const fs::path& path, const Samples& samples, int32_t format, const std::string& with) {
  const DaxiImageRecord& record = samples.record;
  if (record.type == DAXI_SAMPLE_16U && record.maxValue != 65535 && format != DAXI_IMAGE_PNM) {
    say(path.string(), "white is " + std::to_string(record.maxValue) + ", which the file does not tell; " + with +
                           "--bits 16 stretches");
  }
  if (samples.names.empty()) return;
  std::string names;
  for (const std::string& each : samples.names) names += (names.empty() ? "" : ", ") + each;
  say(path.string(), (samples.names.size() == 1 ? "channel " : "channels ") + names + " (" + samples.coding + ")");
}

std::string encoded(const Samples& samples, const DaxiImageWriteCfg& cfg, const std::string& name,
                    const std::string& with) {
  const std::string misfit = misfitOf(samples.record, cfg.format, with);
  if (!misfit.empty()) throw Failure(ExitStatus::kCannotWrite, name + ": cannot be encoded: " + misfit);
  try {
    return encode(samples.record, samples.bytes.data(), cfg);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), name + ": " + failure.what());
  }
}

}  // namespace

DaxiImageWriteCfg writeCfg(const SamplesOptions& options, bool severalResults) {
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = formatOf(options, severalResults);
  cfg.quality = options.quality, cfg.level = options.level;
  cfg.compression = options.compression == "none" ? 0 : options.compression == "lzw" ? 1 : 2;
  return cfg;
}

void writeSamples(const fs::path& path, Samples& samples, const DaxiImageWriteCfg& cfg, const std::string& with) {
  // Fewer bits than 8 are kept where the format has them.
  DaxiImageRecord& record = samples.record;
  const bool packs = cfg.format == DAXI_IMAGE_PNG && record.channels == 1 && record.type == DAXI_SAMPLE_8U;
  if (!packs) record.bits = 0;
  writeFile(path, encoded(samples, cfg, printable(path.string()), with));
  sayWhatFilesDoNot(path, samples, cfg.format, with);
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

ExitStatus convertAll(const SamplesOptions& options, const std::vector<ConvertStep>& steps, const WriteResult& write) {
  std::vector<Failure> failures;
  const auto conversions = planConversions(options.inputs, options.output, "." + options.format);
  Progress progress(conversions.size(), "images");
  for (const Conversion& conversion : conversions) {
    const std::string input = conversion.input.string();
    try {
      Samples samples = stepped(input, readUpright(input), steps);
      write(conversion.output, samples);
      const bool isRenamed = conversion.output.stem() != conversion.input.stem();
      if (areSeveral(options.inputs) && isRenamed) say(input, "written as " + printable(conversion.output.string()));
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

// The last name on the command line is that of the result.
void addNames(CLI::App& command, SamplesOptions& options) {
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

void addFileOptions(CLI::App& command, SamplesOptions& options) {
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
}

}  // namespace dax::tool
