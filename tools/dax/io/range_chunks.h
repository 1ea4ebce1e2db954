// The chunks of a range file, before the library reads them.
#pragma once

#include <filesystem>
#include <string>

namespace dax::tool {

// What a payload lacks, "its mask has 10 bytes, of 12 for 4 x 3 pixels"; empty if nothing. The library takes pixels that
// a mask or colours lack as they are in memory.
std::string shortPayload(const std::filesystem::path& path);

}  // namespace dax::tool
