// Checks of output names, made before any work is done.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>

namespace dax::tool {

// Another file of the same command line: {"the input", path}.
struct NamedFile {
  const char* what;
  std::filesystem::path path;
};

// Both accept an empty name; else they throw Failure(kUsage) with a message that starts with the option.
void requireEnding(const std::string& option, const std::filesystem::path& output,
                   std::initializer_list<const char*> endings);
void requireOther(const std::string& option, const std::filesystem::path& output,
                  std::initializer_list<NamedFile> files);

}  // namespace dax::tool
