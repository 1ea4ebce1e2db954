#include "frame/memory/model_block.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <vector>

#include "frame/memory/crc32.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {
namespace {

constexpr uint32_t kMagic = fourCharacters("TEST"), kVersion = 3;
constexpr uint32_t kBytes = fourCharacters("byte"), kNumbers = fourCharacters("numb"),
                   kNothing = fourCharacters("none");

struct Number {
  double value;
  int32_t index;
};

// Three pieces, the first with padding behind it, the last empty.
DaxStatus layOut(ModelWriter& writer) {
  uint8_t* const bytes = writer.add<uint8_t>(kBytes, 13);
  Number* const numbers = writer.add<Number>(kNumbers, 5);
  writer.add<uint16_t>(kNothing, 0);
  if (bytes) std::iota(bytes, bytes + 13, uint8_t{1});
  if (numbers) {
    std::memset(static_cast<void*>(numbers), 0, 5 * sizeof(Number));
    for (int32_t i = 0; i < 5; ++i) numbers[i].value = i * 0.5, numbers[i].index = i;
  }
  return writer.seal(kMagic, kVersion);
}

uint64_t bytesNeeded() {
  ModelWriter writer(nullptr, 0, 3);
  uint64_t bytes = 0;
  EXPECT_EQ(layOut(writer), DAX_STS_NULL_POINTER);
  EXPECT_EQ(writer.store(&bytes), DAX_STS_OK);
  return bytes;
}

// Of exactly the size that the query tells, against a forbidden page.
GuardedBuffer<uint8_t> makeBlock(Guard guard = Guard::after) {
  GuardedBuffer<uint8_t> block(bytesNeeded(), guard);
  ModelWriter writer(block.data(), block.size(), 3);
  EXPECT_EQ(layOut(writer), DAX_STS_OK);
  return block;
}

DaxStatus open(const GuardedBuffer<uint8_t>& block) {
  return ModelView().open(block.data(), block.size(), kMagic, kVersion);
}

// A block with another header and directory, and the checksum that belongs to them.
template <class Change>
DaxStatus openChanged(Change change) {
  GuardedBuffer<uint8_t> block = makeBlock();
  ModelHeader header;
  ModelPiece pieces[3];
  std::memcpy(&header, block.data(), sizeof header);
  std::memcpy(pieces, block.data() + sizeof header, sizeof pieces);
  change(header, pieces);
  std::memcpy(block.data(), &header, sizeof header);
  std::memcpy(block.data() + sizeof header, pieces, sizeof pieces);
  const uint64_t covered = std::min<uint64_t>(std::max<uint64_t>(header.bytes, sizeof header), block.size());
  header.checksum = crc32(block.data() + sizeof header, covered - sizeof header, crc32(block.data(), 20));
  std::memcpy(block.data(), &header, sizeof header);
  return open(block);
}

TEST(Crc32, KnownValuesInOneOrTwoParts) {
  const char text[] = "The quick brown fox jumps over the lazy dog";
  EXPECT_EQ(crc32("123456789", 9), 0xCBF43926u);
  EXPECT_EQ(crc32(text, 0), 0u);
  for (uint64_t first = 0; first <= 43; ++first) {
    EXPECT_EQ(crc32(text + first, 43 - first, crc32(text, first)), 0x414FA339u) << first;
  }
}

TEST(ModelBlock, IsReadWhereverItLies) {
  const GuardedBuffer<uint8_t> block = makeBlock();
  // Multiples of 8 only, and bytes behind the block.
  std::vector<uint64_t> moved(block.size() / 8 + 2, ~uint64_t{0});
  for (size_t place = 0; place < 2; ++place) {
    std::memcpy(&moved[place], block.data(), block.size());
    ModelView view;
    ASSERT_EQ(view.open(&moved[place], block.size() + 8, kMagic, kVersion), DAX_STS_OK);
    const auto bytes = view.piece<uint8_t>(kBytes);
    const auto numbers = view.piece<Number>(kNumbers);
    ASSERT_EQ(bytes.size(), 13u);
    ASSERT_EQ(numbers.size(), 5u);
    EXPECT_GT(reinterpret_cast<const uint64_t*>(bytes.data()), &moved[place]);
    for (size_t i = 0; i < 13; ++i) EXPECT_EQ(bytes[i], i + 1);
    for (int32_t i = 0; i < 5; ++i) {
      EXPECT_EQ(numbers[static_cast<size_t>(i)].value, i * 0.5);
      EXPECT_EQ(numbers[static_cast<size_t>(i)].index, i);
    }
    EXPECT_TRUE(view.piece<uint16_t>(kNothing).data());
    EXPECT_TRUE(view.piece<uint16_t>(kNothing).empty());
    EXPECT_FALSE(view.piece<uint16_t>(kBytes).data());
    EXPECT_FALSE(view.piece<uint8_t>(fourCharacters("more")).data());
  }
  EXPECT_EQ(std::memcmp(block.data(), "TEST", 4), 0);
}

// The same bytes, whatever was in the memory.
TEST(ModelBlock, LeavesNoByteUnwritten) {
  const GuardedBuffer<uint8_t> block = makeBlock();
  GuardedBuffer<uint8_t> other(block.size(), Guard::before, 0x3C);
  ModelWriter writer(other.data(), other.size(), 3);
  ASSERT_EQ(layOut(writer), DAX_STS_OK);
  EXPECT_EQ(std::memcmp(block.data(), other.data(), block.size()), 0);
}

TEST(ModelBlock, EveryFlippedBitIsRefused) {
  GuardedBuffer<uint8_t> block = makeBlock();
  for (size_t i = 0; i < block.size(); ++i) {
    for (int bit = 0; bit < 8; ++bit) {
      block[i] = static_cast<uint8_t>(block[i] ^ 1 << bit);
      EXPECT_EQ(open(block), i >= 4 && i < 8 ? DAX_STS_CFG_VERSION : DAX_STS_BAD_PARAM) << i << ", " << bit;
      block[i] = static_cast<uint8_t>(block[i] ^ 1 << bit);
    }
  }
  EXPECT_EQ(open(block), DAX_STS_OK);
}

// Each part lies against a forbidden page: reading on would fault.
TEST(ModelBlock, EveryCutIsRefused) {
  const GuardedBuffer<uint8_t> block = makeBlock();
  for (size_t length = 0; length < block.size(); length += 8) {
    GuardedBuffer<uint8_t> part(length);
    std::memcpy(part.data(), block.data(), length);
    for (size_t given = length > 7 ? length - 7 : 0; given <= length; ++given) {
      EXPECT_EQ(ModelView().open(part.data(), given, kMagic, kVersion), DAX_STS_BAD_PARAM) << given;
    }
  }
}

TEST(ModelBlock, HostileDirectoriesAreRefused) {
  EXPECT_EQ(openChanged([](ModelHeader&, ModelPiece*) {}), DAX_STS_OK);
  using Change = void (*)(ModelHeader&, ModelPiece*);
  const Change changes[] = {
      [](ModelHeader& h, ModelPiece*) { h.bytes = 23; },
      [](ModelHeader& h, ModelPiece*) { h.bytes = 24 + 3 * 24 - 1; },
      [](ModelHeader& h, ModelPiece*) { h.bytes += 1; },
      [](ModelHeader& h, ModelPiece*) { h.bytes = UINT64_MAX; },
      [](ModelHeader& h, ModelPiece*) { h.pieceCount = UINT32_MAX; },
      [](ModelHeader& h, ModelPiece*) { h.pieceCount = 5; },
      [](ModelHeader&, ModelPiece* p) { p[0].count = 17; },
      [](ModelHeader&, ModelPiece* p) { p[0].offset -= 8; },
      [](ModelHeader&, ModelPiece* p) { p[1].offset += 4, p[1].count = 4; },
      [](ModelHeader&, ModelPiece* p) { p[1].count = 6; },
      [](ModelHeader&, ModelPiece* p) { p[1].count = (uint64_t{1} << 60) + 5; },
      [](ModelHeader&, ModelPiece* p) { p[1].elementBytes = UINT32_MAX; },
      [](ModelHeader&, ModelPiece* p) { p[2].offset += 8; },
      [](ModelHeader&, ModelPiece* p) { p[2].offset = UINT64_MAX - 7; },
      [](ModelHeader&, ModelPiece* p) { p[2].count = 1; },
  };
  for (const Change change : changes) EXPECT_EQ(openChanged(change), DAX_STS_BAD_PARAM) << &change - changes;
}

TEST(ModelBlock, StatusesOfBothSides) {
  GuardedBuffer<uint8_t> block = makeBlock();
  ModelView view;
  EXPECT_EQ(view.open(nullptr, 100, kMagic, kVersion), DAX_STS_NULL_POINTER);
  EXPECT_EQ(view.open(block.data(), block.size(), kMagic, kVersion + 1), DAX_STS_CFG_VERSION);
  EXPECT_EQ(view.open(block.data(), block.size(), kMagic + 1, kVersion), DAX_STS_BAD_PARAM);
  EXPECT_EQ(view.open(block.data() + 4, block.size() - 4, kMagic, kVersion), DAX_STS_BAD_PARAM);
  EXPECT_FALSE(view.piece<uint8_t>(kBytes).data());
  // Memory too small: nothing beyond it is written.
  for (size_t room = 1; room < block.size(); ++room) {
    GuardedBuffer<uint8_t> small(room);
    ModelWriter writer(small.data(), room, 3);
    EXPECT_EQ(layOut(writer), DAX_STS_BAD_SIZE) << room;
  }
  for (const uint32_t announced : {2u, 4u}) {
    std::vector<uint64_t> memory(100);
    ModelWriter writer(memory.data(), 800, announced);
    EXPECT_EQ(layOut(writer), DAX_STS_FAILURE);
  }
  for (const uint64_t count : {UINT64_MAX, UINT64_MAX / 8, uint64_t{1} << 61, uint64_t{1} << 60}) {
    ModelWriter writer(block.data(), block.size(), 1);
    uint64_t bytes = 7;
    EXPECT_FALSE(writer.add<double>(kNumbers, count));
    EXPECT_EQ(writer.store(&bytes), DAX_STS_BUFFER_OVERFLOW);
    EXPECT_EQ(bytes, 7u);
    EXPECT_EQ(writer.seal(kMagic, kVersion), DAX_STS_BUFFER_OVERFLOW);
  }
}

}  // namespace
}  // namespace dax::test
