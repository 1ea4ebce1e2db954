// Reports: one page with picture and table.
#pragma once

#include <string>

#include "io/grey_image.h"
#include "model/inspection.h"

namespace dax::tool {

// A self-contained page: the embedded picture, the blobs drawn over it, their features in a table.
std::string makeReport(const std::string& file, const GreyImage& image, const Inspection& inspection,
                       const InspectionSettings& settings);

}  // namespace dax::tool
