#include <algorithm>
#include <cmath>
#include <cstring>

#include "frame/check.h"
#include "optim/graph/decimal.h"
#include "optim/graph/rigid.h"
#include "optim/graph/storage.h"
#include "optim/sparse/msp.h"
#include "prgo/text.h"

namespace dax {
namespace {

struct Word {
  const char* begin;
  const char* end;
  bool is(const char* tag) const {
    const auto length = static_cast<size_t>(end - begin);
    return std::strlen(tag) == length && std::memcmp(begin, tag, length) == 0;
  }
};

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

// What a line can say: a vertex, or an edge, of this type.
struct Tag {
  const char* name;
  bool isEdge;
  int32_t type, first, second;  // of the vertices of an edge
};

constexpr Tag kTags[] = {
    {"VERTEX_SE2", false, PRGO_VERTEX_SE2, 0, 0},
    {"VERTEX_SE3:QUAT", false, PRGO_VERTEX_SE3, 0, 0},
    {"VERTEX_XY", false, PRGO_VERTEX_POINT2, 0, 0},
    {"VERTEX_TRACKXYZ", false, PRGO_VERTEX_POINT3, 0, 0},
    {"EDGE_SE2", true, PRGO_EDGE_RELATIVE, PRGO_VERTEX_SE2, PRGO_VERTEX_SE2},
    {"EDGE_SE3:QUAT", true, PRGO_EDGE_RELATIVE, PRGO_VERTEX_SE3, PRGO_VERTEX_SE3},
    {"EDGE_SE2_XY", true, PRGO_EDGE_LANDMARK, PRGO_VERTEX_SE2, PRGO_VERTEX_POINT2},
    {"EDGE_PRIOR_SE2", true, PRGO_EDGE_PRIOR, PRGO_VERTEX_SE2, 0},
};

const Tag* tagOf(const Word& word) {
  for (const Tag& tag : kTags) {
    if (word.is(tag.name)) return &tag;
  }
  return nullptr;
}

// A line, word by word.
class Line {
 public:
  Line(const char* begin, const char* end) : at_(begin), end_(end) {}

  bool next(Word* word) {
    while (at_ != end_ && isBlank(*at_)) ++at_;
    word->begin = at_;
    while (at_ != end_ && !isBlank(*at_)) ++at_;
    word->end = at_;
    return word->begin != word->end;
  }

  // These set the reason where they fail.
  bool id(int64_t* value) {
    Word word;
    if (!next(&word)) return fails(PRGO_TEXT_SHORT);
    return readInteger(word.begin, word.end, value) || fails(PRGO_TEXT_NUMBER);
  }
  bool numbers(double* values, int32_t count) {
    Word word;
    for (int32_t i = 0; i < count; ++i) {
      if (!next(&word)) return fails(PRGO_TEXT_SHORT);
      if (!readDecimal(word.begin, word.end, &values[i])) return fails(PRGO_TEXT_NUMBER);
    }
    return true;
  }
  // An estimate of a vertex, or a measurement of that kind.
  bool estimate(int32_t type, double* values) {
    if (type != PRGO_VERTEX_SE3) {
      if (!numbers(values, vertexSize(type, 0))) return false;
      return type != PRGO_VERTEX_SE2 || std::fabs(values[2]) <= 1e6 || fails(PRGO_TEXT_NUMBER);
    }
    double read[7];
    if (!numbers(read, 7)) return false;
    double q[4] = {read[6], read[3], read[4], read[5]};
    const double norm = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (!(std::fabs(norm - 1) <= 0.01)) return fails(PRGO_TEXT_NORM);
    for (double& part : q) part /= norm;
    std::copy_n(read, 3, values);
    rotationVectorOf(q, values + 3);
    return true;
  }
  bool fails(int32_t why) {
    reason = why;
    return false;
  }

  int32_t reason = PRGO_TEXT_OK;

 private:
  const char* at_;
  const char* end_;
};

// Calls visit(line number, tag word, rest of the line) for each line with words that is no comment, until that is false.
template <class Visit>
bool forEachLine(const char* text, uint64_t length, const Visit& visit) {
  const char *at = text, *const end = text + length;
  for (int64_t number = 1; at != end; ++number) {
    const auto* const found = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
    const char* const stop = found ? found : end;
    Line line(at, stop);
    Word word;
    if (line.next(&word) && *word.begin != '#' && !visit(number, word, line)) return false;
    at = found ? found + 1 : end;
  }
  return true;
}

// The upper triangle for the vector of a quaternion to that for twice the vector, or back with factor 2.
void scaleRotation(double* upper, double factor) {
  for (int32_t i = 0; i < 6; ++i) {
    for (int32_t j = i; j < 6; ++j) *upper++ *= (i >= 3 ? factor : 1) * (j >= 3 ? factor : 1);
  }
}

// --- Reading ---

struct Reader {
  PrgoGraph& graph;
  PrgoTextInfo& info;
  int32_t status = PRGO_STS_OK;

