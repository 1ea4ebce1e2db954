// Chessboards: the three detectors, their parts, and refinement. Most images hold a board.
#include <cmath>
#include <cstddef>

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

DaxiSize boardImage(Call& c, const Board& board) {
  const DaxiSize size = c.sizeOr("size", c.chance(90) ? DaxiSize{70 + c.random.below(12), 64 + c.random.below(10)}
                                                      : DaxiSize{70 + c.random.below(80), 64 + c.random.below(70)});
  c.image("src", "srcStep", size);
  if (const Block* const src = c.blockOf("src"); src && src->stepBytes > 0) draw(c, *src, size, board);
  if (c.has("mask")) {
    c.image("mask", "maskStep", size);
    if (const Block* const mask = c.blockOf("mask")) std::fill_n(mask->data, mask->bytes, uint8_t{1});
    if (const Block* const mask = c.blockOf("mask"); mask && c.chance(15)) c.fillMask(mask->data, mask->bytes);
  }
  return size;
}

void sizeNeed(Call& c) {
  c.size("size", 64);
}

// --- Binarised squares ---

ChessboardPatternSize pattern(Call& c, ChessboardPatternSize valid) {
  return c.given("pattern",
                 c.chance(80) ? valid : ChessboardPatternSize{2 + c.random.below(20), 2 + c.random.below(20)});
}

void chessboardNeed(Call& c) {
  sizeNeed(c);
  pattern(c, {4, 3});
}

void chessboard(Call& c) {
  const Board board;
  const DaxiSize size = boardImage(c, board);
  const ChessboardPatternSize corners = pattern(c, board.pattern);
  const bool valid = corners.columns >= 2 && corners.columns <= 25 && corners.rows >= 2 && corners.rows <= 25;
  c.array("corners", valid ? int64_t{corners.columns} * corners.rows : -1);
  c.array("cornerCount", 1);
  const auto* const found = static_cast<const int32_t*>(c.array("found", 1));
  if (Block* const made = c.blockOf("corners")) {
    made->meaningful = [found, made] { return *found ? made->bytes : 0; };
  }
  c.number("thresholdMode", 0, 1);
  c.number("maxLevel", 1, 18);
  c.work("buffer", [&](uint64_t* bytes) { return DAXI_ChessboardCornerBufferSize_8u(size, corners, bytes); });
}

// --- Boards of any size ---

using Query = DaxStatus (*)(DaxiSize, uint64_t*);

void parameters(Call& c) {
  if (!c.has("param")) return;
  auto* const param = c.record<CheckerboardHessianParam>("param");
  if (!param) return;
  *param = {1 + c.random.below(2), c.chance(80) ? 1 : 1 + c.random.below(5), 2 + c.random.below(2), 20, 20, 160};
  c.spoilWord("param", param, 0, sizeof *param);
}

void symmetry(Call& c) {
  if (!c.has("cfg")) return;
  auto* const cfg = c.record<CheckerboardSymCfg>("cfg");
  if (!cfg) return;
  *cfg = {2,
          20,
          static_cast<uint32_t>(c.between(5, 60)),
          static_cast<uint32_t>(c.between(3, 6)),
          5,
          static_cast<uint32_t>(c.between(1, 2)),
          static_cast<uint32_t>(c.between(1, 2))};
  c.spoilWord("cfg", cfg, 0, sizeof *cfg);
}

// Boards that were found, and which of the corners they have.
void boards(Call& c, std::initializer_list<const char*> corners, int64_t room) {
  std::function<size_t()> count;
  if (c.has("boards")) {
    const int64_t most = c.number("maxBoards", 1, 4);
    const auto* const all = static_cast<const CheckerboardGrid*>(c.array("boards", most < 1 ? -1 : most));
    const auto* const found = static_cast<const int32_t*>(c.array("boardCount", 1));
    if (Block* const made = c.blockOf("boards")) {
      made->meaningful = [found] { return static_cast<size_t>(*found) * sizeof(CheckerboardGrid); };
    }
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
    c.array(name, room);
    const size_t each = std::string_view(name) == "points" ? sizeof(DaxiPoint32f) : sizeof(CheckerboardCorner);
    if (Block* const made = c.blockOf(name)) made->meaningful = [count, each] { return count() * each; };
  }
}

