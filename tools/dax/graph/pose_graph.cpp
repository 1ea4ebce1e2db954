#include "graph/pose_graph.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

uint64_t graphBytes(int32_t vertices, int32_t edges) {
  uint64_t bytes = 0;
  PRGO_GRAPH_BufferSize(vertices, edges, &bytes);
  return bytes;
}

const char* statusText(int32_t status) {
  switch (status) {
    case PRGO_STS_NOT_FINITE:
      return "its energy is not finite";
    case PRGO_STS_SINGULAR:
      return "its equations have no unique solution";
    case PRGO_STS_BUFFER_TOO_SMALL:
      return "this solver needs more than 1 GB for it";
    default:
      return "the solver failed";
  }
}

const char* reasonText(int32_t reason) {
  constexpr const char* kTexts[] = {"",
                                    "words are missing",
                                    "a word is no number, or one out of range",
                                    "the norm of the quaternion is not 1",
                                    "the id of the vertex was there before",
                                    "there is no such vertex, or it is of another kind",
                                    "the information matrix is not positive semi-definite"};
  return kTexts[reason];
}

int32_t report(int32_t iteration, double before, double after, int32_t isAccepted, void* user) {
  (*static_cast<const PoseGraph::Progress*>(user))(iteration, before, after, isAccepted != 0);
  return 0;
}

}  // namespace

PoseGraph::PoseGraph(int32_t vertices, int32_t edges) : memory_(graphBytes(vertices, edges)) {
  PRGO_GRAPH_Init(&graph_, vertices, edges, memory_.get());
}

PoseGraph PoseGraph::read(const std::string& file, const std::string& text) {
  PrgoTextInfo info;
  PRGO_GRAPH_CountText(text.data(), text.size(), &info);
  if (info.vertices == 0) throw Failure(ExitStatus::kCannotRead, printable(file) + ": no vertex of a known kind");
  PoseGraph made(info.vertices, info.edges);
  if (PRGO_GRAPH_ReadText(&made.graph_, text.data(), text.size(), &made.info_) != PRGO_STS_OK) {
    throw Failure(ExitStatus::kCannotRead,
                  printable(file) + ": line " + std::to_string(made.info_.line) + ": " + reasonText(made.info_.reason));
  }
  return made;
}

void PoseGraph::add(const PrgoVertex& vertex) {
  PRGO_GRAPH_AddVertex(&graph_, &vertex);
}

void PoseGraph::add(const PrgoEdge& edge) {
  PRGO_GRAPH_AddEdge(&graph_, &edge);
}

std::string PoseGraph::text() const {
  uint64_t bytes = 0;
  char none = 0;
  PRGO_GRAPH_WriteText(&graph_, &none, &bytes);
  std::string text(bytes, ' ');
  PRGO_GRAPH_WriteText(&graph_, text.data(), &bytes);
  return text;
}

double PoseGraph::energy() const {
  double energy = 0;
  PRGO_GRAPH_Energy(&graph_, &energy);
  return energy;
}

PrgoResult PoseGraph::optimise(const PrgoCfg& cfg, const Progress& progress, bool* isEnded) {
  PrgoCfg watched = cfg;
  watched.progress = report;
  watched.user = const_cast<Progress*>(&progress);
  uint64_t bytes = 0;
  int32_t status = PRGO_CORE_BufferSize(&graph_, &watched, &bytes);
  PrgoResult result{};
  if (status == PRGO_STS_OK) {
    const Memory buffer(bytes);
    status = PRGO_CORE_optimize(&graph_, &watched, &result, buffer.get(), &bytes);
  }
  *isEnded = status == PRGO_STS_OK;
  if (status == PRGO_STS_OK || status == PRGO_STS_NOT_CONVERGED) return result;
  throw Failure(ExitStatus::kRefused, std::string("the graph was refused: ") + statusText(status));
}

}  // namespace dax::tool
