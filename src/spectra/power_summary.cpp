#include "spectra/power_summary.hpp"

#include <cmath>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

std::size_t Subscript(std::int32_t k) {
  return static_cast<std::size_t>(k);
}

// The first line whose cumulated power exceeds the level; 0 when none does.
std::int32_t Crossing(const std::vector<double>& cumulated, double level) {
  for (std::size_t k = 1; k < cumulated.size(); ++k) {
    if (cumulated[k] > level) {
      return static_cast<std::int32_t>(k);
    }
  }
  return 0;
}

// How far into its line, as a part of it, the level lies.
double Fraction(const std::vector<double>& cumulated, std::int32_t k, double level) {
  if (k == 1) {
    return level / cumulated[1];
  }
  const double before = cumulated[Subscript(k - 1)];
  return (level - before) / (cumulated[Subscript(k)] - before);
}

double Percentile(const std::vector<double>& cumulated, std::int32_t k, double level, double step) {
  if (k == 0) {
    return 0.0;
  }
  const double fraction = Fraction(cumulated, k, level);
  return k == 1 ? fraction : (k - 1) * step + fraction;
}

// Returns the mean frequency. Both sums run in one loop: neither waits for the other's additions.
double Scale(SpectrumMemory& spectrum, std::int32_t last, double step, double most, PowerSum kept) {
  const double perMost = 100.0 / most;
  const double perTotal = 100.0 / spectrum.PowerCum[Subscript(last)];
  double sum = 0.0;
  float inSingles = 0.0F;
  double weighted = 0.0;
  for (std::int32_t k = 1; k <= last; ++k) {
    const std::size_t at = Subscript(k);
    const double power = spectrum.PowerNorm[at];
    spectrum.PowerRel[at] = power * perTotal;
    spectrum.PowerNorm[at] = power * perMost;
    spectrum.PowerCum[at] *= perTotal;
    sum += spectrum.PowerNorm[at];
    inSingles = static_cast<float>(inSingles + spectrum.PowerNorm[at]);
    weighted += step * (k * spectrum.PowerNorm[at]);
    spectrum.PowerAbs[at] = spectrum.PowerNorm[at] / perMost;
    spectrum.PowerAbsCum[at] =
        k == 1 ? spectrum.PowerAbs[at] : spectrum.PowerAbs[at] + spectrum.PowerAbsCum[at - 1];
  }
  const double divisor = kept == PowerSum::Single ? double{inSingles} : sum;
  return divisor != 0.0 ? weighted / divisor : 0.0;
}

}  // namespace

void KeepFrequencies(SpectrumMemory& spectrum, const FourFrequencies& frequencies) {
  spectrum.MedianFreq = frequencies.median;
  spectrum.MeanFreq = frequencies.mean;
  spectrum.Percentile95Freq = frequencies.p95;
  spectrum.Percentile99Freq = frequencies.p99;
  spectrum.FrequenciesMade = true;
}

FourFrequencies KeptFrequencies(const SpectrumMemory& spectrum) {
  return {spectrum.MedianFreq, spectrum.MeanFreq, spectrum.Percentile95Freq, spectrum.Percentile99Freq};
}

void ClearPowers(SpectrumMemory& spectrum, std::int32_t last) {
  for (std::vector<double>* list : {&spectrum.PowerNorm, &spectrum.PowerCum, &spectrum.PowerRel,
                                    &spectrum.PowerAbs, &spectrum.PowerAbsCum}) {
    list->assign(Subscript(last) + 1, 0.0);
  }
}

bool SummarisePowers(SpectrumMemory& spectrum, std::int32_t last, double step, PowerSum sum,
                     FourFrequencies& frequencies) {
  double total = 0.0;
  double most = 0.0;
  for (std::int32_t k = 1; k <= last; ++k) {
    const double power = spectrum.PowerNorm[Subscript(k)];
    total += power;
    spectrum.PowerCum[Subscript(k)] = total;
    most = power > most ? power : most;
  }
  // So small that its reciprocal overflows counts as nothing, too.
  if (!(most > 0.0) || !std::isfinite(total) || !std::isfinite(100.0 / most)) {
    ClearPowers(spectrum, last);
    frequencies = {};
    return false;
  }
  frequencies.mean = Scale(spectrum, last, step, most, sum);
  const std::vector<double>& cumulated = spectrum.PowerCum;
  const std::int32_t middle = Crossing(cumulated, 50.0);
  const std::int32_t upper = Crossing(cumulated, 95.0);
  frequencies.median = Percentile(cumulated, middle, 50.0, step);
  frequencies.p95 = Percentile(cumulated, upper, 95.0, step);
  frequencies.p99 = Percentile(cumulated, upper, 99.0, step);
  return true;
}

FourFrequencies ExactFrequencies(const SpectrumMemory& spectrum, double step) {
  const std::vector<double>& cumulated = spectrum.PowerCum;
  const auto exact = [&](double level) {
    const std::int32_t k = Crossing(cumulated, level);
    return k == 0 ? 0.0 : (k - 1 + Fraction(cumulated, k, level)) * step;
  };
  double sum = 0.0;
  double weighted = 0.0;
  for (std::size_t k = 1; k < spectrum.PowerNorm.size(); ++k) {
    sum += spectrum.PowerNorm[k];
    weighted += step * (static_cast<double>(k) * spectrum.PowerNorm[k]);
  }
  return {exact(50.0), sum != 0.0 ? weighted / sum : 0.0, exact(95.0), exact(99.0)};
}

FourFrequencies InSingles(const FourFrequencies& frequencies) {
  const auto single = [](double value) { return static_cast<double>(static_cast<float>(value)); };
  return {single(frequencies.median), single(frequencies.mean), single(frequencies.p95),
          single(frequencies.p99)};
}

std::string SpectrumReport(int channel, std::string_view label, const FourFrequencies& frequencies) {
  std::string text = "Channel: " + FormatNumber(channel - 1, "(0)") + std::string(label) + "\n\n";
  const auto line = [&](const char* name, double frequency) {
    text += name + FormatNumber(frequency, "0.000 Hz") + "\n";
  };
  line(" Median frequency is ", frequencies.median);
  line(" Mean  frequency  is ", frequencies.mean);
  line(" 95th percentile  is ", frequencies.p95);
  line(" 99th percentile  is ", frequencies.p99);
  return text;
}

}  // namespace velmora
