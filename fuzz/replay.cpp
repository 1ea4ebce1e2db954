// Runs a fuzz target over its seeds, and over copies of them that are cut short or have one byte changed: what a few
// seconds can find without a fuzzer.
//
// usage: <target>_replay [DIRECTORY]     DIRECTORY: only writes the seeds there
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "fuzz/seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Bytes = std::vector<uint8_t>;

// A block of exactly this size, so that a sanitizer sees what reads on.
void run(const Bytes& bytes) {
  const Bytes exact(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

void runAround(const Bytes& bytes) {
  run(bytes);
  for (size_t i = 0; i < bytes.size(); ++i) {
    run(Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(i)));
    for (const uint8_t flip : {0x01, 0x80, 0xFF}) {
      Bytes changed = bytes;
      changed[i] ^= flip;
      run(changed);
    }
  }
}

// The corpus that a fuzzer starts from.
int writeSeeds(const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory);
  for (const dax::fuzz::Seed& seed : dax::fuzz::seeds())
    std::ofstream(directory / seed.name, std::ios::binary) << seed.bytes;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2) return writeSeeds(argv[1]);
  const std::vector<dax::fuzz::Seed> seeds = dax::fuzz::seeds();
  for (const dax::fuzz::Seed& seed : seeds) runAround({seed.bytes.begin(), seed.bytes.end()});
  std::printf("%zu seeds\n", seeds.size());
  return seeds.empty();
}
