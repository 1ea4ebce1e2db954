// Plans that FFTW has measured, on one thread.
#include <fftw3.h>

#include "bench/image/transform/fourier_bench.h"
#include "bench/support/operation.h"

namespace {

bench::Task single(int rank, const int* sides) {
  const auto src = bench::complexNoise<float>(), dst = std::make_shared<std::vector<float>>(src->size());
  const auto kept = std::make_shared<std::vector<float>>(*src);  // measuring overwrites
  auto* const from = reinterpret_cast<fftwf_complex*>(src->data());
  auto* const to = reinterpret_cast<fftwf_complex*>(dst->data());
  const std::shared_ptr<fftwf_plan_s> plan(fftwf_plan_dft(rank, sides, from, to, FFTW_FORWARD, FFTW_MEASURE),
                                           fftwf_destroy_plan);
  *src = *kept;
  return {[=] {
            fftwf_execute(plan.get());
            static_cast<void>(src), static_cast<void>(dst);
          },
          nullptr};
}

bench::Task twice() {
  const auto src = bench::complexNoise<double>(), dst = std::make_shared<std::vector<double>>(src->size());
  const auto kept = std::make_shared<std::vector<double>>(*src);
  const std::shared_ptr<fftw_plan_s> plan(
      fftw_plan_dft_2d(bench::kSquare.height, bench::kSquare.width, reinterpret_cast<fftw_complex*>(src->data()),
                       reinterpret_cast<fftw_complex*>(dst->data()), FFTW_FORWARD, FFTW_MEASURE),
      fftw_destroy_plan);
  *src = *kept;
  return {[=] {
            fftw_execute(plan.get());
            static_cast<void>(src), static_cast<void>(dst);
          },
          nullptr};
}

bench::Task real() {
  const auto src = bench::complexNoise<float>(), dst = std::make_shared<std::vector<float>>(src->size() + 4096);
  const auto kept = std::make_shared<std::vector<float>>(*src);
  const std::shared_ptr<fftwf_plan_s> plan(
      fftwf_plan_dft_r2c_2d(bench::kSquare.height, bench::kSquare.width, src->data(),
                            reinterpret_cast<fftwf_complex*>(dst->data()), FFTW_MEASURE),
      fftwf_destroy_plan);
  *src = *kept;
  return {[=] {
            fftwf_execute(plan.get());
            static_cast<void>(src), static_cast<void>(dst);
          },
          nullptr};
}

const int kSides[] = {bench::kSquare.height, bench::kSquare.width};

const bench::Peer operations[] = {
    {"Fourier, 1024 x 1024 32fc", "FFTW", [] { return single(2, kSides); }},
    {"Fourier, 1024 x 1024 32f", "FFTW", real},
    {"Fourier, 1024 x 1024 64fc", "FFTW", twice},
    {"Fourier, a row of 2^20 32fc", "FFTW", [] { return single(1, &bench::kRow.width); }},
};

}  // namespace
