// The command line of every benchmark program.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "bench/support/operation.h"
#include "bench/support/timing.h"

namespace {

using bench::Implementation;
using bench::Task;

int usage(const char* program) {
  std::fprintf(stderr,
               "usage: %s --list                              operations and their implementations\n"
               "       %s OPERATION REPETITIONS [NAME]        calls one implementation; default %s\n"
               "       %s --time OPERATION                    calls all in turn: name, ms, median of %s / name\n",
               program, program, bench::kOwn, program, bench::kOwn);
  return 2;
}

// The library's own implementation is the first.
std::vector<Implementation> implementationsOf(std::string_view operation) {
  std::vector<Implementation> found;
  for (const Implementation& one : bench::implementations()) {
    if (one.operation != operation) continue;
    found.insert(one.name == bench::kOwn ? found.begin() : found.end(), one);
  }
  if (found.empty() || found.front().name != bench::kOwn) {
    std::fprintf(stderr, "no operation \"%.*s\"\n", static_cast<int>(operation.size()), operation.data());
    std::exit(2);
  }
  return found;
}

int list() {
  for (const Implementation& each : bench::implementations()) {
    const std::vector<Implementation> all = implementationsOf(each.operation);
    if (each.name != bench::kOwn) continue;
    std::printf("%s", each.operation.c_str());
    for (const Implementation& one : all) std::printf("\t%s", one.name.c_str());
    std::printf("\n");
  }
  return 0;
}

// One call more than the repetitions: the first one resolves symbols and fills caches that live as long as the program.
int repeat(std::string_view operation, int repetitions, std::string_view name) {
  for (const Implementation& one : implementationsOf(operation)) {
    if (one.name != name) continue;
    const Task task = one.prepare();
    for (int i = 0; i < repetitions + 1; ++i) task.run();
    return 0;
  }
  std::fprintf(stderr, "no implementation \"%.*s\"\n", static_cast<int>(name.size()), name.data());
  return 2;
}

int time(std::string_view operation) {
  const std::vector<Implementation> all = implementationsOf(operation);
  std::vector<Task> tasks(all.size());
  std::transform(all.begin(), all.end(), tasks.begin(), [](const Implementation& one) { return one.prepare(); });

  const std::vector<bench::Timing> timings = bench::timeInterleaved(tasks);
  bool same = true;
  for (size_t i = 0; i < all.size(); ++i) {
    std::printf("%s\t%.4f\t%.4f\n", all[i].name.c_str(), timings[i].milliseconds, timings[i].ratio);
    if (!tasks[0].result || !tasks[i].result || tasks[i].result() == tasks[0].result()) continue;
    std::fprintf(stderr, "%s: %s and %s differ in their result\n", all[i].operation.c_str(), bench::kOwn,
                 all[i].name.c_str());
    same = false;
  }
  return same ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--list") == 0) return list();
  if (argc == 3 && std::strcmp(argv[1], "--time") == 0) return time(argv[2]);
  if (argc == 3 || argc == 4) {
    char* end = nullptr;
    const long repetitions = std::strtol(argv[2], &end, 10);
    const bool valid = *argv[2] != '\0' && *end == '\0' && repetitions >= 0 && repetitions < 1000000;
    if (valid) return repeat(argv[1], static_cast<int>(repetitions), argc == 4 ? argv[3] : bench::kOwn);
  }
  return usage(argv[0]);
}
