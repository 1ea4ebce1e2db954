#include "draw/annotation.h"

#include <algorithm>

#include "base/failure.h"
#include "base/library_call.h"
#include "base/text.h"
#include "convert/channels.h"
#include "daxi/draw.h"

namespace dax::tool {
namespace {

constexpr double kArrowSpread = 0.42;  // 24 degrees

// The library's functions for a type and a number of channels.
template <class T, int kChannels>
struct Functions;
#define DAX_FUNCTIONS(SUFFIX, T, CHANNELS)                                         \
  template <>                                                                      \
  struct Functions<T, CHANNELS> {                                                  \
    static constexpr auto kPolyline = DAXI_DrawPolyline_##SUFFIX##_C##CHANNELS##R; \
    static constexpr auto kArrow = DAXI_DrawArrow_##SUFFIX##_C##CHANNELS##R;       \
    static constexpr auto kRect = DAXI_DrawRect_##SUFFIX##_C##CHANNELS##R;         \
    static constexpr auto kEllipse = DAXI_DrawEllipse_##SUFFIX##_C##CHANNELS##R;   \
    static constexpr auto kArc = DAXI_DrawArc_##SUFFIX##_C##CHANNELS##R;           \
    static constexpr auto kPolygon = DAXI_DrawPolygon_##SUFFIX##_C##CHANNELS##R;   \
    static constexpr auto kMarker = DAXI_DrawMarker_##SUFFIX##_C##CHANNELS##R;     \
    static constexpr auto kText = DAXI_DrawText_##SUFFIX##_C##CHANNELS##R;         \
  };
DAX_FUNCTIONS(8u, uint8_t, 1)
DAX_FUNCTIONS(8u, uint8_t, 3)
DAX_FUNCTIONS(16u, uint16_t, 1)
DAX_FUNCTIONS(16u, uint16_t, 3)
#undef DAX_FUNCTIONS

template <class T, int kChannels>
class Easel {
 public:
  explicit Easel(Samples& samples)
      : pixels_(reinterpret_cast<T*>(samples.bytes.data())),
        size_{samples.record.width, samples.record.height},
        maxValue_(samples.record.maxValue) {}

  void draw(const Annotation& a) const {
    if (a.fill) fill(a);
    // A text's thickness 0 follows its height.
    if (a.stroke.width > 0 || a.kind == AnnotationKind::kText) outline(a);
  }

 private:
  using F = Functions<T, kChannels>;

  DaxiStroke strokeOf(const Annotation& a, const Rgb& colour) const {
    DaxiStroke stroke = a.stroke;
    std::transform(colour.begin(), colour.end(), stroke.color, [&](int32_t c) { return (c * maxValue_ + 127) / 255; });
    return stroke;
  }

  // query(bytes) and call(function's last argument, the memory).
  template <class Query, class Call>
  static void run(const Query& query, const Call& call) {
    uint64_t bytes = 0;
    check(query(&bytes), "drawing");
    const Memory memory(bytes);
    check(call(memory.get()), "drawing");
  }

  void rectangle(const Annotation& a, const DaxiStroke& stroke) const {
    run([&](uint64_t* bytes) { return DAXI_DrawRectBufferSize(size_, &stroke, bytes); },
        [&](void* memory) {
          return F::kRect(pixels_, step(), size_, at(a).x, at(a).y, a.width, a.height, a.angle, &stroke, memory);
        });
  }

  void ellipse(const Annotation& a, const DaxiStroke& stroke) const {
    run([&](uint64_t* bytes) { return DAXI_DrawEllipseBufferSize(size_, a.width, a.height, &stroke, bytes); },
        [&](void* memory) {
          return F::kEllipse(pixels_, step(), size_, at(a).x, at(a).y, a.width, a.height, a.angle, &stroke, memory);
        });
  }

  void polygon(const Annotation& a, const DaxiStroke& stroke) const {
    std::vector<DaxiPoint64f> points;
    std::vector<int32_t> lengths;
    for (const auto& ring : a.points) {
      points.insert(points.end(), ring.begin(), ring.end());
      lengths.push_back(static_cast<int32_t>(ring.size()));
    }
    const auto count = static_cast<int32_t>(points.size()), rings = static_cast<int32_t>(lengths.size());
    run([&](uint64_t* bytes) { return DAXI_DrawPolygonBufferSize(size_, count, bytes); },
        [&](void* memory) {
          const int32_t rule = a.evenOdd ? DAXI_FILL_EVEN_ODD : DAXI_FILL_NON_ZERO;
          return F::kPolygon(pixels_, step(), size_, points.data(), count, lengths.data(), rings, rule, &stroke,
                             memory);
        });
  }

  void polylines(const Annotation& a, bool closed, const DaxiStroke& stroke) const {
    for (const auto& points : a.points) {
      const auto count = static_cast<int32_t>(points.size());
      run([&](uint64_t* bytes) { return DAXI_DrawPolylineBufferSize(size_, count, &stroke, bytes); },
          [&](void* memory) {
            return F::kPolyline(pixels_, step(), size_, points.data(), count, closed ? 1 : 0, &stroke, memory);
          });
    }
  }