template <Query query>
void detect(Call& c) {
  Board board;
  board.square = static_cast<float>(c.between(11, 13));
  const DaxiSize size = boardImage(c, board);
  parameters(c);
  symmetry(c);
  boards(c, {"points", "corners"}, DAXI_CHECKERBOARD_MAX_CORNERS);
  c.work("buffer", [&](uint64_t* bytes) { return query(size, bytes); });
  if (c.has("pool")) c.pool();
  c.mayWriteOn(DAXI_STS_NO_BOARD);
}

void locate(Call& c) {
  const DaxiSize size = boardImage(c, {});
  parameters(c);
  const int64_t most = c.number("maxCorners", 1, 60);
  c.array("corners", most < 1 ? -1 : most);
  const auto* const count = static_cast<const int32_t*>(c.array("count", 1));
  if (Block* const made = c.blockOf("corners")) {
    made->meaningful = [count] { return static_cast<size_t>(*count) * sizeof(CheckerboardCorner); };
  }
  c.work("buffer", [&](uint64_t* bytes) { return DAXI_CheckerboardCornerHessian_LocBufferSize_8u(size, bytes); });
}

void sortNeed(Call& c) {
  c.number("count", 1, DAXI_CHECKERBOARD_MAX_CORNERS);
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
  const auto number = c.get<int32_t>("count");
  c.work("buffer", [&](uint64_t* bytes) { return DAXI_MulCheckerboardCornerHessian_SortBufferSize(number, bytes); });
}

// --- Refinement ---

DaxiSize halfWindow(Call& c) {
  return c.sizeOr("halfWindow", {2 + c.random.below(5), 2 + c.random.below(5)});
}

void refineNeed(Call& c) {
  halfWindow(c);
}

void refine(Call& c) {
  boardImage(c, {});
  const int64_t count = c.number("count", 1, 4);
  halfWindow(c);
  auto* const corners = static_cast<DaxiPoint32f*>(c.array("corners", count < 1 ? -1 : count));
  const Block* const made = c.block(corners);
  for (size_t i = 0; made && i < made->bytes / sizeof *corners; ++i) {
    corners[i] = {static_cast<float>(c.between(-200, 1500)) / 10, static_cast<float>(c.between(-200, 1200)) / 10};
    if (c.isSpoiled("corners")) c.spoilWord("corners", corners + i, 0, sizeof *corners);
  }
  if (corners && c.chance(20) && !c.isSpoiled("refined")) {
    c.set("refined", corners);
    c.blockOf("corners")->role = Role::output;
  }
  c.array("refined", count < 1 ? -1 : count);
  if (c.number("maxIter", 1, 10) > 100) c.set("maxIter", 100);  // all of which may be made
  c.real("epsilon", 1e-6, 0.1);
}

const Rows rows = {
    {"DAXI_ChessboardCornerBufferSize_8u", chessboardNeed},
    {"DAXI_ChessboardCorner_8u_C1R", chessboard},
    {"DAXI_ChessboardCornerGetSubpixBufferSize_*", refineNeed},
    {"DAXI_ChessboardCornerGetSubpix_*", refine},
    {"DAXI_CheckerboardCornerHessian_SortBufferSize", sortNeed},
    {"DAXI_MulCheckerboardCornerHessian_SortBufferSize", sortNeed},
    {"DAXI_CheckerboardCornerHessian_Sort", sort},
    {"DAXI_MulCheckerboardCornerHessian_Sort", sort},
    {"DAXI_CheckerboardCornerHessian_LocBufferSize_8u", sizeNeed},
    {"DAXI_CheckerboardCornerHessian_Loc_8u_C1R", locate},
    {"DAXI_CheckerboardCornerHessianBufferSize_8u", sizeNeed},
    {"DAXI_MulCheckerboardCornerHessianBufferSize_8u", sizeNeed},
    {"DAXI_CheckerboardCornerHessian_8u_C1R", detect<DAXI_CheckerboardCornerHessianBufferSize_8u>},
    {"DAXI_MulCheckerboardCornerHessian_8u_C1R", detect<DAXI_MulCheckerboardCornerHessianBufferSize_8u>},
    {"DAXI_CheckerboardCornerSymBufferSize_8u", sizeNeed},
    {"DAXI_CheckerboardCornerSymMulBufferSize_8u", sizeNeed},
    {"DAXI_CheckerboardCornerSym_*", detect<DAXI_CheckerboardCornerSymBufferSize_8u>},
    {"DAXI_CheckerboardCornerSymMul_*", detect<DAXI_CheckerboardCornerSymMulBufferSize_8u>},
};

}  // namespace

}  // namespace dax::hostile
