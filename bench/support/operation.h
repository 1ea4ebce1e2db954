// The operations of a benchmark program. One operation has several implementations: the library's own ("dax"), a peer's
// where there is one, and a plain copy of as many bytes as a floor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// A prepared call. Implementations that claim the same result for the same input tell it, so that they can be compared.
struct Task {
  std::function<void()> run;
  std::function<uint64_t()> result = {};
};

struct Implementation {
  std::string operation;
  std::string name;
  std::function<Task()> prepare;
};

// In the order of their definition within a file.
std::vector<Implementation>& implementations();

constexpr const char* kOwn = "dax";
constexpr const char* kFloor = "memcpy";

// Objects of these types at namespace scope add implementations. Without bytes there is no floor.
struct Own {
  Own(const char* operation, size_t floorBytes, std::function<Task()> prepare);
};

struct Peer {
  Peer(const char* operation, const char* name, std::function<Task()> prepare);
};

// Ends the program when a call of the library failed: nothing would have been measured.
void require(uint32_t status);

}  // namespace bench
