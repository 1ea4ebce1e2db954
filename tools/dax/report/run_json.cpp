#include "report/run_json.h"

#include "base/run_info.h"

namespace dax::tool {

using Json = nlohmann::ordered_json;

Json runJson(const char* lengthUnit) {
  const RunInfo& info = runInfo();
  return {{"version", info.version},
          {"date", info.date},
          {"command", info.command},
          {"units", {{"length", lengthUnit}, {"angle", "degree"}}}};
}

Json pictureJson(const std::string& file, const Picture& picture) {
  Json json = runJson();
  json["file"] = file;
  json["width"] = picture.grey.size.width;
  json["height"] = picture.grey.size.height;
  json["depth"] = picture.depth();
  json["levels"] = picture.levels ? Json{picture.levels->low, picture.levels->high} : Json();
  return json;
}

}  // namespace dax::tool
