#include "bench/support/timing.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kSampleMilliseconds = 3;
constexpr double kTotalMilliseconds = 1500;
constexpr size_t kMinRounds = 15;
constexpr size_t kMaxRounds = 301;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double timePerCall(const Task& task, int calls) {
  const auto start = Clock::now();
  for (int i = 0; i < calls; ++i) task.run();
  return millisecondsSince(start) / calls;
}

// Calls that take long enough together to be timed well. The first call pays for pages and caches and is not counted.
int callsPerSample(const Task& task) {
  task.run();
  return std::max(1, static_cast<int>(std::ceil(kSampleMilliseconds / std::max(timePerCall(task, 1), 1e-3))));
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

std::vector<Timing> timeInterleaved(const std::vector<Task>& tasks) {
  std::vector<int> calls(tasks.size());
  std::transform(tasks.begin(), tasks.end(), calls.begin(), callsPerSample);

  std::vector<std::vector<double>> times(tasks.size());
  std::vector<std::vector<double>> ratios(tasks.size());
  const auto start = Clock::now();
  for (size_t round = 0; round < kMaxRounds; ++round) {
    if (round >= kMinRounds && millisecondsSince(start) > kTotalMilliseconds) break;
    for (size_t i = 0; i < tasks.size(); ++i) {
      times[i].push_back(timePerCall(tasks[i], calls[i]));
      ratios[i].push_back(times[0].back() / times[i].back());
    }
  }

  std::vector<Timing> timings;
  for (size_t i = 0; i < tasks.size(); ++i) timings.push_back({median(times[i]), median(ratios[i])});
  return timings;
}

}  // namespace bench
