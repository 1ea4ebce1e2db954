// Image primitives. Images, steps, sizes and instruction-set codes explain themselves by name and type.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

using Query = DaxStatus (*)(DaxiSize, uint64_t*);

void onlyImages(Call&) {}

// Destination in place of the source, at times.
void maybeInPlace(Call& c) {
  c.image("src", "srcStep", c.size("size"));
  c.inPlace("dst", "dstStep", "src", "srcStep");
}

void checkData(Call& c) {
  if (c.has("planes")) {
    const int64_t count = std::string_view(c.function.name).ends_with("_P2R") ? 2 : 3;
    auto** const planes = static_cast<void**>(c.array("planes", count));
    for (int64_t i = 0; planes && i < count; ++i) {
      const bool missing = c.isSpoiled("planes") && c.chance(40);
      planes[i] = missing ? nullptr : c.memory("plane", -1, Role::input);
    }
    const int64_t width = c.size("size").width;
    c.anyOf("step", {width, std::min<int64_t>(width + 7, INT32_MAX)});
  } else {
    c.notRead("image");
  }
}

void add(Call& c) {
  c.image("src1", "step1", c.size("size"));
  c.inPlace("dst", "dstStep", "src1", "step1");
}

void copyBorder(Call& c) {
  const std::string_view name = c.function.name;
  const DaxiSize src = c.size("srcSize", name.find("Mirror") != name.npos ? 2 : 1);
  const int64_t top = c.number("top", 0, 40);
  const int64_t left = static_cast<int32_t>(c.number("left", 0, 40));
  const auto side = [&](int64_t least) {
    return static_cast<int32_t>(std::clamp<int64_t>(least, 1, INT32_MAX - 60)) + c.random.below(50);
  };
  c.sizeOr("dstSize", {side(src.width + left), side(src.height + top)});
  for (const char* part : {"re", "im"}) {
    if (c.has(part)) c.real(part, -5, 5);
  }
  if (c.has("value") && std::string_view(name).find("f_") != name.npos) {
    c.real("value", -5, 5);
  } else if (c.has("value")) {
    c.number("value", 0, 127);
  }
}

void erode(Call& c) {
  maybeInPlace(c);
  c.number("iterations", 1, 12);
  c.work(
      "buffer", [&](uint64_t* bytes) { return DAXI_Erode3x3BufferSize_8u(c.size("size"), bytes); }, 1);
  if (Block* const src = c.blockOf("src")) c.fillMask(src->data, src->bytes);
}

template <Query query>
void filterBox(Call& c) {
  const DaxiSize size = c.size("size", 3);
  c.number("radius", 1, std::max(1, (std::max(std::min(size.width, size.height), 1) - 1) / 2));
  c.work(
      "buffer", [&](uint64_t* bytes) { return query(size, bytes); }, 4);
}

void median(Call& c) {
  c.size("size", 3);
  if (c.has("pool")) c.pool();
}

// --- Means ---

template <class Pixel>
void meanNumbers(Call& c) {
  if constexpr (std::is_floating_point_v<Pixel>) {
    c.image("src", "srcStep", c.size("size"));
    Block* const src = c.blockOf("src");
    if (src && c.chance(70)) c.fillReals(reinterpret_cast<Pixel*>(src->data), src->bytes / sizeof(Pixel));
  }
}

DaxiSize meanMask(Call& c, int32_t most = INT32_MAX) {
  const DaxiSize size = c.size("size");
  const auto side = [&](int32_t length) { return 1 + c.random.below(std::clamp(length, 1, most)); };
  return c.sizeOr("mask", {side(size.width), side(size.height)});
}

template <class Pixel, Query query>
void filterMean(Call& c) {
  meanNumbers<Pixel>(c);
  meanMask(c);
  const bool summed = query == DAXI_FilterMeanBufferSize_64f ||
                      std::string_view(c.function.name).find("MeanInt") != std::string_view::npos;
  c.work(
      "buffer", [&](uint64_t* bytes) { return query(c.size("size"), bytes); }, summed ? 8 : 4);
}

void filterMeanBytes(Call& c) {
  const DaxiSize mask = meanMask(c, 255);
  const bool small = c.chance(50);
  if (c.has("pool")) c.pool();
  const auto query = [&](uint64_t* bytes) {
    if (c.has("pool")) return DAXI_FilterMeanBufferSize_8u_MT(c.size("size"), mask, c.get<uint32_t>("threads"), bytes);
    return small ? DAXI_FilterMeanBufferSize_8u_V2(c.size("size"), mask, bytes)
                 : DAXI_FilterMeanBufferSize_8u(c.size("size"), bytes);
  };
  c.work("buffer", query, 4);
}

void meanNeed(Call& c) {
  meanMask(c, 255);
  if (c.has("threads")) c.number("threads", 0, 70);
}

// --- Thresholds ---

