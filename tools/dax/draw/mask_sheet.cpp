#include "draw/mask_sheet.h"

#include <algorithm>
#include <cmath>

#include "draw/drawing.h"

namespace dax::tool {
namespace {

constexpr double kSheetGap = 8, kTitleHeight = 22, kTitleFont = 13, kMaxSide = 480;

struct Sheet {
  Sheet(DaxiSize size, size_t count)
      : columns(std::max(1, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count)))))),
        rows((static_cast<int>(count) + columns - 1) / columns),
        scale(std::min(1.0, kMaxSide / std::max(size.width, size.height))),
        width(std::ceil(std::max(size.width * scale, 120.0)) + kSheetGap),
        height(std::ceil(size.height * scale) + kTitleHeight + kSheetGap) {}
  int columns, rows;
  double scale, width, height;  // of a picture with its title and gap
};

void drawTitled(cairo_t* c, const TitledImage& titled, double x, double y, double scale) {
  setInk(c, {0.1, 0.1, 0.1, 1});
  cairo_move_to(c, x, y + kTitleFont);
  cairo_show_text(c, titled.title.c_str());
  const Surface image = toSurface(titled.image);
  cairo_save(c);
  cairo_translate(c, x, y + kTitleHeight);
  cairo_scale(c, scale, scale);
  cairo_set_source_surface(c, image.get(), 0, 0);
  cairo_paint(c);
  cairo_restore(c);
}

}  // namespace

std::string drawSheet(const std::vector<TitledImage>& images) {
  const Sheet sheet(images.front().image.size, images.size());
  const Surface surface = makeSurface(static_cast<int>(kSheetGap + sheet.columns * sheet.width),
                                      static_cast<int>(kSheetGap + sheet.rows * sheet.height));
  {
    const Context context(cairo_create(surface.get()));
    cairo_t* const c = context.get();
    setInk(c, {0.93, 0.93, 0.93, 1});
    cairo_paint(c);
    cairo_select_font_face(c, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(c, kTitleFont);
    for (size_t i = 0; i < images.size(); ++i) {
      const int place = static_cast<int>(i), column = place % sheet.columns, row = place / sheet.columns;
      drawTitled(c, images[i], kSheetGap + column * sheet.width, kSheetGap + row * sheet.height, sheet.scale);
    }
    require(cairo_status(c));
  }
  return toPng(surface);
}

}  // namespace dax::tool
