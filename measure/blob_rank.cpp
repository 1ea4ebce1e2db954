// Ranking blobs by a sort key.
#include "measure/blob_select.h"

namespace dax {
namespace {

float floatKey(const BlobInfo& blob, uint32_t key) {
  switch (key) {
    case DAXI_BLOB_KEY_PERIMETER:
      return blob.perimeter;
    case DAXI_BLOB_KEY_CIRCULARITY:
      return blob.circularity;
    case DAXI_BLOB_KEY_RECTANGULARITY:
      return blob.rectangularity;
    case DAXI_BLOB_KEY_CENTROID_X:
      return blob.centroidX;
    case DAXI_BLOB_KEY_CENTROID_Y:
      return blob.centroidY;
    case DAXI_BLOB_KEY_BOX_ANGLE:
      return blob.boxAngle;
    case DAXI_BLOB_KEY_BOX_WIDTH:
      return blob.boxWidth;
    case DAXI_BLOB_KEY_BOX_HEIGHT:
      return blob.boxHeight;
    case DAXI_BLOB_KEY_PRINCIPAL_ANGLE:
      return blob.principalAngle;
    case DAXI_BLOB_KEY_AXIS_RATIO:
      return blob.axisRatio;
    default:
      return blob.area;
  }
}

template <class Key>
bool ranksBefore(Key a, Key b, bool descending, uint32_t labelA, uint32_t labelB) {
  if (a == b) return labelA < labelB;
  return descending ? a > b : a < b;
}

}  // namespace

// No key is ever NaN, so this is a strict weak order.
bool Ranking::operator()(const BlobInfo& a, const BlobInfo& b) const {
  switch (key) {
    case DAXI_BLOB_KEY_RECT_X:
      return ranksBefore(a.rectX, b.rectX, descending, a.label, b.label);
    case DAXI_BLOB_KEY_RECT_Y:
      return ranksBefore(a.rectY, b.rectY, descending, a.label, b.label);
    default:
      return ranksBefore(floatKey(a, key), floatKey(b, key), descending, a.label, b.label);
  }
}

}  // namespace dax
