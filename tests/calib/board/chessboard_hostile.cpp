// Chessboards: the three detectors, their parts, and refinement. Most images hold a board.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// What was drawn: inner corners.
struct Board {
  ChessboardPatternSize pattern = {4, 3};
  float square = 12;
};

void draw(Call& c, const Block& image, DaxiSize size, const Board& board) {
  if (c.chance(2)) return c.fillMask(image.data, image.bytes);
  const float angle = static_cast<float>(c.between(-300, 300)) / 1000, noise = static_cast<float>(c.pick({0, 3, 10}));
  const float u0 = board.square * static_cast<float>(board.pattern.columns + 1) / 2;
  const float v0 = board.square * static_cast<float>(board.pattern.rows + 1) / 2;
  const float cosine = 1 - angle * angle / 2, sine = angle;
  for (size_t i = 0; i < image.bytes; ++i) {
    const auto x = static_cast<float>(i % image.stepBytes), y = static_cast<float>(i / image.stepBytes);
    const float dx = x - static_cast<float>(size.width) / 2, dy = y - static_cast<float>(size.height) / 2;
    const float u = cosine * dx + sine * dy + u0, v = cosine * dy - sine * dx + v0;
    const bool inside = u >= 0 && v >= 0 && u < 2 * u0 && v < 2 * v0;
    const bool dark = inside && (static_cast<int>(u / board.square) + static_cast<int>(v / board.square)) % 2 == 0;
    image.data[i] = static_cast<uint8_t>((dark ? 40 : 210) + noise * static_cast<float>(c.random.below(3)));
  }
}

void boardImage(Call& c, const Board& board) {
  const DaxiSize size = c.sizeOr("size", c.chance(90) ? DaxiSize{70 + c.random.below(12), 64 + c.random.below(10)}
                                                      : DaxiSize{70 + c.random.below(80), 64 + c.random.below(70)});
  c.image("src", "srcStep", size);
  if (const Block* const src = c.blockOf("src"); src && src->stepBytes > 0) draw(c, *src, size, board);
  if (c.has("mask")) {
    c.image("mask", "maskStep", size);
    if (const Block* const mask = c.blockOf("mask")) std::fill_n(mask->data, mask->bytes, uint8_t{1});
    if (const Block* const mask = c.blockOf("mask"); mask && c.chance(15)) c.fillMask(mask->data, mask->bytes);
  }
}

void chessboard(Call& c) {
  const Board board;
  boardImage(c, board);
  if (c.chance(80)) c.given("pattern", board.pattern);
  c.draw("pattern");
  const auto corners = c.get<ChessboardPatternSize>("pattern");
  const bool valid = corners.columns >= 2 && corners.columns <= 25 && corners.rows >= 2 && corners.rows <= 25;
  const int64_t count = valid ? int64_t{corners.columns} * corners.rows : -1;
  const void* const points = c.array("corners", count);
  const auto* const found = static_cast<const int32_t*>(c.array("found", 1));
  c.onlyMeans(points, [=] { return *found ? static_cast<size_t>(count) * sizeof(DaxiPoint32f) : 0; });
}

// --- Boards of any size ---

// Angles and extents that let boards through.
void parameters(Call& c) {
  if (c.has("param")) {
    c.filled<CheckerboardHessianParam>("param", 1, [&](CheckerboardHessianParam& param) {
      if (c.chance(80)) param.subSampling = 1;
      param.minExtent = 2 + c.random.below(2), param.maxExtent = 20, param.minAngle = 20, param.maxAngle = 160;
    });
  }
  if (!c.has("cfg")) return;
  c.filled<CheckerboardSymCfg>("cfg", 1, [&](CheckerboardSymCfg& cfg) {
    cfg.minExtent = 2, cfg.maxExtent = 20, cfg.contrast = static_cast<uint32_t>(c.between(5, 60));
    cfg.distance = static_cast<uint32_t>(c.between(3, 6)), cfg.lastRadius = 5;
  });
}

