#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "command/commands.h"
#include "graph/graph_plot.h"
#include "graph/graph_scene.h"
#include "io/input_file.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

struct GraphOptions {
  std::string input, output, plot, solver = "normal", kernel;
  int iterations = 100;
  bool json = false;
  GraphScene scene;
};

using GraphSteps = std::vector<std::pair<CLI::App*, ExitStatus (*)(const GraphOptions&)>>;

PoseGraph load(const GraphOptions& options) {
  return PoseGraph::read(options.input, readFile(options.input));
}

std::string scientific(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6e", value);
  return text;
}

// --- info ---

ExitStatus tellGraph(const GraphOptions& options) {
  const PoseGraph graph = load(options);
  constexpr const char* kKinds[] = {"poses of the plane", "poses of space", "points of the plane", "points of space"};
  int counts[4] = {}, fixed = 0;
  for (int32_t v = 0; v < graph.graph().vertexCount; ++v) {
    ++counts[graph.graph().vertices[v].type];
    fixed += graph.graph().vertices[v].isFixed;
  }
  if (options.json) {
    Json json = runJson("of the graph");
    for (int k = 0; k < 4; ++k) json[kKinds[k]] = counts[k];
    json["fixed"] = fixed;
    json["edges"] = graph.graph().edgeCount;
    json["unknown_lines"] = graph.info().unknown;
    json["energy"] = graph.energy();
    print(json.dump(2) + "\n");
    return ExitStatus::kOk;
  }
  std::string text;
  for (int k = 0; k < 4; ++k) {
    if (counts[k] > 0) text += std::string(kKinds[k]) + "  " + std::to_string(counts[k]) + "\n";
  }
  text += "fixed vertices  " + std::to_string(fixed) + "\nedges  " + std::to_string(graph.graph().edgeCount) + "\n";
  if (graph.info().unknown > 0) text += "lines passed over  " + std::to_string(graph.info().unknown) + "\n";
  print(text + "energy  " + scientific(graph.energy()) + "\n");
  return ExitStatus::kOk;
}

// --- optimise ---

int codeOf(const std::string& name, const std::map<std::string, int>& known, const char* option) {
  const auto found = known.find(name);
  if (found == known.end()) {
    std::string names;
    for (const auto& each : known) names += (names.empty() ? "" : ", ") + each.first;
    reject(std::string(option) + ": " + inQuotes(name) + " is not one of " + names);
  }
  return found->second;
}

// The same graph with this kernel on every edge.
PoseGraph withKernel(const PoseGraph& from, int kernel) {
  const PrgoGraph& given = from.graph();
  PoseGraph made(given.vertexCount, std::max(given.edgeCount, 1));
  for (int32_t v = 0; v < given.vertexCount; ++v) made.add(given.vertices[v]);
  for (int32_t e = 0; e < given.edgeCount; ++e) {
    PrgoEdge edge = given.edges[e];
    edge.kernel = kernel, edge.kernelWidth = 0;
    made.add(edge);
  }
  return made;
}

void checkNames(const GraphOptions& options) {
  requireEnding("OUT", options.output, {".g2o"});
  requireEnding("--plot", options.plot, {".svg"});
  requireOther("--plot", options.plot, {{"the input", options.input}});
}

Json resultJson(const PrgoResult& result, bool isEnded, const std::vector<double>& energies) {
  Json json = runJson("of the graph");
  json["energy_before"] = result.initialEnergy;
  json["energy_after"] = result.finalEnergy;
  json["converged"] = isEnded;
  json["iterations"] = result.iterations;
  json["energies"] = energies;
  json["parameters"] = result.parameters;
  json["residuals"] = result.residuals;
  json["components"] = result.components;
  json["held_vertices"] = result.heldVertices;
  json["loose_components"] = result.looseComponents;
  json["weightless_edges"] = result.weightlessEdges;
  return json;
}

std::string resultText(const PrgoResult& result, bool isEnded) {
  std::string text = "energy  " + scientific(result.initialEnergy) + " -> " + scientific(result.finalEnergy) + ", " +
                     std::to_string(result.iterations) + " iterations" + (isEnded ? "" : ", the limit: not converged") +
                     "\n";
  if (result.heldVertices > 0) {
    text += "held  " + std::to_string(result.heldVertices) + " of " + std::to_string(result.components) +
            " components by the lowest pose, first " + std::to_string(result.firstHeld) + "\n";
  }
  if (result.looseComponents > 0) text += "loose components  " + std::to_string(result.looseComponents) + "\n";
  if (result.weightlessEdges > 0) text += "edges without weight  " + std::to_string(result.weightlessEdges) + "\n";
  return text;
}

