// The input images and the outputs of each.
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

// Lists folders in the order of file names. Outputs of several images go into folders, those of a single one into
// files; empty: none. Throws Failure(kCannotRead) for a folder without images, Failure(kUsage) if an output does not
// fit the inputs, Failure(kCannotWrite) if an output folder cannot be created. overlayOption: what the pictures are called on
// the command line.
std::vector<Job> planJobs(const std::vector<std::string>& inputs, const std::filesystem::path& overlay,
                          const std::filesystem::path& report, const std::string& overlayOption = "--overlay");

// An image and the file that is made of it.
struct Conversion {
  std::filesystem::path input;
  std::filesystem::path output;
};

// Of a single image `output` itself; of several it is a folder, and the results are named like the images, with another
// extension. Throws like planJobs(), and Failure(kUsage) if a result would replace an image.
std::vector<Conversion> planConversions(const std::vector<std::string>& inputs, const std::filesystem::path& output,
                                        const std::string& extension);

bool areSeveral(const std::vector<std::string>& inputs);

}  // namespace dax::tool