  bool refuse(int64_t number, int32_t reason) {
    status = PRGO_STS_BAD_TEXT;
    info.line = number, info.reason = reason;
    return false;
  }

  bool vertex(int64_t number, const Tag& tag, Line& line) {
    PrgoVertex made{0, tag.type, 0, 0, 0, {}};
    if (!line.id(&made.id) || !line.estimate(tag.type, made.estimate)) return refuse(number, line.reason);
    status = PRGO_GRAPH_AddVertex(&graph, &made);
    return status == PRGO_STS_BAD_PARAM ? refuse(number, PRGO_TEXT_DUPLICATE) : status == PRGO_STS_OK;
  }

  // Whether there is a vertex of this id and type.
  bool has(int64_t id, int32_t type) const {
    const int32_t index = findVertex(graph, id);
    return index >= 0 && graph.vertices[index].type == type;
  }

  bool edge(int64_t number, const Tag& tag, Line& line) {
    PrgoEdge made{{}, tag.type, PRGO_KERNEL_NONE, 0, {}, {}};
    const bool isPrior = tag.type == PRGO_EDGE_PRIOR;
    if (!line.id(&made.vertices[0]) || !(isPrior || line.id(&made.vertices[1]))) return refuse(number, line.reason);
    const bool known = has(made.vertices[0], tag.first) && (isPrior || has(made.vertices[1], tag.second));
    if (!known || (!isPrior && made.vertices[0] == made.vertices[1])) return refuse(number, PRGO_TEXT_MISSING);
    const int32_t measured = isPrior ? tag.first : tag.second, size = vertexSize(measured, 0);
    const bool isWhole =
        line.estimate(measured, made.measurement) && line.numbers(made.information, size * (size + 1) / 2);
    if (!isWhole) return refuse(number, line.reason);
    if (measured == PRGO_VERTEX_SE3) scaleRotation(made.information, 0.5);
    status = PRGO_GRAPH_AddEdge(&graph, &made);
    return status == PRGO_STS_BAD_PARAM ? refuse(number, PRGO_TEXT_MATRIX) : status == PRGO_STS_OK;
  }

  bool fix(int64_t number, Line& line) {
    Word word;
    int64_t id = 0;
    int32_t count = 0;
    for (; line.next(&word); ++count) {
      if (!readInteger(word.begin, word.end, &id)) return refuse(number, PRGO_TEXT_NUMBER);
      if (PRGO_GRAPH_Fix(&graph, id, 1) != PRGO_STS_OK) return refuse(number, PRGO_TEXT_MISSING);
    }
    return count > 0 || refuse(number, PRGO_TEXT_SHORT);
  }
};

int32_t read(PrgoGraph& graph, const char* text, uint64_t length, PrgoTextInfo& info) {
  Reader reader{graph, info};
  const auto vertices = [&](int64_t number, const Word& word, Line& line) {
    const Tag* const tag = tagOf(word);
    return !tag || tag->isEdge || reader.vertex(number, *tag, line);
  };
  const auto others = [&](int64_t number, const Word& word, Line& line) {
    if (word.is("FIX")) return reader.fix(number, line);
    const Tag* const tag = tagOf(word);
    return !tag || !tag->isEdge || reader.edge(number, *tag, line);
  };
  if (forEachLine(text, length, vertices)) forEachLine(text, length, others);
  return reader.status;
}

// --- Writing ---

// Counts what does not fit.
class TextWriter {
 public:
  TextWriter(char* text, uint64_t bytes) : text_(text), bytes_(bytes) {}

  void word(const char* text) { put(text, std::strlen(text)); }
  void number(double value) {
    char made[kMaxDecimal] = {' '};
    put(made, static_cast<size_t>(writeDecimal(value, made + 1) - made));
  }
  void id(int64_t value) {
    char made[kMaxDecimal] = {' '};
    put(made, static_cast<size_t>(writeInteger(value, made + 1) - made));
  }
  void estimate(int32_t type, const double* values) {
    for (int32_t i = 0; i < (type == PRGO_VERTEX_SE3 ? 3 : vertexSize(type, 0)); ++i) number(values[i]);
    if (type != PRGO_VERTEX_SE3) return;
    double q[4];
    quaternionOf(values + 3, q);
    for (const int k : {1, 2, 3, 0}) number(q[k]);
  }
  uint64_t length() const { return length_; }

