// Calls every exported function with generated arguments, valid, borderline and hostile, and looks at what it leaves:
//   - memory beyond what the contract gives faults, or shows in the pattern around it;
//   - inputs and the padding of images never change; after a failure nothing has changed;
//   - the library on its portable kernels, the other instruction-set code and the calling thread instead of the host's pool
//     give the same result, whatever the work buffer held before;
//   - every function succeeds at times and refuses at times.
#include <dlfcn.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <memory>
#include <stdexcept>

#include "tests/hostile/order.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>

// So that faults of undefined behaviour come to the handler of SIGABRT.
extern "C" const char* __ubsan_default_options() {
  return "abort_on_error=1:print_stacktrace=1";
}

// Memory that cannot be had is part of the calls.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}
#elif defined __SANITIZE_THREAD__
extern "C" const char* __tsan_default_options() {
  return "allocator_may_return_null=1";
}
#endif

namespace dax::hostile {
namespace {

struct Options {
  uint64_t seed = 1;
  uint64_t first = 0;
  uint64_t calls = 100000;
  std::vector<std::string> functions;  // all where there are none
  bool progress = false;
  bool verbose = false;
  bool coverage = false;
};

// The driver's own output. What the library prints goes nowhere.
FILE* report = stdout;

void silenceLibrary() {
  FILE* const own = fdopen(dup(STDOUT_FILENO), "w");
  if (!own || !std::freopen("/dev/null", "w", stdout)) throw std::runtime_error("no output");
  report = own;
}

// What is running, for those who are told of a crash.
const char* currentFunction = "";
unsigned long long currentSeed, currentCall;
std::string currentDescription;

void tellHowToRepeat() {
  char text[2048];
  const int length = snprintf(text, sizeof text,
                              "hostile: in %s\n"
                              "hostile: repeat with: hostile_driver --function %s --seed %llu --first %llu --calls 1\n",
                              currentDescription.c_str(), currentFunction, currentSeed, currentCall);
  if (write(STDERR_FILENO, text, static_cast<size_t>(std::min<int>(length, sizeof text - 1))) < 0) _exit(1);
}

void onSignal(int number) {
  if (number == SIGALRM) {
    constexpr char kSlow[] = "hostile: the call does not end\n";
    if (write(STDERR_FILENO, kSlow, sizeof kSlow - 1) < 0) _exit(1);
  }
  tellHowToRepeat();
  signal(number, SIG_DFL);
  raise(number);
}

void watch() {
  for (const int number : {SIGALRM, SIGABRT}) signal(number, onSignal);
#ifdef __SANITIZE_ADDRESS__
  __sanitizer_set_death_callback(tellHowToRepeat);
#else
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) signal(number, onSignal);
#endif
}

// --- The library on its portable kernels ---

class PortableLibrary {
 public:
  PortableLibrary() : handle_(dlopen(HOSTILE_PORTABLE_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) throw std::runtime_error(dlerror());
  }
  Code code(const char* name) const {
    void* const symbol = dlsym(handle_, name);
    if (!symbol) throw std::runtime_error(std::string("the portable library lacks ") + name);
    return reinterpret_cast<Code>(symbol);
  }

 private:
  void* handle_;
};

// --- All calls ---

bool fits(std::string_view pattern, std::string_view name) {
  if (!pattern.empty() && pattern.back() == '*') return name.starts_with(pattern.substr(0, pattern.size() - 1));
  return name == pattern;
}

constexpr uint64_t kTurnsPerRound = 32;
constexpr uint64_t kCallsForTally = 200;  // of a function; with fewer, chance alone may refuse most of its valid calls
constexpr uint64_t kMaxCallsForTally = 1000;  // of a function that chance alone may have made doubtful

struct Tally {
  uint64_t succeeded = 0, failed = 0, unspoiledFailed = 0;
  std::map<uint64_t, uint64_t> statuses;  // how often each was returned

