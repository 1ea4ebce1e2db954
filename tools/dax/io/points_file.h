// Points from text files with columns of numbers.
#pragma once

#include <filesystem>
#include <vector>

namespace dax::tool {

struct Points {
  std::vector<double> x;
  std::vector<double> y;
};

// Columns count from 1; commas, semicolons, tabs or blanks part them. Lines that are empty or begin with # are passed over, and
// so is a first line of titles. Throws Failure(kCannotRead), with the line's number where one has not these two finite numbers.
Points readPoints(const std::filesystem::path& path, int xColumn, int yColumn);

}  // namespace dax::tool
