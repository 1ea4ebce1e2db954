#include "draw/overlay.h"

#include <array>
#include <cmath>

#include "base/text.h"
#include "draw/annotated_picture.h"

namespace dax::tool {
namespace {

constexpr Ink kContourColour{0.16, 0.90, 0.62, 1};
constexpr Ink kBoxColour{1.0, 0.72, 0.20, 0.95};

std::array<Point, 4> corners(const BlobInfo& blob) {
  const double c = std::cos(blob.boxAngle);
  const double s = std::sin(blob.boxAngle);
  // Half a pixel more each way: the box holds pixel centres, the picture shows whole pixels.
  const double u = (blob.boxWidth + 1) / 2;
  const double v = (blob.boxHeight + 1) / 2;
  const auto corner = [&](double du, double dv) {
    return Point{static_cast<float>(blob.boxX + du * c - dv * s), static_cast<float>(blob.boxY + du * s + dv * c)};
  };
  return {corner(-u, -v), corner(u, -v), corner(u, v), corner(-u, v)};
}

}  // namespace

std::string drawOverlay(const GreyImage& image, const Inspection& inspection, double scale) {
  AnnotatedPicture picture(image, scale);
  for (const Blob& blob : inspection.blobs) picture.line(corners(blob), true, kBoxColour, 1);
  for (const Contour& contour : inspection.contours) picture.line(contour, true, kContourColour, 1.6);
  for (size_t i = 0; i < inspection.blobs.size(); ++i) {
    const Blob& blob = inspection.blobs[i];
    const std::string number = std::to_string(i + 1);
    picture.label(
        {blob.rectX - 0.5, blob.rectY - 0.5, static_cast<double>(blob.rectWidth), static_cast<double>(blob.rectHeight)},
        inspection.scored ? number + "  " + fixed(blob.score, 2) : number);
  }
  return picture.png();
}

}  // namespace dax::tool
