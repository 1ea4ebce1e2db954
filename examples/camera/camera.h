// A GenICam camera that delivers 8-bit grey frames, through Aravis.
#pragma once

#include <arv.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

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

// Frames that a stream of numbered frames has lost. Numbers start again after 65535, without a 0, where a camera has
// 16 bits for them; a step back by less than half the way round is a frame that was late, or a camera that started anew.
class Gaps {
 public:
  void see(uint64_t number) {
    if (seen_) {
      const uint64_t missing = number > last_ ? number - last_ - 1 : number + kRound - last_ - 1;
      if (number != last_ && (number > last_ || (last_ <= kRound && missing < kRound / 2))) lost_ += missing;
    }
    seen_ = true;
    last_ = number;
  }
  uint64_t lost() const { return lost_; }

 private:
  static constexpr uint64_t kRound = std::numeric_limits<uint16_t>::max();
  uint64_t last_ = 0, lost_ = 0;
  bool seen_ = false;
};

class Camera {
 public:
  // Opens a camera by its name or address, the first one found where `name` is empty, and starts it. A frame rate of 0
  // leaves the camera's own. At most `queue` frames wait for their inspection; what comes beyond is dropped, and counted.
  // Throws CameraError.
  Camera(const std::string& name, double framesPerSecond, int queue);
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  const std::string& name() const { return name_; }

  // Waits for a frame and hands it to `use`; the frame is the camera's again afterwards.
  Grab grab(uint64_t timeoutMicroseconds, const std::function<void(const Frame&)>& use);

  // Frames since the camera was opened that never came: gaps in their numbers, or, of a camera that does not number
  // what it cannot deliver, those for which the queue had no room.
  uint64_t dropped() const;

  // Control has been lost: another host took it, or the camera does not answer. What is left then is to close it.
  bool lost() const { return lost_; }
  void markLost() { lost_ = true; }

  // The cameras that can be seen now, one a line.
  static std::string list();

 private:
  Camera() = default;
  void open(const std::string& name);
  void start(double framesPerSecond, int queue);
  static void onControlLost(ArvDevice*, void* self) { static_cast<Camera*>(self)->lost_ = true; }

  // Set by the thread of the camera, so that it has to outlive the camera.
  std::atomic<bool> lost_{false};
  Owned<ArvCamera> camera_;
  Owned<ArvStream> stream_;
  std::string name_;
  Gaps gaps_;
};

}  // namespace live
