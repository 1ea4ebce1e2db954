// A request to stop, by SIGINT or SIGTERM.
#pragma once

#include <pthread.h>
#include <signal.h>
#include <time.h>

#include <cmath>

namespace live {

// Construct it before any other thread, so that all threads inherit the mask: the signals stay pending until polled
// here and interrupt neither the camera's threads nor the pool's.
class Stop {
 public:
  Stop() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGINT);
    sigaddset(&signals_, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  }

  bool asked() { return askedWithin(0); }

  // Waits at most this long; a request stays pending.
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
