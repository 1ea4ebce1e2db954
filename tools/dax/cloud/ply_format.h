// Polygon files: of PLY 1.0 the vertices, which must be the first element, as text or binary little-endian.
#pragma once

#include <string>
#include <string_view>

#include "cloud/point_rows.h"

namespace dax::tool {

bool isPly(std::string_view bytes);

// Throws FormatError with the reason why the file cannot be read.
Cloud readPly(std::string_view bytes);

// Whether the format has columns of this type.
bool holdsPly(const Column& column);

// All fields of the cloud must be such columns.
std::string writePly(const Cloud& cloud, const RowFormat& format);

}  // namespace dax::tool
