#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <thread>

#include "base/text.h"
#include "cloud/cloud_file.h"
#include "cloud/cloud_stats.h"
#include "cloud/cloud_steps.h"
#include "command/commands.h"
#include "command/number_option.h"
#include "draw/cloud_picture.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct CloudOptions {
  std::string input;
  std::string output;
  std::string leaf;
  std::string viewpoint;
  std::string picture;
  std::string view;
  std::string up = "z";
  std::string size = "900x700";
  int k = 16;
  double radius = 0;
  uint32_t threads = 0;
  bool text = false;
};

std::vector<double> numbersIn(const char* option, const std::string& text, size_t count, const char* form) {
  const auto numbers = parseNumbers(text, count);
  if (!numbers) reject(std::string(option) + ": " + inQuotes(text) + " is not " + form);
  return *numbers;
}

DAX3D_VECTOR_32F parseVector(const char* option, const std::string& text, const char* form) {
  const auto v = numbersIn(option, text, 3, form);
  return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

DAX3D_VECTOR_32F parseLeaf(const std::string& text) {
  const bool cube = text.find(',') == std::string::npos;
  const auto leaf = parseVector("--leaf", cube ? text + "," + text + "," + text : text, "a size, or X,Y,Z");
  constexpr float kMin = std::numeric_limits<float>::epsilon();
  if (!(std::min({leaf.x, leaf.y, leaf.z}) > kMin)) reject("--leaf: sizes must be above 1.2e-7");
  return leaf;
}

View parseView(const CloudOptions& options) {
  View view;
  if (!options.view.empty()) {
    const auto angles = numbersIn("--view", options.view, 2, "AZIMUTH,ELEVATION");
    view.azimuth = angles[0];
    view.elevation = angles[1];
  }
  view.up = options.up[0] - 'x';
  const auto sides = parseIntegerPair(options.size, 'x', 64, 8192);
  if (!sides) reject("--picture-size: " + inQuotes(options.size) + " is not WxH with sides of 64..8192");
  view.size = {sides->first, sides->second};
  return view;
}

// The command line, checked before any work is done.
struct Plan {
  explicit Plan(const CloudOptions& options) : view(parseView(options)) {
    requireEnding("--picture", options.picture, {".png"});
    requireOther("--picture", options.picture, {{"the input", options.input}, {"the result", options.output}});
  }

  View view;
};

Pool startPool(const CloudOptions& options) {
  const uint32_t processors = std::max(1U, std::thread::hardware_concurrency());
  return Pool(std::min(options.threads == 0 ? processors : options.threads, kMaxCloudThreads));
}

void sayLeftOut(const std::string& file, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + printable(name);
  if (!text.empty()) say(file, "left out: " + text);
}

Cloud readInput(const CloudOptions& options) {
  Cloud cloud = readCloud(options.input);
  if (cloud.dropped > 0) {
    say(options.input, std::to_string(cloud.dropped) + " points without finite coordinates left out");
  }
  if (cloud.isShifted()) say(options.input, "far from 0: computed from the origin " + placeText(cloud.origin));
  return cloud;
}

void draw(Cloud cloud, const CloudOptions& options, const Plan& plan, const Workers& workers) {
  if (options.picture.empty()) return;
  if (cloud.normals.empty()) estimateNormals(cloud, {}, workers);
  writeFile(options.picture, drawCloud(cloud, plan.view));
}

DAX3D_VECTOR_32F fromOrigin(const Cloud& cloud, const std::vector<double>& place) {
  const auto along = [&](size_t axis) { return static_cast<float>(place[axis] - cloud.origin[axis]); };
  return {along(0), along(1), along(2)};
}

ExitStatus normals(const CloudOptions& options) {
  requireEnding("OUT", options.output, {".ply", ".pcd"});
  const Plan plan(options);
  NormalSettings settings;
  settings.k = options.k;
  if (options.radius > 0) settings.radius = static_cast<float>(options.radius);
  std::optional<std::vector<double>> viewpoint;
  if (!options.viewpoint.empty()) viewpoint = numbersIn("--viewpoint", options.viewpoint, 3, "X,Y,Z");
  Cloud cloud = readInput(options);
  if (viewpoint) settings.viewpoint = fromOrigin(cloud, *viewpoint);
  const Pool pool = startPool(options);
  const size_t missing = estimateNormals(cloud, settings, pool.workers());
  if (missing > 0) {
    say(options.input, std::to_string(missing) + " of " + std::to_string(cloud.size()) +
                           " points have too few neighbours for a normal; theirs is 0, 0, 1");
  }
  sayLeftOut(options.input, cloud.leftOut);
  sayLeftOut(options.output, writeCloud(options.output, cloud, options.text));
  draw(std::move(cloud), options, plan, pool.workers());
  return ExitStatus::kOk;
}

ExitStatus thin(const CloudOptions& options) {
  requireEnding("OUT", options.output, {".ply", ".pcd"});
  const Plan plan(options);
  const DAX3D_VECTOR_32F leaf = parseLeaf(options.leaf);
  const Cloud cloud = readInput(options);
  Cloud thinned = downsample(cloud, leaf);
  std::vector<std::string> leftOut = cloud.leftOut;
  if (!cloud.normals.empty()) leftOut.emplace_back("normals");
  for (const Column& field : cloud.fields) leftOut.push_back(field.name);
  sayLeftOut(options.input, leftOut);
  writeCloud(options.output, thinned, options.text);
  print(std::to_string(thinned.size()) + " of " + std::to_string(cloud.size()) + " points\n");
  const Pool pool = startPool(options);
  draw(std::move(thinned), options, plan, pool.workers());
  return ExitStatus::kOk;
}

ExitStatus knn(const CloudOptions& options) {
  const Plan plan(options);
  requireEnding("OUT", options.output, {".csv"});
  Cloud cloud = readInput(options);
  const Pool pool = startPool(options);
  std::string table = "point,rank,neighbour,distance\n";
  forNeighbours(cloud, options.k, pool.workers(), [&](const Neighbours& block) {
    for (size_t i = 0; i < block.indices.size(); ++i) {
      const size_t rank = i % options.k;
      if (rank >= static_cast<size_t>(block.found)) continue;
      table += std::to_string(block.first + i / options.k) + "," + std::to_string(rank) + "," +
               std::to_string(block.indices[i]) + "," + shortest(std::sqrt(block.distances[i])) + "\n";
    }
  });
  writeFile(options.output, table);
  draw(std::move(cloud), options, plan, pool.workers());
  return ExitStatus::kOk;
}

ExitStatus stats(const CloudOptions& options) {
  const Plan plan(options);
  requireEnding("OUT", options.output, {".json"});
  Cloud cloud = readCloud(options.input);
  const Pool pool = startPool(options);
  const CloudStats measured = measureCloud(cloud, pool.workers());
  if (!options.output.empty()) writeFile(options.output, cloudStatsJson(printable(options.input), measured));
  print(cloudStatsText(measured));
  draw(std::move(cloud), options, plan, pool.workers());
  return ExitStatus::kOk;
}

using Step = ExitStatus (*)(const CloudOptions&);
using Steps = std::vector<std::pair<CLI::App*, Step>>;

// A command with the common options.
CLI::App* addStep(CLI::App& cloud, Steps& steps, CloudOptions& options, Step step, const char* name, const char* help) {
  CLI::App* const app = cloud.add_subcommand(name, help);
  steps.emplace_back(app, step);
  app->footer(kExitStatusHelp);
  app->add_option("IN", options.input, "cloud (.ply, .pcd) or range file")->required()->type_name("");
  app->add_option("--threads", options.threads, "threads, 1..64 [one a processor]")
      ->check(CLI::Range(1U, kMaxCloudThreads))
      ->type_name("N");
  app->add_option("--picture", options.picture, "draw the cloud, lit by its normals, .png")
      ->type_name("FILE")
      ->group("Picture");
  app->add_option("--view", options.view, "where the eye is, in degrees around and above [-60,35]")
      ->type_name("AZIMUTH,ELEVATION")
      ->group("Picture");
  app->add_option("--up", options.up, "the axis that is upright: x, y, z [z]")
      ->check(CLI::IsMember({"x", "y", "z"}))
      ->type_name("AXIS")
      ->group("Picture");
  app->add_option("--picture-size", options.size, "sides, 64..8192 [900x700]")->type_name("WxH")->group("Picture");
  return app;
}

void addResult(CLI::App& app, CloudOptions& options, bool cloud, const char* help) {
  app.add_option("OUT", options.output, help)->required()->type_name("");
  if (cloud) app.add_flag("--ascii", options.text, "write the cloud as text");
}

void addNeighbours(CLI::App& app, CloudOptions& options, int min, const char* help) {
  app.add_option("--k", options.k, help)->check(CLI::Range(min, kMaxNeighbours))->type_name("N");
}

void addSteps(CLI::App& cloud, Steps& steps, CloudOptions& options) {
  CLI::App* app = addStep(cloud, steps, options, normals, "normals", "Estimate surface normals and curvatures");
  addResult(*app, options, true, "the cloud with normals, .ply or .pcd");
  addNeighbours(*app, options, kMinNeighbours, "neighbours of each normal, 4..256, the point among them [16]");
  app->add_option("--radius", options.radius, "and no neighbours farther away")
      ->check(numberOf(1e-6, 1e18))
      ->type_name("R");
  app->add_option("--viewpoint", options.viewpoint, "where normals point to [either side]")->type_name("X,Y,Z");
  app = addStep(cloud, steps, options, thin, "downsample",
                "Thin out: one point for each cell of a grid, without normals");
  addResult(*app, options, true, "the thinned cloud, .ply or .pcd");
  app->add_option("--leaf", options.leaf, "size of a cell")->required()->type_name("S|X,Y,Z");
  app = addStep(cloud, steps, options, knn, "knn", "List the nearest neighbours of every point");
  addResult(*app, options, false, "table, .csv");
  addNeighbours(*app, options, 1, "neighbours, 1..256, the point among them [16]");
  app = addStep(cloud, steps, options, stats, "stats", "Measure extent and spacing");
  app->add_option("OUT", options.output, "the same, .json")->type_name("");
}

Command addCloud(CLI::App& app) {
  CLI::App* const cloud = app.add_subcommand("cloud", "Normals, neighbours and thinning of point clouds");
  auto options = std::make_shared<CloudOptions>();
  auto steps = std::make_shared<Steps>();
  cloud->require_subcommand(1);
  addSteps(*cloud, *steps, *options);
  cloud->footer(
      "Clouds are PLY (text or little-endian) and PCD files (text or binary); range files are\n"
      "read as their valid pixels.\n\n"
      "Examples:\n"
      "  dax cloud stats parts.range\n"
      "  dax cloud downsample parts.range thin.ply --leaf 0.3\n"
      "  dax cloud normals thin.ply normals.ply --k 20 --picture normals.png\n"
      "  dax cloud knn thin.ply neighbours.csv --k 8\n\n"
      "dax cloud COMMAND --help tells all of a command.\n\n" +
      std::string(kExitStatusHelp));
  return {cloud, [options, steps] {
            for (const auto& [command, step] : *steps) {
              if (command->parsed()) return step(*options);
            }
            return ExitStatus::kUsage;
          }};
}

const CommandRegistration cloudRegistration("cloud", addCloud);

}  // namespace
}  // namespace dax::tool
