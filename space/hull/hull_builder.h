// Convex hulls as triangles that know their neighbours.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "geometry/vector3.h"

namespace dax {

constexpr int32_t kMaxHullPoints = 100000000;

struct HullFace {
  int32_t corners[3];  // counter-clockwise seen from outside
  int32_t across[3];   // the face beyond the edge from corners[i] to the next one
  int32_t outside;     // first of the points that are to be inserted and see this face; -1: none
  int32_t mark;        // round in which it was last looked at; -1: not in use
};

// An edge of the part of the hull that a new point sees: from corner `from` to `to`; `beyond`, the face that stays.
struct HorizonEdge {
  int32_t from, to, beyond;
};

struct HullMemory {
  explicit HullMemory(int32_t n);
  BufferLayout layout;
  BufferPiece<double> points;
  BufferPiece<HullFace> faces;
  BufferPiece<HorizonEdge> horizon;
  BufferPiece<int32_t> order, next, home, atCorner, lowest, visible;
};

class HullBuilder {
 public:
  HullBuilder(const HullMemory& memory, void* buffer, int32_t n);

  // Reads the points; false where one is out of range.
  bool load(const float* points);
  bool load(const double* points);

  // False where all points lie in one plane. Faces are then merged where they lie in one.
  bool build();

  // --- Then ---
  Vector3 point(int32_t i) const { return load3(points_ + ptrdiff_t{3} * i); }
  int32_t faceCount() const { return faceCount_; }
  bool isUsed(int32_t face) const { return faces_[face].mark >= 0; }
  const HullFace& face(int32_t i) const { return faces_[i]; }
  // Whether the face beyond an edge lies in another plane.
  bool isEdge(int32_t face, int32_t edge) const {
    return parents_[face] != parents_[static_cast<uint32_t>(faces_[face].across[edge])];
  }
  bool isExtreme(int32_t i) const { return facesAt_[i] >= 3; }
  // Writes the triangles of the merged faces, and returns their number.
  int32_t writeTriangles(int32_t* triangles);

 private:
  void drawOrder();
  bool sees(int32_t face, const Vector3& p) const;
  bool start(int32_t (&corners)[4]) const;
  void firstFaces(const int32_t (&corners)[4]);
  void insert(int32_t i);
  void findVisible(int32_t i);
  int32_t takePending();
  void closeHorizon(int32_t i);
  void distribute(int32_t pending, int32_t inserted);
  int32_t newFace(int32_t a, int32_t b, int32_t c);
  void link(int32_t face, int32_t edge, int32_t other);
  int32_t edgeFrom(int32_t face, int32_t corner) const;
  bool areSame(int32_t i, int32_t k) const;
  void mergeFaces();
  template <class Visit>
  void walkAround(int32_t face, int32_t edge, const Visit& visit);
  template <class Corner, class Done>
  void forEachFacet(const Corner& corner, const Done& done);

  template <class T>
  bool loadAny(const T* points);

  int32_t n_;
  double* points_;
  HullFace* faces_;
  HorizonEdge* horizon_;
  int32_t* order_;
  int32_t* next_;
  int32_t* home_;      // a face that the point sees; -1: none
  int32_t* atCorner_;  // the new face whose first corner it is
  int32_t* facesAt_;   // afterwards: how many merged faces meet at a corner
  int32_t* lowest_;    // of the points that equal a corner
  int32_t* visible_;
  uint32_t* parents_;  // afterwards: the merged face of each face
  int32_t faceCount_ = 0, free_ = -1, visibleCount_ = 0, horizonCount_ = 0, round_ = 0;
};

}  // namespace dax
