#include "command/picture_options.h"

#include <CLI/CLI.hpp>
#include <map>

#include "base/text.h"
#include "io/output_name.h"

namespace dax::tool {

CLI::Option* addLevels(CLI::App& app, std::optional<Levels>& levels, const std::string& group, const char* help) {
  return app
      .add_option_function<std::string>(
          "--levels",
          [&levels](const std::string& text) {
            levels = parseLevels(text);
            if (!levels) throw CLI::ValidationError("--levels", inQuotes(text) + " is not LOW..HIGH within 0..65535");
          },
          help)
      ->type_name("LOW..HIGH")
      ->group(group);
}

std::vector<Job> planSafeJobs(const std::vector<std::string>& inputs, const std::filesystem::path& overlay,
                              const std::filesystem::path& report) {
  std::vector<Job> jobs = planJobs(inputs, overlay, report);
  std::multimap<std::string, const Job*> byName;
  for (const Job& job : jobs) byName.emplace(job.input.filename().string(), &job);
  for (const Job& job : jobs) {
    const auto [first, last] = byName.equal_range(job.overlay.filename().string());
    for (auto other = first; other != last; ++other) {
      requireOther("--overlay", job.overlay, {{"an input", other->second->input}});
    }
  }
  return jobs;
}

}  // namespace dax::tool
