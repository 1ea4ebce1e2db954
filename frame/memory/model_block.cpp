#include "frame/memory/model_block.h"

#include <bit>
#include <cstddef>
#include <cstring>

#include "frame/check.h"
#include "frame/memory/crc32.h"

namespace dax {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr uint64_t kGrain = 8;

// Of a block whose bytes are all there.
uint32_t checksumOf(const uint8_t* block, uint64_t bytes) {
  constexpr uint64_t kPlace = offsetof(ModelHeader, checksum);
  return crc32(block + sizeof(ModelHeader), bytes - sizeof(ModelHeader), crc32(block, kPlace));
}

// The pieces follow the directory and each other, without overlap.
bool directoryFits(std::span<const ModelPiece> pieces, uint64_t bytes) {
  uint64_t end = sizeof(ModelHeader) + pieces.size_bytes();
  for (const ModelPiece& piece : pieces) {
    uint64_t pieceBytes;
    if (__builtin_mul_overflow(piece.count, uint64_t{piece.elementBytes}, &pieceBytes)) return false;
    if (piece.offset % kGrain != 0 || piece.offset < end) return false;
    if (piece.offset > bytes || pieceBytes > bytes - piece.offset) return false;
    end = piece.offset + pieceBytes;
  }
  return true;
}

}  // namespace

ModelWriter::ModelWriter(void* memory, uint64_t capacity, uint32_t pieceCount)
    : memory_(static_cast<uint8_t*>(memory)),
      capacity_(memory ? capacity : 0),
      total_(sizeof(ModelHeader) + uint64_t{pieceCount} * sizeof(ModelPiece)),
      pieceCount_(pieceCount) {}

void* ModelWriter::addPiece(uint32_t name, uint32_t elementBytes, uint64_t count) {
  const uint64_t offset = total_;
  uint64_t bytes, padded;
  overflow_ |= __builtin_mul_overflow(count, uint64_t{elementBytes}, &bytes);
  overflow_ |= __builtin_add_overflow(bytes, kGrain - 1, &padded);
  padded = padded / kGrain * kGrain;
  overflow_ |= __builtin_add_overflow(total_, padded, &total_);
  const uint32_t index = added_++;
  if (overflow_ || index >= pieceCount_ || total_ > capacity_) return nullptr;
  const ModelPiece piece = {name, elementBytes, offset, count};
  std::memcpy(memory_ + sizeof(ModelHeader) + index * sizeof piece, &piece, sizeof piece);
  std::memset(memory_ + offset + bytes, 0, padded - bytes);
  return memory_ + offset;
}

DaxStatus ModelWriter::store(uint64_t* bytes) const {
  DAX_REQUIRE(!overflow_ && total_ <= INT64_MAX, DAX_STS_BUFFER_OVERFLOW);
  *bytes = total_;
  return DAX_STS_OK;
}

DaxStatus ModelWriter::seal(uint32_t magic, uint32_t version) {
  ModelHeader header = {magic, version, 0, pieceCount_, 0};
  DAX_REQUIRE_OK(store(&header.bytes));
  DAX_REQUIRE(memory_, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(total_ <= capacity_, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(added_ == pieceCount_, DAX_STS_FAILURE);
  std::memcpy(memory_, &header, sizeof header);
  header.checksum = checksumOf(memory_, total_);
  std::memcpy(memory_, &header, sizeof header);
  return DAX_STS_OK;
}

DaxStatus ModelView::open(const void* block, uint64_t bytes, uint32_t magic, uint32_t version) {
  ModelView view;
  DAX_REQUIRE_OK(view.openUnsummed(block, bytes, magic, version));
  ModelHeader header;
  std::memcpy(&header, view.block_, sizeof header);
  DAX_REQUIRE(header.checksum == checksumOf(view.block_, header.bytes), DAX_STS_BAD_PARAM);
  *this = view;
  return DAX_STS_OK;
}

DaxStatus ModelView::openUnsummed(const void* block, uint64_t bytes, uint32_t magic, uint32_t version) {
  DAX_REQUIRE(block, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(reinterpret_cast<uintptr_t>(block) % kGrain == 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(bytes >= sizeof(ModelHeader), DAX_STS_BAD_PARAM);
  const auto* const start = static_cast<const uint8_t*>(block);
  ModelHeader header;
  std::memcpy(&header, start, sizeof header);
  DAX_REQUIRE(header.magic == magic, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(header.version == version, DAX_STS_CFG_VERSION);
  const uint64_t minimum = sizeof header + uint64_t{header.pieceCount} * sizeof(ModelPiece);
  DAX_REQUIRE(header.bytes >= minimum && header.bytes <= bytes, DAX_STS_BAD_PARAM);
  const std::span pieces(reinterpret_cast<const ModelPiece*>(start + sizeof header), header.pieceCount);
  DAX_REQUIRE(directoryFits(pieces, header.bytes), DAX_STS_BAD_PARAM);
  block_ = start;
  pieces_ = pieces;
  return DAX_STS_OK;
}

const ModelPiece* ModelView::find(uint32_t name) const {
  for (const ModelPiece& piece : pieces_) {
    if (piece.name == name) return &piece;
  }
  return nullptr;
}

}  // namespace dax
