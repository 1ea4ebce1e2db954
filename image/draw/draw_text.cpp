#include "image/draw/draw_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/numeric/round.h"
#include "image/draw/glyph_trace.h"
#include "image/draw/ink_plane.h"
#include "image/draw/text_lines.h"

static_assert(sizeof(DaxiTextCfg) == 40 && offsetof(DaxiTextCfg, alignX) == 32);
static_assert(sizeof(DaxiTextBox) == 48 && offsetof(DaxiTextBox, lines) == 40);

namespace dax {
namespace {

// So many characters of any height and step stay within 2^40 pixels.
constexpr int32_t kMaxTextBytes = 1 << 20;

// --- Checks ---

bool liesWithin(double value, double low, double high) {
  return value >= low && value <= high;
}

DaxStatus checkTextCfg(const DaxiTextCfg& cfg) {
  DAX_REQUIRE(liesWithin(cfg.height, 1, 65536), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(liesWithin(cfg.angle, -1e6, 1e6), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(liesWithin(cfg.slant, -2, 2), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(liesWithin(cfg.lineStep, 0, 10), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.alignX >= DAXI_TEXT_LEFT && cfg.alignX <= DAXI_TEXT_RIGHT, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.alignY >= DAXI_TEXT_BASELINE && cfg.alignY <= DAXI_TEXT_BOTTOM, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

bool isTextLength(int32_t bytes) {
  return bytes >= 0 && bytes <= kMaxTextBytes;
}

// --- What is traced ---

// The pen of a text: of its thickness, round.
DaxiStroke textPen(const DaxiStroke& stroke, const DaxiTextCfg& cfg) {
  DaxiStroke pen = stroke;
  if (pen.width == 0) pen.width = std::max(1.0, cfg.height / 10);
  pen.join = DAXI_JOIN_ROUND, pen.cap = DAXI_CAP_ROUND;
  return pen;
}

// A pen of width up to 1 without anti-aliasing draws lines of single pixels.
bool isHairline(const DaxiStroke& pen) {
  return !pen.antialias && pen.width <= 1;
}

struct PlacedSides {
  void side(DaxiPoint64f from, DaxiPoint64f to) { plane.side(place(from), place(to)); }
  void endRun() { plane.endRun(); }

  InkPlane& plane;
  Placement place;
};

// put(x, y) for the pixels of lines.
template <class Put>
struct PlacedLines {
  void moveTo(DaxiPoint64f p) { last = pixelAt(p); }
  void lineTo(DaxiPoint64f p) {
    const DaxiPoint32s next = pixelAt(p);
    walkLine(last, next, put);
    last = next;
  }
  void close() {}
  DaxiPoint32s pixelAt(DaxiPoint64f p) const {
    const DaxiPoint64f at = place(p);
    return {roundTo<int32_t>(at.x), roundTo<int32_t>(at.y)};
  }

  const Put& put;
  Placement place;
  DaxiPoint32s last{};
};

struct InkBox {
  void moveTo(DaxiPoint64f p) { add(place(p), half); }
  void lineTo(DaxiPoint64f p) { add(place(p), half); }
  void close() {}
  void add(DaxiPoint64f p, double around) {
    box.left = std::min(box.left, p.x - around), box.right = std::max(box.right, p.x + around);
    box.top = std::min(box.top, p.y - around), box.bottom = std::max(box.bottom, p.y + around);
  }

  double half;  // of the stroke
  DaxiTextBox& box;
  Placement place{};
};

// --- Drawing ---

constexpr DaxiTextBox kNothing = {INFINITY, INFINITY, -INFINITY, -INFINITY, 0, 0, 0};

class TextDrawing {
 public:
  TextDrawing(const Text& text, const DaxiTextCfg& cfg, const DaxiStroke& stroke)
      : text_(text), cfg_(cfg), stroke_(textPen(stroke, cfg)), unit_(cfg.height / kCapitalHeight) {}

  // Enough wherever the text is.
  InkBuffer buffer(DaxiSize size) const {
    const DaxiTextBox all = room();
    const auto side = [](double low, double high, int32_t limit) {
      return high >= low ? static_cast<int32_t>(std::min<double>(std::ceil(high - low) + 3, limit)) : 1;
    };
    return InkBuffer({side(all.left, all.right, size.width), side(all.top, all.bottom, size.height)});
  }

  void draw(const Canvas& canvas, void* buffer) const {
    // What hides all below may be drawn more than once.
    if (isHairline(stroke_) && stroke_.alpha == 1) return drawHairlines(canvas);
    const DaxiRect window = windowOf(room(), canvas.size);
    if (window.width < 1 || window.height < 1) return;
    InkPlane plane(this->buffer(canvas.size), buffer, window);
    forEachShown(canvas.size, [&](const Glyph& glyph, const Placement& place) { ink(glyph, place, plane); });
    plane.blend(canvas, inkOf(stroke_), stroke_.antialias != 0);
  }

  DaxiTextBox box() const {
    DaxiTextBox result = kNothing;
    InkBox ink{stroke_.width / 2, result};
    forEachGlyph(
        text_.bytes, text_.count, cfg_, {},
        [&](const Placement& line, const TextLines& lines) {
          const double length = static_cast<double>(lines.length()) * unit_;
          ink.add(line({}), 0), ink.add(line({length, 0}), 0);
          result.advance = std::max(result.advance, length);
          ++result.lines;
        },
        [&](const Glyph& glyph, const Placement& place, bool isOther) {
          ink.place = place;
          traceGlyph(glyph, unit_, cfg_.slant, ink);
          result.replaced += isOther;
        });
    return result;
  }

 private:
  template <class Use>
  void forEachShown(DaxiSize size, const Use& use) const {
    forEachGlyph(
        text_.bytes, text_.count, cfg_, text_.place, [](const Placement&, const TextLines&) {},
        [&](const Glyph& glyph, const Placement& place, bool) {
          const DaxiRect part = windowOf(roomOf(glyph, place, kNothing), size);
          if (part.width >= 1 && part.height >= 1) use(glyph, place);
        });
  }

  void ink(const Glyph& glyph, const Placement& place, InkPlane& plane) const {
    if (isHairline(stroke_)) {
      return hairlines(glyph, place, [&](int64_t x, int64_t y) { plane.setPixel(x, y); });
    }
    PlacedSides sides{plane, place};
    RoundPen<PlacedSides> pen(stroke_.width, sides);
    traceGlyph(glyph, unit_, cfg_.slant, pen);
    pen.finish();
  }

  template <class Put>
  void hairlines(const Glyph& glyph, const Placement& place, const Put& put) const {
    PlacedLines<Put> lines{put, place};
    traceGlyph(glyph, unit_, cfg_.slant, lines);
  }

  void drawHairlines(const Canvas& canvas) const {
    const Ink colour = inkOf(stroke_);
    const auto put = [&](int64_t x, int64_t y) {
      if (x < 0 || y < 0 || x >= canvas.size.width || y >= canvas.size.height) return;
      canvas.blend(canvas, colour, static_cast<int32_t>(y), static_cast<int32_t>(x), static_cast<int32_t>(x + 1),
                   nullptr);
    };
    forEachShown(canvas.size, [&](const Glyph& glyph, const Placement& place) { hairlines(glyph, place, put); });
  }

  // A box that holds a glyph, whatever its strokes, and the box before.
  DaxiTextBox roomOf(const Glyph& glyph, const Placement& place, DaxiTextBox box) const {
    InkBox corners{stroke_.width / 2 + 1, box, place};
    for (const double up : {kGlyphBottom, kGlyphTop}) {
      corners.lineTo({cfg_.slant * up * unit_, up * unit_});
      corners.lineTo({(glyph.advance + cfg_.slant * up) * unit_, up * unit_});
    }
    return box;
  }

  // Of all glyphs.
  DaxiTextBox room() const {
    DaxiTextBox box = kNothing;
    forEachGlyph(
        text_.bytes, text_.count, cfg_, text_.place, [](const Placement&, const TextLines&) {},
        [&](const Glyph& glyph, const Placement& place, bool) { box = roomOf(glyph, place, box); });
    return box;
  }

  // The pixels of the image in a box.
  static DaxiRect windowOf(const DaxiTextBox& box, DaxiSize size) {
    const auto pixel = [](double at, int32_t side) {
      return static_cast<int32_t>(std::clamp(std::floor(at + 0.5), 0.0, static_cast<double>(side)));
    };
    const int32_t left = pixel(box.left, size.width), top = pixel(box.top, size.height);
    return {left, top, pixel(box.right + 1, size.width) - left, pixel(box.bottom + 1, size.height) - top};
  }

  const Text& text_;
  const DaxiTextCfg& cfg_;
  DaxiStroke stroke_;
  double unit_;  // of the font, in pixels
};

}  // namespace

DaxStatus drawText(const Canvas& canvas, const Text& text, const DaxiTextCfg* cfg, const DaxiStroke* stroke,
                   void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, text.bytes && cfg && buffer));
  DAX_REQUIRE(isTextLength(text.count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isCoordinate(text.place.x) && isCoordinate(text.place.y), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkTextCfg(*cfg));
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, true));
  TextDrawing(text, *cfg, *stroke).draw(canvas, buffer);
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_TextDefaultCfg(DaxiTextCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {16, 0, 0, 1.5, DAXI_TEXT_LEFT, DAXI_TEXT_BASELINE};
  return DAX_STS_OK;
}

DaxStatus DAXI_DrawTextBufferSize(DaxiSize dstSize, const char* text, int32_t textBytes, const DaxiTextCfg* cfg,
                                  const DaxiStroke* stroke, uint64_t* bytes) {
  using namespace dax;
  DAX_REQUIRE(text && cfg && stroke && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isDrawnSize(dstSize), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isTextLength(textBytes), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkTextCfg(*cfg));
  DAX_REQUIRE_OK(checkPen(*stroke, true));
  return TextDrawing({text, textBytes, {}}, *cfg, *stroke).buffer(dstSize).layout.store(bytes);
}

DaxStatus DAXI_TextSize(const char* text, int32_t textBytes, const DaxiTextCfg* cfg, const DaxiStroke* stroke,
                        DaxiTextBox* box) {
  using namespace dax;
  DAX_REQUIRE(text && cfg && stroke && box, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isTextLength(textBytes), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkTextCfg(*cfg));
  DAX_REQUIRE_OK(checkPen(*stroke, true));
  *box = TextDrawing({text, textBytes, {}}, *cfg, *stroke).box();
  return DAX_STS_OK;
}

#define DAX_DRAW_TEXT(SUFFIX, T, CHANNELS)                                                                         \
  DaxStatus DAXI_DrawText_##SUFFIX##_C##CHANNELS##R(T* dst, int32_t dstStep, DaxiSize dstSize, const char* text,   \
                                                    int32_t textBytes, double x, double y, const DaxiTextCfg* cfg, \
                                                    const DaxiStroke* stroke, void* buffer) {                      \
    return dax::drawText(dax::canvasOf<CHANNELS>(dst, dstStep, dstSize), {text, textBytes, {x, y}}, cfg, stroke,   \
                         buffer);                                                                                  \
  }
DAX_DRAW_TEXT(8u, uint8_t, 1)
DAX_DRAW_TEXT(8u, uint8_t, 3)
DAX_DRAW_TEXT(16u, uint16_t, 1)
DAX_DRAW_TEXT(16u, uint16_t, 3)
#undef DAX_DRAW_TEXT
