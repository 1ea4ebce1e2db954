// Reports: one page with picture and table.
#pragma once

#include <string>
#include <vector>

#include "io/grey_image.h"
#include "model/inspection.h"

namespace dax::tool {

// A self-contained page: the embedded picture, the blobs drawn over it, their features in a table.
std::string makeReport(const std::string& file, const GreyImage& image, const Inspection& inspection,
                       const InspectionSettings& settings);

// A line of an index of reports.
struct IndexEntry {
  std::string name;  // of the picture
  std::string link;  // of its page, from the index
  std::string summary;
  bool isGood;
};

// A page with links to the reports of several pictures.
std::string makeIndex(const std::vector<IndexEntry>& entries);

}  // namespace dax::tool
