// What a result should say about the run that made it.
#pragma once

#include <string>

namespace dax::tool {

struct RunInfo {
  std::string version;
  std::string date;     // "2024-05-17T09:30:00Z"; of SOURCE_DATE_EPOCH where that is set
  std::string command;  // as for a shell, with all settings
};

// Call once at the start.
void setRunInfo(int argc, const char* const* argv);
const RunInfo& runInfo();

}  // namespace dax::tool
