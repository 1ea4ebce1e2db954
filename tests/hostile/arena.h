// Guarded memory for many short-lived buffers: each lies against an inaccessible page, at its end or at its start. What
// surrounds it up to the other page is poisoned for the address sanitizer, or else holds a pattern that is looked at
// after the call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dax::hostile {

enum class Place { atEnd, atStart, odd };  // odd: near the end, at an address of no more alignment than was asked for

class Arena {
 public:
  static constexpr size_t kMaxBytes = size_t{8} << 20;

  Arena();
  ~Arena();
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  // Null when no slot is left or bytes is above kMaxBytes. A block of 0 bytes is an address that faults.
  uint8_t* take(size_t bytes, size_t alignment, Place place);

  // Whether the memory around all blocks is as it was.
  bool surroundingsIntact() const;

  // Takes all blocks back.
  void reset();

 private:
  struct Slot {
    uint8_t* start;
    size_t room;
  };
  struct Block {
    Slot slot;
    uint8_t* data;
    size_t bytes;
  };
  struct SizeClass {
    size_t room;
    std::vector<Slot> slots;
    size_t used;
  };
  Slot* freeSlot(size_t bytes);

  uint8_t* map_;
  size_t mapped_;
  std::vector<SizeClass> classes_;
  std::vector<Block> blocks_;
};

}  // namespace dax::hostile
