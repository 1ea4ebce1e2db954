// dax compare: what two images differ in.
#include <CLI/CLI.hpp>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/text.h"
#include "command/commands.h"
#include "command/number_option.h"
#include "compare/comparison.h"
#include "io/output_name.h"
#include "io/picture_file.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

constexpr double kMaxNumber = 1e30;

struct CompareOptions {
  std::string first, second;
  std::string out;
  // Limits have the precision with which results are told: what is told as 0.1 is not above 0.1.
  float tolerance = 0;
  std::optional<float> maxDifference, minPsnr, minSsim;
  std::optional<double> white, extent;
  bool json = false;
};

// Numbers of pictures are whole mostly.
std::string number(double value) {
  return shortest(static_cast<float>(value));
}

std::string significant(double value) {
  std::ostringstream text;
  text << std::setprecision(6) << value;
  return text.str();
}

std::string ofAll(uint64_t pixels, const Comparison& found) {
  const double share = static_cast<double>(pixels) / static_cast<double>(found.pixels);
  return std::to_string(pixels) + " of " + std::to_string(found.pixels) + " pixels (" + fixed(100 * share, 2) + " %)";
}

std::string leftOutOf(const Comparison& found) {
  return std::to_string(found.leftOut) + " pixels that are no finite numbers, " + std::to_string(found.unpaired) +
         " of them in one image only";
}

std::string whyNoSsim(const Comparison& found) {
  return found.leftOut > 0 ? "none where pixels are left out" : "none below 11 x 11 pixels";
}

std::string whereMax(const Comparison& found, int32_t channels) {
  if (found.max == 0) return "";
  return " at " + std::to_string(found.x) + ", " + std::to_string(found.y) +
         (channels > 1 ? ", channel " + std::to_string(found.channel) : "") + ": " + number(found.first) + " and " +
         number(found.second);
}

void writeComparison(const CompareOptions& options, const DaxiImageRecord& record, const Comparison& found,
                     double white, bool identical) {
  const auto line = [](const std::string& name, const std::string& value) {
    std::cout << "  " << std::left << std::setw(24) << name << value << '\n';
  };
  std::cout << printable(options.first) << " and " << printable(options.second)
            << (identical ? " are identical: " : " differ: ") << record.width << " x " << record.height << ", channels "
            << record.channels << ", white " << number(white) << '\n';
  line("differing", ofAll(found.differing, found));
  if (options.tolerance > 0) line("by more than " + number(options.tolerance), ofAll(found.overTolerance, found));
  if (found.leftOut > 0) line("left out", leftOutOf(found));
  line("largest difference", number(found.max) + whereMax(found, record.channels));
  line("mean difference", significant(found.meanDifference));
  line("mean absolute", significant(found.meanMagnitude));
  line("mean square", significant(found.meanSquare));
  line("PSNR", std::isinf(found.psnr) ? "infinite" : fixed(found.psnr, 2) + " dB");
  line("SSIM", found.ssim ? fixed(*found.ssim, 4) + " (windows of 11 x 11, Gaussian, sigma 1.5)" : whyNoSsim(found));
}

void writeCompareJson(const CompareOptions& options, const DaxiImageRecord& record, const Comparison& found,
                      double white, bool identical) {
  nlohmann::ordered_json json = runJson();
  json["first"] = printable(options.first);
  json["second"] = printable(options.second);
  json["width"] = record.width;
  json["height"] = record.height;
  json["channels"] = record.channels;
  json["white"] = white;
  json["identical"] = identical;
  json["pixels"] = found.pixels;
  json["differing"] = found.differing;
  json["tolerance"] = decimal(options.tolerance);
  json["over_tolerance"] = found.overTolerance;
  json["left_out"] = {{"pixels", found.leftOut}, {"in_one_only", found.unpaired}};
  json["max_difference"] = decimal(static_cast<float>(found.max));
  json["max_difference_at"] = {found.x, found.y};
  json["max_difference_channel"] = found.channel;
  json["max_difference_values"] = {decimal(static_cast<float>(found.first)), decimal(static_cast<float>(found.second))};
  json["mean_difference"] = found.meanDifference;
  json["mean_absolute_difference"] = found.meanMagnitude;
  json["mean_square_difference"] = found.meanSquare;
  json["psnr"] = found.psnr;  // null where it is infinite
  if (found.ssim) {
    json["ssim"] = *found.ssim;
  } else {
    json["ssim"] = nullptr;
  }
  std::cout << json.dump(2) << '\n';
}

bool isAtLeast(double value, float limit) {
  return static_cast<float>(value) >= limit;
}

