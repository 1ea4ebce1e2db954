#include "image/draw/draw_text.h"

#include <algorithm>
#include <cstddef>

#include "image/draw/glyph_trace.h"
#include "image/draw/pen.h"
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

struct SideCount {
  void side(DaxiPoint64f, DaxiPoint64f) { ++sides; }

  uint64_t sides = 0;
};

struct PlacedSides {
  void side(DaxiPoint64f from, DaxiPoint64f to) { drawing.side(place(from), place(to)); }

  Drawing& drawing;
  Placement place;
};

// Of lines of single pixels.
struct PointCount {
  void moveTo(DaxiPoint64f) { ++points, ++polylines; }
  void lineTo(DaxiPoint64f) { ++points; }

  uint64_t points = 0, polylines = 0;
};

struct PlacedPen {
  void moveTo(DaxiPoint64f p) { pen.moveTo(place(p)); }
  void lineTo(DaxiPoint64f p) { pen.lineTo(place(p)); }

  Pen& pen;
  Placement place;
};

struct InkBox {
  void moveTo(DaxiPoint64f p) { add(place(p), half); }
  void lineTo(DaxiPoint64f p) { add(place(p), half); }
  void add(DaxiPoint64f p, double around) {
    box.left = std::min(box.left, p.x - around), box.right = std::max(box.right, p.x + around);
    box.top = std::min(box.top, p.y - around), box.bottom = std::max(box.bottom, p.y + around);
  }

  double half;  // of the stroke
  DaxiTextBox& box;
  Placement place{};
};

// --- Drawing ---

class TextDrawing {
 public:
  TextDrawing(const Text& text, const DaxiTextCfg& cfg, const DaxiStroke& stroke)
      : text_(text), cfg_(cfg), stroke_(textPen(stroke, cfg)), unit_(cfg.height / kCapitalHeight) {}

  DrawBuffer buffer(DaxiSize size) const { return DrawBuffer(size, isThin(stroke_) ? linesOf(size) : sides()); }

  DaxStatus draw(const Canvas& canvas, void* buffer) const {
    Drawing drawing(canvas, this->buffer(canvas.size), buffer);
    if (isThin(stroke_)) {
      Pen pen(drawing, stroke_);
      forEachShown(canvas.size, [&](const Glyph& glyph, const Placement& place) {
        PlacedPen placed{pen, place};
        traceGlyph(glyph, unit_, cfg_.slant, placed);
      });
      pen.finish();
    } else {
      forEachShown(canvas.size, [&](const Glyph& glyph, const Placement& place) {
        PlacedSides placed{drawing, place};
        outline(glyph, placed);
      });
    }
    return drawing.paint(stroke_, FillRule::nonZero);
  }

  DaxiTextBox box() const {
    DaxiTextBox result = {INFINITY, INFINITY, -INFINITY, -INFINITY, 0, 0, 0};
    InkBox ink{stroke_.width / 2, result};
    forEachGlyph(
        text_.bytes, text_.count, cfg_, {},
        [&](const Placement& line, double length) {
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
  template <class Sink>
  void outline(const Glyph& glyph, Sink& sink) const {
    RoundPen<Sink> pen(stroke_.width, sink);
    traceGlyph(glyph, unit_, cfg_.slant, pen);
    pen.finish();
  }

  template <class Use>
  void forEachCharacter(const Use& use) const {
    TextLines lines(text_.bytes, text_.count);
    while (lines.next()) lines.forEachGlyph([&](const Glyph& glyph, int64_t, bool) { use(glyph); });
  }

  uint64_t sides() const {
    SideCount count;
    forEachCharacter([&](const Glyph& glyph) { outline(glyph, count); });
    return count.sides;
  }

  uint64_t linesOf(DaxiSize size) const {
    PointCount count;
    forEachCharacter([&](const Glyph& glyph) { traceGlyph(glyph, unit_, cfg_.slant, count); });
    return strokeEdges(size, count.points, count.polylines, stroke_);
  }

  // Calls use(glyph, placement) for those that may reach into the image.
  template <class Use>
  void forEachShown(DaxiSize size, const Use& use) const {
    forEachGlyph(
        text_.bytes, text_.count, cfg_, text_.place, [](const Placement&, double) {},
        [&](const Glyph& glyph, const Placement& place, bool) {
          if (mayShow(glyph, place, size)) use(glyph, place);
        });
  }

  bool mayShow(const Glyph& glyph, const Placement& place, DaxiSize size) const {
    DaxiTextBox box = {INFINITY, INFINITY, -INFINITY, -INFINITY, 0, 0, 0};
    InkBox ink{stroke_.width / 2 + 2, box, place};
    for (const double up : {kGlyphBottom, kGlyphTop}) {
      ink.lineTo({cfg_.slant * up * unit_, up * unit_});
      ink.lineTo({(glyph.advance + cfg_.slant * up) * unit_, up * unit_});
    }
    return box.right >= 0 && box.bottom >= 0 && box.left <= size.width && box.top <= size.height;
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
  return TextDrawing(text, *cfg, *stroke).draw(canvas, buffer);
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
  return TextDrawing({text, textBytes, {}}, *cfg, *stroke).buffer(dstSize).store(bytes);
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
