#include "dax/clock.h"

#include <ctime>

#include "zur/clock.h"

namespace {

// The processor's virtual counter and its frequency; elsewhere the monotonic clock in nanoseconds.
#if defined(__aarch64__)
uint64_t counter() {
  uint64_t value;
  asm volatile("isb\n\tmrs %0, cntvct_el0" : "=r"(value));
  return value;
}

uint64_t counterFrequency() {
  uint64_t value;
  asm("mrs %0, cntfrq_el0" : "=r"(value));
  return value;
}
#else
uint64_t counter() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1000000000u + static_cast<uint64_t>(now.tv_nsec);
}

uint64_t counterFrequency() {
  return 1000000000u;
}
#endif

}  // namespace

uint64_t DAX_GetCpuClocks() {
  return counter() * 1000;
}

double DAX_GetCpuFrequency() {
  return static_cast<double>(counterFrequency());
}

uint64_t ZUR_GetCpuClocks() {
  return 0;
}
