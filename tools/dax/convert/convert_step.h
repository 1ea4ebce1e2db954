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
  int order;              // steps work from the lowest on: 100 mosaics, 200 colours, 300 channels, 400 values, 500 bits
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

}  // namespace dax::tool
