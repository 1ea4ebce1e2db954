// Blobs and regions. Lists of domains come from a labelling of a random mask; calls trust what is in them.
#include <cstddef>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// --- Labelling ---

void mask(Call& c) {
  const bool isConst = c.has("src");
  const char* const name = isConst ? "src" : "srcDst";
  c.image(name, isConst ? "srcStep" : "step", c.size("size"));
  if (Block* const block = c.blockOf(name)) {
    c.fillMask(block->data, block->bytes);
    block->role = Role::input;
  }
  c.anyOf("connectivity", {4, 8});
}

// The list is compared record by record: it points into the model, or to memory of the library's own.
uint64_t digestOf(const DaxiDomainList* list) {
  uint64_t digest = 0xCBF29CE484222325u;
  const auto add = [&](const void* data, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) digest = (digest ^ static_cast<const uint8_t*>(data)[i]) * 0x100000001B3u;
  };
  add(&list->size, sizeof list->size);
  add(list->runs, list->runCount * sizeof(DomainRun));
  add(list->domains, list->domainCount * sizeof(DaxiDomain));
  return digest;
}

void settleList(Call& c) {
  c.settle = [&c](uint64_t result) {
    return result == DAX_STS_OK ? digestOf(*c.get<const DaxiDomainList**>("domains")) : result;
  };
}

void find(Call& c) {
  mask(c);
  c.array("domains", 1);
  settleList(c);
}

// A model of the library's own, made new (V2) or kept from an earlier image (V3).
void findModel(Call& c) {
  mask(c);
  auto** const model = static_cast<DaxiBlobModel**>(c.array("model", 1));
  c.array("domains", 1);
  const bool keeps = std::string_view(c.function.name).find("V3") != std::string_view::npos;
  if (model && keeps) *model = nullptr;
  c.settle = [&c, model, keeps](uint64_t result) -> uint64_t {
    if (result != DAX_STS_OK) return result;
    uint64_t digest = digestOf(*c.get<const DaxiDomainList**>("domains"));
    if (keeps) {
      // The same again into the same model, as for the next image of a stream.
      c.function.invoke(c.function.code, c.values.data());
      digest += digestOf(*c.get<const DaxiDomainList**>("domains"));
    }
    DAXI_BlobFindV2DestroyModel_8u(model);
    return digest;
  };
  for (const char* const name : {"model", "domains"}) c.meansNothing(name);
}

void destroyModel(Call& c) {
  auto** const model = static_cast<DaxiBlobModel**>(c.array("model", 1));
  if (!model) return;
  *model = nullptr;
  const uint8_t pixel = 1;
  const DaxiDomainList* list;
  if (c.chance(70)) DAXI_BlobFindV2_8u_C1R(&pixel, 1, {1, 1}, 4, model, &list);
  c.once = true;
}

// --- Lists for other calls ---

// Labels a random mask into guarded memory that no call may change.
const DaxiDomainList* labelled(Call& c, DaxiSize size) {
  uint64_t modelBytes = 0, bufferBytes = 0;
  DAXI_BlobFindMultiClsModelSize_8u(size, &modelBytes);
  DAXI_BlobFindMultiClsBufferSize_8u(size, &bufferBytes);
  const auto pixels = static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
  auto* const image = c.elements<uint8_t>("mask", static_cast<int64_t>(pixels), Role::input);
  void* const model = c.memory("model", static_cast<int64_t>(modelBytes), Role::input);
  void* const buffer = c.memory("labelling buffer", static_cast<int64_t>(bufferBytes), Role::foreign);
  if (!image || !model || !buffer) return nullptr;
  c.fillMask(image, pixels);
  const auto label = c.chance(70) ? DAXI_BlobFind_8u_C1R : DAXI_BlobFindMultiCls_8u_C1R;
  const DaxiDomainList* list = nullptr;
  label(image, size.width, size, c.pick({4, 8}), model, &list, buffer);
  return list;
}

