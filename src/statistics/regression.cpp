#include "statistics/regression.hpp"

#include <Eigen/Dense>
#include <algorithm>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <functional>

#include "dsp/math/mean_deviation.hpp"

namespace velmora {
namespace {

using Matrix = Eigen::MatrixXd;
using Vector = Eigen::VectorXd;

constexpr double kDependent = 1e-7;

/// Columns as they are fitted: less their mean where there is an intercept, scaled to length 1. The last is
/// y, which is not scaled.
struct Scaled {
  std::vector<double> mean;
  std::vector<double> length;
};

Scaled ScaleOf(std::span<const std::vector<double>> columns, const std::vector<double>& y, bool centred) {
  Scaled of;
  const auto add = [&](const std::vector<double>& column) {
    const double mean = centred ? MeanOf(column) : 0.0;
    double squares = 0.0;
    for (const double x : column) {
      squares += (x - mean) * (x - mean);
    }
    of.mean.push_back(mean);
    of.length.push_back(std::sqrt(squares));
  };
  for (const std::vector<double>& column : columns) {
    add(column);
  }
  add(y);
  return of;
}

// The triangle R of [X y]: that of some rows takes the next rows below it, so that the whole is never in
// memory. Empty when it was cancelled.
Matrix TriangleOf(std::span<const std::vector<double>> columns, const std::vector<double>& y,
                  const Scaled& scaled, const GoesOn& goesOn) {
  constexpr std::size_t kRows = 1024;
  const auto width = static_cast<Eigen::Index>(columns.size() + 1);
  Matrix triangle = Matrix::Zero(width, width);
  for (std::size_t first = 0; first < y.size(); first += kRows) {
    if (!Goes(goesOn, static_cast<double>(first) / static_cast<double>(y.size()))) {
      return {};
    }
    const auto rows = static_cast<Eigen::Index>(std::min(kRows, y.size() - first));
    Matrix block(width + rows, width);
    block.topRows(width) = triangle;
    for (Eigen::Index k = 0; k < width; ++k) {
      const auto column = static_cast<std::size_t>(k);
      const std::vector<double>& values = column < columns.size() ? columns[column] : y;
      const double scale = column < columns.size() ? scaled.length[column] : 1.0;
      for (Eigen::Index i = 0; i < rows; ++i) {
        block(width + i, k) = (values[first + static_cast<std::size_t>(i)] - scaled.mean[column]) / scale;
      }
    }
    const Eigen::HouseholderQR<Matrix> qr(block);
    triangle = qr.matrixQR().topRows(width).triangularView<Eigen::Upper>();
  }
  return triangle;
}

Coefficient Judged(double value, double error, double freedom) {
  Coefficient of{.value = value};
  if (!(freedom > 0) || !std::isfinite(error)) {
    return of;
  }
  const boost::math::students_t student(freedom);
  const double reach = boost::math::quantile(boost::math::complement(student, 0.025));
  of.error = error;
  of.low = value - reach * error;
  of.high = value + reach * error;
  if (error > 0) {
    of.t = value / error;
    of.probability = 2 * boost::math::cdf(boost::math::complement(student, std::fabs(*of.t)));
  }
  return of;
}

// How much of the variation is explained, and whether that may be chance. `total` is the variation of y, `m`
// the number of columns.
void JudgeFit(Regression& fit, double total, double m, double freedom) {
  if (!(total > 0)) {
    return;
  }
  fit.r2 = 1 - fit.sse / total;
  const double whole = freedom + m;  // degrees of freedom of `total`
  fit.adjustedR2 = 1 - (fit.sse / freedom) / (total / whole);
  if (fit.sse > 0) {
    fit.f = std::max(total - fit.sse, 0.0) / m / (fit.sse / freedom);
    fit.probability = boost::math::cdf(boost::math::complement(boost::math::fisher_f(m, freedom), *fit.f));
  }
}

}  // namespace

RegressionTrouble FitRegression(std::span<const std::vector<double>> columns, const std::vector<double>& y,
                                bool withIntercept, Regression& fit, const GoesOn& goesOn) {
  const std::size_t m = columns.size();
  const std::size_t k = m + (withIntercept ? 1 : 0);
  if (y.size() <= k) {
    return RegressionTrouble::TooFewData;
  }
  const Scaled scaled = ScaleOf(columns, y, withIntercept);
  if (std::any_of(scaled.length.begin(), scaled.length.end() - 1,
                  [](double length) { return !(length > 0); })) {
    return RegressionTrouble::Dependent;
  }
  const Matrix triangle = TriangleOf(columns, y, scaled, goesOn);
  if (triangle.size() == 0) {
    return RegressionTrouble::Cancelled;
  }
  const auto size = static_cast<Eigen::Index>(m);
  if (triangle.diagonal().head(size).cwiseAbs().minCoeff() < kDependent) {
    return RegressionTrouble::Dependent;
  }
  const auto r = triangle.topLeftCorner(size, size).triangularView<Eigen::Upper>();
  const Vector slopes = r.solve(triangle.col(size).head(size));
  const Matrix inverse = r.solve(Matrix::Identity(size, size));
  const double left = triangle(size, size);
  const double freedom = static_cast<double>(y.size() - k);
  fit = {.count = static_cast<std::int64_t>(y.size()), .sse = left * left};
  const double variance = fit.sse / freedom;
  fit.estimateError = std::sqrt(variance);
  double intercept = scaled.mean.back();
  Vector meansScaled(size);
  for (std::size_t j = 0; j < m; ++j) {
    const auto index = static_cast<Eigen::Index>(j);
    const double slope = slopes(index) / scaled.length[j];
    const double error = std::sqrt(variance * inverse.row(index).squaredNorm()) / scaled.length[j];
    fit.slopes.push_back(Judged(slope, error, freedom));
    intercept -= slope * scaled.mean[j];
    meansScaled(index) = scaled.mean[j] / scaled.length[j];
  }
  if (withIntercept) {
    const double spread = (inverse.transpose() * meansScaled).squaredNorm();
    const double error = std::sqrt(variance * (1.0 / static_cast<double>(y.size()) + spread));
    fit.intercept = Judged(intercept, error, freedom);
  }
  JudgeFit(fit, scaled.length.back() * scaled.length.back(), static_cast<double>(m), freedom);
  return RegressionTrouble::None;
}

Agreement AgreementOf(const std::vector<double>& x, const std::vector<double>& y) {
  std::vector<double> differences(x.size());
  std::transform(y.begin(), y.end(), x.begin(), differences.begin(), std::minus<>());
  double squares = 0.0;
  for (const double difference : differences) {
    squares += difference * difference;
  }
  const MeanDeviation of = MeanDeviationOf(differences);
  return {.bias = of.mean,
          .deviation = of.deviation,
          .rms = std::sqrt(squares / static_cast<double>(differences.size()))};
}

}  // namespace velmora
