#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/questions/long_work.hpp"

namespace velmora {

/// One coefficient of a straight-line model and how certain it is.
struct Coefficient {
  double value = 0.0;
  std::optional<double> error{};  // standard error; what follows is none where that is 0 or unknown
  std::optional<double> t{};
  std::optional<double> probability{};  // two-sided
  std::optional<double> low{};          // of 95 %
  std::optional<double> high{};
};

/// y as a sum of columns, by least squares.
struct Regression {
  std::optional<Coefficient> intercept{};
  std::vector<Coefficient> slopes{};  // one a column
  std::int64_t count = 0;
  std::optional<double> r2{};  // 1 - SSE / sum (y - mean)^2; without intercept 1 - SSE / sum y^2
  std::optional<double> adjustedR2{};
  double estimateError = 0.0;  // sqrt(SSE / (n - k))
  std::optional<double> f{};
  std::optional<double> probability{};  // of F
  double sse = 0.0;
};

enum class RegressionTrouble { None, TooFewData, Dependent, Cancelled };

/// `columns` are the independent variables, all as long as `y` and all numbers. By QR (Householder) of
/// columns that are centred (with an intercept) and scaled to length 1, some rows at a time: Golub and Van
/// Loan, 5.2 and 5.3. Columns depend on each other when what is left of one after the others is below 1e-7 of
/// its length, the rounding of 32-bit samples. Cancelled when `goesOn` ends it.
RegressionTrouble FitRegression(std::span<const std::vector<double>> columns, const std::vector<double>& y,
                                bool withIntercept, Regression& fit, const GoesOn& goesOn = {});

/// How two measurements of the same agree (Bland and Altman 1986, Lancet 327, 307); `y` less `x`.
struct Agreement {
  double bias = 0.0;
  double deviation = 0.0;  // with n-1
  double rms = 0.0;

  [[nodiscard]] double LowerLimit() const { return bias - 1.96 * deviation; }
  [[nodiscard]] double UpperLimit() const { return bias + 1.96 * deviation; }
};
/// At least two values each.
Agreement AgreementOf(const std::vector<double>& x, const std::vector<double>& y);

}  // namespace velmora
