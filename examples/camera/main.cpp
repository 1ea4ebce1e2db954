// Inspects the frames of a GenICam camera: a host with its own threads, which continues when the camera disappears and
// comes back.
#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <memory>

#include "camera.h"
#include "inspector.h"
#include "options.h"
#include "report.h"
#include "statistics.h"
#include "stop.h"

namespace live {

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::duration duration) {
  return std::chrono::duration<double>(duration).count();
}

class Session {
 public:
  Session(const Options& options, Stop& stop)
      : options_(options), stop_(stop), inspector_(options.threads, options.minArea, options.maxCount) {}

  int run() {
    if (!connect()) return 3;
    int status = 0;
    try {
      while (!finished()) {
        watch();
        if (!finished()) reconnect();
      }
    } catch (const InspectionError& error) {
      std::fprintf(stderr, "inspect_camera: %s\n", error.what());
      status = 1;
    }
    camera_.reset();
    printStatistics();
    if (!writeReport(options_.report, name_, statistics_, last_)) {
      std::fprintf(stderr, "inspect_camera: cannot write %s\n", options_.report.c_str());
      return 1;
    }
    std::printf("report: %s\n", options_.report.c_str());
    return status;
  }

 private:
  bool finished() { return stop_.asked() || (options_.frames != 0 && statistics_.frames >= options_.frames); }

  // The camera must be present at the start: a wrong name should not wait forever.
  bool connect() {
    try {
      open();
      return true;
    } catch (const CameraError& error) {
      const std::string seen = Camera::list();
      std::fprintf(stderr, "inspect_camera: %s\n%s%s", error.what(),
                   seen.empty()
                       ? "No camera answers. Is it powered, in this network, and let through by the firewall?\n"
                       : "Cameras that answer:\n",
                   seen.c_str());
      return false;
    }
  }

  void open() {
    // Reconnects to the same camera, not to the first one that answers.
    camera_ = std::make_unique<Camera>(options_.camera.empty() ? name_ : options_.camera, options_.framesPerSecond,
                                       options_.queue);
    name_ = camera_->name();
    std::printf("camera: %s\n", name_.c_str());
  }

  // Inspects frames until the session ends, or the camera is lost and no frame is waiting.
  void watch() {
    const Clock::time_point started = camera_->started();
    Clock::time_point heard = Clock::now(), printed = heard;
    const double secondsBefore = statistics_.connectedSeconds;
    const uint64_t droppedBefore = statistics_.dropped;
    Grab grab = Grab::kFrame;
    while (!finished() && !(camera_->lost() && grab == Grab::kNothing)) {
      grab = camera_->grab(100000, [this](const Frame& frame) { inspect(frame); });
      const Clock::time_point now = Clock::now();
      if (grab == Grab::kFrame) heard = now;
      if (grab == Grab::kDamaged) ++statistics_.damaged;
      statistics_.firstNumber = camera_->firstNumber();
      statistics_.lastNumber = camera_->lastNumber();
      if (seconds(now - heard) > options_.silence) camera_->markLost();
      // The silence at the end of a connection does not count as running time.
      statistics_.connectedSeconds = secondsBefore + seconds(heard - started);
      statistics_.dropped = droppedBefore + camera_->dropped();
      if (seconds(now - printed) >= 1) {
        printStatistics();
        printed = now;
      }
    }
  }

  void inspect(const Frame& frame) {
    const Clock::time_point start = Clock::now();
    const std::vector<BlobInfo>& objects = inspector_.inspect(frame);
    statistics_.inspection.add(1e3 * seconds(Clock::now() - start));
    statistics_.latency.add(1e-3 * static_cast<double>(g_get_real_time() - frame.arrivedMicroseconds));
    ++statistics_.frames;
    last_ = {frame.id, frame.width, frame.height, objects};
  }

  // Retries at once, then with growing pauses: a restarting camera is back soon, a missing one should not cause
  // traffic.
  void reconnect() {
    std::printf("camera lost: waiting for it\n");
    camera_.reset();
    for (double pause = 0; !stop_.askedWithin(pause); pause = std::clamp(2 * pause, kFirstPause, kLongestPause)) {
      try {
        open();
        ++statistics_.reconnections;
        return;
      } catch (const CameraError&) {  // not available yet
      }
    }
  }

  void printStatistics() const {
    const Percentiles& inspection = statistics_.inspection;
    const Percentiles& latency = statistics_.latency;
    std::printf("%8" PRIu64 " frames  %6.1f/s  %4zu objects  inspection ms p50 %.2f p95 %.2f p99 %.2f  ",
                statistics_.frames, statistics_.rate(), last_.objects.size(), inspection.at(50), inspection.at(95),
                inspection.at(99));
    std::printf("latency ms p50 %.2f p95 %.2f p99 %.2f  dropped %" PRIu64 "  damaged %" PRIu64 "\n", latency.at(50),
                latency.at(95), latency.at(99), statistics_.dropped, statistics_.damaged);
  }

  static constexpr double kFirstPause = 0.1, kLongestPause = 5;  // seconds

  const Options& options_;
  Stop& stop_;
  Inspector inspector_;
  std::unique_ptr<Camera> camera_;
  std::string name_;
  Statistics statistics_;
  LastFrame last_;
};

}  // namespace

}  // namespace live

int main(int argc, char** argv) {
  const live::Options options = live::parseOptions(argc, argv);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  live::Stop stop;
  if (options.fake) live::Camera::useFake();
  int status = 1;
  try {
    status = live::Session(options, stop).run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "inspect_camera: %s\n", error.what());
  }
  arv_shutdown();
  return status;
}