// A list for the argument `domains`: of the region's size or another one, spoiled: null or without arrays.
const DaxiDomainList* domains(Call& c) {
  if (c.isSpoiled("domains", 50)) {
    c.set<const void*>("domains", nullptr);
    return nullptr;
  }
  const DaxiSize region = c.size("size");
  DaxiSize size = {std::clamp(region.width, 1, 200), std::clamp(region.height, 1, 200)};
  if (c.chance(25)) size = {1 + c.random.below(60), 1 + c.random.below(60)};
  const DaxiDomainList* list = labelled(c, size);
  if (list && c.isSpoiled("domains")) {
    auto* const broken = c.elements<DaxiDomainList>("domains", 1, Role::input);
    *broken = *list;
    (c.chance(50) ? reinterpret_cast<const void*&>(broken->runs) : reinterpret_cast<const void*&>(broken->domains)) =
        nullptr;
    list = broken;
  }
  c.set("domains", list);
  return list;
}

// --- Selection ---

DaxiRange range(Call& c, float max) {
  const float low = static_cast<float>(c.random.below(50)) / 100 * max;
  return {c.chance(50) ? 0 : low, low + static_cast<float>(c.random.below(50)) / 100 * max};
}

float weight(Call& c) {
  return static_cast<float>(c.random.below(101)) / 100.0f;
}

void adjust(Call& c, BlobSelectCfg& cfg) {
  const bool fast = std::string_view(c.function.name).find("Fast") != std::string_view::npos;
  constexpr uint32_t kFast = DAXI_BLOB_BY_AREA | DAXI_BLOB_BY_RECT_WIDTH | DAXI_BLOB_BY_RECT_HEIGHT;
  cfg.maxCount = c.chance(60) ? 1 + c.random.below(20) : 1 + c.random.below(2000);
  cfg.flags = static_cast<uint32_t>(c.random.next()) & (fast ? kFast : c.chance(50) ? 0xFFFu : 0x1FFFFu);
  if (c.chance(40)) cfg.flags &= static_cast<uint32_t>(c.random.next());
  cfg.area = range(c, 200), cfg.perimeter = range(c, 200), cfg.shortAxis = range(c, 50), cfg.longAxis = range(c, 50);
  cfg.axisRatio = range(c, 1), cfg.circularity = range(c, 1), cfg.rectangularity = range(c, 1);
  cfg.centralBias = range(c, 20);
  for (float* each :
       {&cfg.areaWeight, &cfg.perimeterWeight, &cfg.shortAxisWeight, &cfg.longAxisWeight, &cfg.axisRatioWeight,
        &cfg.circularityWeight, &cfg.rectangularityWeight, &cfg.centralBiasWeight}) {
    *each = weight(c);
  }
  cfg.sortOrder = static_cast<uint32_t>(c.between(1, 3));
  cfg.sortKey = static_cast<uint32_t>(fast ? c.pick({1, 5, 6, 10, 11}) : static_cast<int>(c.between(1, 13)));
  cfg.boxAngle = {-1.6f + weight(c), weight(c), weight(c)};
  cfg.rectWidth = {0, static_cast<float>(c.random.below(100)), weight(c)};
  cfg.rectHeight = {0, static_cast<float>(c.random.below(100)), weight(c)};
  cfg.outsideLimit = c.random.below(50);
  cfg.mask = nullptr, cfg.maskStep = 0;
  const DaxiSize size = c.size("size");
  if (size.width > 0 && size.height > 0 && c.chance(40)) {
    cfg.maskStep = std::min(size.width, 1 << 20) + c.random.below(5);
    const int64_t bytes = int64_t{size.height - 1} * cfg.maskStep + size.width;
    cfg.mask = c.elements<uint8_t>("cfg->mask", bytes, Role::input);
  }
  if (!cfg.mask) cfg.maskStep = 0;
}

const BlobSelectCfg* configuration(Call& c) {
  if (std::string_view(c.function.name).find("V4") == std::string_view::npos)
    return c.filled<BlobSelectCfg>("cfg", 1, [&](BlobSelectCfg& cfg) { adjust(c, cfg); });
  auto* const cfg = c.filled<BlobSelectV4Cfg>("cfg", 1, [&](BlobSelectV4Cfg& each) {
    adjust(c, each.common);
    each.areaMin = static_cast<int32_t>(c.hostileInteger()), each.areaMax = static_cast<int32_t>(c.hostileInteger());
    each.perClass = static_cast<uint32_t>(c.random.below(2));
    for (int32_t& max : each.classAreaMax) max = c.random.below(300);
  });
  return cfg ? &cfg->common : nullptr;
}

