// Plans as blocks: sizes, and for each direction the tables of its lines. Everything but the numbers of the tables follows
// from the size, so that only their counts are checked.
#include <bit>
#include <cmath>
#include <numbers>

#include "frame/check.h"
#include "image/transform/dft_work.h"

namespace dax {
namespace {

constexpr uint32_t kPlanVersion = 1;
constexpr uint32_t kPlanSize = fourCharacters("SIZE"), kTurns = fourCharacters("TURN");
constexpr uint32_t kTwiddles[2] = {fourCharacters("TWIX"), fourCharacters("TWIY")};
constexpr uint32_t kChirp[2] = {fourCharacters("CHIX"), fourCharacters("CHIY")};
constexpr uint32_t kSpectrum[2] = {fourCharacters("SPCX"), fourCharacters("SPCY")};
constexpr uint32_t kCosines[2] = {fourCharacters("COSX"), fourCharacters("COSY")};
constexpr uint32_t kPieces = 10;

template <class T>
constexpr uint32_t planMagic(DftKind kind) {
  if (kind == DftKind::fourier) return sizeof(T) == 4 ? fourCharacters("DXF4") : fourCharacters("DXF8");
  return sizeof(T) == 4 ? fourCharacters("DXC4") : fourCharacters("DXC8");
}

int sideOf(DaxiSize size, int direction) {
  return direction == 0 ? size.width : size.height;
}

// How many numbers the pieces have.
struct PlanCounts {
  PlanCounts(DftKind kind, DaxiSize size) {
    for (int d = 0; d < 2; ++d) {
      const int32_t n = sideOf(size, d), length = stagedLength(n);
      twiddles[d] = twiddleNumbers(length);
      chirp[d] = length == n ? 0 : 2 * static_cast<uint64_t>(n);
      spectrum[d] = length == n ? 0 : 2 * static_cast<uint64_t>(length);
      cosines[d] = kind == DftKind::cosine ? 2 * static_cast<uint64_t>(n) : 0;
    }
    const int32_t length = stagedLength(size.width);
    first = kind == DftKind::fourier && size.height == 1 ? splitOf(length) : 0;
    if (first == 0) return;
    second = length / first;
    twiddles[0] = twiddleNumbers(first) + twiddleNumbers(second);
    bits = std::bit_width(static_cast<uint32_t>(length)) / 2;
    turns = (uint64_t{1} << bits) + static_cast<uint64_t>((length - 1) >> bits) + 1;
  }
  uint64_t twiddles[2], chirp[2], spectrum[2], cosines[2], turns = 0;
  int32_t first = 0, second = 0;
  int bits = 0;
};

template <class T>
struct PlanModel {
  PlanModel(DftKind kind, DaxiSize size, void* memory)
      : counts(kind, size), writer(memory, INT64_MAX, kPieces), sizes(writer.add<DaxiSize>(kPlanSize, 1)) {
    for (int d = 0; d < 2; ++d) {
      twiddles[d] = writer.add<T>(kTwiddles[d], counts.twiddles[d]);
      chirp[d] = writer.add<T>(kChirp[d], counts.chirp[d]);
      spectrum[d] = writer.add<double>(kSpectrum[d], counts.spectrum[d]);
      cosines[d] = writer.add<T>(kCosines[d], counts.cosines[d]);
    }
    turns = writer.add<DaxComplex64f>(kTurns, counts.turns);
  }
  PlanCounts counts;
  ModelWriter writer;
  DaxiSize* sizes;
  T *twiddles[2], *chirp[2], *cosines[2];
  double* spectrum[2];
  DaxComplex64f* turns;
};

template <class T>
void makeCosines(int64_t n, T* cosines) {
  for (int64_t k = 0; k < n; ++k) {
    const DaxComplex64f w = rootOfUnity(k, 4 * n);
    *cosines++ = static_cast<T>(w.re), *cosines++ = static_cast<T>(-w.im);
  }
}

void makeTurns(const PlanCounts& counts, DaxComplex64f* turns) {
  const int64_t n = int64_t{counts.first} * counts.second, fine = int64_t{1} << counts.bits;
  for (int64_t k = 0; k < fine; ++k) turns[k] = rootOfUnity(k, n);
  for (int64_t k = 0; k < n; k += fine) turns[fine + (k >> counts.bits)] = rootOfUnity(k, n);
}

// Its elements, or null where there are not exactly so many.
template <class T>
bool takePiece(const ModelView& view, uint32_t name, uint64_t count, const T*& data) {
  const auto piece = view.piece<T>(name);
  data = piece.data();
  return piece.size() == count && (count == 0 || data);
}

template <class T>
bool takeLine(const ModelView& view, const PlanCounts& counts, int d, DftPlan<T>& plan) {
  DftLine<T>& line = plan.along[d];
  line.n = sideOf(plan.size, d), line.length = stagedLength(line.n);
  return takePiece(view, kTwiddles[d], counts.twiddles[d], line.twiddles) &&
         takePiece(view, kChirp[d], counts.chirp[d], line.chirp) &&
         takePiece(view, kSpectrum[d], counts.spectrum[d], line.spectrum) &&
         takePiece(view, kCosines[d], counts.cosines[d], plan.cosines[d]);
}

}  // namespace

int32_t splitOf(int32_t length) {
  constexpr int32_t kMinRows = 16;
  auto rows = static_cast<int32_t>(std::sqrt(static_cast<double>(length)));
  while (rows >= kMinRows && length % rows) --rows;
  return rows >= kMinRows ? rows : 0;
}

template <class T>
DaxStatus planSize(DftKind kind, DaxiSize size, uint64_t* bytes) {
  return PlanModel<T>(kind, size, nullptr).writer.store(bytes);
}

template <class T>
DaxStatus makePlan(DftKind kind, DaxiSize size, void* memory) {
  PlanModel<T> model(kind, size, memory);
  const PlanCounts& counts = model.counts;
  *model.sizes = size;
  for (int d = 0; d < 2; ++d) {
    const int32_t n = sideOf(size, d), length = stagedLength(n);
    if (d == 0 && counts.first) {
      makeTwiddles(counts.first, model.twiddles[d]);
      makeTwiddles(counts.second, model.twiddles[d] + twiddleNumbers(counts.first));
      makeTurns(counts, model.turns);
    } else {
      makeTwiddles(length, model.twiddles[d]);
    }
    if (counts.chirp[d]) makeChirp(n, model.chirp[d]), makeChirpSpectrum(n, length, model.spectrum[d]);
    if (counts.cosines[d]) makeCosines(n, model.cosines[d]);
  }
  return model.writer.seal(planMagic<T>(kind), kPlanVersion);
}

template <class T>
DaxStatus openPlan(DftKind kind, const void* memory, uint64_t bytes, DftPlan<T>& plan) {
  ModelView view;
  DAX_REQUIRE_OK(view.openUnsummed(memory, bytes, planMagic<T>(kind), kPlanVersion));
  const auto sizes = view.piece<DaxiSize>(kPlanSize);
  DAX_REQUIRE(sizes.size() == 1 && atLeast(sizes[0], 1) && atMost(sizes[0], kMaxDftSide), DAX_STS_BAD_PARAM);
  plan.size = sizes[0];
  const PlanCounts counts(kind, plan.size);
  DAX_REQUIRE(takeLine(view, counts, 0, plan) && takeLine(view, counts, 1, plan), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(takePiece(view, kTurns, counts.turns, plan.split.turns), DAX_STS_BAD_PARAM);
  plan.split.first = counts.first, plan.split.second = counts.second, plan.split.bits = counts.bits;
  plan.split.firstTwiddles = plan.along[0].twiddles;
  if (counts.first) plan.split.secondTwiddles = plan.along[0].twiddles + twiddleNumbers(counts.first);
  return DAX_STS_OK;
}

#define DAX_DFT_PLAN(T)                                                          \
  template DaxStatus planSize<T>(DftKind kind, DaxiSize size, uint64_t * bytes); \
  template DaxStatus makePlan<T>(DftKind kind, DaxiSize size, void* memory);     \
  template DaxStatus openPlan(DftKind, const void*, uint64_t bytes, DftPlan<T>& plan);
DAX_DFT_PLAN(float)
DAX_DFT_PLAN(double)
#undef DAX_DFT_PLAN

}  // namespace dax
