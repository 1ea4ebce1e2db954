// Point-cloud files: PCD 0.7, as text or binary. Compressed ones are not supported.
#pragma once

#include <string>
#include <string_view>

#include "cloud/point_rows.h"

namespace dax::tool {

bool isPcd(std::string_view bytes);

// Throws FormatError with the reason why the file cannot be read.
Cloud readPcd(std::string_view bytes);

std::string writePcd(const Cloud& cloud, RowFormat format);

}  // namespace dax::tool
