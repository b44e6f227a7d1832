#include "dsp/design/savitzky_golay.hpp"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "dsp/design/tap_runs.hpp"
#include "dsp/filters/filter_design.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kMostPoints = 999;
constexpr std::int32_t kHighestPolynomial = 10;
constexpr std::int32_t kHighestDerivative = 2;

void Check(bool good, const std::string& why) {
  if (!good) {
    throw FilterDesignError(why);
  }
}

double WeightedSum(std::span<const double> weights, const double* window) {
  double sum = 0.0;
  for (const double weight : weights) {
    sum += weight * *window++;
  }
  return sum;
}

// The half windows at both ends, before the samples change.
struct Edges {
  std::vector<double> first;
  std::vector<double> last;
};

Edges EdgesOf(const double* firstWindow, const double* lastWindow, const SavitzkyGolay& filter) {
  const auto half = static_cast<std::size_t>(filter.points / 2);
  Edges edges;
  for (std::size_t k = 0; k < half; ++k) {
    edges.first.push_back(WeightedSum(filter.weights[k], firstWindow));
    edges.last.push_back(WeightedSum(filter.weights[half + 1 + k], lastWindow));
  }
  return edges;
}

std::vector<double> Samples(const ChannelView& x, std::int64_t first, std::int64_t n) {
  std::vector<double> samples(static_cast<std::size_t>(n));
  for (std::int64_t i = 0; i < n; ++i) {
    samples[static_cast<std::size_t>(i)] = x[first + i];
  }
  return samples;
}

}  // namespace

// The polynomial in u from -1 to 1, which keeps the columns apart in size; its coefficients are linear in the
// samples, and so is its value or derivative anywhere.
SavitzkyGolay DesignSavitzkyGolay(std::int32_t points, std::int32_t polynomial, std::int32_t derivative,
                                  double rate) {
  Check(points >= 3 && points <= kMostPoints && points % 2 == 1,
        "The number of points must be odd and from 3 to " + std::to_string(kMostPoints) + ".");
  Check(polynomial >= 0 && polynomial <= std::min(kHighestPolynomial, points - 1),
        "The polynomial must be of a degree below the number of points and at most 10.");
  Check(derivative >= 0 && derivative <= kHighestDerivative, "The derivative must be from 0 to 2.");
  Check(derivative == 0 || (rate > 0 && std::isfinite(rate)), "The sampling rate must be above zero.");
  const double half = (points - 1) / 2.0;
  const Eigen::Index columns = polynomial + 1;
  Eigen::MatrixXd powers(points, columns);
  for (Eigen::Index i = 0; i < points; ++i) {
    const double u = (static_cast<double>(i) - half) / half;
    double power = 1.0;
    for (Eigen::Index j = 0; j < columns; ++j, power *= u) {
      powers(i, j) = power;
    }
  }
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(powers);
  const Eigen::MatrixXd thin = qr.householderQ() * Eigen::MatrixXd::Identity(points, columns);
  const Eigen::MatrixXd upper = qr.matrixQR().topRows(columns).triangularView<Eigen::Upper>();
  SavitzkyGolay filter{.points = points, .polynomial = polynomial, .derivative = derivative, .rate = rate};
  for (std::int32_t place = 0; place < points; ++place) {
    // weights = Q R^-T d, with d the derivative of each power at the place.
    const double u = (place - half) / half;
    Eigen::VectorXd d = Eigen::VectorXd::Zero(columns);
    for (std::int32_t j = derivative; j < columns; ++j) {
      double factor = 1.0;
      for (std::int32_t m = 0; m < derivative; ++m) {
        factor *= j - m;
      }
      d(j) = factor * std::pow(u, j - derivative) * std::pow(derivative > 0 ? rate / half : 1.0, derivative);
    }
    const Eigen::VectorXd w = thin * upper.transpose().triangularView<Eigen::Lower>().solve(d);
    filter.weights.emplace_back(w.begin(), w.end());
  }
  return filter;
}

void RunSavitzkyGolayPlain(std::span<double> x, const SavitzkyGolay& filter) {
  const std::vector<double> samples(x.begin(), x.end());
  const auto points = static_cast<std::size_t>(filter.points);
  const std::size_t half = points / 2;
  const Edges edges = EdgesOf(samples.data(), samples.data() + samples.size() - points, filter);
  std::copy(edges.first.begin(), edges.first.end(), x.begin());
  std::copy(edges.last.begin(), edges.last.end(), x.end() - static_cast<std::ptrdiff_t>(half));
  const std::vector<double> taps(filter.weights[half].rbegin(), filter.weights[half].rend());
  for (std::size_t i = 0; i + points <= samples.size(); ++i) {
    double sum = 0.0;
    for (std::size_t k = 0; k < points; ++k) {
      sum += taps[k] * samples[i + points - 1 - k];
    }
    x[i + half] = sum;
  }
}

void RunSavitzkyGolay(Trial& trial, const ChannelList& channels, const SavitzkyGolay& filter, SimdLevel level,
                      const Turn& turn) {
  const std::int64_t points = filter.points;
  const std::int64_t half = points / 2;
  const std::int64_t n = trial.NData;
  std::vector<Edges> edges;
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    edges.push_back(EdgesOf(Samples(x, 0, points).data(), Samples(x, n - points, points).data(), filter));
  }
  const std::vector<double>& middle = filter.weights[static_cast<std::size_t>(half)];
  RunTaps(trial, channels, {.taps = {middle.rbegin(), middle.rend()}}, RunDirection::ZeroLag, level, turn);
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const ChannelView x = trial.Channel(channels[k]);
    for (std::int64_t i = 0; i < half; ++i) {
      x[i] = static_cast<float>(edges[k].first[static_cast<std::size_t>(i)]);
      x[n - half + i] = static_cast<float>(edges[k].last[static_cast<std::size_t>(i)]);
    }
  }
}

}  // namespace velmora
