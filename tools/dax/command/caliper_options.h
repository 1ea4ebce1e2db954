// Options shared by the commands with calipers.
#pragma once

#include <CLI/App.hpp>
#include <filesystem>
#include <string>
#include <vector>

#include "model/calipers.h"

namespace dax::tool {

// How edges are found: --polarity, --half-width, --threshold, --choose.
void addEdgeOptions(CLI::App& app, CaliperSettings& settings, const char* polarityHelp);

// Where results go.
struct CaliperOutputs {
  bool json = false;
  bool profiles = false;
  std::filesystem::path overlay;  // empty: none
  double overlayScale = 0;
  std::filesystem::path plot;
};

// On standard error.
void sayWarnings(const std::string& file, const std::vector<std::string>& warnings);

void addOutputOptions(CLI::App& app, CaliperOutputs& outputs);

// Throws Failure(kUsage) if outputs conflict with each other or the input.
void requireUsable(const CaliperOutputs& outputs, const std::filesystem::path& input);

inline constexpr const char* kCaliperHelp =
    "A caliper averages the image across a narrow region into a profile along its search\n"
    "direction, and finds the edges of the profile. The region should cross the edge squarely;\n"
    "what lies beside it along the edge is averaged, which is what takes out noise. Coordinates are\n"
    "in pixels with pixel centres at integers; angles in degrees from x towards y (downwards).";

}  // namespace dax::tool
