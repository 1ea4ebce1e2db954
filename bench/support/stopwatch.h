// Times of single runs, and the command line, of programs that print tables of their own: PROGRAM [TABLE].
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <string>

namespace bench {

template <class Run>
double milliseconds(const Run& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Of the processor for this program, for runs so long that others take turns with them.
template <class Run>
double cpuMilliseconds(const Run& run) {
  const std::clock_t start = std::clock();
  run();
  return 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The least of several runs: what the machine can do when nothing else runs.
template <class Run>
double fastest(int rounds, const Run& run) {
  double best = INFINITY;
  for (int i = 0; i < rounds; ++i) best = std::min(best, milliseconds(run));
  return best;
}

// Whether this table is asked for: by its name, or all of them by none.
inline bool wanted(int argc, char** argv, const char* table) {
  return argc < 2 || std::strcmp(argv[1], table) == 0;
}

// "| one | two |" with the rule below it; the first columns hold words, the others numbers.
inline void printHead(std::initializer_list<std::string> columns, int words = 0) {
  std::string head = "|", rule = "|";
  for (const std::string& column : columns) head += " " + column + " |", rule += words-- > 0 ? " --- |" : " ---: |";
  std::printf("%s\n%s\n", head.c_str(), rule.c_str());
}

// The least times of a call on one thread and on the pool, taken in turn, as a row of a table.
template <class One, class Many>
void printPooled(const char* operation, int rounds, const One& one, const Many& many) {
  double single = INFINITY, pooled = INFINITY;
  for (int round = 0; round < rounds; ++round) {
    single = std::min(single, milliseconds(one));
    pooled = std::min(pooled, milliseconds(many));
  }
  std::printf("| %s | %.2f | %.2f | %.2f |\n", operation, single, pooled, single / pooled);
}

inline void printPoolHead(unsigned threads) {
  printHead({"operation", "1 thread ms", std::to_string(threads) + " threads ms", "times as fast"}, 1);
}

}  // namespace bench
