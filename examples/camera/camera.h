// A GenICam camera that delivers 8-bit grey frames, through Aravis.
#pragma once

#include <arv.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "gaps.h"

namespace live {

// What went wrong with a camera, in words for its user.
struct CameraError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, Unref>;

// A frame inside the camera's buffer.
struct Frame {
  const uint8_t* pixels;
  int32_t step, width, height;
  uint64_t id;
  int64_t arrivedMicroseconds;  // first packet, on the clock of g_get_real_time
};

enum class Grab { kFrame, kNothing, kDamaged };

class Camera {
 public:
  // Opens a camera by its name or address, the first one found where `name` is empty, and starts it. A frame rate of 0
  // leaves the camera's own. At most `queue` frames wait for their inspection; those that come while it is full are
  // dropped, and counted.
  // Throws CameraError.
  Camera(const std::string& name, double framesPerSecond, int queue);
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  const std::string& name() const { return name_; }

  // Waits for a frame and hands it to `use`; the frame is the camera's again afterwards.
  Grab grab(uint64_t timeoutMicroseconds, const std::function<void(const Frame&)>& use);

  // From then on frames come.
  std::chrono::steady_clock::time_point started() const { return started_; }

  // The numbers of the first and of the latest frame that came, damaged or not; 0 before one came.
  uint64_t firstNumber() const { return gaps_.first(); }
  uint64_t lastNumber() const { return gaps_.last(); }

  // Frames since the camera was opened that never came: gaps in their numbers, or, of a camera that does not number
  // what it cannot deliver, those for which the queue had no room.
  uint64_t dropped() const;

  // Control has been lost: another host took it, or the camera does not answer. What is left then is to close it.
  bool lost() const { return lost_; }
  void markLost() { lost_ = true; }

  // Cameras are the simulated one inside this program from now on, and no other is looked for.
  static void useFake();

  // The cameras that were seen when one was last opened, one a line.
  static std::string list();

 private:
  Camera() = default;
  void open(const std::string& name);
  void start(double framesPerSecond, int queue);
  uint64_t withoutRoom() const;
  static void onControlLost(ArvDevice*, void* self) { static_cast<Camera*>(self)->lost_ = true; }

  // Set by the thread of the camera, so that it has to outlive the camera.
  std::atomic<bool> lost_{false};
  Owned<ArvCamera> camera_;
  Owned<ArvStream> stream_;
  std::string name_;
  std::chrono::steady_clock::time_point started_;
  Gaps gaps_;
  uint64_t withoutRoomBefore_ = 0;
};

}  // namespace live