  void arrow(const Annotation& a, const DaxiStroke& stroke) const {
    const DaxiPoint64f from = a.points[0][0], to = a.points[0][1];
    run([&](uint64_t* bytes) { return DAXI_DrawArrowBufferSize(size_, &stroke, bytes); },
        [&](void* memory) {
          return F::kArrow(pixels_, step(), size_, from.x, from.y, to.x, to.y, a.head, kArrowSpread, &stroke, memory);
        });
  }

  void arc(const Annotation& a, const DaxiStroke& stroke) const {
    run([&](uint64_t* bytes) { return DAXI_DrawArcBufferSize(size_, a.width, a.width, a.span, &stroke, bytes); },
        [&](void* memory) {
          return F::kArc(pixels_, step(), size_, at(a).x, at(a).y, a.width, a.width, 0, a.start, a.span, &stroke,
                         memory);
        });
  }

  void marker(const Annotation& a, const DaxiStroke& stroke) const {
    run([&](uint64_t* bytes) { return DAXI_DrawMarkerBufferSize(size_, 1, a.width, a.marker, &stroke, bytes); },
        [&](void* memory) {
          return F::kMarker(pixels_, step(), size_, &at(a), 1, a.width, 0, a.marker, &stroke, memory);
        });
  }

  void text(const Annotation& a, const DaxiStroke& stroke) const {
    const char* const text = a.text.data();
    const auto count = static_cast<int32_t>(a.text.size());
    run([&](uint64_t* bytes) { return DAXI_DrawTextBufferSize(size_, text, count, &a.set, &stroke, bytes); },
        [&](void* memory) {
          return F::kText(pixels_, step(), size_, text, count, at(a).x, at(a).y, &a.set, &stroke, memory);
        });
  }

  void fill(const Annotation& a) const {
    DaxiStroke stroke = strokeOf(a, *a.fill);
    stroke.width = 0;
    if (a.kind == AnnotationKind::kPolygon) polygon(a, stroke);
    if (a.kind == AnnotationKind::kRectangle) rectangle(a, stroke);
    if (a.kind == AnnotationKind::kCircle || a.kind == AnnotationKind::kEllipse) ellipse(a, stroke);
  }

  void outline(const Annotation& a) const {
    const DaxiStroke stroke = strokeOf(a, a.color);
    switch (a.kind) {
      case AnnotationKind::kLine:
      case AnnotationKind::kPolyline:
        return polylines(a, a.closed, stroke);
      case AnnotationKind::kPolygon:
        return polylines(a, true, stroke);
      case AnnotationKind::kArrow:
        return arrow(a, stroke);
      case AnnotationKind::kRectangle:
        return rectangle(a, stroke);
      case AnnotationKind::kCircle:
      case AnnotationKind::kEllipse:
        return ellipse(a, stroke);
      case AnnotationKind::kArc:
        return arc(a, stroke);
      case AnnotationKind::kMarker:
        return marker(a, stroke);
      case AnnotationKind::kText:
        return text(a, stroke);
    }
  }

  int32_t step() const { return size_.width * kChannels; }
  static const DaxiPoint64f& at(const Annotation& a) { return a.points[0][0]; }

  T* pixels_;
  DaxiSize size_;
  int32_t maxValue_;
};

template <class T, int kChannels>
void drawAll(Samples& samples, const std::vector<Annotation>& annotations, const std::string& file) {
  const Easel<T, kChannels> easel(samples);
  for (const Annotation& each : annotations) {
    try {
      easel.draw(each);
    } catch (const Failure& failure) {
      throw Failure(failure.status(), printable(file) + ": " + each.place + ": " + failure.what());
    }
  }
}

bool isGrey(const Rgb& colour) {
  return colour[0] == colour[1] && colour[1] == colour[2];
}

}  // namespace

Samples annotated(const Samples& picture, const std::vector<Annotation>& annotations, const std::string& file) {
  const int32_t channels = picture.record.channels;
  const bool needsColour = std::any_of(annotations.begin(), annotations.end(), [](const Annotation& a) {
    return !isGrey(a.color) || (a.fill && !isGrey(*a.fill));
  });
  const bool isColour = channels >= 3;
  Samples result = isColour || needsColour ? arranged(picture, isColour ? std::vector{0, 1, 2} : std::vector{0, 0, 0})
                                           : arranged(picture, {0});
  result.note = channels % 2 == 0 ? "the opacity is left out" : "";
  const bool is8 = result.record.type == DAXI_SAMPLE_8U, isOne = result.record.channels == 1;
  const auto draw =
      is8 ? (isOne ? drawAll<uint8_t, 1> : drawAll<uint8_t, 3>) : (isOne ? drawAll<uint16_t, 1> : drawAll<uint16_t, 3>);
  draw(result, annotations, file);
  return result;
}

}  // namespace dax::tool