 private:
  void put(const char* text, size_t count) {
    if (length_ + count <= bytes_) std::memcpy(text_ + length_, text, count);
    length_ += count;
  }

  char* text_;
  uint64_t bytes_, length_ = 0;
};

// The tag of a vertex, or of an edge between vertices of these types; null where the format has none.
const Tag* tagFor(bool isEdge, int32_t type, int32_t first, int32_t second) {
  for (const Tag& tag : kTags) {
    if (tag.isEdge != isEdge || tag.type != type) continue;
    if (!isEdge || (tag.first == first && (type == PRGO_EDGE_PRIOR || tag.second == second))) return &tag;
  }
  return nullptr;
}

bool write(const PrgoGraph& graph, TextWriter& out) {
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const PrgoVertex& vertex = graph.vertices[v];
    const Tag* const tag = tagFor(false, vertex.type, 0, 0);
    if (!tag) return false;
    out.word(tag->name);
    out.id(vertex.id);
    out.estimate(vertex.type, vertex.estimate);
    out.word("\n");
  }
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    if (!graph.vertices[v].isFixed) continue;
    out.word("FIX");
    out.id(graph.vertices[v].id);
    out.word("\n");
  }
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    const PrgoEdge& edge = graph.edges[e];
    const int32_t first = graph.vertices[endOf(graph, e, 0)].type;
    const int32_t second = endOf(graph, e, 1) < 0 ? first : graph.vertices[endOf(graph, e, 1)].type;
    const Tag* const tag = tagFor(true, edge.type, first, second);
    if (!tag) return false;
    out.word(tag->name);
    for (int k = 0; k < endsOf(edge.type); ++k) out.id(edge.vertices[k]);
    out.estimate(second, edge.measurement);
    double upper[21];
    const int32_t size = vertexSize(second, 0), count = size * (size + 1) / 2;
    std::copy_n(edge.information, count, upper);
    if (second == PRGO_VERTEX_SE3) scaleRotation(upper, 2);
    for (int32_t i = 0; i < count; ++i) out.number(upper[i]);
    out.word("\n");
  }
  return true;
}

}  // namespace
}  // namespace dax

int32_t PRGO_GRAPH_CountText(const char* text, uint64_t length, PrgoTextInfo* info) {
  DAX_REQUIRE(text && info, PRGO_STS_NULL_POINTER);
  int64_t vertices = 0, edges = 0, fixed = 0, unknown = 0;
  dax::forEachLine(text, length, [&](int64_t, const dax::Word& word, dax::Line& line) {
    dax::Word id;
    const dax::Tag* const tag = dax::tagOf(word);
    if (tag) {
      ++(tag->isEdge ? edges : vertices);
    } else if (word.is("FIX")) {
      while (line.next(&id)) ++fixed;
    } else {
      ++unknown;
    }
    return true;
  });
  DAX_REQUIRE(std::max({vertices, edges, fixed, unknown}) <= INT32_MAX, PRGO_STS_BUFFER_OVERFLOW);
  *info = {static_cast<int32_t>(vertices),
           static_cast<int32_t>(edges),
           static_cast<int32_t>(fixed),
           static_cast<int32_t>(unknown),
           0,
           PRGO_TEXT_OK,
           0};
  return PRGO_STS_OK;
}

int32_t PRGO_GRAPH_ReadText(PrgoGraph* graph, const char* text, uint64_t length, PrgoTextInfo* info) {
  DAX_REQUIRE(dax::isSet(graph) && text && info, PRGO_STS_NULL_POINTER);
  DAX_REQUIRE(graph->vertexCount == 0, PRGO_STS_BAD_PARAM);
  PRMT_REQUIRE_OK(PRGO_GRAPH_CountText(text, length, info));
  const int32_t status = dax::read(*graph, text, length, *info);
  if (status != PRGO_STS_OK) {
    graph->vertexCount = graph->edgeCount = 0;
    std::fill_n(graph->table, dax::tableSize(graph->vertexCapacity), 0);
  }
  return status;
}

int32_t PRGO_GRAPH_WriteText(const PrgoGraph* graph, char* text, uint64_t* bytes) {
  DAX_REQUIRE(dax::isSet(graph) && text && bytes, PRGO_STS_NULL_POINTER);
  dax::TextWriter measured(nullptr, 0);
  DAX_REQUIRE(dax::write(*graph, measured), PRGO_STS_BAD_PARAM);
  const uint64_t room = *bytes;
  *bytes = measured.length();
  DAX_REQUIRE(measured.length() <= room, PRGO_STS_BUFFER_TOO_SMALL);
  dax::TextWriter writer(text, room);
  dax::write(*graph, writer);
  return PRGO_STS_OK;
}
