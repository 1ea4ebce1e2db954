// Any bytes as a range record, its pointers aside, through the checks, copy, writer and reader; and as the small
// records that have checks of their own.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "zur.h"

namespace {

using dax::fuzz::require;

constexpr int64_t kMaxBytes = 1 << 20;

// A slot whose pointers are null or lead to as much memory as the slot says.
class Slot {
 public:
  Slot(DAX3D_IMAGE_SLOT& slot, int64_t elementBytes, uint8_t present) {
    for (int i = 0; i < 4; ++i) {
      const int64_t elements = int64_t{std::max(slot.image.step[i], 0)} * std::max(slot.image.height, 0);
      const bool there = (present >> i & 1) && elements <= kMaxBytes;
      memory_[i].reset(there ? new uint8_t[static_cast<size_t>(elements * elementBytes)]() : nullptr);
      slot.owner[i] = memory_[i].get();
      slot.image.plane[i] = present >> (4 + i) & 1 ? nullptr : memory_[i].get();
    }
  }

 private:
  std::unique_ptr<uint8_t[]> memory_[4];
};

void release(DAX3D_RANGE_V4& record) {
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
  for (void* owner : record.colour.owner) ZUR_Free(owner);
}

void expectCopy(const DAX3D_RANGE_V4& record) {
  DAX3D_RANGE_V4 copy = {};
  const bool valid = DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&record, 0) == DAX_STS_OK;
  require((DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&record, &copy) == DAX_STS_OK) == valid);
  if (!valid) return;
  require(DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&copy, 0) == DAX_STS_OK);
  const ZurImage& image = record.colour.image;
  const bool rowsFit = image.format == 201 || std::min(image.step[1], image.step[2]) >= image.width;
  const bool coloured = DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&record, 1) == DAX_STS_OK && rowsFit;
  require((DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&copy, 1) == DAX_STS_OK) == coloured);
  release(copy);
}

// For comparisons that tell -0 from 0, and find NaN equal.
template <class T>
auto bytesOf(const T& value) {
  return std::bit_cast<std::array<uint8_t, sizeof(T)>>(value);
}

void expectRoundTrip(const DAX3D_RANGE_V4& record) {
  const dax::fuzz::MemoryFile file;
  if (DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(file.path().c_str(), &record) != DAX_STS_OK) return;
  DAX3D_RANGE_V4 back = {};
  require(DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &back) == DAX_STS_OK);
  require(back.type == record.type && bytesOf(back.calib) == bytesOf(record.calib));
  require(bytesOf(back.scale) == bytesOf(record.scale) && bytesOf(back.offset) == bytesOf(record.offset));
  require(back.range.image.width == record.range.image.width && back.range.image.height == record.range.image.height);
  require(!back.mask.owner[0] == !record.mask.owner[0]);
  require(!back.colour.owner[0] == !record.colour.owner[0]);
  release(back);
}

// As many values of T as a check takes, the bytes repeated.
template <class T, size_t N>
std::array<T, N> values(const uint8_t* data, size_t size) {
  std::array<T, N> result = {};
  auto* const bytes = reinterpret_cast<uint8_t*>(result.data());
  for (size_t i = 0; i < sizeof(result) && size > 0; ++i) bytes[i] = data[i % size];
  return result;
}

template <class T, size_t N>
void expectFinite(DaxStatus status, const std::array<T, N>& looked) {
  if (status != DAX_STS_OK) return;
  for (const T value : looked) require(!std::isnan(value));
}

void checkSmallRecords(const uint8_t* data, size_t size) {
  const auto narrow = values<float, 16>(data, size);
  const auto wide = values<double, 16>(data, size);
  expectFinite(DAX3DPCL_UTILS_Check_Intrins_32f(narrow.data()), std::array{narrow[0], narrow[4], narrow[2], narrow[5]});
  expectFinite(DAX3DPCL_UTILS_Check_Intrins_64f(wide.data()), std::array{wide[0], wide[4], wide[2], wide[5]});
  expectFinite(DAX3DPCL_UTILS_Check_CamIntrins(wide.data()), std::array{wide[0], wide[1], wide[2], wide[3]});
  expectFinite(DAX3DPCL_UTILS_Check_Box3d_32f(narrow.data()), std::array{narrow[3], narrow[5], narrow[6], narrow[8]});
  expectFinite(DAX3DPCL_UTILS_Check_Box3d_64f(wide.data()), std::array{wide[3], wide[5], wide[6], wide[8]});
  expectFinite(DAX3DPCL_UTILS_Check_EyeSE3_32f(narrow.data()), std::array{narrow[1], narrow[3], narrow[6], narrow[15]});
  expectFinite(DAX3DPCL_UTILS_Check_EyeSE3_64f(wide.data()), std::array{wide[1], wide[3], wide[6], wide[15]});
  expectFinite(DAX3DPCL_UTILS_Check_Quat_32f(narrow.data()), std::array{narrow[0], narrow[1], narrow[2], narrow[3]});
  expectFinite(DAX3DPCL_UTILS_Check_Quat_64f(wide.data()), std::array{wide[0], wide[1], wide[2], wide[3]});
  DAX3DPCL_UTILS_Check_Normal_32f(narrow[0], narrow[1], narrow[2]);
  DAX3DPCL_UTILS_Check_Normal_64f(wide[0], wide[1], wide[2]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  checkSmallRecords(data, size);
  DAX3D_RANGE_V4 record = {};
  uint8_t present[3] = {};
  if (size < sizeof(present)) return 0;
  std::memcpy(present, data, sizeof(present));
  std::memcpy(&record, data + sizeof(present), std::min(size - sizeof(present), sizeof(record)));
  const Slot mask(record.mask, 1, present[0]), range(record.range, 2, present[1]), colour(record.colour, 1, present[2]);
  DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins(&record);
  expectCopy(record);

  expectRoundTrip(record);

  DAX3D_CAMERA_64F camera;
  double pose[16];
  if (DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &camera, pose) == DAX_STS_OK) {
    require(DAX3DPCL_UTILS_Recover_RANGE_V4_RGB_Intrins(&record, &camera, pose) == DAX_STS_OK);
  }
  return 0;
}
