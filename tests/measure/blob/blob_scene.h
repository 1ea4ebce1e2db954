// Labelled masks and selections for tests.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>
#include <vector>

#include "daxi/blob_select_v4.h"
#include "tests/measure/blob/labeller.h"

namespace dax::test {

using Image = TestImage<uint8_t>;

inline Image picture(std::initializer_list<std::string_view> rows) {
  Image image({static_cast<int32_t>(rows.begin()->size()), static_cast<int32_t>(rows.size())});
  image.fill([&](int32_t x, int32_t y) { return rows.begin()[y][static_cast<size_t>(x)] == '#' ? 255 : 0; });
  return image;
}

inline Image randomMask(DaxiSize size, uint64_t seed, int32_t percent) {
  Random random(seed);
  Image image(size);
  image.fill([&](int32_t, int32_t) { return random.below(100) < percent ? 255 : 0; });
  return image;
}

inline BlobSelectCfg config(uint32_t flags = 0, uint32_t key = DAXI_BLOB_KEY_AREA,
                            uint32_t order = DAXI_BLOB_DESCENDING) {
  BlobSelectCfg cfg = {};
  cfg.maxCount = DAXI_BLOB_MAX_COUNT;
  cfg.flags = flags;
  cfg.sortKey = key;
  cfg.sortOrder = order;
  return cfg;
}

// A labelled mask with all that a selection needs, the work buffer of exactly the queried size and guarded.
class Scene {
 public:
  explicit Scene(const Image& mask, int32_t connectivity = 8)
      : mask_(mask),
        label_(mask.size(), connectivity),
        list_(label_(mask, DAX_ISA_NEON)),
        buffer_(bytes(mask.size())) {}

  DaxStatus trySelect(const BlobSelectCfg& cfg, BlobSelectResult& result, const Image& gray) {
    std::memset(buffer_.data(), poison_++, buffer_.size());
    return DAXI_BlobSelect_8u_C1R(gray.data(), gray.step(), gray.data(), gray.step(), gray.size(), &list_,
                                  static_cast<int32_t>(list_.domainCount), &result, &cfg, buffer_.data());
  }

  std::vector<BlobInfo> select(const BlobSelectCfg& cfg) { return select(cfg, mask_); }

  // The array has room for exactly as many records as can be kept.
  std::vector<BlobInfo> select(const BlobSelectCfg& cfg, const Image& gray) {
    GuardedBuffer<BlobInfo> array(static_cast<size_t>(cfg.maxCount));
    BlobSelectResult result{array.data(), 0, nullptr};
    EXPECT_EQ(trySelect(cfg, result, gray), DAX_STS_OK);
    EXPECT_EQ(result.domains, &list_);
    return {array.begin(), array.begin() + result.count};
  }

  const DaxiDomainList& list() const { return list_; }
  const Image& mask() const { return mask_; }

 private:
  static uint64_t bytes(DaxiSize size) {
    uint64_t result = 0;
    EXPECT_EQ(DAXI_BlobSelectBufferSize_8u(size, &result), DAX_STS_OK);
    return result;
  }
  const Image& mask_;
  Labeller label_;
  const DaxiDomainList& list_;
  GuardedBuffer<uint8_t> buffer_;
  uint8_t poison_ = 0x7E;
};

}  // namespace dax::test
