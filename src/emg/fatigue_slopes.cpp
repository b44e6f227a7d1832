#include "emg/fatigue_slopes.hpp"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <limits>

namespace velmora {
namespace {

double MedianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) {
    return *middle;
  }
  return (*std::max_element(values.begin(), middle) + *middle) / 2;
}

double TheilSen(const std::vector<double>& time, const std::vector<double>& value) {
  std::vector<double> slopes;
  slopes.reserve(time.size() * (time.size() - 1) / 2);
  for (std::size_t i = 0; i < time.size(); ++i) {
    for (std::size_t j = i + 1; j < time.size(); ++j) {
      if (time[j] != time[i]) {
        slopes.push_back((value[j] - value[i]) / (time[j] - time[i]));
      }
    }
  }
  return MedianOf(slopes);
}

double Mean(const std::vector<double>& of) {
  double sum = 0.0;
  for (const double value : of) {
    sum += value;
  }
  return sum / static_cast<double>(of.size());
}

struct Sums {
  double xx = 0.0;
  double xy = 0.0;
  double yy = 0.0;
};

Sums CentredSums(const std::vector<double>& x, double meanX, const std::vector<double>& y, double meanY) {
  Sums sums;
  for (std::size_t k = 0; k < x.size(); ++k) {
    sums.xx += (x[k] - meanX) * (x[k] - meanX);
    sums.xy += (x[k] - meanX) * (y[k] - meanY);
    sums.yy += (y[k] - meanY) * (y[k] - meanY);
  }
  return sums;
}

void AddLimits(TimeSlope& slope, const Sums& sums) {
  if (slope.n < 3) {
    return;
  }
  const double free = static_cast<double>(slope.n) - 2;
  const double residual = std::max(sums.yy - slope.slope * sums.xy, 0.0);
  const double error = std::sqrt(residual / free / sums.xx);
  const double t = boost::math::quantile(boost::math::students_t(free), 0.975);
  slope.low = slope.slope - t * error;
  slope.high = slope.slope + t * error;
}

}  // namespace

double ExactMedianFrequency(std::span<const double> power, double fundamental) {
  double total = 0.0;
  for (std::size_t k = 1; k < power.size(); ++k) {
    total += power[k];
  }
  const double half = total / 2;
  double before = 0.0;
  for (std::size_t k = 1; k < power.size() && half > 0; ++k) {
    if (before + power[k] >= half) {
      return fundamental * (static_cast<double>(k) - 1 + (half - before) / power[k]);
    }
    before += power[k];
  }
  return std::numeric_limits<double>::quiet_NaN();
}

std::optional<TimeSlope> SlopeOver(std::span<const double> time, std::span<const double> value) {
  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t k = 0; k < time.size(); ++k) {
    if (std::isfinite(value[k])) {
      x.push_back(time[k]);
      y.push_back(value[k]);
    }
  }
  if (x.size() < 2) {
    return std::nullopt;
  }
  const double meanX = Mean(x);
  const double meanY = Mean(y);
  const Sums sums = CentredSums(x, meanX, y, meanY);
  if (!(sums.xx > 0)) {
    return std::nullopt;
  }
  TimeSlope slope{.slope = sums.xy / sums.xx, .n = x.size()};
  slope.initial = meanY - slope.slope * meanX;
  if (sums.yy > 0) {
    slope.r2 = sums.xy * sums.xy / (sums.xx * sums.yy);
  }
  AddLimits(slope, sums);
  slope.theilSen = TheilSen(x, y);
  return slope;
}

double MiddleOf(const FatigueRow& row, const FatigueRow& first) {
  return (row.from + row.to) / 2 - first.from;
}

std::vector<FatigueSlope> FatigueSlopes(std::span<const FatigueRow> rows) {
  struct Quantity {
    const char* name;
    double FatigueRow::*value;
    bool ofSpectrum;  // reads 0 in an interval without one, which is no frequency
  };
  constexpr Quantity quantities[] = {{"Median freq.", &FatigueRow::median, true},
                                     {"Mean freq.", &FatigueRow::mean, true},
                                     {"Median freq. (exact)", &FatigueRow::exactMedian, true},
                                     {"RMS", &FatigueRow::rms, false}};
  std::vector<double> time;
  for (const FatigueRow& row : rows) {
    time.push_back(MiddleOf(row, rows.front()));
  }
  std::vector<FatigueSlope> slopes;
  for (const Quantity& quantity : quantities) {
    std::vector<double> value;
    for (const FatigueRow& row : rows) {
      const bool lacks = quantity.ofSpectrum && !std::isfinite(row.exactMedian);
      value.push_back(lacks ? std::numeric_limits<double>::quiet_NaN() : row.*quantity.value);
    }
    slopes.push_back({quantity.name, SlopeOver(time, value)});
  }
  return slopes;
}

ResultTable FatigueSlopeTable(const Workbench& workbench, std::span<const FatigueRow> rows) {
  constexpr double perMinute = 60;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format slopeFormat = ThroughPattern("0.000");
  ResultTable table{.name = "frmFatigueSlope",
                    .title = "Slopes over the middle times of the intervals (least squares)",
                    .columns = {"Measure", "Initial", "Slope (/min)", "95% low", "95% high", "Slope (%/min)",
                                "R squared", "Theil-Sen (/min)", "n"},
                    .formats = {nullptr, value, slopeFormat, slopeFormat, slopeFormat, slopeFormat,
                                slopeFormat, slopeFormat, ThroughPattern("0")}};
  for (const FatigueSlope& of : FatigueSlopes(rows)) {
    std::vector<ResultTable::Cell> row = {of.name};
    if (const auto& slope = of.slope) {
      const auto scaled = [](const std::optional<double>& limit) {
        return limit ? CellOf(*limit * perMinute) : ResultTable::Cell(std::monostate());
      };
      row.insert(row.end(), {slope->initial, slope->slope * perMinute, scaled(slope->low),
                             scaled(slope->high), CellOf(100 * slope->slope * perMinute / slope->initial),
                             CellOf(slope->r2), slope->theilSen * perMinute, static_cast<double>(slope->n)});
    } else {
      row.insert(row.end(), 8, std::monostate());
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

}  // namespace velmora
