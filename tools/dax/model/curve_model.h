// Curves to fit to points. They are fitted in a frame that scales the points to about -1..1, so that neither units nor
// a distant origin cost digits; parameters are reported in the user's coordinates.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "io/points_file.h"

namespace dax::tool {

using Values = std::vector<double>;

// u = (x - x0) / xScale, v = (y - y0) / yScale.
struct Frame {
  double x0, xScale, y0, yScale;
};

class CurveModel {
 public:
  CurveModel(std::string modelName, std::string modelFormula, std::vector<std::string> names)
      : name(std::move(modelName)), formula(std::move(modelFormula)), parameters(std::move(names)) {}
  virtual ~CurveModel() = default;

  // Parameters in the frame. Throws Failure(kRefused) if the points do not determine them.
  virtual Values start(const Points& framed) const = 0;
  // Residual of a point in the frame and its derivatives with respect to the parameters.
  virtual double residual(const double* q, double u, double v, double* by) const = 0;
  // To the user's parameters and back.
  virtual Values fromFrame(const Values& q, const Frame& frame) const = 0;
  virtual Values toFrame(const Values& p, const Frame& frame) const = 0;
  // Normalises parameters that describe the same curve.
  virtual void settle(Values&) const {}
  // A circle needs equal scales; the other curves are functions of x.
  virtual bool isFunction() const { return true; }
  // Points of the curve over u = -1..1, in the frame.
  virtual Points trace(const double* q) const;
  // Position of a point along the curve.
  virtual double along(const Values&, double x, double) const { return x; }

  size_t count() const { return parameters.size(); }

  const std::string name;
  const std::string formula;
  const std::vector<std::string> parameters;
};

inline constexpr const char* kModelNames = "line, polynomial:N (N of 1..9), exponential, gaussian, circle, sine";

// Null if the text names no model. N is 1..9.
std::unique_ptr<CurveModel> parseModel(std::string_view text);

// Inverse of a symmetric positive definite n x n matrix, row-major; empty if its columns are linearly dependent up to
// rounding.
Values inverseOf(Values matrix, size_t n);

}  // namespace dax::tool
