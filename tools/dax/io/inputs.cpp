#include "io/inputs.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/failure.h"
#include "base/text.h"
#include "io/image_file.h"
#include "io/output_file.h"
#include "io/output_name.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

std::vector<fs::path> imagesBelow(const fs::path& folder) {
  std::vector<fs::path> images;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (hasImageExtension(entry->path()) && !isFolder(entry->path())) images.push_back(entry->path());
  }
  const std::string name = printable(folder.string());
  if (error) throw Failure(ExitStatus::kCannotRead, name + ": cannot be read: " + error.message());
  if (images.empty()) throw Failure(ExitStatus::kCannotRead, name + ": holds no images");
  std::sort(images.begin(), images.end());
  return images;
}

// Input folders are listed before output folders are created, which may lie inside them.
std::vector<fs::path> imagesOf(const std::vector<std::string>& inputs) {
  std::vector<fs::path> files;
  for (const std::string& input : inputs) {
    const auto images = isFolder(input) ? imagesBelow(input) : std::vector<fs::path>{input};
    files.insert(files.end(), images.begin(), images.end());
  }
  return files;
}

// Gives each input a unique name in a folder: "disc-overlay.png", "disc-overlay-2.png", ...
class OutputNames {
 public:
  OutputNames(fs::path folder, std::string ending, std::string extension)
      : folder_(std::move(folder)), ending_(std::move(ending)), extension_(std::move(extension)) {
    if (!folder_.empty()) makeFolder(folder_);
  }

  fs::path of(const fs::path& input) {
    if (folder_.empty()) return {};
    const std::string stem = input.stem().string() + ending_;
    std::string name = stem + extension_;
    for (int i = 2; !taken_.insert(name).second; ++i) name = stem + "-" + std::to_string(i) + extension_;
    return folder_ / name;
  }

 private:
  fs::path folder_;
  std::string ending_;
  std::string extension_;
  std::set<std::string> taken_;
};

void requireUsable(const std::string& option, const fs::path& output, const fs::path& input, const char* ending) {
  requireEnding(option, output, {ending});
  requireOther(option, output, {{"the input", input}});
}

// An output folder with the ending of a picture is a mistake.
void requireFolder(const std::string& option, const fs::path& output, const char* ending) {
  if (output.extension() != ending || isFolder(output)) return;
  throw Failure(ExitStatus::kUsage, option + ": " + printable(output.string()) +
                                        " is the name of a file; of several images it names a folder");
}

}  // namespace

bool areSeveral(const std::vector<std::string>& inputs) {
  return inputs.size() > 1 || std::any_of(inputs.begin(), inputs.end(), isFolder);
}

std::vector<Job> planJobs(const std::vector<std::string>& inputs, const fs::path& overlay, const fs::path& report,
                          const std::string& overlayOption) {
  if (!areSeveral(inputs)) {
    const fs::path input = inputs.front();
    requireUsable(overlayOption, overlay, input, ".png");
    requireUsable("--report", report, input, ".html");
    return {{input, overlay, report}};
  }
  requireFolder(overlayOption, overlay, ".png");
  requireFolder("--report", report, ".html");
  const std::vector<fs::path> files = imagesOf(inputs);
  OutputNames overlays(overlay, overlayOption.substr(1), ".png");  // "-overlay"
  OutputNames reports(report, "-report", ".html");
  std::vector<Job> jobs;
  jobs.reserve(files.size());
  for (const fs::path& file : files) jobs.push_back({file, overlays.of(file), reports.of(file)});
  return jobs;
}

std::vector<Conversion> planConversions(const std::vector<std::string>& inputs, const fs::path& output,
                                        const std::string& extension) {
  if (!areSeveral(inputs)) {
    requireOther("OUT", output, {{"the input", inputs.front()}});
    return {{inputs.front(), output}};
  }
  if (hasImageExtension(output)) requireFolder("OUT", output, output.extension().c_str());
  const std::vector<fs::path> files = imagesOf(inputs);
  OutputNames names(output, "", extension);
  std::vector<Conversion> conversions;
  std::multimap<fs::path, fs::path> byName;
  for (const fs::path& file : files) {
    conversions.push_back({file, names.of(file)});
    byName.emplace(file.filename(), file);
  }
  for (const Conversion& conversion : conversions) {
    const auto [first, last] = byName.equal_range(conversion.output.filename());
    for (auto file = first; file != last; ++file) requireOther("OUT", conversion.output, {{"an input", file->second}});
  }
  return conversions;
}

}  // namespace dax::tool
