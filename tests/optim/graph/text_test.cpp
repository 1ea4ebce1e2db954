#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "optim/graph/decimal.h"
#include "tests/optim/graph/graph_scenes.h"

namespace dax::test {
namespace {

std::string written(double value) {
  char text[kMaxDecimal];
  return {text, writeDecimal(value, text)};
}

// Beside the C library's, which rounds correctly in the C locale.
TEST(GraphText, Numbers) {
  const auto check = [](const std::string& text) {
    double value = -7;
    ASSERT_TRUE(readDecimal(text.data(), text.data() + text.size(), &value)) << text;
    const double expected = std::strtod(text.c_str(), nullptr);
    EXPECT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << text << ' ' << value;
  };
  for (const char* text : {"0",
                           "-0",
                           "1",
                           "-12.5",
                           ".5",
                           "5.",
                           "+3",
                           "1e22",
                           "1e23",
                           "9007199254740993",
                           "9007199254740992.5",
                           "1e-324",
                           "3e-324",
                           "2.2250738585072011e-308",
                           "4.9406564584124654e-324",
                           "2.4703282292062327e-324",
                           "2.4703282292062328e-324",
                           "1.7976931348623157e308",
                           "0.1",
                           "123456789012345678901234567890",
                           "1.00000000000000011102230246251565404",
                           "1.00000000000000011102230246251565405",
                           "8.5e-400",
                           "0e999999999999999999999",
                           "1e-99999999999999999999"}) {
    check(text);
  }
  std::string zeros(303, '0');  // written over, where sums of texts make compilers see a copy beyond its end
  zeros[0] = '1';
  check(zeros);
  zeros[0] = '0', zeros[1] = '.', zeros[302] = '7';
  check(zeros);
  Random random(11);
  for (int k = 0; k < 2000; ++k) {
    uint64_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 16 | static_cast<uint64_t>(random.below(65536));
    double value;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    check(written(value));
    EXPECT_EQ(std::strtod(written(value).c_str(), nullptr), value);
  }
  EXPECT_EQ(written(0.1), "1e-1");
  EXPECT_EQ(written(-12.5), "-1.25e1");
  EXPECT_EQ(written(3), "3");
  for (const char* text : {"", "-", ".", "1e", "1e+", "0x10", "nan", "inf", "1e309", "1,5", "1 ", "1e5x", "--1"}) {
    double value = 0;
    EXPECT_FALSE(readDecimal(text, text + std::strlen(text), &value)) << text;
  }
  int64_t whole = 0;
  for (const char* text : {"9223372036854775808", "-9223372036854775809", "1.0", "", "-"}) {
    EXPECT_FALSE(readInteger(text, text + std::strlen(text), &whole)) << text;
  }
  const char* const lowest = "-9223372036854775808";
  EXPECT_TRUE(readInteger(lowest, lowest + std::strlen(lowest), &whole));
  EXPECT_EQ(whole, INT64_MIN);
}

int32_t readText(OwnGraph& g, const std::string& text, PrgoTextInfo& info) {
  return PRGO_GRAPH_ReadText(&g.graph, text.data(), text.size(), &info);
}

std::string textOf(const OwnGraph& g) {
  uint64_t bytes = 0;
  char none = 0;
  EXPECT_EQ(PRGO_GRAPH_WriteText(&g.graph, &none, &bytes), PRGO_STS_BUFFER_TOO_SMALL);
  std::string text(bytes, '?');
  EXPECT_EQ(PRGO_GRAPH_WriteText(&g.graph, text.data(), &bytes), 0);
  return text;
}

constexpr const char* kUpper6 = " 1 0 0 0 0 0 1 0 0 0 0 1 0 0 0 1 0 0 1 0 1";

// Information of the text is for the vector of the quaternion: sin(a) turned by 2 a, and not twice that.
TEST(GraphText, InformationIsForTheQuaternion) {
  OwnGraph g(2, 1);
  PrgoTextInfo info;
  const double a = 0.1;
  const std::string text = "EDGE_SE3:QUAT 9000000000000000000 -3 0 0 0 0 0 0 1" + std::string(kUpper6) +
                           "\r\nVERTEX_SE3:QUAT 9000000000000000000 0 0 0 0 0 0 1\r\n\r\n# a comment\nPARAMS 1\n" +
                           "VERTEX_SE3:QUAT -3 2 0 0 " + written(std::sin(a)) + " 0 0 " + written(std::cos(a)) +
                           " # more\nFIX -3";
  ASSERT_EQ(readText(g, text, info), 0) << info.line << ' ' << info.reason;
  EXPECT_EQ(info.unknown, 1);
  EXPECT_EQ(info.fixed, 1);
  EXPECT_EQ(g.graph.vertices[1].isFixed, 1);
  EXPECT_NEAR(g.energy(), (4 + std::sin(a) * std::sin(a)) / 2, 1e-14);
}

TEST(GraphText, WrittenAndReadAgain) {
  OwnGraph g(80, 100), again(80, 100);
  addRing(g, 50, 0.1);
  g.vertex(5, PRGO_VERTEX_POINT2, {1.0 / 3, -2e-17});
  g.edge(PRGO_EDGE_LANDMARK, 110, 5, {0.1, 0.7}, {3, 4});
  g.edge(PRGO_EDGE_PRIOR, 120, 0, {1, 2, 3}, {1, 2, 0});
  Random random(2);
  for (int32_t k = 0; k < 20; ++k) {
    Numbers x(6);
    for (double& value : x) value = around(random, 2);
    g.vertex(k - 20, PRGO_VERTEX_SE3, x, k == 3);
    if (k == 0) continue;
    PrgoEdge edge{{k - 21, k - 20}, PRGO_EDGE_RELATIVE, 0, 0, {}, {}};
    for (double& value : edge.measurement) value = around(random, 1);
    for (int32_t i = 0, at = 0; i < 6; ++i) {
      for (int32_t j = i; j < 6; ++j) edge.information[at++] = i == j ? 7 + i : around(random, 1);
    }
    ASSERT_EQ(PRGO_GRAPH_AddEdge(&g.graph, &edge), 0);
  }
  PrgoTextInfo info;
  const std::string text = textOf(g);
  ASSERT_EQ(readText(again, text, info), 0) << info.line << ' ' << info.reason;
  EXPECT_EQ(info.vertices, g.graph.vertexCount);
  EXPECT_EQ(info.edges, g.graph.edgeCount);
  EXPECT_NEAR(again.energy(), g.energy(), 1e-12 * g.energy());
  for (int32_t v = 0; v < g.graph.vertexCount; ++v) {
    const PrgoVertex &a = g.graph.vertices[v], &b = again.graph.vertices[v];
    for (int32_t i = 0; i < 6; ++i) EXPECT_NEAR(a.estimate[i], b.estimate[i], a.type == PRGO_VERTEX_SE3 ? 4e-15 : 0);
    EXPECT_EQ(a.isFixed, b.isFixed);
  }
  for (int32_t e = 0; e < g.graph.edgeCount; ++e) {
    for (int32_t i = 0; i < 21; ++i) EXPECT_EQ(g.graph.edges[e].information[i], again.graph.edges[e].information[i]);
  }
  g.vertex(900, PRGO_VERTEX_VECTOR, {1, 2});
  uint64_t bytes = 0;
  char none = 0;
  EXPECT_EQ(PRGO_GRAPH_WriteText(&g.graph, &none, &bytes), PRGO_STS_BAD_PARAM);
}

TEST(GraphText, RefusesWithTheLine) {
  const std::string start = "VERTEX_SE2 1 0 0 0\nVERTEX_SE2 2 1 0 0\nVERTEX_XY 3 1 1\n";
  const std::string upper(kUpper6);
  std::string longNumber(100000, '9');
  longNumber.replace(0, 17, "VERTEX_SE2 7 0 0 ").back() = 'x';
  const struct {
    std::string line;
    int32_t reason;
  } cases[] = {
      {"VERTEX_SE2 7 0 0", PRGO_TEXT_SHORT},
      {"VERTEX_SE2", PRGO_TEXT_SHORT},
      {"VERTEX_SE2 7 0 nan 0", PRGO_TEXT_NUMBER},
      {"VERTEX_SE2 7.5 0 0 0", PRGO_TEXT_NUMBER},
      {"VERTEX_SE2 7 0 0 1e7", PRGO_TEXT_NUMBER},
      {"VERTEX_SE3:QUAT 7 0 0 0 0 0 0 1.02", PRGO_TEXT_NORM},
      {"VERTEX_SE3:QUAT 7 0 0 0 0 0 0 0", PRGO_TEXT_NORM},
      {"VERTEX_XY 1 0 0", PRGO_TEXT_DUPLICATE},
      {"EDGE_SE2 1 9 0 0 0 1 0 0 1 0 1", PRGO_TEXT_MISSING},
      {"EDGE_SE2 1 1 0 0 0 1 0 0 1 0 1", PRGO_TEXT_MISSING},
      {"EDGE_SE2 1 3 0 0 0 1 0 0 1 0 1", PRGO_TEXT_MISSING},
      {"EDGE_SE2 1 2 0 0 0 1 0 0 1 0", PRGO_TEXT_SHORT},
      {"EDGE_SE2 1 2 0 0 0 1 0 0 -1 0 1", PRGO_TEXT_MATRIX},
      {"FIX 8", PRGO_TEXT_MISSING},
      {"FIX", PRGO_TEXT_SHORT},
      {longNumber, PRGO_TEXT_NUMBER},
  };
  for (const auto& [line, reason] : cases) {
    OwnGraph g(8, 8);
    PrgoTextInfo info;
    EXPECT_EQ(readText(g, start + "\n" + line + "\nVERTEX_XY 4 0 0\n", info), PRGO_STS_BAD_TEXT) << line;
    EXPECT_EQ(info.line, 5) << line.substr(0, 80);
    EXPECT_EQ(info.reason, reason) << line.substr(0, 80);
    EXPECT_EQ(g.graph.vertexCount, 0);
    // The graph can be used.
    EXPECT_EQ(readText(g, start, info), 0);
    EXPECT_EQ(g.graph.vertexCount, 3);
  }
  OwnGraph small(2, 1);
  PrgoTextInfo info;
  EXPECT_EQ(readText(small, start, info), PRGO_STS_FULL);
}

}  // namespace
}  // namespace dax::test