ExitStatus optimiseGraph(const GraphOptions& options) {
  checkNames(options);
  PrgoCfg cfg;
  PRGO_CORE_DefaultCfg(&cfg);
  cfg.solverType = codeOf(options.solver, {{"jacobian", 0}, {"cg", 2}, {"normal", 3}, {"blocks", 4}}, "--solver");
  cfg.maxIterations = options.iterations;
  const int kernel =
      options.kernel.empty()
          ? 0
          : codeOf(options.kernel, {{"huber", 1}, {"cauchy", 2}, {"tukey", 3}, {"geman-mcclure", 4}}, "--kernel");
  PoseGraph graph = load(options);
  if (kernel != 0) graph = withKernel(graph, kernel);
  std::vector<TitledView> views;
  views.push_back({GraphView(graph), "before, energy " + scientific(graph.energy())});
  std::vector<double> energies;
  bool isEnded = false;
  const auto progress = [&](int iteration, double before, double after, bool accepted) {
    if (energies.empty()) energies.push_back(before);
    energies.push_back(accepted ? after : before);
    if (!options.json) {
      char line[96];
      std::snprintf(line, sizeof line, "%4d  %.9e%s\n", iteration + 1, after, accepted ? "" : "  rejected");
      std::cout << line << std::flush;
    }
  };
  const PrgoResult result = graph.optimise(cfg, progress, &isEnded);
  views.push_back({GraphView(graph), "after, energy " + scientific(result.finalEnergy)});
  if (!options.plot.empty()) writeFile(options.plot, drawGraphs(views));
  if (!options.output.empty()) writeFile(options.output, graph.text());
  print(options.json ? resultJson(result, isEnded, energies).dump(2) + "\n" : resultText(result, isEnded));
  return ExitStatus::kOk;
}

// --- plot, make ---

ExitStatus plotGraph(const GraphOptions& options) {
  requireEnding("OUT", options.output, {".svg"});
  requireOther("OUT", options.output, {{"the input", options.input}});
  const PoseGraph graph = load(options);
  const std::string name = std::filesystem::path(options.input).filename().string();
  writeFile(options.output, drawGraphs({{GraphView(graph), name + ", energy " + scientific(graph.energy())}}));
  return ExitStatus::kOk;
}

ExitStatus makeScene(const GraphOptions& options) {
  requireEnding("OUT", options.output, {".g2o"});
  if (!(options.scene.shift > 0 && options.scene.turn > 0)) reject("--shift, --turn: must be above 0");
  writeFile(options.output, makeGraph(options.scene).text());
  return ExitStatus::kOk;
}

CLI::App* addGraphStep(CLI::App& graph, GraphSteps& steps, ExitStatus (*run)(const GraphOptions&), const char* name,
                       const char* what) {
  CLI::App* const app = graph.add_subcommand(name, what);
  app->footer(kExitStatusHelp);
  steps.emplace_back(app, run);
  return app;
}

void addGraphSteps(CLI::App& graph, GraphSteps& steps, GraphOptions& options) {
  const auto input = [&](CLI::App* app) {
    app->add_option("IN", options.input, "graph, .g2o")->required()->type_name("");
  };
  CLI::App* app = addGraphStep(graph, steps, tellGraph, "info", "Tell what a graph holds");
  input(app);
  app->add_flag("--json", options.json, "as JSON");
  app = addGraphStep(graph, steps, optimiseGraph, "optimise", "Find the estimates of least energy");
  input(app);
  app->add_option("OUT", options.output, "the graph with these, .g2o")->type_name("");
  app->add_option("--plot", options.plot, "also draw the graph before and after, .svg")->type_name("PICTURE");
  app->add_option("--solver", options.solver, "normal, jacobian, cg or blocks [normal]")->type_name("NAME");
  app->add_option("--kernel", options.kernel, "of all edges: huber, cauchy, tukey or geman-mcclure")->type_name("NAME");
  app->add_option("--iterations", options.iterations, "at most so many [100]")
      ->check(CLI::Range(1, 1000000))
      ->type_name("N");
  app->add_flag("--json", options.json, "the result as JSON, with the energy after each iteration");
  app = addGraphStep(graph, steps, plotGraph, "plot", "Draw a graph");
  input(app);
  app->add_option("OUT", options.output, "the picture, .svg")->required()->type_name("");
  app = addGraphStep(graph, steps, makeScene, "make", "Make a sample with noise");
  app->add_option("KIND", options.scene.kind, kGraphKinds)->required()->type_name("");
  app->add_option("OUT", options.output, "graph, .g2o")->required()->type_name("");
  app->add_option("--poses", options.scene.poses, "how many, 10..100000 [1000]")
      ->default_val(1000)
      ->check(CLI::Range(10, 100000))
      ->type_name("N");
  app->add_option("--shift", options.scene.shift, "standard deviation of measured ways [0.05]")->type_name("S");
  app->add_option("--turn", options.scene.turn, "of measured angles, radians [0.01]")->type_name("S");
  app->add_option("--seed", options.scene.seed, "which of many [1]")->check(CLI::NonNegativeNumber)->type_name("N");
}

Command addGraph(CLI::App& app) {
  CLI::App* const graph = app.add_subcommand("graph", "Optimise graphs of poses and points");
  auto options = std::make_shared<GraphOptions>();
  auto steps = std::make_shared<GraphSteps>();
  graph->require_subcommand(1);
  addGraphSteps(*graph, *steps, *options);
  graph->footer(
      "Examples:\n"
      "  dax graph make manhattan town.g2o --poses 3500\n"
      "  dax graph info town.g2o\n"
      "  dax graph optimise town.g2o mapped.g2o --plot town.svg\n"
      "  dax graph plot mapped.g2o mapped.svg\n\n"
      "dax graph COMMAND --help tells all of a command.\n\n" +
      std::string(kExitStatusHelp));
  return {graph, [options, steps] {
            for (const auto& [command, step] : *steps) {
              if (command->parsed()) return step(*options);
            }
            return ExitStatus::kUsage;
          }};
}

const CommandRegistration graphRegistration("graph", addGraph);

}  // namespace
}  // namespace dax::tool
