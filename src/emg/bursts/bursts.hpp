#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {

/// How the signal in which bursts are looked for is made of a channel.
struct EnvelopeRule {
  bool teagerKaiser = false;  // the energy operator first (Solnik 2010)
  bool rectify = true;
  double cutoff = 20.0;  // Hz of a zero-lag second-order Butterworth low-pass, kept over both runs; 0: none
};

/// A 64-bit copy of the range, made so. With the energy operator at least 3 samples. Throws
/// FilterDesignError.
std::vector<double> EnvelopeOf(const Trial& trial, int channel, SampleRange range, const EnvelopeRule& rule);

/// Where the first window of `width` samples with the smallest sum begins, from 0.
std::size_t QuietestStretch(std::span<const double> signal, std::size_t width);

/// Two thresholds in level and in time. (Hodges and Bui 1996; Bonato 1998 for the second.)
struct BurstRule {
  double threshold = 0.0;
  std::int64_t shortest = 1;       // samples of a burst
  std::int64_t longestGap = 0;     // samples below the threshold that do not end it
  std::optional<double> second{};  // a burst must reach this one
  std::int64_t secondSamples = 1;  // in so many samples
};

/// From sample to sample, both inclusive, from 0.
struct SignalBurst {
  std::int64_t on = 0;
  std::int64_t off = 0;

  friend bool operator==(const SignalBurst&, const SignalBurst&) = default;
};

/// Runs of samples at or above the threshold; runs a short gap apart are one, and then runs too short, or
/// that do not reach the second threshold, are none.
std::vector<SignalBurst> FindSignalBursts(std::span<const double> signal, const BurstRule& rule);

/// Two envelopes at work against each other; nothing where there is nothing to divide by.
struct CoContraction {
  std::optional<double> falconerWinter;  // % of both that they have in common (Falconer and Winter 1985)
  double rudolph = 0.0;                  // mean of low/high (low + high), in their units (Rudolph 2000)
  double unnithan = 0.0;                 // area in common, in their units times seconds (Unnithan 1996)
  double meanAgonist = 0.0;
  double meanAntagonist = 0.0;
  std::int64_t negative = 0;  // samples below 0, which counted as 0
};
CoContraction CoContractionOf(const Trial& trial, int agonist, int antagonist, SampleRange range);

/// Rudolph's term of one sample: low/high (low + high), 0 where high is 0; values below 0 count as 0.
/// NaN where either is no number.
double RudolphTerm(double a, double b);

}  // namespace velmora