// Boards that were found, and which of the corners they have.
void boards(Call& c, std::initializer_list<const char*> corners, int64_t room) {
  std::function<size_t()> count;
  if (c.has("boards")) {
    const int64_t max = c.number("maxBoards", 1, 4);
    const auto* const all = static_cast<const CheckerboardGrid*>(c.array("boards", max < 1 ? -1 : max));
    const auto* const found = static_cast<const int32_t*>(c.array("boardCount", 1));
    c.onlyMeans(all, [found] { return static_cast<size_t>(*found) * sizeof(CheckerboardGrid); });
    count = [all, found] {
      size_t sum = 0;
      for (int32_t i = 0; i < *found; ++i) sum += static_cast<size_t>(all[i].columns * all[i].rows);
      return sum;
    };
  } else {
    const auto* const grid = static_cast<const CheckerboardGrid*>(c.array("result", 1));
    count = [grid] { return static_cast<size_t>(grid->columns * grid->rows); };
  }
  for (const char* name : corners) {
    const void* const made = c.array(name, room);
    const size_t each = std::string_view(name) == "points" ? sizeof(DaxiPoint32f) : sizeof(CheckerboardCorner);
    c.onlyMeans(made, [count, each] { return count() * each; });
  }
}

void detect(Call& c) {
  Board board;
  board.square = static_cast<float>(c.between(11, 13));
  boardImage(c, board);
  parameters(c);
  boards(c, {"points", "corners"}, DAXI_CHECKERBOARD_MAX_CORNERS);
  c.mayWriteOn(DAXI_STS_NO_BOARD);
}

void locate(Call& c) {
  boardImage(c, {});
  const int64_t max = c.number("maxCorners", 1, 60);
  const void* const corners = c.array("corners", max < 1 ? -1 : max);
  const auto* const count = static_cast<const int32_t*>(c.array("count", 1));
  c.onlyMeans(corners, [count] { return static_cast<size_t>(*count) * sizeof(CheckerboardCorner); });
  parameters(c);
}

// Corners of a grid, of which some are missing or elsewhere.
void sort(Call& c) {
  const int64_t count = c.number("count", 1, 60);
  auto* const corners = static_cast<CheckerboardCorner*>(c.array("corners", count < 1 ? -1 : count));
  const Block* const made = c.block(corners);
  const int32_t columns = 2 + c.random.below(8), wrong = c.pick({0, 0, 5, 40});
  for (int32_t i = 0; made && static_cast<size_t>(i) < made->bytes / sizeof *corners; ++i) {
    const int32_t x = i % columns, y = i / columns;
    const bool odd = (x + y) % 2;
    corners[i] = {{20.0f * static_cast<float>(x), 20.0f * static_cast<float>(y)}, {}, {}, 100, 5};
    (odd ? corners[i].intoDark : corners[i].intoLight) = {1, 0};
    (odd ? corners[i].intoLight : corners[i].intoDark) = {0, 1};
    if (c.chance(wrong)) corners[i].point.x += static_cast<float>(c.between(-30, 30));
    if (c.isSpoiled("corners")) c.spoilWord("corners", corners + i, 0, sizeof *corners);
  }
  parameters(c);
  boards(c, {"sorted"}, count < 1 ? -1 : count);
}

// --- Refinement ---

void refine(Call& c) {
  boardImage(c, {});
  const int64_t count = c.number("count", 1, 4);
  const auto anywhere = [&](int64_t side) { return static_cast<float>(c.between(-200, side)) / 10; };
  c.filled<DaxiPoint32f>("corners", count < 1 ? -1 : count, [&](DaxiPoint32f& corner) {
    corner = {anywhere(1500), anywhere(1200)};
  });
  c.inPlace("refined", "corners");
  c.sizeOr("halfWindow", {2 + c.random.below(5), 2 + c.random.below(5)});
  if (c.number("maxIter", 1, 10) > 100) c.set("maxIter", 100);  // all of which may be made
  c.real("epsilon", 1e-6, 0.1);
}

void need(Call& c) {
  c.given("pattern", ChessboardPatternSize{2 + c.random.below(20), 2 + c.random.below(20)});
}

const Rows rows = {
    {"DAXI_ChessboardCornerBufferSize_8u", need},      {"DAXI_ChessboardCorner_8u_C1R", chessboard},
    {"DAXI_ChessboardCornerGetSubpix_*", refine},      {"DAXI_CheckerboardCornerHessian_Sort", sort},
    {"DAXI_MulCheckerboardCornerHessian_Sort", sort},  {"DAXI_CheckerboardCornerHessian_Loc_8u_C1R", locate},
    {"DAXI_CheckerboardCornerHessian_8u_C1R", detect}, {"DAXI_MulCheckerboardCornerHessian_8u_C1R", detect},
    {"DAXI_CheckerboardCornerSym_*", detect},          {"DAXI_CheckerboardCornerSymMul_*", detect},
};

}  // namespace
}  // namespace dax::hostile
