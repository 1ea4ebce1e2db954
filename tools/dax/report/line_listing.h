// Lines as a table, JSON, or drawn over the image.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>

#include "draw/annotated_picture.h"
#include "model/lines.h"

namespace dax::tool {

void writeLine(std::ostream& out, const FittedLine& fitted, size_t calipers);
nlohmann::ordered_json toJson(const FittedLine& fitted);

// Draws the line through the whole image and its points, outliers in another colour.
void drawLine(AnnotatedPicture& picture, const FittedLine& fitted, DaxiSize size);

}  // namespace dax::tool
