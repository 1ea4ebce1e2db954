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

// A camera failure, with a message for the user.
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
  // Opens and starts a camera by its name or address; the first one found if `name` is empty. A frame rate of 0
  // keeps the camera's own. At most `queue` frames wait for inspection; frames that arrive while it is full are
  // dropped, and counted.
  // Throws CameraError.
  Camera(const std::string& name, double framesPerSecond, int queue);
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  const std::string& name() const { return name_; }

  // Waits for a frame and hands it to `use`; the frame is the camera's again afterwards.
  Grab grab(uint64_t timeoutMicroseconds, const std::function<void(const Frame&)>& use);

  // Starts the acquisition.
  std::chrono::steady_clock::time_point started() const { return started_; }

  // Numbers of the first and of the latest frame received, damaged or not; 0 before the first.
  uint64_t firstNumber() const { return gaps_.first(); }
  uint64_t lastNumber() const { return gaps_.last(); }

  // Frames lost since the camera was opened: gaps in their numbers or, for a camera that does not number
  // undelivered frames, those for which the queue had no room.
  uint64_t dropped() const;

  // Whether control was lost: another host took it, or the camera does not answer. Then it can only be closed.
  bool lost() const { return lost_; }
  void markLost() { lost_ = true; }

  // From now on only the camera simulated inside this program is used.
  static void useFake();

  // The cameras found when one was last opened, one per line.
  static std::string list();

 private:
  Camera() = default;
  void open(const std::string& name);
  void start(double framesPerSecond, int queue);
  uint64_t withoutRoom() const;
  static void onControlLost(ArvDevice*, void* self) { static_cast<Camera*>(self)->lost_ = true; }

  // Set by the camera's thread, so it must outlive the camera.
  std::atomic<bool> lost_{false};
  Owned<ArvCamera> camera_;
  Owned<ArvStream> stream_;
  std::string name_;
  std::chrono::steady_clock::time_point started_;
  Gaps gaps_;
  uint64_t withoutRoomBefore_ = 0;
};

}  // namespace live
