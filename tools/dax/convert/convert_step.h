// The steps of dax convert by their names on the command line. Each is a file of this folder that registers itself.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "io/image_file.h"

namespace dax::tool {

// Throws Failure(kRefused) for samples that it does not take.
using ConvertStep = std::function<Samples(const Samples&)>;

struct ConvertOption {
  // Steps work from the lowest on: 0 type, 100 mosaics, 150 order of channels, 200 colours, 300 one channel,
  // 400 values, 500 bits.
  int order;
  const char* name;       // "--bits"
  const char* valueName;  // "N"
  const char* form;       // description of valid values
  const char* help;
  // Empty for an invalid value.
  ConvertStep (*parse)(std::string_view value);
};

// In their order.
std::vector<const ConvertOption*> convertOptions();

// Adds a step before main() starts.
struct ConvertRegistration {
  explicit ConvertRegistration(const ConvertOption& option);
};

// Samples of another type for the same pixels.
Samples makeSamples(const DaxiImageRecord& like, int32_t type, int32_t channels);

// "samples of 8 bits"
std::string typeName(const Samples& samples);

// Throws Failure(kRefused): what the step of this name does not take, and what helps.
[[noreturn]] void refuseSamples(const std::string& step, const std::string& why);

// Refuses another number of channels than 1 or 3, and tells what makes it.
void requireChannels(const Samples& samples, const std::string& step, int32_t channels);

// For steps that treat all channels alike: refuses opacity, and several channels of another space than red, green, blue.
void requireAlike(const Samples& samples, const std::string& step);

// Refuses 9 to 15 bits: the library's white is the largest value of the type.
void requireWholeRange(const Samples& samples, const std::string& step);

}  // namespace dax::tool
