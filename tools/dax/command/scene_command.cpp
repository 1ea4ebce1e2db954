#include <CLI/CLI.hpp>
#include <filesystem>
#include <limits>
#include <memory>

#include "base/text.h"
#include "command/commands.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "io/picture_file.h"
#include "scene/scene.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct SceneOptions {
  std::string image;
  std::string truth;
  std::string size = "1200x900";
  int64_t seed = 1;
  bool brushed = false;
};

DaxiSize parseSize(const std::string& text) {
  const auto sides = parseIntegerPair(text, 'x', kMinSceneSide, kMaxSceneSide);
  if (!sides) reject("--size: " + inQuotes(text) + " is not WxH with sides of 150..8192");
  return {sides->first, sides->second};
}

ExitStatus run(const SceneOptions& options) {
  const fs::path image = options.image;
  requirePictureName("OUT", image);
  requireOther("--truth", options.truth, {{"the picture", image}});
  const auto render = options.brushed ? renderBrushedMetal : renderScene;
  const Scene scene = render(parseSize(options.size), static_cast<uint64_t>(options.seed));
  writePicture(image, scene.image);
  if (!options.truth.empty()) writeFile(options.truth, truthToJson(scene.truth));
  return ExitStatus::kOk;
}

Command addRenderScene(CLI::App& app) {
  CLI::App* scene =
      app.add_subcommand("render-scene", "Draw a sample picture of parts or scratches whose measures are known");
  auto options = std::make_shared<SceneOptions>();
  scene->add_option("OUT", options->image, "the picture, .png or .pgm")->required()->type_name("");
  scene->add_option("--truth", options->truth, "write what the parts measure, for dax inspect --truth")
      ->type_name("FILE.json");
  scene->add_option("--size", options->size, "sides in pixels, 150..8192 [1200x900]")->type_name("WxH");
  scene->add_option("--seed", options->seed, "which of many scenes; one seed, one picture [1]")
      ->check(CLI::Range(int64_t{0}, std::numeric_limits<int64_t>::max()))
      ->type_name("N");
  scene->add_flag("--brushed", options->brushed, "scratches on brushed metal in place of parts");
  scene->footer(
      "Bright parts (discs, rings, rectangles, slots, hexagonal nuts, L brackets) and specks of\n"
      "dust lie on a darker, uneven background with noise; or bright scratches cross the streaks of\n"
      "brushed metal. The same seed gives the same pixels on every machine.\n\n"
      "Examples:\n"
      "  dax render-scene scene.png --truth scene.json\n"
      "  dax inspect scene.png --area 200.. --truth scene.json\n"
      "  dax render-scene metal.png --brushed --truth scratches.json\n\n" +
      std::string(kExitStatusHelp));
  return {scene, [options] { return run(*options); }};
}

const CommandRegistration sceneRegistration("render-scene", addRenderScene);

}  // namespace
}  // namespace dax::tool
