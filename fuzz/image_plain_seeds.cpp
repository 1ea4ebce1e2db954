#include "fuzz/image_samples.h"
#include "fuzz/seeds.h"

namespace dax::fuzz {

std::vector<Seed> seeds() {
  std::vector<Seed> all;
  for (const auto& samples : {bmpSamples(), pnmSamples(), pfmSamples()}) {
    for (const ImageSample& sample : samples) {
      if (sample.file.size() < 400) all.push_back({sample.name, sample.file});
    }
  }
  return all;
}

}  // namespace dax::fuzz
