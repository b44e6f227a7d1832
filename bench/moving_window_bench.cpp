// Moving windows of 201 samples on 64 channels. Every form is held against the plain loop of the same run
// and the sums against the additions alone, in registers; the median against a sorted window that is kept
// up to date with a vector's own insert and erase.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "bench_support.hpp"
#include "dsp/smoothing/moving_window.hpp"

namespace velmora {
namespace {

constexpr int kChannels = 64;
constexpr std::int64_t kSamples = 100'000;
constexpr std::int32_t kWidth = 201;

Trial& FreshTrial() {
  static Trial trial = [] {
    Trial made;
    made.Rate = 1000.0;
    made.AllocateData(kChannels, kSamples);
    return made;
  }();
  static std::mt19937 random(1);
  float* x = trial.matrix.Frame(1);
  for (std::int64_t k = 0; k < trial.matrix.Stride() * kSamples; ++k) {
    x[k] = static_cast<float>(random()) / 0x1p31F - 1.0F;
  }
  return trial;
}

template <typename Operation>
void Measure(benchmark::State& state, const Operation& operation) {
  for (auto _ : state) {
    state.PauseTiming();
    Trial& trial = FreshTrial();
    state.ResumeTiming();
    operation(trial);
    benchmark::ClobberMemory();
  }
}

template <void (*plain)(Trial&, const ChannelList&, std::int32_t)>
void Plain(benchmark::State& state) {
  const ChannelList channels = ChannelsTo(static_cast<int>(state.range(0)));
  Measure(state, [&](Trial& trial) { plain(trial, channels, kWidth); });
}

void Median(Trial& trial, const ChannelList& channels, std::int32_t width) {
  MovingMedian(trial, channels, width);
}

template <void (*fast)(Trial&, const ChannelList&, std::int32_t, SimdLevel, const Turn&)>
void Fast(benchmark::State& state) {
  const ChannelList channels = ChannelsTo(static_cast<int>(state.range(0)));
  const auto level = static_cast<SimdLevel>(state.range(1));
  if (level > MachineSimdLevel()) {
    state.SkipWithError("not on this machine");
    return;
  }
  Measure(state, [&](Trial& trial) { fast(trial, channels, kWidth, level, {}); });
}

// Two vectors of eight additions each, nothing loaded or stored: what the machine can add, in 16-byte
// vectors; a level twice as wide adds twice as much.
void AdditionsAlone(benchmark::State& state) {
  using Two = double __attribute__((vector_size(16)));
  const std::int64_t additions = kChannels / 2 * (kSamples - kWidth) * kWidth;
  for (auto _ : state) {
    Two a{}, b{}, c{}, d{}, e{}, f{}, g{}, h{};
    Two one{1.0, 1.0};
    for (std::int64_t k = 0; k < additions; k += 8) {
      asm volatile("" : "+x"(one));
      a += one, b += one, c += one, d += one, e += one, f += one, g += one, h += one;
    }
    Two sum = a + b + c + d + e + f + g + h;
    benchmark::DoNotOptimize(sum);
  }
}

void SortedByHand(std::vector<float>& x, std::size_t width, std::size_t centre) {
  std::vector<float> window(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(width));
  std::sort(window.begin(), window.end());
  const auto replace = [&window](float old, float fresh) {
    window.erase(std::lower_bound(window.begin(), window.end(), old));
    window.insert(std::lower_bound(window.begin(), window.end(), fresh), fresh);
  };
  for (std::size_t i = 0; i < x.size() - width; ++i) {
    const float median = window[centre];
    replace(x[i + centre], median);
    x[i + centre] = median;
    replace(x[i], x[i + width]);
  }
}

void MedianSortedWindow(benchmark::State& state) {
  Measure(state, [&](Trial& trial) {
    for (int c = 1; c <= state.range(0); ++c) {
      const ChannelView view = trial.Channel(c);
      std::vector<float> x;
      for (std::int64_t i = 0; i < view.size(); ++i) {
        x.push_back(view[i]);
      }
      SortedByHand(x, kWidth, static_cast<std::size_t>(WindowCentre(kWidth)));
      for (std::int64_t i = 0; i < view.size(); ++i) {
        view[i] = x[static_cast<std::size_t>(i)];
      }
    }
  });
}

void Widths(benchmark::internal::Benchmark* b) {
  for (const int channels : {kChannels, 1}) {
    for (int level = 0; level < 3; ++level) {
      b->Args({channels, level});
    }
  }
  b->Unit(benchmark::kMillisecond);
}

BENCHMARK(AdditionsAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(Plain<MovingAveragePlain>)->Name("AveragePlain")->Arg(64)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Fast<MovingAverage>)->Name("Average")->Apply(Widths);
BENCHMARK(Plain<MovingRmsPlain>)->Name("RmsPlain")->Arg(64)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Fast<MovingRms>)->Name("Rms")->Apply(Widths);
BENCHMARK(Plain<MovingMeanAbsolutePlain>)
    ->Name("MeanAbsolutePlain")
    ->Arg(64)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Fast<MovingMeanAbsolute>)->Name("MeanAbsolute")->Apply(Widths);
BENCHMARK(MedianSortedWindow)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(Plain<Median>)->Name("Median")->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(Plain<MovingMedianPlain>)->Name("MedianPlain")->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora
