// What dax convert and dax warp have in common: images of any type, one or many, read, changed, and written in any format.
#pragma once

#include <CLI/App.hpp>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "convert/convert_step.h"
#include "daxi/image_file.h"
#include "io/image_file.h"

namespace dax::tool {

struct SamplesOptions {
  std::vector<std::string> inputs;
  std::string output;
  std::string format;
  std::string compression = "lzw";
  int quality = 95;
  int level = 6;
};

// IN... and OUT.
void addNames(CLI::App& command, SamplesOptions& options);
void addFileOptions(CLI::App& command, SamplesOptions& options);

// Throws Failure(kUsage) where neither --format nor the ending of a single result tells a format.
DaxiImageWriteCfg writeCfg(const SamplesOptions& options, bool severalResults);

// The first page, turned upright.
Samples readUpright(const std::string& input);

// The samples after all steps, whose notes are said. `name`: what messages are about.
Samples stepped(const std::string& name, Samples samples, const std::vector<ConvertStep>& steps);

// Throws Failure(kCannotWrite) where the format does not hold them, and tells what helps: options of dax convert, behind
// `with`.
void writeSamples(const std::filesystem::path& path, Samples& samples, const DaxiImageWriteCfg& cfg,
                  const std::string& with = "");

// Reads each image, applies the steps and writes the result; one that fails does not stop the others.
using WriteResult = std::function<void(const std::filesystem::path& path, Samples& samples)>;
ExitStatus convertAll(const SamplesOptions& options, const std::vector<ConvertStep>& steps, const WriteResult& write);

}  // namespace dax::tool
