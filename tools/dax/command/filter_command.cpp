#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"
#include "command/commands.h"
#include "command/picture_options.h"
#include "draw/mask_sheet.h"
#include "filter/filter_chain.h"
#include "io/output_file.h"
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
  std::string steps;
  std::optional<Levels> levels;
  std::vector<std::pair<const FilterOption*, std::string>> given;  // as on the command line
};

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

void requireUsable(const FilterOptions& options, const FilterChain& chain) {
  requirePictureName("OUT", options.output);
  const auto requirePicture = [&](const char* name, const std::string& file) {
    if (chain.resizing()) reject(std::string(name) + ": " + chain.resizing() + " makes an image of another size");
    requireOther(name, file, {{"the input", options.input}, {"the result", options.output}});
  };
  if (!options.steps.empty()) {
    requireEnding("--steps", options.steps, {".png"});
    requirePicture("--steps", options.steps);
  }
  if (options.compare.empty()) return;
  requirePictureName("--compare", options.compare);
  requirePicture("--compare", options.compare);
  requireOther("--compare", options.compare, {{"--steps", options.steps}});
}

FilterChain chainOf(const FilterOptions& options) {
  FilterChain chain;
  for (const auto& [option, value] : options.given) chain.add(*option, value);
  if (chain.isEmpty()) reject("filter: which one? (dax filter --help tells them)");
  return chain;
}

template <class Pixel>
void compare(const FilterOptions& options, const PixelImage<Pixel>& before, const PixelImage<Pixel>& after) {
  const Difference<Pixel> difference(before, after);
  writePicture(options.compare, difference.stretched());
  print(difference.text() + '\n');
}

// Of the picture's values, where all filters up to the first mask take them, else of its grey.
AnyImage apply(const FilterOptions& options, const FilterChain& chain, const Picture& picture, const Levels& levels,
               bool is16) {
  std::vector<TitledImage> steps = {{"picture", picture.grey}};
  FilterChain::Watch watch;
  if (!options.steps.empty()) {
    watch = [&](const std::string& title, const AnyImage& image) { steps.push_back({title, asGrey(image, levels)}); };
  }
  AnyImage result;
  try {
    result = is16 ? chain.apply(picture.values, levels, watch) : chain.apply(picture.grey, watch);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), printable(options.input) + ": " + failure.what());
  }
  if (!options.steps.empty()) writeFile(options.steps, drawSheet(steps));
  return result;
}

ExitStatus run(const FilterOptions& options) {
  const FilterChain chain = chainOf(options);
  requireUsable(options, chain);
  Picture picture = readPicture(options.input, options.levels);
  const Levels levels = picture.levels.value_or(Levels{0, picture.maxValue});
  const bool is16 = picture.hasValues() && chain.has16() && !options.levels;
  if (is16) picture.levels.reset();
  sayNote(options.input, picture);
  const AnyImage result = apply(options, chain, picture, levels, is16);
  std::visit([&](const auto& image) { writePicture(options.output, image); }, result);
  if (options.compare.empty()) return ExitStatus::kOk;
  if (const auto* const values = std::get_if<Grey16Image>(&result)) {
    compare(options, picture.values, *values);
  } else {
    compare(options, picture.grey, std::get<GreyImage>(result));
  }
  return ExitStatus::kOk;
}

constexpr const char* kChains =
    "Filters work one after the other, in the order given; each may come several times. Some\n"
    "take a mask: pixels of 0, and pixels of one other value. Put one that makes a mask before\n"
    "them, --threshold, --threshold-dark, --hysteresis, --canny or --regional-maxima; what does\n"
    "not go together is refused. A picture of more than 8 bits keeps them up to the first mask.\n\n"
    "Examples:\n"
    "  dax filter noisy.png clean.png --median3 --compare specks.png\n"
    "  dax filter page.png ink.png --black-hat 15x15\n"
    "  dax filter parts.png framed.png --border mirror:16\n"
    "  dax filter page.png lines.png --median3 --threshold-dark sauvola:31,0.2 --thin --prune 4\n"
    "  dax filter coins.png coins-apart.png --gauss 1.5 --threshold otsu --fill-holes --split 2\n"
    "  dax filter metal.png scratches.png --top-hat 15x1 --hysteresis 25,45 --steps steps.png\n\n";

void addFilters(CLI::App& command, FilterOptions& options) {
  for (const FilterOption& filter : filterOptions()) {
    const auto add = [&given = options.given, &filter](const std::string& value) {
      given.emplace_back(&filter, value);
    };
    CLI::Option* const option =
        filter.valueName
            ? command.add_option_function<std::string>(filter.name, add, filter.help)->type_name(filter.valueName)
            : command.add_flag_callback(
                  filter.name, [add] { add(""); }, filter.help);
    option->trigger_on_parse()->group(kFilterGroups[filter.kind.group]);
  }
}

Command addFilter(CLI::App& app) {
  CLI::App* command = app.add_subcommand("filter", "Filter an image, and show what the filters changed");
  auto options = std::make_shared<FilterOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as grey")
      ->required()
      ->type_name("");
  command->add_option("OUT", options->output, "the result, .png or .pgm")->required()->type_name("");
  addFilters(*command, *options);
  command
      ->add_option("--compare", options->compare,
                   "also write how much every pixel changed, .png or .pgm: black\n"
                   "not at all, white most; and print how much that is")
      ->type_name("PICTURE")
      ->group("Result");
  command
      ->add_option("--steps", options->steps,
                   "also draw the picture and what each filter made of it,\n"
                   "side by side, .png")
      ->type_name("PICTURE")
      ->group("Result");
  addLevels(*command, options->levels, "Result",
            "values of the picture that become black and white; the\n"
            "result has 8 bits [pictures of more than 8 bits keep them,\n"
            "but where a filter, such as --box, takes 8 bits only the least\n"
            "to the largest value count as 0..255]");
  command->footer(kChains + std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration filterRegistration("filter", addFilter);

}  // namespace
}  // namespace dax::tool
