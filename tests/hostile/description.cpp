// A call as a line of text.
#include <cstdio>

#include "tests/hostile/call.h"

namespace dax::hostile {

std::string Call::description() const {
  std::string text = std::string(function.name) + "(";
  for (size_t i = 0; i < values.size(); ++i) {
    const auto& [name, t, said] = function.arguments[i];
    char value[80] = "?";
    if (t.kind == Kind::integer) std::snprintf(value, sizeof value, "%lld", static_cast<long long>(integer(name)));
    if (t.kind == Kind::real) {
      std::snprintf(value, sizeof value, "%.9g", t.bytes == 4 ? double{get<float>(name)} : get<double>(name));
    }
    if (t.kind == Kind::size) {
      const auto s = get<DaxiSize>(name);
      std::snprintf(value, sizeof value, "%d x %d", s.width, s.height);
    }
    if (t.kind == Kind::pointer) {
      const auto* const data = get<uint8_t*>(name);
      std::snprintf(value, sizeof value, "%p", static_cast<const void*>(data));
      for (const Block& each : blocks) {
        if (data && each.data == data) std::snprintf(value, sizeof value, "%zu bytes", each.bytes);
      }
    }
    text += std::string(i ? ", " : "") + name + (spoiled_[i] ? "!" : "") + " = " + value;
  }
  return text + ")";
}

}  // namespace dax::hostile
