#include "daxi/channels.h"

#include "bench/image/convert/channels_bench.h"
#include "daxi/masked_copy.h"

namespace {

using namespace bench::channels;

constexpr int32_t kBgr[3] = {2, 1, 0}, kOpaque[4] = {0, 1, 2, -1};

const bench::Own operations[] = {
    {"split, 8u C3", 3 * kPixels,
     [] {
       const Planes p;
       return bench::Task{
           [=] {
             uint8_t* const planes[3] = {p.plane[0].data(), p.plane[1].data(), p.plane[2].data()};
             bench::require(DAXI_Split_8u_C3P3R(p.colour.data(), 3 * p.step, planes, p.step, bench::kSize));
           },
           [=] { return p.digestOfPlanes(); }};
     }},
    {"merge, 8u C3", 3 * kPixels,
     [] {
       const Planes p;
       return bench::Task{
           [=] {
             const uint8_t* const planes[3] = {p.plane[0].data(), p.plane[1].data(), p.plane[2].data()};
             bench::require(DAXI_Merge_8u_P3C3R(planes, p.step, p.result.data(), 3 * p.step, bench::kSize));
           },
           [=] { return bench::digest(p.result); }};
     }},
    {"swap, 8u C3", 3 * kPixels,
     [] {
       const Planes p;
       return bench::Task{[=] {
                            bench::require(DAXI_SwapChannels_8u_C3R(p.colour.data(), 3 * p.step, p.result.data(),
                                                                    3 * p.step, bench::kSize, kBgr, 0));
                          },
                          [=] { return bench::digest(p.result); }};
     }},
    {"add a channel, 8u C3 to C4", 4 * kPixels,
     [] {
       const Planes p;
       return bench::Task{[=] {
                            bench::require(DAXI_SwapChannels_8u_C3C4R(p.colour.data(), 3 * p.step, p.opaque.data(),
                                                                      4 * p.step, bench::kSize, kOpaque, 255));
                          },
                          [=] { return bench::digest(p.opaque); }};
     }},
    {"pick, 8u C3", kPixels,
     [] {
       const Planes p;
       return bench::Task{[=] {
                            bench::require(DAXI_PickChannel_8u_C3C1R(p.colour.data(), 3 * p.step, p.plane[0].data(),
                                                                     p.step, bench::kSize, 1));
                          },
                          [=] { return bench::digest(p.plane[0]); }};
     }},
    {"copy with a mask, 8u", kPixels,
     [] {
       const Planes p;
       return bench::Task{[=] {
                            bench::require(DAXI_Copy_8u_C1MR(p.colour.data(), p.step, p.mask.data(), p.step,
                                                             p.plane[0].data(), p.step, bench::kSize));
                          },
                          [=] { return bench::digest(p.plane[0]); }};
     }},
    {"set with a mask, 8u C3", 3 * kPixels,
     [] {
       const Planes p;
       return bench::Task{
           [=] {
             const uint8_t value[3] = {1, 2, 3};
             bench::require(DAXI_Set_8u_C3MR(p.mask.data(), p.step, p.result.data(), 3 * p.step, bench::kSize, value));
           },
           [=] { return bench::digest(p.result); }};
     }},
};

}  // namespace
