// The formulas on recordings whose centre of pressure others have published.
#include <gtest/gtest.h>

#include <cmath>

#include "forceplate/amti_reduction.hpp"
#include "forceplate/published_reduction.hpp"
#include "support/number_rows.hpp"
#include "support/recordings.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

using Table = NumberRows;

/// The largest distance between a channel and a column.
double Apart(const Trial& trial, int channel, const Table& rows, std::size_t column) {
  double most = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double d = trial.Data(static_cast<std::int64_t>(i + 1), channel) - rows[i][column];
    most = std::max(most, std::abs(d));
  }
  return most;
}

double Mean(Trial& trial, int channel) {
  double sum = 0;
  for (const float x : Channel(trial, channel)) {
    sum += x;
  }
  return sum / trial.NData;
}

constexpr std::array<float, 6> kNoSensitivities = {1, 1, 1, 1, 1, 1};
constexpr double kPrintedDigits = 2e-6;  // half the last one, and what 32 bits leave of some ten centimetres

// Santos and Duarte 2016, quiet standing: time, forces, moments, published point in cm without the height.
TEST(PublishedRecordingsTest, QuietStandingOnSixChannels) {
  const auto path = Recording("reference/BDS00001.txt");
  if (!path) {
    GTEST_SKIP() << "the recording is not here";
  }
  const Table rows = NumbersOf(*path);
  ASSERT_EQ(rows.size(), 6000U);
  const auto channels = [](double horizontal) {
    return [horizontal](const std::vector<double>& row) {
      Samples samples;
      for (std::size_t k = 1; k <= 6; ++k) {
        samples.push_back(static_cast<float>(row[k] * (k <= 2 ? horizontal : 1.0)));
      }
      return samples;
    };
  };
  Trial trial;
  SetFrom(trial, rows, channels(0));
  ReduceAmtiForces(trial, 0, kNoSensitivities, 25.0F, MomentUnit::NewtonMetres);
  EXPECT_LT(Apart(trial, 4, rows, 7), kPrintedDigits);
  EXPECT_LT(Apart(trial, 5, rows, 8), kPrintedDigits);
  // As published: without the height its digits.
  SetFrom(trial, rows, channels(1));
  ReduceAmtiAsPublished(trial, 0, {.PlateType = 5}, 25.0F);
  EXPECT_LT(Apart(trial, 4, rows, 7), kPrintedDigits);
  EXPECT_LT(Apart(trial, 5, rows, 8), kPrintedDigits);
}

// Eight raw channels in volts; the published means by the maker's formulas.
TEST(PublishedRecordingsTest, EightRawChannels) {
  const auto path = Recording("reference/kistler_fp_data.txt");
  if (!path) {
    GTEST_SKIP() << "the recording is not here";
  }
  const Table rows = NumbersOf(*path);
  ASSERT_EQ(rows.size(), 2000U);
  const auto newtons = [](const std::vector<double>& row) {
    constexpr std::array sensitivities = {38.117, 37.723, 38.062, 38.008, 3.898, 3.889, 3.885, 3.891};
    Samples samples;
    for (std::size_t k = 0; k < sensitivities.size(); ++k) {
      samples.push_back(static_cast<float>(row[k + 1] * 1000 / sensitivities[k]));
    }
    return samples;
  };
  const ForcePlate plate{
      .a = 12, .b = 20, .az0 = -4.8, .XYRange = 1, .ZRange = 1, .XSens = -1, .YSens = -1, .ZSens = -1};
  Trial trial;
  SetFrom(trial, rows, newtons);
  ReduceKistlerAsPublished(trial, 0, plate, 25.0F);
  EXPECT_NEAR(Mean(trial, 1), -3.8271, 5e-5);
  EXPECT_NEAR(Mean(trial, 2), -2.2182, 5e-5);
  EXPECT_NEAR(Mean(trial, 3), 437.1817, 1e-4);
  EXPECT_NEAR(Mean(trial, 4), 1.1903, 5e-5);
  EXPECT_NEAR(Mean(trial, 5), -1.8070, 5e-5);
}

}  // namespace
}  // namespace velmora::test
