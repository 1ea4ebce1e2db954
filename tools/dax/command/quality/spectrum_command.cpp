// dax spectrum: what repeats itself in a picture, and the picture without it.
#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "base/columns.h"
#include "base/text.h"
#include "command/commands.h"
#include "io/output_name.h"
#include "io/picture.h"
#include "io/picture_file.h"
#include "model/spectrum.h"

namespace dax::tool {
namespace {

constexpr double kUsualSigma = 3;
constexpr int kMaxPeaks = 1000;

struct SpectrumOptions {
  std::string input, output, filtered, peaks;
  std::vector<std::string> notches;
  bool window = false;
};

// COLUMN,ROW or COLUMN,ROW,SIGMA
DaxiNotch notchOf(const std::string& text) {
  for (const size_t count : {size_t{2}, size_t{3}}) {
    const auto numbers = parseNumbers(text, count);
    if (!numbers) continue;
    const double sigma = count == 3 ? (*numbers)[2] : kUsualSigma;
    if (!(sigma >= 0.1 && sigma <= 1000)) reject("--notch: " + inQuotes(text) + ": the width is 0.1 to 1000");
    return {(*numbers)[0], (*numbers)[1], sigma};
  }
  reject("--notch: " + inQuotes(text) + " is not COLUMN,ROW or COLUMN,ROW,WIDTH");
}

void requireInside(const DaxiNotch& notch, DaxiSize size) {
  if (notch.u >= 0 && notch.u < size.width && notch.v >= 0 && notch.v < size.height) return;
  reject("--notch: " + fixed(notch.u, 1) + "," + fixed(notch.v, 1) + " is outside of the picture of " +
         std::to_string(size.width) + " x " + std::to_string(size.height));
}

std::vector<DaxiNotch> notchesOf(const SpectrumOptions& options) {
  std::vector<DaxiNotch> notches;
  for (const std::string& text : options.notches) notches.push_back(notchOf(text));
  if (notches.size() > 1024) reject("--notch: at most 1024 of them");
  if (notches.empty() && !options.filtered.empty()) reject("--filtered: needs a --notch");
  if (!notches.empty() && options.filtered.empty()) reject("--notch: needs --filtered");
  return notches;
}

// The wave of a place: pixels from crest to crest, across its crests, and the angle of this direction from x to y.
Fields lineOf(const SpectrumPeak& peak, DaxiSize size) {
  const int32_t columns = peak.column - size.width / 2, rows = peak.row - size.height / 2;
  const double u = 1.0 * columns / size.width, v = 1.0 * rows / size.height;
  return {std::to_string(peak.column), std::to_string(peak.row), fixed(1 / std::hypot(u, v), 2),
          fixed(std::atan2(v, u) * 180 / 3.14159265358979323846, 1), fixed(2 * peak.magnitude, 3)};
}

void printPeaks(const Spectrum& spectrum, size_t count) {
  const DaxiSize size = spectrum.size;
  std::vector<Fields> lines{{"column", "row", "period", "degrees", "amplitude"}};
  const int32_t closest = std::min(size.width, size.height) / 50 + 1;
  for (const SpectrumPeak& peak : strongestPeaks(spectrum, count, closest)) lines.push_back(lineOf(peak, size));
  writeColumns(std::cout, lines);
  finishOutput();
}

template <class Pixel>
void writeLevels(const std::string& path, DaxiSize size, const std::vector<int>& levels) {
  writePicture(path, PixelImage<Pixel>{size, std::vector<Pixel>(levels.begin(), levels.end())});
}

void requireUsable(const SpectrumOptions& options) {
  requirePictureName("OUT", options.output);
  requireOther("OUT", options.output, {{"the input", options.input}});
  requirePictureName("--filtered", options.filtered);
  requireOther("--filtered", options.filtered, {{"the input", options.input}, {"the spectrum", options.output}});
}

ExitStatus run(const SpectrumOptions& options) {
  const std::vector<DaxiNotch> notches = notchesOf(options);
  const auto count = options.peaks.empty() ? std::optional<int>(0) : parseInteger(options.peaks, 1, kMaxPeaks);
  if (!count) reject("--peaks: " + inQuotes(options.peaks) + " is not an integer of 1 to 1000");
  requireUsable(options);
  Picture picture = readPicture(options.input);
  if (picture.hasValues()) picture.levels.reset();
  for (const DaxiNotch& notch : notches) requireInside(notch, picture.grey.size);
  sayNote(options.input, picture);
  Spectrum spectrum = spectrumOf(picture, options.window);
  writePicture(options.output, pictureOf(spectrum));
  if (*count) printPeaks(spectrum, static_cast<size_t>(*count));
  if (notches.empty()) return ExitStatus::kOk;
  if (options.window) spectrum = spectrumOf(picture, false);
  takeOut(spectrum, notches);
  const std::vector<int> levels = levelsOf(spectrum, picture.hasValues() ? picture.maxValue : 255);
  if (picture.hasValues()) {
    writeLevels<uint16_t>(options.filtered, spectrum.size, levels);
  } else {
    writeLevels<uint8_t>(options.filtered, spectrum.size, levels);
  }
  return ExitStatus::kOk;
}

Command addSpectrum(CLI::App& app) {
  CLI::App* command = app.add_subcommand("spectrum", "Show what repeats itself in an image, and take it out");
  auto options = std::make_shared<SpectrumOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as grey")
      ->required()
      ->type_name("");
  command
      ->add_option("OUT", options->output,
                   "picture of the spectrum, ln(1 + |F|), .png or .pgm; frequency 0\n"
                   "is in the middle, column width / 2, row height / 2")
      ->required()
      ->type_name("");
  command
      ->add_option("--notch", options->notches,
                   "takes a place of that picture out, and the one opposite;\n"
                   "WIDTH is the standard deviation of the notch [3]; may come\n"
                   "several times")
      ->type_name("COLUMN,ROW[,WIDTH]")
      ->expected(1)
      ->take_all();
  command->add_option("--filtered", options->filtered, "the image without these places, .png or .pgm")
      ->type_name("PICTURE");
  command
      ->add_option("--peaks", options->peaks,
                   "also list the N strongest places, with the wave each stands\n"
                   "for: pixels from crest to crest, direction, grey levels")
      ->type_name("N");
  command->add_flag("--window", options->window,
                    "fade the edges of the image out before the picture is made:\n"
                    "no cross in the middle");
  command->footer(
      "Weave, printing screens and electrical noise are bright points in the spectrum, in pairs about\n"
      "the middle. Read a place from the picture or the list, and name it as --notch.\n"
      "Examples:\n"
      "  dax spectrum cloth.png spectrum.png --window --peaks 8\n"
      "  dax spectrum cloth.png spectrum.png --notch 96,128 --notch 128,64,5 --filtered smooth.png\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration spectrumRegistration("spectrum", addSpectrum);

}  // namespace
}  // namespace dax::tool
