// Runs a fuzz target over the files of a directory, and over copies of them that are cut short or have one byte
// changed: what a few seconds can find without a fuzzer.
//
// usage: <target>_replay DIRECTORY
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

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

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  int count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1])) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    runAround(Bytes(std::istreambuf_iterator<char>(file), {}));
    ++count;
  }
  std::printf("%d inputs\n", count);
  return count > 0 ? 0 : 1;
}
