// Point-cloud files: PCD 0.7, as text or binary. Compressed ones are not supported.
#pragma once

#include <string>
#include <string_view>

#include "cloud/cloud.h"

namespace dax::tool {

bool isPcd(std::string_view bytes);

// Throws FormatError (point_rows.h) with the reason why the file cannot be read.
Cloud readPcd(std::string_view bytes);

std::string writePcd(const Cloud& cloud, bool text);

}  // namespace dax::tool
