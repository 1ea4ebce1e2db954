#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "base/text.h"
#include "command/commands.h"
#include "command/picture_options.h"
#include "filter/filter_option.h"
#include "io/output_name.h"
#include "io/picture.h"
#include "io/picture_file.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct FilterOptions {
  std::string input;
  std::string output;
  std::string compare;
  std::optional<Levels> levels;
  std::map<const FilterOption*, std::string> values;
  std::map<const FilterOption*, CLI::Option*> given;
};

const FilterOption& chosen(const FilterOptions& options) {
  const FilterOption* result = nullptr;
  for (const auto& [filter, option] : options.given) {
    if (option->count() == 0) continue;
    if (result) reject(std::string(filter->name) + " and " + result->name + ": one filter at a time");
    result = filter;
  }
  if (!result) reject("filter: which one? (dax filter --help tells them)");
  return *result;
}

// Differences between two images of the same size.
template <class Pixel>
class Difference {
 public:
  Difference(const PixelImage<Pixel>& before, const PixelImage<Pixel>& after)
      : picture_(makeImage<Pixel>(before.size)) {
    std::transform(before.pixels.begin(), before.pixels.end(), after.pixels.begin(), picture_.pixels.begin(),
                   [](int a, int b) { return static_cast<Pixel>(std::abs(a - b)); });
  }

  // The largest difference is white.
  GreyImage stretched() const {
    GreyImage result = makeGreyImage(picture_.size);
    const int max = std::max(greatest(), 1);
    std::transform(picture_.pixels.begin(), picture_.pixels.end(), result.pixels.begin(),
                   [max](int d) { return static_cast<uint8_t>((255 * d + max / 2) / max); });
    return result;
  }

  std::string text() const {
    double sum = 0;
    size_t changed = 0;
    for (const Pixel pixel : picture_.pixels) {
      sum += pixel;
      changed += pixel != 0;
    }
    const auto pixels = static_cast<double>(picture_.pixels.size());
    return fixed(100 * static_cast<double>(changed) / pixels, 1) + " % of the pixels changed, by " +
           fixed(sum / pixels, 2) + " grey levels on average and " + std::to_string(greatest()) + " at most";
  }

 private:
  int greatest() const { return *std::max_element(picture_.pixels.begin(), picture_.pixels.end()); }

  PixelImage<Pixel> picture_;
};

void requireUsable(const FilterOptions& options, const FilterOption& filter) {
  requirePictureName("OUT", options.output);
  if (options.compare.empty()) return;
  requirePictureName("--compare", options.compare);
  if (!filter.keepsSize) reject("--compare: " + std::string(filter.name) + " makes an image of another size");
  requireOther("--compare", options.compare, {{"the input", options.input}, {"the result", options.output}});
}

template <class Pixel, class Filter>
void apply(const FilterOptions& options, const PixelImage<Pixel>& image, const Filter& filter) {
  PixelImage<Pixel> result;
  try {
    result = filter(image);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), printable(options.input) + ": " + failure.what());
  }
  writePicture(options.output, result);
  if (options.compare.empty()) return;
  const Difference<Pixel> difference(image, result);
  writePicture(options.compare, difference.stretched());
  print(difference.text() + '\n');
}

ExitStatus run(const FilterOptions& options) {
  const FilterOption& option = chosen(options);
  const std::string& value = options.values.at(&option);
  const ImageFilter filter = option.parse(value);
  if (!filter) reject(std::string(option.name) + ": " + inQuotes(value) + " is not " + option.form);
  requireUsable(options, option);
  Picture picture = readPicture(options.input, options.levels);
  const bool is16Bit = picture.hasValues() && filter.on16 && !options.levels;
  if (is16Bit) picture.levels.reset();
  sayNote(options.input, picture);
  if (is16Bit) {
    apply(options, picture.values, filter.on16);
  } else {
    apply(options, picture.grey, filter.on8);
  }
  return ExitStatus::kOk;
}

Command addFilter(CLI::App& app) {
  CLI::App* command = app.add_subcommand("filter", "Filter an image, and show what the filter changed");
  auto options = std::make_shared<FilterOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as grey")
      ->required()
      ->type_name("");
  command->add_option("OUT", options->output, "the result, .png or .pgm")->required()->type_name("");
  for (const FilterOption& filter : filterOptions()) {
    CLI::Option*& given = options->given[&filter];
    std::string& value = options->values[&filter];
    given = filter.valueName ? command->add_option(filter.name, value, filter.help)->type_name(filter.valueName)
                             : command->add_flag(filter.name, filter.help);
    given->group("Filters, one of which");
  }
  command
      ->add_option("--compare", options->compare,
                   "also write how much every pixel changed, .png or .pgm: black\n"
                   "not at all, white most; and print how much that is")
      ->type_name("PICTURE")
      ->group("Result");
  addLevels(*command, options->levels, "Result",
            "values of the picture that become black and white; the\n"
            "result has 8 bits [pictures of more than 8 bits keep them,\n"
            "but --box and --erode take the least to the largest value\n"
            "as 0..255]");
  command->footer(
      "Examples:\n"
      "  dax filter parts.png smooth.png --mean 15x15\n"
      "  dax filter noisy.png clean.png --median3 --compare specks.png\n"
      "  dax filter mask.png cores.png --erode 3\n"
      "  dax filter page.png ink.png --black-hat 15x15\n"
      "  dax filter parts.png framed.png --border mirror:16\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration filterRegistration("filter", addFilter);

}  // namespace
}  // namespace dax::tool