void thresholdBin(Call& c) {
  maybeInPlace(c);
  auto* const cfg = c.record<DaxiThresholdBinCfg>("cfg");
  if (cfg) {
    const auto share = [&](int32_t most) { return static_cast<float>(c.random.below(most)) / 100.0f; };
    *cfg = {};
    cfg->method = static_cast<uint32_t>(c.between(1, 6));
    cfg->polarity = static_cast<uint32_t>(c.random.below(2));
    cfg->darkTail = share(50), cfg->brightTail = share(50);
    cfg->lowPos = share(50), cfg->highPos = cfg->lowPos + share(50);
    cfg->soft = static_cast<uint32_t>(c.random.below(255));
    cfg->softLow = c.random.below(254), cfg->softHigh = static_cast<int32_t>(c.between(cfg->softLow + 1, 255));
    cfg->t1 = static_cast<uint32_t>(c.random.below(256)), cfg->t2 = static_cast<uint32_t>(c.random.below(256));
    c.spoilWord("cfg", cfg, 0, sizeof *cfg);
  }
  for (const char* level : {"low", "high"}) {
    if (c.has(level)) c.array(level, 1);
  }
}

void softBin(Call& c) {
  const int64_t low = c.number("low", 0, 254);
  c.number("high", std::min<int64_t>(low + 1, 255), 255);
  c.number("soft", 0, 254);
}

void relativeSoft(Call& c) {
  c.real("darkTail", 0, 0.5), c.real("brightTail", 0, 0.5);
  const double low = c.real("lowPos", 0, 0.5);
  c.real("highPos", low <= 0.5 ? low : 0.5, 1);
  c.number("soft", 0, 254);
}

const Rows rows = {
    {"DAXI_Add_8u_C1RSfs_IS", add},
    {"DAXI_CheckData_*", checkData},
    {"DAXI_CopyConstBorder_*", copyBorder},
    {"DAXI_CopyReplicateBorder_*", copyBorder},
    {"DAXI_CopyMirrorBorder_*", copyBorder},
    {"DAXI_CopySymmetricBorder_*", copyBorder},
    {"DAXI_CopyCircularBorder_*", copyBorder},
    {"DAXI_Erode3x3BufferSize_8u", onlyImages},
    {"DAXI_Erode3x3_8u_C1R", erode},
    {"DAXI_ErodeRow3_8u_C1R", maybeInPlace},
    {"DAXI_ErodeCol3_8u_C1R", onlyImages},
    {"DAXI_FilterBoxBufferSize_*", onlyImages},
    {"DAXI_FilterBox_8u32s_*", filterBox<DAXI_FilterBoxBufferSize_8u32s>},
    {"DAXI_FilterBox_16s32f_*", filterBox<DAXI_FilterBoxBufferSize_16s32f>},
    {"DAXI_FilterBox_32s_*", filterBox<DAXI_FilterBoxBufferSize_32s>},
    {"DAXI_FilterBox_32f_*", filterBox<DAXI_FilterBoxBufferSize_32f>},
    {"DAXI_FilterMedian3x3_*", median},
    {"DAXI_FilterMeanBufferSize_8u_*", meanNeed},
    {"DAXI_FilterMeanBufferSize_*", onlyImages},
    {"DAXI_FilterMeanIntBufferSize_*", onlyImages},
    {"DAXI_FilterMean_8u_*", filterMeanBytes},
    {"DAXI_FilterMean_16u_C1R", filterMean<uint16_t, DAXI_FilterMeanBufferSize_16u>},
    {"DAXI_FilterMean_16s_C1R", filterMean<int16_t, DAXI_FilterMeanBufferSize_16s>},
    {"DAXI_FilterMean_32f_C1R", filterMean<float, DAXI_FilterMeanBufferSize_32f>},
    {"DAXI_FilterMean_64f_C1R", filterMean<double, DAXI_FilterMeanBufferSize_64f>},
    {"DAXI_FilterMeanInt_8u_C1R", filterMean<uint8_t, DAXI_FilterMeanIntBufferSize_8u>},
    {"DAXI_FilterMeanInt_16u_C1R", filterMean<uint16_t, DAXI_FilterMeanIntBufferSize_16u>},
    {"DAXI_FilterMeanInt_16s_C1R", filterMean<int16_t, DAXI_FilterMeanIntBufferSize_16s>},
    {"DAXI_FilterMeanInt_32f_C1R", filterMean<float, DAXI_FilterMeanIntBufferSize_32f>},
    {"DAXI_FilterMeanInt_64f_C1R", filterMean<double, DAXI_FilterMeanIntBufferSize_64f>},
    {"DAXI_AdpThresholdOtsu_8u_C1IR", onlyImages},
    {"DAXI_AdpThresholdOtsu_8u_C1R*", maybeInPlace},
    {"DAXI_ThresholdBin_0to255_8u_C1R_NEON", maybeInPlace},
    {"DAXI_ThresholdBin_0to255_8u_C1IR_NEON", onlyImages},
    {"DAXI_ThresholdBin_out_range_is_255_NEON", maybeInPlace},
    {"DAXI_ThresholdBin_*", thresholdBin},
    {"DAXI_ThresholdBinV2_*", thresholdBin},
    {"DAXI_ThresholdSoftBin_*", softBin},
    {"DAXI_ThresholdRelativeSoft_*", relativeSoft},
};

}  // namespace

}  // namespace dax::hostile
