// Text drawn on any canvas.
#pragma once

#include "daxi/draw_text.h"
#include "image/draw/canvas.h"

namespace dax {

struct Text {
  const char* bytes;
  int32_t count;
  DaxiPoint64f place;
};

DaxStatus drawText(const Canvas& canvas, const Text& text, const DaxiTextCfg* cfg, const DaxiStroke* stroke,
                   void* buffer);

}  // namespace dax
