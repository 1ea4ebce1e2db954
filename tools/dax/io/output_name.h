// What the names of outputs must be, checked before any work is done.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>

namespace dax::tool {

// A file that the same command line names: {"the input", path}.
struct NamedFile {
  const char* what;
  std::filesystem::path path;
};

// Both let an empty name pass, throw Failure(kUsage), and begin the message with the option.
void requireEnding(const std::string& option, const std::filesystem::path& output,
                   std::initializer_list<const char*> endings);
void requireOther(const std::string& option, const std::filesystem::path& output,
                  std::initializer_list<NamedFile> files);

}  // namespace dax::tool
