#include "tests/hostile/arena.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(start, bytes) (static_cast<void>(start), static_cast<void>(bytes))
#define ASAN_UNPOISON_MEMORY_REGION(start, bytes) (static_cast<void>(start), static_cast<void>(bytes))
#endif

namespace dax::hostile {
namespace {

constexpr uint8_t kMarginByte = 0xC7;
constexpr size_t kMargin = 256;

#ifdef __SANITIZE_ADDRESS__
constexpr bool kHasMargins = false;
#else
constexpr bool kHasMargins = true;
#endif

size_t before(const uint8_t* start, const uint8_t* data) {
  return kHasMargins ? std::min<size_t>(kMargin, static_cast<size_t>(data - start)) : 0;
}

bool holdsMargin(const uint8_t* from, size_t bytes) {
  return std::all_of(from, from + bytes, [](uint8_t byte) { return byte == kMarginByte; });
}

}  // namespace

Arena::Arena() {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  struct Kind {
    size_t room, count;
  };
  const Kind kinds[] = {{page, 64}, {16 * page, 32}, {256 * page, 12}, {kMaxBytes, 8}};
  mapped_ = page;
  for (const Kind& kind : kinds) mapped_ += (kind.room + page) * kind.count;
  void* const map = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (map == MAP_FAILED) throw std::bad_alloc();
  map_ = static_cast<uint8_t*>(map);
  uint8_t* at = map_ + page;
  for (const Kind& kind : kinds) {
    SizeClass& sizeClass = classes_.emplace_back(SizeClass{kind.room, {}, 0});
    for (size_t i = 0; i < kind.count; ++i, at += kind.room + page) {
      if (mprotect(at, kind.room, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
      ASAN_POISON_MEMORY_REGION(at, kind.room);
      sizeClass.slots.push_back({at, kind.room});
    }
  }
}

Arena::~Arena() {
  ASAN_UNPOISON_MEMORY_REGION(map_, mapped_);
  munmap(map_, mapped_);
}

Arena::Slot* Arena::freeSlot(size_t bytes) {
  for (SizeClass& sizeClass : classes_) {
    if (bytes <= sizeClass.room && sizeClass.used < sizeClass.slots.size()) return &sizeClass.slots[sizeClass.used++];
  }
  return nullptr;
}

uint8_t* Arena::take(size_t bytes, size_t alignment, Place place) {
  const size_t spare = place == Place::odd ? alignment : 0;
  const Slot* const slot = bytes > kMaxBytes - spare ? nullptr : freeSlot(bytes + spare);
  if (!slot) return nullptr;
  uint8_t* const end = slot->start + slot->room;
  uint8_t* data = slot->start;
  if (place == Place::atEnd) data = end - bytes - (slot->room - bytes) % alignment;
  if (place == Place::odd) data = end - (bytes + alignment - 1) / alignment * alignment;
  // Twice the alignment asked for would be more than a caller promises.
  if (place == Place::odd && reinterpret_cast<uintptr_t>(data) % (2 * alignment) == 0) data -= alignment;
  if (data < slot->start) data = slot->start;
  // An empty block begins where the page behind the slot does.
  if (bytes == 0) data = end;
  ASAN_UNPOISON_MEMORY_REGION(data, bytes);
  blocks_.push_back({*slot, data, bytes});
  const size_t front = before(slot->start, data);
  const size_t back = kHasMargins ? std::min<size_t>(kMargin, static_cast<size_t>(end - data) - bytes) : 0;
  std::memset(data - front, kMarginByte, front);
  std::memset(data + bytes, kMarginByte, back);
  return data;
}

bool Arena::surroundingsIntact() const {
  return std::all_of(blocks_.begin(), blocks_.end(), [](const Block& block) {
    const uint8_t* const end = block.slot.start + block.slot.room;
    const size_t front = before(block.slot.start, block.data);
    const size_t back =
        kHasMargins ? std::min<size_t>(kMargin, static_cast<size_t>(end - block.data) - block.bytes) : 0;
    return holdsMargin(block.data - front, front) && holdsMargin(block.data + block.bytes, back);
  });
}

void Arena::reset() {
  for (const Block& block : blocks_) ASAN_POISON_MEMORY_REGION(block.slot.start, block.slot.room);
  for (SizeClass& sizeClass : classes_) sizeClass.used = 0;
  blocks_.clear();
}

}  // namespace dax::hostile
