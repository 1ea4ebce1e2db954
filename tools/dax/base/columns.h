// Tables on a terminal.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace dax::tool {

using Fields = std::vector<std::string>;

// Right-aligned columns two spaces apart; all lines have as many fields as the first.
void writeColumns(std::ostream& out, const std::vector<Fields>& lines);

}  // namespace dax::tool
