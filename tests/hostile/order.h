// The order of checks: what fails alone in two ways fails together in the way that the contract states first.
#pragma once

#include <map>
#include <set>
#include <utility>

#include "tests/hostile/experiment.h"

namespace dax::hostile {

// What was seen of a function's contract.
struct Witness {
  std::set<uint32_t> codes;
  std::map<std::pair<uint32_t, uint32_t>, uint64_t> ordered,
      loose;  // how often two codes were told apart, or could not be
};

class Order {
 public:
  // `current` is what is being called, for those who are told of a crash.
  Order(const Function& function, const Row& row, Arena& arena, Copies& copies, Witness& witness, std::string& current)
      : function_(function), row_(row), arena_(arena), copies_(copies), witness_(witness), current_(current) {}

  // One call with valid arguments, the same call with each argument spoiled, and with each two whose statuses differ.
  // Returns what is wrong, or nothing.
  std::string round(uint64_t seed);

 private:
  // A call with one thing wrong.
  struct Fault {
    Spoil spoil;
    std::vector<std::string> path;
    bool isEmptySize = false;
    uint32_t status = 0;
    std::vector<size_t> checks;  // that it can have failed
  };
  // Its status; nothing where the call says little about the contract.
  std::optional<uint32_t> statusOf(uint64_t seed, std::vector<Spoil> spoils, Fault* fault = nullptr);
  void describe(Call& call, Fault& fault) const;
  void collect(uint64_t seed);
  void acceptLimit(uint64_t seed, Spoil spoil);
  void compare(uint64_t seed, const Fault& a, const Fault& b);
  std::vector<size_t> checksOf(const Fault& fault) const;
  bool concerns(const std::vector<size_t>& checks, const Fault& fault) const;
  bool names(size_t check, const Fault& fault) const;
  std::vector<std::string> wordsFor(const Fault& fault) const;

  const Function& function_;
  const Row& row_;
  Arena& arena_;
  Copies& copies_;
  Witness& witness_;
  std::string& current_;
  const Contract* contract_ = nullptr;
  std::vector<Fault> faults_;
  std::string complaint_;
};

// Whether a failure with this status is one that the contract knows, or that the callbacks have made.
bool isDocumented(const Function& function, const Call& call, uint64_t status);

std::string statusText(uint64_t status);

}  // namespace dax::hostile
