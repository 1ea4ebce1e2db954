// Models (templates, vocabularies, calibrations, plans) as one block in the caller's memory. A block may be moved, written
// to a file and read again byte by byte: little-endian, offsets in place of pointers, guarded by a checksum.
//
// A block is a header, a directory of pieces, and the pieces: arrays at multiples of 8 bytes from its start, zeros between
// them. Its address is a multiple of 8.
#pragma once

#include <cstdint>
#include <span>
#include <type_traits>

#include "dax/status.h"

namespace dax {

struct ModelHeader {
  uint32_t magic;    // four characters that tell the family
  uint32_t version;  // of the pieces' meaning
  uint64_t bytes;    // of the whole block
  uint32_t pieceCount;
  uint32_t checksum;  // CRC-32 of all other bytes of the block
};
static_assert(sizeof(ModelHeader) == 24);

struct ModelPiece {
  uint32_t name;  // four characters
  uint32_t elementBytes;
  uint64_t offset;  // from the start of the block
  uint64_t count;
};
static_assert(sizeof(ModelPiece) == 24);

// A magic or a name: its bytes in memory are these characters.
constexpr uint32_t fourCharacters(const char (&text)[5]) {
  uint32_t code = 0;
  for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<uint8_t>(text[i]);
  return code;
}

template <class T>
concept ModelElement = std::is_trivially_copyable_v<T> && alignof(T) <= 8;

// Lays pieces out, one behind the other. One function of the family adds its pieces to a writer without memory for the
// size query, and to one with memory to be filled.
class ModelWriter {
 public:
  // `memory` null: only measures.
  ModelWriter(void* memory, uint64_t capacity, uint32_t pieceCount);

  // Where the caller puts the `count` elements before it seals the block; null when measuring and where the memory is
  // too small.
  template <ModelElement T>
  T* add(uint32_t name, uint64_t count) {
    return static_cast<T*>(addPiece(name, sizeof(T), count));
  }

  // For the size query: 0x10000015 when the size does not fit a signed 64-bit integer.
  DaxStatus store(uint64_t* bytes) const;

  // Writes the header: 0x10000015 as above, 0x10000014 without memory, 0x1000001a where that is too small, 0x10000000
  // unless all announced pieces were added.
  DaxStatus seal(uint32_t magic, uint32_t version);

 private:
  void* addPiece(uint32_t name, uint32_t elementBytes, uint64_t count);

  uint8_t* memory_;
  uint64_t capacity_;
  uint64_t total_;
  uint32_t pieceCount_;
  uint32_t added_ = 0;
  bool overflow_ = false;
};

// A block that has passed the check. What pieces hold is as its writer left it; the family checks what they mean.
class ModelView {
 public:
  // Reads nothing beyond `bytes`, whatever the block says. 0x10000014 for null; 0x10000020 for another version;
  // 0x10000019 for another family and for every damage: a block cut short, a changed bit, a directory that points out
  // of the block, an address that is no multiple of 8. What follows the block's own end is left unread.
  DaxStatus open(const void* block, uint64_t bytes, uint32_t magic, uint32_t version);

  // The same without the checksum: for what is used for every frame of a stream, by readers that no contents can hurt.
  DaxStatus openUnsummed(const void* block, uint64_t bytes, uint32_t magic, uint32_t version);

  // Of a name's first piece; without data where there is none or its elements have another size.
  template <ModelElement T>
  std::span<const T> piece(uint32_t name) const {
    const ModelPiece* const found = find(name);
    if (!found || found->elementBytes != sizeof(T)) return {};
    return {reinterpret_cast<const T*>(block_ + found->offset), found->count};
  }

 private:
  const ModelPiece* find(uint32_t name) const;

  const uint8_t* block_ = nullptr;
  std::span<const ModelPiece> pieces_;
};

}  // namespace dax
