// Counts the frames lost from a stream of numbered frames.
#pragma once

#include <cstdint>
#include <limits>

namespace live {

// With 16-bit numbers, 1 follows 65535. A frame may arrive late, after some of
// its successors; a number further back than that means that the camera was restarted.
class Gaps {
 public:
  // False for a number in the window that was already seen.
  bool see(uint64_t number) {
    const int64_t ahead = range_ == 0 ? 1 : distance(last_, number);
    if (ahead > 0) {
      step(number, range_ == 0 ? 1 : static_cast<uint64_t>(ahead));
    } else if (ahead > -kWindow) {
      return late(number, static_cast<uint64_t>(-ahead));
    } else {
      window_ = 0;
      step(number, 1);
    }
    return true;
  }

  uint64_t lost() const { return range_ - came_; }
  uint64_t first() const { return first_; }
  uint64_t last() const { return last_; }

 private:
  static constexpr int64_t kRound = std::numeric_limits<uint16_t>::max();
  static constexpr int64_t kWindow = 64;

  static int64_t distance(uint64_t from, uint64_t to) {
    const auto straight = static_cast<int64_t>(to - from);
    if (from > kRound || to > kRound) return straight;
    if (straight > kRound / 2) return straight - kRound;
    return straight < -kRound / 2 ? straight + kRound : straight;
  }

  void step(uint64_t number, uint64_t ahead) {
    if (range_ == 0) first_ = number;
    window_ = ahead < kWindow ? window_ << ahead | 1 : 1;
    range_ += ahead;
    ++came_;
    last_ = number;
  }

  bool late(uint64_t number, uint64_t back) {
    const uint64_t bit = uint64_t{1} << back;
    if (window_ & bit) return false;
    window_ |= bit;
    ++came_;
    if (back < range_) return true;
    first_ = number;
    range_ = back + 1;
    return true;
  }

  uint64_t first_ = 0, last_ = 0;
  uint64_t range_ = 0, came_ = 0;  // numbers from the first to the last, and how many of them were seen
  uint64_t window_ = 0;            // bit i: last - i was seen
};

}  // namespace live