  bool isMostlyRefused() const { return 2 * unspoiledFailed > succeeded; }
};

class Driver {
 public:
  explicit Driver(const Options& options) : options_(options) {
    for (const Function& function : allFunctions()) {
      const auto isChosen = [&](const std::string& pattern) { return fits(pattern, function.name); };
      const auto& chosen = options.functions;
      if (!chosen.empty() && std::none_of(chosen.begin(), chosen.end(), isChosen)) continue;
      subjects_.push_back({&function, &findRow(function.name), portable_.code(function.name), {}, {}});
    }
    if (!options.functions.empty()) return;
    for (const char* const pattern : idleRows()) {
      std::fprintf(stderr, "hostile: no function is called %s\n", pattern);
      ++findings_;
    }
  }

  int run() {
    if (subjects_.empty()) return std::fputs("hostile: no such function\n", stderr), 1;
    const clock_t start = clock();
    for (uint64_t i = 0; i < options_.calls && findings_ < 20; ++i) {
      one(options_.first + i);
      if (options_.progress && (i + 1) % (options_.calls / 20 + 1) == 0) {
        std::fprintf(report, "%llu calls, %.0f s\n", static_cast<unsigned long long>(i + 1),
                     static_cast<double>(clock() - start) / CLOCKS_PER_SEC);
        std::fflush(report);
      }
    }
    callDoubtfulAgain();
    checkTallies();
    std::fprintf(report, "hostile: %llu calls of %zu functions, %d findings\n",
                 static_cast<unsigned long long>(options_.calls), subjects_.size(), findings_);
    return findings_ == 0 ? 0 : 1;
  }

 private:
  struct Subject {
    const Function* function;
    const Row* row;
    Code portable;
    Tally tally;
    Witness witness;
  };

  // Each function in its turn; now and then a round about the order of its checks.
  static bool isRound(uint64_t index) { return index / allFunctions().size() % kTurnsPerRound == 0; }

  void one(uint64_t index) {
    Subject& subject = subjects_[index % subjects_.size()];
    // The same call under the same number, whichever functions are chosen beside it.
    Random mixer(options_.seed * 0x9E3779B97F4A7C15u + index);
    const uint64_t seed = mixer.next();
    if (isRound(index)) tellRound(subject, index, seed);
    arena_.reset();
    Call call(*subject.function, arena_, seed);
    announce(subject, index);
    bool succeeded = false;
    try {
      subject.row->plan(call);
      call.complete();
      currentDescription = call.description();
      if (options_.verbose) std::fprintf(report, "%s\n", currentDescription.c_str());
      Experiment experiment(call, *subject.row, arena_, copies_);
      succeeded = experiment.run(subject.portable);
      if (subject.function->returnsStatus()) ++subject.tally.statuses[experiment.status()];
      if (!succeeded && !isDocumented(*subject.function, call, experiment.status())) {
        call.complaint = "returned " + statusText(experiment.status()) + ", which its contract does not name";
      }
    } catch (const std::exception& problem) {
      call.complaint = problem.what();
    }
    subject.tally.succeeded += succeeded;
    subject.tally.failed += !succeeded;
    subject.tally.unspoiledFailed += !succeeded && !call.spoiledAny;
    if (!call.complaint.empty()) found(subject, call.complaint);
  }

  void announce(const Subject& subject, uint64_t index) {
    currentSeed = options_.seed;
    currentCall = index;
    currentFunction = subject.function->name;
    currentDescription = currentFunction;
  }

  void found(const Subject& subject, const std::string& complaint) {
    ++findings_;
    std::fprintf(stderr, "hostile: %s: %s\n", subject.function->name, complaint.c_str());
    tellHowToRepeat();
  }

  void tellRound(Subject& subject, uint64_t index, uint64_t seed) {
    announce(subject, index);
    std::string complaint;
    try {
      complaint =
          Order(*subject.function, *subject.row, arena_, copies_, subject.witness, currentDescription).round(seed);
    } catch (const std::exception& problem) {
      complaint = problem.what();
    }
    if (!complaint.empty()) found(subject, complaint);
  }

  bool hasCallsForTally() const { return options_.calls / subjects_.size() >= kCallsForTally; }

  void callDoubtfulAgain() {
    if (!hasCallsForTally()) return;
    const uint64_t end = options_.first + options_.calls, cycle = subjects_.size();
    for (uint64_t next = end; next < end + cycle; ++next) {
      const Tally& tally = subjects_[next % cycle].tally;
      for (uint64_t i = next; tally.isMostlyRefused() && tally.succeeded + tally.failed < kMaxCallsForTally;
           i += cycle) {
        one(i);
      }
    }
  }