// Only the records that are kept mean something.
void result(Call& c, const BlobSelectCfg* cfg) {
  auto* const record = c.record<BlobSelectResult>("result");
  if (!record) return;
  const int64_t max = cfg && cfg->maxCount >= 1 && cfg->maxCount <= DAXI_BLOB_MAX_COUNT ? cfg->maxCount : -1;
  const bool missing = c.isSpoiled("result", 50);
  *record = {missing ? nullptr : c.elements<BlobInfo>("result->array", max, Role::output), 7, nullptr};
  c.onlyMeans(record->array, [record] { return record->count * sizeof(BlobInfo); });
}

void select(Call& c) {
  if (!c.has("result")) return;
  const std::string_view name = c.function.name;
  const DaxiDomainList* const list = domains(c);
  if (c.has("domainCount")) c.number("domainCount", 1, list ? std::max(1u, list->domainCount) : 1);
  const BlobSelectCfg* const cfg = configuration(c);
  result(c, cfg);
  const bool fourth = name.find("V4") != name.npos;
  if (name.find("Fast") == name.npos && !fourth) return;
  c.draw("size");
  if (c.has("pool")) c.pool();
  c.work("buffer", [&](uint64_t* bytes) {
    const auto size = c.get<DaxiSize>("size");
    if (c.has("pool")) return DAXI_BlobSelectV3BufferSize_8u_MT(size, c.get<uint32_t>("threads"), bytes);
    return fourth ? DAXI_BlobSelectV3BufferSize_8u(size, bytes) : DAXI_BlobSelectBufferSize_8u(size, bytes);
  });
}

// --- Records of blobs ---

BlobInfo* blobs(Call& c, int64_t count, const DaxiDomainList* list) {
  auto* const array = static_cast<BlobInfo*>(c.array("blobs", count));
  if (!array || c.blockOf("blobs")->bytes == 0) return nullptr;
  for (int64_t i = 0; i < count; ++i) {
    array[i] = {};
    array[i].label = static_cast<uint32_t>(i * 7 % 1009);
    float* const features = &array[i].area;
    for (size_t k = 0; k < 22; ++k) {
      const float value = static_cast<float>(c.random.below(9));
      std::memcpy(features + k, &value, sizeof value);
    }
    array[i].rectX = c.random.below(9), array[i].rectY = c.random.below(9);
    if (c.isSpoiled("blobs")) c.spoilWord("blobs", array + i, 0, offsetof(BlobInfo, domain));
    if (list && list->domainCount > 0) {
      array[i].domain = list->domains + c.between(0, list->domainCount - 1);
    }
  }
  return array;
}

void draw(Call& c) {
  const DaxiDomainList* const list = domains(c);
  const bool empty = list && list->domainCount == 0;
  const int64_t count = c.number("count", 0, empty ? 0 : 10);
  BlobInfo* const array = c.chance(20) ? nullptr : blobs(c, count, list);
  if (!array) c.set<const BlobInfo*>("blobs", nullptr);
  if (array && c.isSpoiled("blobs") && count > 0) array[c.between(0, count - 1)].domain = nullptr;
  if (c.has("buffer")) {
    c.work("buffer", [&](uint64_t* bytes) { return DAXI_BlobSelectBufferSize_8u(c.size("size"), bytes); });
  }
}

void shape(Call& c) {
  const DaxiDomainList* const list = domains(c);
  const int64_t total = list ? list->domainCount : 0;
  const bool some = total > 0 && c.chance(50);
  const int64_t count = some ? c.number("count", 0, 10) : total;
  if (!some) c.set("count", static_cast<int32_t>(total)), c.set<const uint32_t*>("labels", nullptr);
  if (some) {
    auto* const labels = static_cast<uint32_t*>(c.array("labels", count));
    for (int64_t i = 0; labels && i < count; ++i) labels[i] = static_cast<uint32_t>(c.between(0, total - 1));
  }
  c.number("connectivity", 4, 8);
  c.image("gray", "grayStep", c.get<DaxiSize>("size"));
  c.array("shapes", count);
  c.work("buffer", [&](uint64_t* bytes) { return DAXI_BlobShapeBufferSize_8u(c.get<DaxiSize>("size"), bytes); });
}

void labelImage(Call& c) {
  domains(c);
  c.image("dst", "dstStep", c.get<DaxiSize>("size"));
}

