// A host pool for tests: runs the tiles in any order, one after the other or on threads, as any host may.
#pragma once

#include <cstdint>

#include "dax/threadpool.h"

namespace dax::test {

struct MockPool {
  enum class Order { forward, backward, shuffled };
  Order order = Order::shuffled;
  uint32_t threads = 4;       // worker indices are below it, whatever the library's caller announced
  bool passesLength = false;  // as second bound, where other hosts pass the end
  bool oneWorker = false;     // all tiles with one worker index
  bool concurrent = false;    // on as many threads as there are worker indices
  int32_t failingTile = -1;   // this tile returns failure instead of running
  DaxStatus failure = 0x10000777;

  // What happened.
  int32_t calls = 0;
  int32_t tiles = 0;
};

}  // namespace dax::test
