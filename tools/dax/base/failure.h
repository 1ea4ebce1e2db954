// Failures of the program: a one-line message and an exit status.
#pragma once

#include <stdexcept>
#include <string>

namespace dax::tool {

enum class ExitStatus {
  kOk = 0,
  kSomeFailed = 1,   // of several images
  kUsage = 2,        // command line
  kCannotRead = 3,   // missing, unreadable, damaged or not an image
  kCannotWrite = 4,  // an output
  kRefused = 5,      // by the library
  kTruthFailed = 6,  // the measurements disagree with the truth
  kInternal = 7,     // out of memory and the like
  kNotFound = 8,     // what was sought is not in the image
};

inline constexpr const char* kExitStatusHelp =
    "Exit status:\n"
    "  0  success\n"
    "  1  some of several images failed; the others are done\n"
    "  2  the command line is wrong\n"
    "  3  an input is missing, unreadable, damaged or no image\n"
    "  4  an output cannot be written\n"
    "  5  the library refused an image or a parameter\n"
    "  6  the measurements disagree with --truth\n"
    "  7  out of memory, or another failure of the system\n"
    "  8  not found: no edge or pair in a caliper, no line, no board, not the number\n"
    "     of objects of --expect; or images differ more than they may; results are\n"
    "     written all the same";

class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), status_(status) {}
  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace dax::tool
