// Filters on the host's pool: one thread against as many as the machine has, in turn, on images of 4096 x 3072. Prints
// the table "pool" of docs/performance.md. Native only.
#include <cstdio>
#include <memory>
#include <thread>

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "daxhost.h"
#include "daxi.h"

namespace {

constexpr DaxiSize kLarge{4096, 3072};
constexpr int kRounds = 60;

class Filters {
 public:
  Filters(uint32_t threads, void* pool) : threads_(threads), pool_(pool) {
    uint64_t bytes = 0;
    bench::require(DAXI_FilterMeanBufferSize_8u_MT(kLarge, {255, 255}, threads, &bytes));
    buffer_.resize(bytes);
  }
  void mean(int32_t side) {
    bench::require(DAXI_FilterMean_8u_C1R_MT(src_.data(), kLarge.width, dst_.data(), kLarge.width, kLarge, {side, side},
                                             buffer_.data(), threads_, pool_));
  }
  void median() {
    bench::require(DAXI_FilterMedian3x3_8u_C1R_NEON_MT(pool_, threads_, src_.data(), kLarge.width, dst_.data(),
                                                       kLarge.width, kLarge));
  }

 private:
  uint32_t threads_;
  void* pool_;
  bench::Image<uint8_t> src_ = bench::noise<uint8_t>(kLarge), dst_{kLarge};
  std::vector<uint8_t> buffer_;
};

template <class Run>
void printRow(const char* operation, Filters& one, Filters& many, const Run& run) {
  bench::printPooled(
      operation, kRounds, [&] { run(one); }, [&] { run(many); });
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::wanted(argc, argv, "pool")) return 2;
  const uint32_t threads = std::max(std::thread::hardware_concurrency(), 1u);
  void* const pool = DAXHOST_CreatePool(threads);
  Filters one(1, nullptr), many(threads, pool);
  bench::printPoolHead(threads);
  printRow("mean 3 x 3, 8u", one, many, [](Filters& f) { f.mean(3); });
  printRow("mean 15 x 15, 8u", one, many, [](Filters& f) { f.mean(15); });
  printRow("mean 255 x 255, 8u", one, many, [](Filters& f) { f.mean(255); });
  printRow("median 3 x 3, 8u", one, many, [](Filters& f) { f.median(); });
  DAXHOST_DestroyPool(pool);
}
