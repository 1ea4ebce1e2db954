// Reports: one page with picture and table.
#pragma once

#include <string>

#include "io/grey_image.h"
#include "model/inspection.h"

namespace dax::tool {

// A page that needs nothing beside itself: the picture embedded, the blobs drawn over it, their features in a table.
std::string makeReport(const std::string& file, const GreyImage& image, const Inspection& inspection,
                       const InspectionSettings& settings);

}  // namespace dax::tool
