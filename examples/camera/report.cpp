#include "report.h"

#include <unistd.h>

#include <cinttypes>
#include <cstdio>

namespace live {

namespace {

// The name comes from the camera: only plain characters of it are written.
std::string quoted(const std::string& text) {
  std::string plain = "\"";
  for (const char c : text) plain += c >= ' ' && c <= '~' && c != '"' && c != '\\' ? c : '?';
  return plain + "\"";
}

void writePercentiles(std::FILE* file, const char* name, const Percentiles& values) {
  std::fprintf(file, "  \"%s\": {\"p50\": %.3f, \"p95\": %.3f, \"p99\": %.3f, \"max\": %.3f},\n", name, values.at(50),
               values.at(95), values.at(99), values.at(100));
}

void writeObject(std::FILE* file, const BlobInfo& object, bool first) {
  std::fprintf(file,
               "%s\n    {\"area\": %.9g, \"centroid\": [%.9g, %.9g], \"rect\": [%d, %d, %d, %d], \"long_side\": %.9g, "
               "\"short_side\": %.9g, \"angle\": %.9g}",
               first ? "" : ",", static_cast<double>(object.area), static_cast<double>(object.centroidX),
               static_cast<double>(object.centroidY), object.rectX, object.rectY, object.rectWidth, object.rectHeight,
               static_cast<double>(object.boxWidth), static_cast<double>(object.boxHeight),
               static_cast<double>(object.boxAngle));
}

void print(std::FILE* file, const std::string& camera, const Statistics& statistics, const LastFrame& last) {
  std::fprintf(file, "{\n  \"version\": \"%s\",\n  \"camera\": %s,\n", DAX_GetVersion(), quoted(camera).c_str());
  std::fprintf(file, "  \"frames\": %" PRIu64 ",\n  \"damaged\": %" PRIu64 ",\n  \"dropped\": %" PRIu64 ",\n",
               statistics.frames, statistics.damaged, statistics.dropped);
  std::fprintf(file, "  \"reconnections\": %" PRIu64 ",\n  \"numbers\": [%" PRIu64 ", %" PRIu64 "],\n",
               statistics.reconnections, statistics.firstNumber, statistics.lastNumber);
  std::fprintf(file, "  \"frames_per_second\": %.3f,\n", statistics.rate());
  writePercentiles(file, "inspection_ms", statistics.inspection);
  writePercentiles(file, "latency_ms", statistics.latency);
  std::fprintf(file, "  \"last_frame\": {\"id\": %" PRIu64 ", \"width\": %d, \"height\": %d, \"objects\": [", last.id,
               last.width, last.height);
  for (size_t i = 0; i < last.objects.size(); ++i) writeObject(file, last.objects[i], i == 0);
  std::fputs("]}\n}\n", file);
}

}  // namespace

bool writeReport(const std::string& path, const std::string& camera, const Statistics& statistics,
                 const LastFrame& last) {
  const std::string draft = path + ".new";
  std::FILE* file = std::fopen(draft.c_str(), "w");
  if (!file) return false;
  print(file, camera, statistics, last);
  // Flushed to disk before it is renamed: after a power failure the previous report or this one remains.
  const bool kept = std::fflush(file) == 0 && std::ferror(file) == 0 && fsync(fileno(file)) == 0;
  const bool written = std::fclose(file) == 0 && kept && std::rename(draft.c_str(), path.c_str()) == 0;
  if (!written) std::remove(draft.c_str());
  return written;
}

}  // namespace live
