#include "bench/support/operation.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/support/amount.h"
#include "dax/status.h"

namespace bench {
namespace {

Task prepareCopy(size_t bytes) {
  auto from = std::make_shared<std::vector<uint8_t>>(bytes, uint8_t{1});
  auto to = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[from, to] { std::memcpy(to->data(), from->data(), from->size()); }};
}

}  // namespace

std::vector<Implementation>& implementations() {
  static std::vector<Implementation> all;
  return all;
}

Own::Own(const char* operation, size_t floorBytes, std::function<Task()> prepare) {
  implementations().push_back({operation, kOwn, std::move(prepare)});
  if (floorBytes == 0) return;
  implementations().push_back({operation, kFloor, [floorBytes] {
                                 return prepareCopy(static_cast<size_t>(static_cast<double>(floorBytes) * amount()));
                               }});
}

Peer::Peer(const char* operation, const char* name, std::function<Task()> prepare) {
  implementations().push_back({operation, name, std::move(prepare)});
}

void require(uint32_t status) {
  if (status == DAX_STS_OK) return;
  std::fprintf(stderr, "call failed: %s (0x%08x)\n", DAX_GetStatusText(status), static_cast<unsigned>(status));
  std::exit(1);
}

}  // namespace bench
