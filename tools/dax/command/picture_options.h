// How pictures are read: shared by the commands that take them.
#pragma once

#include <CLI/App.hpp>
#include <optional>
#include <string>

#include "io/inputs.h"
#include "io/picture.h"

namespace dax::tool {

inline constexpr const char* kLevelsHelp =
    "values of the picture that become black and white where the\nlibrary takes 8 bits [of more than 8 bits: the least "
    "and the\nlargest value]";

// --levels LOW..HIGH
CLI::Option* addLevels(CLI::App& app, std::optional<Levels>& levels, const std::string& group,
                       const char* help = kLevelsHelp);

// The jobs of planJobs(). Throws Failure(kUsage) if an overlay would replace an input of another job.
std::vector<Job> planSafeJobs(const std::vector<std::string>& inputs, const std::filesystem::path& overlay,
                              const std::filesystem::path& report);

}  // namespace dax::tool
