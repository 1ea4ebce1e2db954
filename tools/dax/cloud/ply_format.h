// Polygon files: of PLY 1.0 the vertices, which must be the first element, as text or binary little-endian.
#pragma once

#include <string>
#include <string_view>

#include "cloud/cloud.h"

namespace dax::tool {

bool isPly(std::string_view bytes);

// Throws FormatError (point_rows.h) with the reason why the file cannot be read.
Cloud readPly(std::string_view bytes);

std::string writePly(const Cloud& cloud, bool text);

}  // namespace dax::tool
