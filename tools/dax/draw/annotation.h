// Shapes and text that are drawn on a picture, as an annotation file has them.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "daxi/draw_text.h"
#include "io/image_file.h"

namespace dax::tool {

enum class AnnotationKind { kLine, kPolyline, kPolygon, kArrow, kRectangle, kCircle, kEllipse, kArc, kMarker, kText };

// Components of 0..255.
using Rgb = std::array<int32_t, 3>;

struct Annotation {
  AnnotationKind kind{};
  std::string place;  // "shapes[3]", for messages

  // Of a polygon its rings, of others one list of one point or more.
  std::vector<std::vector<DaxiPoint64f>> points;
  bool closed = false;   // a polyline
  bool evenOdd = false;  // a polygon's filling
  double head = 10;      // an arrow's, pixels
  // A rectangle's sides; an ellipse's radii; an arc's radius twice; a marker's size.
  double width = 0, height = 0;
  double angle = 0;            // radians, clockwise
  double start = 0, span = 0;  // of an arc, radians
  int marker = 0;

  std::string text;
  DaxiTextCfg set{};

  DaxiStroke stroke{};  // but for the colour
  Rgb color{};
  std::optional<Rgb> fill;
};

// All of a file, in the order in which they are drawn. Throws Failure(kCannotRead), which names file, line and place.
std::vector<Annotation> readAnnotations(const std::filesystem::path& path);

// The picture with them drawn on it: of three channels if it is not grey or a colour is not, without opacity, which its
// note says. Throws Failure(kRefused) with the place of the shape, in the file of that name.
Samples annotated(const Samples& picture, const std::vector<Annotation>& annotations, const std::string& file);

}  // namespace dax::tool
