// Threshold, label, select: the library's part of an inspection.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "command/threshold_option.h"
#include "io/picture.h"
#include "model/selection.h"
#include "model/shape_features.h"
#include "scene/contour.h"

namespace dax::tool {

enum class Stage { kRead, kThreshold, kLabel, kSelect, kDraw };
inline constexpr std::array kStageNames = {"read", "threshold", "label", "select", "draw"};

// Seconds by stage.
class StageTimes {
 public:
  // Runs `work` and adds its time to a stage.
  template <class Work>
  auto measure(Stage stage, Work&& work) {
    const Adder adder{*this, stage, Clock::now()};
    return work();
  }

  double of(Stage stage) const { return seconds_[static_cast<size_t>(stage)]; }
  double total() const;
  void add(const StageTimes& other);

 private:
  using Clock = std::chrono::steady_clock;
  struct Adder {
    StageTimes& times;
    Stage stage;
    Clock::time_point start;
    ~Adder() {
      times.seconds_[static_cast<size_t>(stage)] += std::chrono::duration<double>(Clock::now() - start).count();
    }
  };
  std::array<double, kStageNames.size()> seconds_{};
};

struct InspectionSettings {
  Threshold threshold{};
  std::string thresholdText = "otsu";  // as on the command line
  std::optional<Levels> levels;
  std::optional<DaxiRect> roi;  // the part of the picture that is looked at
  std::optional<double> mmPerPixel;
  std::optional<OpenRange> expected;                     // number of objects
  bool shape = false;                                    // measure shapes
  std::map<const ShapeFeature*, OpenRange> shapeRanges;  // after those of the library; as given, in the units of output
  const Feature* ranking = nullptr;           // order of the objects; null: by the key of the library's selection
  std::map<std::string, std::string> limits;  // of the filters, as on the command line
  int connectivity = 8;
  bool byClass = false;  // the grey value is the class: no threshold
  BlobSelectV4Cfg select{};
  std::shared_ptr<const GreyImage> outsideMask;  // null: none
  bool rejected = false;                         // report rejected blobs
  bool contours = false;                         // compute contours
};

struct Inspection {
  DaxiSize size{};
  int depth = 8;
  std::optional<Levels> levels;  // of the picture, that were taken as 0..255
  std::string note;              // on how the picture was read, and on its threshold
  int low = 0;                   // levels that the threshold applied, in the picture's own depth
  int high = 0;
  uint32_t regions = 0;     // before selection
  std::vector<Blob> blobs;  // their domain pointers are not valid
  std::vector<Rejection> rejected;
  std::vector<Contour> contours;
  bool scored = false;
  bool met = true;  // whether the number of objects is the expected one
};

// Throws Failure(kRefused) with the library's status text.
Inspection inspect(const Picture& picture, const InspectionSettings& settings, const Workers& workers,
                   StageTimes& times);

}  // namespace dax::tool
