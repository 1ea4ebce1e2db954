// One call, its repetitions with other kernels and threads, and what is wrong with what they left.
#pragma once

#include <unistd.h>

#include <stdexcept>

#include "tests/hostile/call.h"

namespace dax::hostile {

constexpr unsigned kMaxSeconds = 60;  // of one call

// Room for copies of all blocks of a call.
class Copies {
 public:
  void reset() { used_ = 0; }
  uint8_t* take(size_t bytes) {
    if (used_ + bytes > room_.size()) throw std::runtime_error("too many blocks");
    uint8_t* const result = room_.data() + used_;
    used_ += bytes;
    return result;
  }

 private:
  std::vector<uint8_t> room_ = std::vector<uint8_t>(16 * Arena::kMaxBytes);
  size_t used_ = 0;
};

inline bool isNan(const uint8_t* bytes, size_t size) {
  if (size == sizeof(float)) {
    float value;
    std::memcpy(&value, bytes, sizeof value);
    return value != value;
  }
  double value;
  std::memcpy(&value, bytes, sizeof value);
  return value != value;
}

inline bool sameContents(const Block& block, const uint8_t* a, const uint8_t* b, size_t bytes) {
  if (std::memcmp(a, b, bytes) == 0) return true;
  if (block.realBytes == 0) return false;
  for (size_t i = 0; i + block.realBytes <= bytes; i += block.realBytes) {
    if (std::memcmp(a + i, b + i, block.realBytes) == 0) continue;
    if (!isNan(a + i, block.realBytes) || !isNan(b + i, block.realBytes)) return false;
  }
  return true;
}

inline bool paddingSame(const Block& block) {
  if (block.rowBytes == 0 || block.stepBytes <= block.rowBytes) return true;
  for (size_t at = block.rowBytes; at < block.bytes; at += block.stepBytes) {
    const size_t padding = std::min(block.stepBytes - block.rowBytes, block.bytes - at);
    if (std::memcmp(block.data + at, block.before + at, padding) != 0) return false;
  }
  return true;
}

class Experiment {
 public:
  Experiment(Call& call, const Row& row, Arena& arena, Copies& copies)
      : call_(call), row_(row), arena_(arena), copies_(copies) {}

  // Whether the call succeeded; complaints go to the call.
  bool run(Code portable) {
    const bool succeeded = runOnce();
    if (!call_.once && !(row_.flags & Row::varies)) repeat(portable, !succeeded);
    return succeeded;
  }

  bool runOnce() {
    copies_.reset();
    for (Block& block : call_.blocks) {
      block.before = copies_.take(block.bytes);
      if (block.role == Role::output) block.after = copies_.take(block.bytes);
      std::memcpy(block.before, block.data, block.bytes);
    }
    result_ = invoke(call_.function.code);
    const bool failed = call_.function.returnsStatus() && !(row_.flags & Row::neverFails) && result_ != 0;
    judge(failed);
    settled_ = settle(result_);
    for (const Block& block : call_.blocks) {
      if (block.role == Role::output) std::memcpy(block.after, block.data, block.bytes);
    }
    return !failed;
  }

  uint64_t status() const { return result_; }

 private:
  void repeat(Code portable, bool failed) {
    compare("the portable library", portable, failed);
    if (call_.has("isa") && call_.integer("isa") >= 0) {
      call_.set("isa", call_.integer("isa") == DAX_ISA_NEON ? DAX_ISA_PORTABLE : DAX_ISA_NEON);
      compare("the other instruction set", call_.function.code, failed);
    }
    if (call_.has("pool") && call_.get<void*>("pool")) {
      call_.set<void*>("pool", nullptr);
      compare("the calling thread alone", call_.function.code, failed);
    }
    for (const char* const suffix : {"_NEON", "_IS"}) {
      const Function* const twin = findFunction(std::string(call_.function.name) + suffix);
      if (!failed && twin && hasArgumentsOf(*twin)) compare(twin->name, twin->code, failed, twin);
    }
  }

  // The twin's arguments are these, or these and an instruction-set code.
  bool hasArgumentsOf(const Function& twin) const {
    const std::vector<Argument>&own = call_.function.arguments, &its = twin.arguments;
    const auto isSame = [](const Argument& a, const Argument& b) { return !std::strcmp(a.name, b.name); };
    if (its.size() != own.size() && (its.size() != own.size() + 1 || std::strcmp(its.back().name, "isa"))) return false;
    return std::equal(own.begin(), own.end(), its.begin(), isSame);
  }

  uint64_t invoke(Code code, const Function* twin = nullptr) {
    std::vector<Value> values = call_.values;
    values.emplace_back().set(int32_t{DAX_ISA_NEON});
    alarm(kMaxSeconds);
    const uint64_t result = (twin ? twin : &call_.function)->invoke(code, values.data());
    alarm(0);
    for (const Block& block : call_.blocks) {
      if (block.tidy) block.tidy();
    }
    return result;
  }

  uint64_t settle(uint64_t result) { return call_.settle ? call_.settle(result) : 0; }

  void complain(const std::string& what) {
    if (call_.complaint.empty()) call_.complaint = what;
  }

  void judge(bool failed) {
    if (!arena_.surroundingsIntact()) complain("wrote outside its memory");
    bool partial = false;
    for (const uint64_t status : call_.partial) partial |= failed && result_ == status;
    for (const Block& block : call_.blocks) {
      const bool same = std::memcmp(block.data, block.before, block.bytes) == 0;
      if (block.role == Role::input && !same) complain("changed the input " + block.name);
      if (block.role == Role::foreign) continue;
      const bool mayChange = partial ? !block.firm : block.role == Role::work && call_.worksBeforeFailing;
      if (failed && !mayChange && !same) complain("failed and changed " + block.name);
      if (!paddingSame(block)) complain("changed the padding of " + block.name);
    }
  }

  // Runs the call again from the same start, with another work buffer.
  void compare(const char* other, Code code, bool failed, const Function* twin = nullptr) {
    for (const Block& block : call_.blocks) {
      if (block.role == Role::work && block.bytes > 0) {
        std::memset(block.data, call_.random.below(256), block.bytes);
      } else if (block.role != Role::input) {
        std::memcpy(block.data, block.before, block.bytes);
      }
    }
    const uint64_t result = invoke(code, twin);
    if (twin && static_cast<uint32_t>(result) == DAX_STS_BAD_ISA) return;  // of a record, which only twins look at
    const uint64_t settled = settle(result);
    if (call_.function.returnsText()) {
      if (std::strcmp(reinterpret_cast<const char*>(result), reinterpret_cast<const char*>(result_)) != 0) {
        complain(std::string("another text from ") + other);
      }
      return;
    }
    if (result != result_ && !call_.settle) complain(std::string("another result from ") + other);
    if (settled != settled_) complain(std::string("another outcome from ") + other);
    for (const Block& block : call_.blocks) {
      if (block.role != Role::output) continue;
      const size_t bytes = !failed && block.meaningful ? std::min(block.meaningful(), block.bytes) : block.bytes;
      if (!sameContents(block, block.data, block.after, bytes)) complain(block.name + " differs from " + other);
    }
  }

  Call& call_;
  const Row& row_;
  Arena& arena_;
  Copies& copies_;
  uint64_t result_ = 0, settled_ = 0;
};

}  // namespace dax::hostile
