// Optimises a pose graph of 2500 poses along a loop and draws it before and after. Usage: pose_graph [OUT.svg]
#include "pose_graph.h"

#include <cstdio>

#include "grow_buffer.h"

namespace {

// Root mean square distance of positions from the true ones.
double positionError(const PoseGraph& graph, const double* x) {
  double sum = 0;
  for (int k = 1; k < graph.count; ++k) {
    double motion[16], truth[16];
    PRMT_SE3_Exp_f64(x + 6 * (k - 1), motion);
    PRMT_SE3_Exp_f64(&graph.truth[6 * size_t(k)], truth);
    for (int i = 0; i < 3; ++i) sum += std::pow(motion[4 * i + 3] - truth[4 * i + 3], 2);
  }
  return std::sqrt(sum / (graph.count - 1));
}

void drawPath(std::FILE* file, const char* title, int left, const double* poses, int count) {
  std::fprintf(file,
               "<text x='%d' y='30' font-family='sans-serif' font-size='18'>%s</text>\n<polyline fill='none' "
               "stroke='#1a7f5a' stroke-width='1' points='",
               left + 20, title);
  for (int k = 0; k < count; ++k) {
    double motion[16];
    PRMT_SE3_Exp_f64(poses + 6 * k, motion);
    std::fprintf(file, "%.1f,%.1f ", left + 250 + 8 * motion[3], 270 + 8 * motion[7]);
  }
  std::fprintf(file, "'/>\n");
}

bool draw(const char* path, const PoseGraph& graph, const std::vector<double>& result) {
  std::FILE* const file = std::fopen(path, "w");
  if (!file) return false;
  std::fprintf(file,
               "<svg xmlns='http://www.w3.org/2000/svg' width='1500' height='540'>\n<rect width='1500' height='540' "
               "fill='white'/>\n");
  drawPath(file, "truth", 0, graph.truth.data() + 6, graph.count - 1);
  drawPath(file, "start: measurements chained up", 500, graph.start.data() + 6, graph.count - 1);
  drawPath(file, "optimised", 1000, result.data(), graph.count - 1);
  std::fprintf(file, "</svg>\n");
  return std::fclose(file) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  PoseGraph graph(2500, 10);
  std::vector<double> x = graph.startParameters();
  const int32_t n = graph.parameters(), m = 6 * int32_t(graph.edges.size());
  const PrmtLmHmspFunctions functions{PoseGraph::energy, PoseGraph::normal, PoseGraph::update, graph.elements()};
  PrmtLmParam param{1e-9, 1e-6, 50, 1e-6, 1e-3, 10, 0, 0};
  double energy = 0, norm = 0, first = 0;
  PoseGraph::energy(x.data(), n, m, &graph, &first);
  const double before = positionError(graph, x.data());
  GrowingBuffer buffer;
  const int32_t status = buffer.run([&](void* memory, uint64_t* bytes) {
    return PRMT_LM_HMSP_Process_f64(x.data(), n, m, &functions, &graph, &param, &energy, &norm, memory, bytes);
  });
  if (status != 0) {
    std::fprintf(stderr, "pose_graph: the solver failed with %d\n", status);
    return 1;
  }
  std::printf("poses %d, edges %zu, parameters %d, work buffer %.1f MB\n", graph.count, graph.edges.size(), n,
              double(buffer.bytes()) / 1e6);
  std::printf("energy    %14.3f -> %.3f (expected near %.0f)\n", first, energy, 0.5 * (m - n));
  const double after = positionError(graph, x.data());
  std::printf("position error %9.4f -> %.4f\n", before, after);
  if (argc > 1 && !draw(argv[1], graph, x)) {
    std::fprintf(stderr, "pose_graph: cannot write %s\n", argv[1]);
    return 1;
  }
  const bool recovered = after < 0.2 * before && energy < 0.6 * (m - n);
  std::printf("%s\n", recovered ? "the loop is closed" : "the loop is NOT closed");
  return recovered ? 0 : 1;
}
