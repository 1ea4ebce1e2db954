// The chunk format, written and read the plain way, from memory.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

namespace dax::oracle {

template <class... Values>
std::string packed(Values... values) {
  std::string bytes;
  (bytes.append(reinterpret_cast<const char*>(&values), sizeof(values)), ...);
  return bytes;
}

inline std::string chunk(uint32_t tag, const std::string& payload) {
  return payload + packed(tag, static_cast<uint32_t>(payload.size()));
}

// The payload that a reader should take: of all chunks of this tag the one nearest to the file's start or end.
inline std::optional<std::string> payloadOf(const std::string& file, uint32_t tag, bool nearestToEnd) {
  std::optional<std::string> found;
  size_t end = file.size();
  while (end >= 8) {
    std::array<uint32_t, 2> trailer;
    std::memcpy(trailer.data(), file.data() + end - 8, 8);
    if (trailer[1] > end - 8) break;
    end -= 8 + trailer[1];
    if (trailer[0] != tag) continue;
    found = file.substr(end, trailer[1]);
    if (nearestToEnd) break;
  }
  return found;
}

}  // namespace dax::oracle
