// dax annotate: shapes and text of a JSON file drawn on a picture.
#include <CLI/CLI.hpp>
#include <memory>

#include "base/text.h"
#include "command/commands.h"
#include "draw/annotation.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

struct AnnotateOptions {
  std::string picture, shapes, output;
};

int32_t formatOfResult(const std::string& output) {
  const auto format = imageFormatOf(formatName(output));
  const bool isPicture = format && *format != DAXI_IMAGE_PFM && *format != DAXI_IMAGE_RAW;
  if (!isPicture) reject("--out: " + inQuotes(output) + " ends in none of .png, .jpg, .tif, .bmp, .ppm, .pgm");
  return *format;
}

ExitStatus runAnnotate(const AnnotateOptions& options) {
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = formatOfResult(options.output);
  requireOther("--out", options.output, {{"the picture", options.picture}, {"the shapes", options.shapes}});
  const std::vector<Annotation> annotations = readAnnotations(options.shapes);
  Samples samples = readSamples(options.picture, true);
  if (samples.record.pages > 1) {
    say(options.picture, "the first of " + std::to_string(samples.record.pages) + " pages");
  }
  samples = annotated(samples, annotations, options.shapes);
  if (!samples.note.empty()) say(options.picture, samples.note);
  samples.record.bits = 0;
  try {
    writeFile(options.output, encode(samples.record, samples.bytes.data(), cfg));
  } catch (const Failure& failure) {
    throw Failure(failure.status(), printable(options.output) + ": " + failure.what());
  }
  return ExitStatus::kOk;
}

constexpr const char* kAnnotateHelp =
    "SHAPES.json is an object with a list, \"shapes\", which are drawn in their order, and if you like\n"
    "a \"style\" for all of them:\n\n"
    "  {\"style\": {\"color\": \"orange\", \"width\": 2},\n"
    "   \"shapes\": [\n"
    "     {\"type\": \"circle\", \"center\": [120, 80], \"radius\": 30},\n"
    "     {\"type\": \"arrow\", \"from\": [200, 30], \"to\": [150, 65], \"color\": \"#00c853\"},\n"
    "     {\"type\": \"text\", \"at\": [205, 30], \"text\": \"\u2300 60 px\", \"height\": 14}]}\n\n"
    "Points are [x, y] in pixels, with pixel centres at whole numbers, and may lie outside. Angles are\n"
    "degrees, clockwise. What each type takes; keys in brackets may be left out:\n\n"
    "  line       from, to\n"
    "  polyline   points; [closed]\n"
    "  polygon    points, or rings: a list of lists of points; [rule: even-odd or non-zero], [fill]\n"
    "  arrow      from, to; [head: its length, 10]\n"
    "  rectangle  center, size: [width, height]; [angle], [fill]\n"
    "  circle     center, radius; [fill]\n"
    "  ellipse    center, radii: [a, b]; [angle], [fill]\n"
    "  arc        center, radius, start, span: angles\n"
    "  marker     at; [kind: plus, cross, star, square, diamond, triangle, circle], [size: 12]\n"
    "  text       at, text, \"\\n\" begins a line; [height: of capitals, 16], [angle], [slant],\n"
    "             [align: left, centre, right], [anchor: baseline, top, middle, bottom], [line_step: 1.5]\n\n"
    "All of them, and the style, take color and fill: \"#rrggbb\" or a name such as red, green, blue,\n"
    "yellow, orange, black, white; width: of lines, in pixels, 0 for none (of text a tenth of its height);\n"
    "alpha: opacity, 0..1; antialias: true or false; cap: butt, round, square; join: round, miter, bevel.\n"
    "A key that is misspelled or out of range is refused, and its line and place are told.\n\n"
    "A grey picture becomes one of three channels if a color needs it. 16 bits are kept.\n\n"
    "Examples:\n"
    "  dax annotate parts.png shapes.json -o marked.png\n"
    "  dax annotate scan.tif shapes.json -o marked.jpg\n\n";

Command addAnnotate(CLI::App& app) {
  CLI::App* command = app.add_subcommand("annotate", "Draw shapes and text of a JSON file on a picture");
  auto options = std::make_shared<AnnotateOptions>();
  command->add_option("PICTURE", options->picture, "image (PNG, JPEG, TIFF, BMP, PGM, PPM)")->required()->type_name("");
  command->add_option("SHAPES", options->shapes, "what is drawn, JSON, see below")->required()->type_name("");
  command->add_option("-o,--out", options->output, "the result: .png, .jpg, .tif, .bmp, .ppm or .pgm")
      ->required()
      ->type_name("FILE");
  command->footer(kAnnotateHelp + std::string(kExitStatusHelp));
  return {command, [options] { return runAnnotate(*options); }};
}

const CommandRegistration annotateRegistration("annotate", addAnnotate);

}  // namespace
}  // namespace dax::tool
