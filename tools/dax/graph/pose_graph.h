// A graph of poses in memory of its own.
#pragma once

#include <prgo.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/library_call.h"

namespace dax::tool {

class PoseGraph {
 public:
  PoseGraph(int32_t vertices, int32_t edges);

  // The graph of a text; throws Failure(kCannotRead) with the line that is wrong, after the file's name.
  static PoseGraph read(const std::string& file, const std::string& text);

  void add(const PrgoVertex& vertex);
  void add(const PrgoEdge& edge);
  std::string text() const;
  double energy() const;

  using Progress = std::function<void(int iteration, double before, double after, bool accepted)>;
  // Throws Failure(kRefused). isEnded: false at the limit of iterations.
  PrgoResult optimise(const PrgoCfg& cfg, const Progress& progress, bool* isEnded);

  const PrgoGraph& graph() const { return graph_; }
  const PrgoTextInfo& info() const { return info_; }

 private:
  Memory memory_;
  PrgoGraph graph_;
  PrgoTextInfo info_ = {};
};

}  // namespace dax::tool
