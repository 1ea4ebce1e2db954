#include "command/picture_options.h"

#include <CLI/CLI.hpp>

#include "base/text.h"

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

}  // namespace dax::tool