void sort(Call& c) {
  const int64_t count = c.number("count", 0, 200);
  blobs(c, count, nullptr);
  c.number("sortKey", 1, 13);
  c.number("sortOrder", 1, 3);
}

void domainCount(Call& c) {
  c.set("domains", c.isSpoiled("domains") ? nullptr : labelled(c, {20, 20}));
}

void selectDomain(Call& c) {
  domainCount(c);
  c.number("label", 0, 40);
}

// --- Regions ---

// A domain of the list, and room for its hull.
void domain(Call& c) {
  const DaxiDomainList* const list = domains(c);
  const bool none = c.isSpoiled("domain") || !list || !list->domains || list->domainCount == 0;
  c.set("domain", none ? nullptr : list->domains + c.between(0, list->domainCount - 1));
  const int32_t height = c.size("size").height;
  c.array("points", height < 1 ? -1 : static_cast<int64_t>(DAXI_HULL_POINTS(height)));
  // Of the points only the hull means something, and only where it is asked for.
  c.meansNothing("points");
  if (c.has("mode")) c.number("mode", 1, 2);
  if (!c.has("count")) return;
  const auto* const count = static_cast<const int32_t*>(c.array("count", 1));
  c.onlyMeans(c.get<void*>("points"), [count] { return static_cast<size_t>(*count) * sizeof(DaxiPoint32s); });
}

// A convex polygon in strict turns: the hull of a domain.
void encloseBox(Call& c) {
  const DaxiSize size = {1 + c.random.below(60), 1 + c.random.below(60)};
  const DaxiDomainList* const list = labelled(c, size);
  std::vector<DaxiPoint32s> hull(DAXI_HULL_POINTS(60));
  int32_t count = 0;
  if (list && list->domainCount > 0) {
    _DAXI_DomainConvexHull_ROI(list, list->domains + c.between(0, list->domainCount - 1), size, hull.data(), &count);
  }
  if (count == 0) hull[static_cast<size_t>(count++)] = {3, 4};
  // No more of the corners than there are; fewer of a convex polygon's are convex.
  c.number("count", 1, count);
  const auto given = c.get<int32_t>("count");
  if (given > count) c.set("count", count);
  const int32_t used = c.get<int32_t>("count");
  auto* const points = static_cast<DaxiPoint32s*>(c.array("points", used < 1 ? -1 : used));
  if (points && used > 0) {
    std::copy_n(hull.begin(), used, points);
    if (c.isSpoiled("points")) points[c.between(0, used - 1)].x = (1 << 19) + 1;
  }
}

void encloseAny(Call& c) {
  const int64_t count = c.number("count", 1, 200);
  const int64_t spread = c.pick({1, 3, 100, (1 << 19) + 1});
  const auto anywhere = [&] { return static_cast<int32_t>(c.between(1 - spread, spread - 1)); };
  c.filled<DaxiPoint32s>("points", count < 1 ? -1 : count, [&](DaxiPoint32s& point) {
    point = {anywhere(), anywhere()};
  });
}

const Rows rows = {
    {"DAXI_BlobFind_8u_*", find},
    {"DAXI_BlobFindMultiCls_8u_*", find},
    {"DAXI_BlobFindV2_8u_*", findModel},
    {"DAXI_BlobFindV3_8u_*", findModel},
    {"DAXI_BlobFindV2DestroyModel_8u", destroyModel},
    {"DAXI_BlobFindV3DestroyModel_8u", destroyModel},
    {"_DAXI_DomainCount", domainCount},
    {"_DAXI_SelectDomainIndex", selectDomain},
    {"DAXI_BlobSelect_draw_blob_contour", draw},
    {"DAXI_DrawBlobLabel_8u_C1IR", draw},
    {"DAXI_BlobShape_8u_C1R", shape},
    {"DAXI_BlobLabelImage_32s_C1R", labelImage},
    {"DAXI_BlobSelect*", select},
    {"DAXI_FastBlobSelect_8u_C1R", select},
    {"DAXI_BlobSort", sort},
    {"_DAXI_DomainConvexHull_ROI", domain},
    {"_DAXI_DomainEncloseBox", domain},
    {"_DAXI_DomainRectangularity", domain},
    {"DAXI_REG_EncloseBox", encloseBox},
    {"_DAXI_PtEncloseBox_32s", encloseAny},
};

}  // namespace

}  // namespace dax::hostile