  // With enough calls each function has both succeeded and failed; otherwise its row is too kind, or too harsh.
  void checkTallies() {
    for (const Subject& subject : subjects_) {
      const Tally& tally = subject.tally;
      const unsigned flags = subject.row->flags;
      if (options_.coverage) tell(subject);
      if (!hasCallsForTally()) continue;
      const bool canFail = subject.function->returnsStatus() && !(flags & Row::neverFails);
      if (tally.succeeded == 0 && !(flags & Row::neverSucceeds)) complainOf(subject, "never succeeded");
      if (tally.failed == 0 && canFail) complainOf(subject, "never refused anything");
      if (tally.isMostlyRefused()) complainOf(subject, "mostly refused what its row means as valid");
    }
  }

  static void tell(const Subject& subject) {
    const auto number = [](uint64_t value) { return static_cast<unsigned long long>(value); };
    const Tally& tally = subject.tally;
    std::fprintf(report, "%s: %llu succeeded, %llu refused, %llu of them unspoiled;", subject.function->name,
                 number(tally.succeeded), number(tally.failed), number(tally.unspoiledFailed));
    for (const auto& [status, count] : tally.statuses) {
      std::fprintf(report, " %llx*%llu", number(status & 0xFFFFFFFF), number(count));
    }
    const Contract* const contract = findContract(subject.function->name);
    if (contract) std::fputs("; never", report);
    for (const uint32_t code : contract ? contract->codes : std::span<const uint32_t>()) {
      const auto isCode = [&](const auto& each) { return static_cast<uint32_t>(each.first) == code; };
      const bool seen = std::any_of(tally.statuses.begin(), tally.statuses.end(), isCode);
      if (!seen && !subject.witness.codes.contains(code)) std::fprintf(report, " %x", code);
    }
    const auto tellPairs = [](const char* title, const auto& pairs) {
      std::fputs(title, report);
      for (const auto& [codes, count] : pairs) std::fprintf(report, " %x<%x", codes.first, codes.second);
    };
    tellPairs("; in order", subject.witness.ordered);
    tellPairs("; in either order", subject.witness.loose);
    std::fputc('\n', report);
  }

  void complainOf(const Subject& subject, const char* what) {
    std::fprintf(stderr, "hostile: %s %s\n", subject.function->name, what);
    ++findings_;
  }

  const Options& options_;
  PortableLibrary portable_;
  Arena arena_;
  Copies copies_;
  std::vector<Subject> subjects_;
  int findings_ = 0;
};

bool parse(int count, char** arguments, Options& options) {
  for (int i = 1; i < count; ++i) {
    const std::string_view option = arguments[i];
    const auto number = [&](uint64_t& value) {
      if (++i >= count) return false;
      value = std::strtoull(arguments[i], nullptr, 0);
      return true;
    };
    bool known = true;
    if (option == "--seed") {
      known = number(options.seed);
    } else if (option == "--first") {
      known = number(options.first);
    } else if (option == "--calls") {
      known = number(options.calls);
    } else if (option == "--function" && i + 1 < count) {
      options.functions.emplace_back(arguments[++i]);
    } else if (option == "--progress") {
      options.progress = true;
    } else if (option == "--verbose") {
      options.verbose = true;
    } else if (option == "--coverage") {
      options.coverage = true;
    } else {
      known = false;
    }
    if (!known) return false;
  }
  return true;
}

}  // namespace

}  // namespace dax::hostile

int main(int count, char** arguments) try {
  dax::hostile::Options options;
  if (!dax::hostile::parse(count, arguments, options)) {
    std::fputs(
        "usage: hostile_driver [--seed N] [--first N] [--calls N] [--function NAME | PREFIX*]... "
        "[--progress] [--verbose]\n"
        "       --coverage: at the end, how often each function returned which status, and which checks were "
        "compared\n",
        stderr);
    return 2;
  }
  dax::hostile::watch();
  dax::hostile::silenceLibrary();
  return dax::hostile::Driver(options).run();
} catch (const std::exception& problem) {
  std::fprintf(stderr, "hostile: %s\n", problem.what());
  return 1;
}
