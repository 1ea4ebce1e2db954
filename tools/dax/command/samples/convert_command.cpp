// dax convert: the steps of tools/dax/convert, one after the other, between reading and writing.
#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "base/text.h"
#include "command/commands.h"
#include "command/samples/samples_output.h"
#include "convert/channels.h"
#include "io/inputs.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

struct ConvertOptions : SamplesOptions {
  bool merge = false, split = false;
  std::map<const ConvertOption*, std::string> values;
  std::map<const ConvertOption*, CLI::Option*> given;
};

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

void mergeAll(const ConvertOptions& options, const std::vector<ConvertStep>& steps, const DaxiImageWriteCfg& cfg) {
  const size_t count = options.inputs.size();
  if (count < 2 || count > 4) reject("--merge: two to four images, a channel each");
  for (const std::string& input : options.inputs) requireOther("OUT", options.output, {{"an input", input}});
  std::vector<Samples> planes;
  for (const std::string& input : options.inputs) planes.push_back(readUpright(input));
  Samples samples = stepped(options.output, merged(planes), steps);
  writeResult(options, options.output, samples, cfg);
}

ExitStatus runConvert(const ConvertOptions& options) {
  const DaxiImageWriteCfg cfg = writeCfg(options, !options.merge && areSeveral(options.inputs));
  const std::vector<ConvertStep> steps = stepsOf(options);
  if (!options.merge) {
    return convertAll(options, steps,
                      [&](const fs::path& path, Samples& samples) { writeResult(options, path, samples, cfg); });
  }
  mergeAll(options, steps, cfg);
  return ExitStatus::kOk;
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
  command->add_flag("--merge", options->merge, "the images are the channels of one")->group("File");
  command->add_flag("--split", options->split, "a file for each channel: OUT-0.png, OUT-1.png, ...")->group("File");
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