// Why the images are not as alike as asked for; empty where they are.
std::string failedCheck(const CompareOptions& options, const Comparison& found) {
  if ((options.maxDifference || options.minPsnr) && found.unpaired > 0) return "pixels are numbers in one image only";
  if (options.maxDifference && static_cast<float>(found.max) > *options.maxDifference) {
    return "the largest difference is " + number(found.max) + ", above " + number(*options.maxDifference);
  }
  if (options.minPsnr && !isAtLeast(found.psnr, *options.minPsnr)) {
    return "PSNR is " + number(found.psnr) + " dB, below " + number(*options.minPsnr);
  }
  if (options.minSsim && !found.ssim) return "SSIM: " + whyNoSsim(found);
  if (options.minSsim && !isAtLeast(*found.ssim, *options.minSsim)) {
    return "SSIM is " + number(*found.ssim) + ", below " + number(*options.minSsim);
  }
  return "";
}

void writeDifference(const CompareOptions& options, const Samples& first, const Samples& second,
                     const Comparison& found) {
  const double extent = options.extent.value_or(found.max > 0 ? found.max : 1);
  writePicture(options.out, differencePicture(first, second, extent));
  say(options.out, "second - first: mid-grey 128 is 0, white is " + number(extent) + ", black " + number(-extent));
}

ExitStatus runCompare(const CompareOptions& options) {
  requirePictureName("--out", options.out);
  requireOther("--out", options.out, {{"an input", options.first}, {"an input", options.second}});
  const Samples first = readSamples(options.first, false), second = readSamples(options.second, false);
  const std::string names = printable(options.first) + " and " + printable(options.second);
  Comparison found;
  const double white = options.white.value_or(first.record.type == DAXI_SAMPLE_32F ? 1 : first.record.maxValue);
  try {
    requireComparable(first, second);
    found = compareSamples(first, second, options.tolerance, white);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), names + ": " + failure.what());
  }
  const bool identical = first.bytes == second.bytes || (found.differing == 0 && found.leftOut == 0);
  if (options.json) {
    writeCompareJson(options, first.record, found, white, identical);
  } else {
    writeComparison(options, first.record, found, white, identical);
  }
  finishOutput();
  if (found.leftOut > 0) std::cerr << "dax: " << names << ": left out " << leftOutOf(found) << '\n';
  if (!options.out.empty()) writeDifference(options, first, second, found);
  const std::string failed = failedCheck(options, found);
  if (failed.empty()) return ExitStatus::kOk;
  std::cerr << "dax: " << names << ": " << failed << '\n';
  return ExitStatus::kNotFound;
}

void addLimits(CLI::App& command, CompareOptions& options) {
  const auto limit = [&](const char* name, auto& value, double low, double high, const char* type, const char* help) {
    command.add_option(name, value, help)->check(numberOf(low, high))->type_name(type);
  };
  limit("--tolerance", options.tolerance, 0, kMaxNumber, "N", "also count pixels that differ by more than N");
  limit("--white", options.white, 1e-30, kMaxNumber, "N",
        "value that PSNR and SSIM take as the largest [that of the\n"
        "file; of floats 1]");
  limit("--max-difference", options.maxDifference, 0, kMaxNumber, "N",
        "status 8 if a sample differs by more than N; 0: at all");
  limit("--min-psnr", options.minPsnr, 0, 1000, "DB", "status 8 if PSNR is less");
  limit("--min-ssim", options.minSsim, -1, 1, "S", "status 8 if SSIM is less");
  limit("--extent", options.extent, 1e-30, kMaxNumber, "N", "difference that is white in --out [the largest]");
}

Command addCompare(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("compare", "Compare two images: PSNR, SSIM, largest difference, a picture of it");
  auto options = std::make_shared<CompareOptions>();
  const char* const help = "image (PNG, JPEG, TIFF, BMP, PGM, PPM, PFM), its first page upright";
  command->add_option("FIRST", options->first, help)->required()->type_name("");
  command->add_option("SECOND", options->second, "of the same size, channels and range of values")
      ->required()
      ->type_name("");
  command->add_flag("--json", options->json, "JSON instead of a table");
  addLimits(*command, *options);
  command
      ->add_option("--out", options->out,
                   "also write the differences, second - first, .png or .pgm: mid-\n"
                   "grey where there is none, brighter above; of colours that of\n"
                   "the channel that differs most")
      ->type_name("PICTURE");
  command->footer(
      "PSNR is 10 log10(white^2 / mean square). SSIM is that of Wang and others, 2004: windows of 11 x 11\n"
      "pixels with Gaussian weights of sigma 1.5, all that lie in the image, mean over the channels. In\n"
      "floats pixels that are no finite numbers are left out, counted and told; then there is no SSIM.\n"
      "Examples:\n"
      "  dax compare reference.png result.png\n"
      "  dax compare reference.png result.png --max-difference 1 --out difference.png\n"
      "  dax compare photo.png photo.jpg --min-psnr 38 --json\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runCompare(*options); }};
}

const CommandRegistration compareRegistration("compare", addCompare);

}  // namespace
}  // namespace dax::tool
