// Which images to inspect, and where the pictures of each go.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "inspect_options.h"

namespace dax::tool {

struct Job {
  std::filesystem::path input;
  std::filesystem::path overlay;  // empty: none
  std::filesystem::path report;
};

// Walks folders, in the order of their files' names. Throws Failure(kCannotRead) for a folder without images,
// Failure(kUsage) where an output does not fit the inputs, Failure(kCannotWrite) where an output folder cannot be made.
std::vector<Job> planJobs(const InspectOptions& options);

}  // namespace dax::tool
