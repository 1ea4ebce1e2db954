// Which images to look at, and where the pictures of each go.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dax::tool {

struct Job {
  std::filesystem::path input;
  std::filesystem::path overlay;  // empty: none
  std::filesystem::path report;
};

// Walks folders, in the order of their files' names. The pictures and reports of several images go into folders, that of
// a single one into a file; empty: none. Throws Failure(kCannotRead) for a folder without images, Failure(kUsage) where an
// output does not fit the inputs, Failure(kCannotWrite) where an output folder cannot be made.
std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::filesystem::path& overlay,
                          const std::filesystem::path& report);
bool areSeveral(const std::vector<std::string>& inputs);

}  // namespace dax::tool
