#include "options.h"

#include <getopt.h>

#include <cstdio>
#include <cstdlib>

namespace live {

namespace {

constexpr const char* kUsage =
    "usage: inspect_camera [option...]\n"
    "Inspects the frames of a GenICam camera until it is interrupted, and writes the last report.\n\n"
    "  --camera NAME   name or address of the camera [the first one found]\n"
    "  --fake          a simulated camera inside this program\n"
    "  --fps F         frames per second [the camera's own]\n"
    "  --frames N      end after N frames\n"
    "  --area N        minimum area of an object, pixels [20]\n"
    "  --count N       maximum number of objects in a frame, 1..20000 [1000]\n"
    "  --queue N       frames that may wait for their inspection, 1..256; more are dropped [8]\n"
    "  --threads N     threads of the pool, 0: one per processor [0]\n"
    "  --silence S     seconds without a frame after which the camera is taken for lost [2]\n"
    "  --report FILE   where the last report goes [camera-report.json]\n\n"
    "Exit status: 0 done or interrupted, 1 failure, 2 wrong command line, 3 no camera at the start\n";

[[noreturn]] void refuse(const std::string& why) {
  std::fprintf(stderr, "inspect_camera: %s\n%s", why.c_str(), kUsage);
  std::exit(2);
}

double number(const char* option, double min, double max) {
  char* end = nullptr;
  const double value = std::strtod(optarg, &end);
  if (end == optarg || *end != '\0' || !(value >= min && value <= max)) {
    refuse(std::string("--") + option + " " + optarg + ": not a number in range");
  }
  return value;
}

}  // namespace

Options parseOptions(int argc, char** argv) {
  enum { kCamera = 256, kFake, kFps, kFrames, kArea, kCount, kQueue, kThreads, kSilence, kReport, kHelp };
  const option known[] = {{"camera", required_argument, nullptr, kCamera},
                          {"fake", no_argument, nullptr, kFake},
                          {"fps", required_argument, nullptr, kFps},
                          {"frames", required_argument, nullptr, kFrames},
                          {"area", required_argument, nullptr, kArea},
                          {"count", required_argument, nullptr, kCount},
                          {"queue", required_argument, nullptr, kQueue},
                          {"threads", required_argument, nullptr, kThreads},
                          {"silence", required_argument, nullptr, kSilence},
                          {"report", required_argument, nullptr, kReport},
                          {"help", no_argument, nullptr, kHelp},
                          {nullptr, 0, nullptr, 0}};
  Options options;
  opterr = 0;
  for (int code; (code = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
    switch (code) {
      case kCamera:
        options.camera = optarg;
        break;
      case kFake:
        options.fake = true;
        break;
      case kFps:
        options.framesPerSecond = number("fps", 0.1, 10000);
        break;
      case kFrames:
        options.frames = static_cast<uint64_t>(number("frames", 1, 1e15));
        break;
      case kArea:
        options.minArea = static_cast<float>(number("area", 0, 1e9));
        break;
      case kCount:
        options.maxCount = static_cast<int32_t>(number("count", 1, 20000));
        break;
      case kQueue:
        options.queue = static_cast<int>(number("queue", 1, 256));
        break;
      case kThreads:
        options.threads = static_cast<uint32_t>(number("threads", 0, 1024));
        break;
      case kSilence:
        options.silence = number("silence", 0.1, 3600);
        break;
      case kReport:
        options.report = optarg;
        break;
      case kHelp:
        std::fputs(kUsage, stdout);
        std::exit(0);
      default:
        refuse(std::string("unknown option, or one without its value: ") + argv[optind - 1]);
    }
  }
  if (optind < argc) refuse(std::string("not an option: ") + argv[optind]);
  if (options.fake && options.camera.empty()) options.camera = "Fake_1";
  return options;
}

}  // namespace live
