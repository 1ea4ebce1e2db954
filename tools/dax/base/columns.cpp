#include "base/columns.h"

#include <algorithm>
#include <iomanip>

namespace dax::tool {

void writeColumns(std::ostream& out, const std::vector<Fields>& lines) {
  std::vector<size_t> widths(lines.front().size());
  for (const Fields& line : lines) {
    for (size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  for (const Fields& line : lines) {
    for (size_t i = 0; i < widths.size(); ++i) out << "  " << std::setw(static_cast<int>(widths[i])) << line[i];
    out << '\n';
  }
}

}  // namespace dax::tool
