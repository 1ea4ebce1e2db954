// The wish to end, which comes as SIGINT or SIGTERM.
#pragma once

#include <pthread.h>
#include <signal.h>
#include <time.h>

#include <cmath>

namespace live {

// Made before any other thread, so that all threads inherit the mask: the signals wait for the one that asks here, and
// disturb neither the camera's threads nor the pool's.
class Stop {
 public:
  Stop() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGINT);
    sigaddset(&signals_, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  }

  bool asked() { return askedWithin(0); }

  // Waits so long at most; what is asked for stays asked for.
  bool askedWithin(double seconds) {
    const double whole = std::floor(seconds);
    const timespec time = {static_cast<time_t>(whole), static_cast<long>(1e9 * (seconds - whole))};
    asked_ = asked_ || sigtimedwait(&signals_, nullptr, &time) > 0;
    return asked_;
  }

 private:
  sigset_t signals_;
  bool asked_ = false;
};

}  // namespace live
