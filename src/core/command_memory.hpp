#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/questions/result_table.hpp"
#include "core/trial/trial.hpp"

// What outlives a command, a struct a family. A new family adds its struct here and one member to the
// workbench. Values that are offered again stand with the file of the trial that they were entered for
// (...Of): whoever sees them with another trial is told.
namespace velmora {

struct FilterMemory {
  ChannelFlags ZeroLag{};                   // of the last filter dialogue
  PerChannel<float> FilterCutoffs{};        // Hz, in force
  PerChannel<float> SecondCutoffs{};        // Hz, the upper edge of a band
  PerChannel<float> LastLowPassCutoffs{};   // Hz
  PerChannel<float> LastHighPassCutoffs{};  // Hz
  std::string CutoffsOf;
  std::string LastLowPassOf;
  std::string LastHighPassOf;
};

struct SmoothingMemory {
  std::int16_t WindowWidth = 3;  // samples; of moving windows and epochs
  bool WindowInSeconds = false;  // the width was entered in seconds
};

struct ScalingMemory {
  PerChannel<float> ScaleMemory{};
  std::string ScaleMemoryOf;
};

struct BiasLevels {
  PerChannel<float> BiasMemory{};  // levels, or slopes, of the last bias removal
  bool BiasLevelsKnown = false;    // a menu offers to save them
  std::string BiasMemoryOf;
};

/// What the abscissa of the trial counts.
enum class TimeBase { Count, Percentage, Seconds, UserUnits, Frames, HhMmSs };

struct TimeMemory {
  TimeBase Base = TimeBase::Seconds;
  double SecondsRate = 0.0;      // Rate and Duration while the base was last seconds;
  double SecondsDuration = 0.0;  // 0 when that is not known of this trial
  bool TimeReversed = false;     // the check mark of the reversal
};

/// Of the channels, as the last statistics or baseline took them; who comes last writes.
struct ThresholdMemory {
  PerChannel<double> ChanMean{};
  PerChannel<double> ChanSD{};
  PerChannel<double> ChanThreshold{};
  float SDMultiplier = 2.0F;  // standard deviations that a threshold lies above the mean
  bool ThresholdsValid = false;
  bool BaselineTaken = false;  // mean and deviation are those of a region chosen for thresholds
  std::string ThresholdsOf;
};

/// Where an event begins and ends in a channel, in seconds from the first sample.
struct EventTimes {
  static constexpr double kNone = -1.0;
  double on = kNone;
  double off = kNone;

  friend bool operator==(const EventTimes&, const EventTimes&) = default;
};
using EventRecord = PerChannel<EventTimes>;  // index 0 is not used

/// The table of events. It outlives the graph in which it is filled and ends with the trial.
struct EventMemory {
  std::vector<EventRecord> ChannelEvents;  // record 1 first
  std::int32_t CurrentEvent = 0;           // the record that new times go to, from 1; 0: there is no table
  bool EventTracking = false;
  bool EventAmplitudes = false;  // a save writes amplitudes too
  bool EventsUnsaved = false;

  [[nodiscard]] std::int32_t NEvents() const { return static_cast<std::int32_t>(ChannelEvents.size()); }
};

/// The spectrum that was computed last: lists by harmonic, from subscript 0 to NHarm (of the FFT view to
/// half its length). Each stays until an analysis that makes it runs again.
struct SpectrumMemory {
  std::int16_t WindowType = 0;  // a row of the table of windows; others act as 0
  std::int32_t NHarm = 0;
  std::string WindowName;
  std::vector<double> HarmFreq;   // Hz
  std::vector<double> CosCoef;    // in the units of the signal
  std::vector<double> SinCoef;    // of 0: the mean of the samples
  std::vector<double> PowerNorm;  // % of the largest
  std::vector<double> PowerCum;   // % of the total
  std::vector<double> PowerRel;   // % of the total
  std::vector<double> PowerAbs;   // squared units of the signal
  std::vector<double> PowerAbsCum;
  double MedianFreq = 0.0;
  double MeanFreq = 0.0;
  double Percentile95Freq = 0.0;
  double Percentile99Freq = 0.0;
  bool FrequenciesMade = false;  // an analysis has set these four
};

/// Percent of a channel's samples by the bin of their amplitude; lists from subscript 0, which is empty.
struct AmplitudeDistribution {
  double ApdfBinPercent = 0.0;  // width of a bin in percent of the largest amplitude
  std::vector<double> ApdfCounts;
  std::vector<float> Apdf;
  std::vector<float> Capdf;
  double Apdf10 = 0.0;  // amplitudes in percent of the largest
  double Apdf50 = 0.0;
  double Apdf90 = 0.0;
};

/// The largest value of a muscle in a reference contraction.
struct StoredMaximum {
  std::int16_t Channel = 0;  // in the trial that it was found in
  std::string Label;
  std::string Units;
  double Maximum = 0.0;
  double Time = 0.0;  // of the middle of its window, on the abscissa of its trial
  std::string Method;
  double Window = 0.0;  // seconds
  std::string File;
};

struct EmgMemory {
  std::int16_t EpochCount = 0;  // bins or epochs; below 1: not chosen yet
  AmplitudeDistribution distribution;
  std::vector<StoredMaximum> Maximums;  // one a label, over any number of trials
};

struct ImpactMemory {
  float HeadformMass = 0.0F;  // kg; 0: unknown
};

/// What outlives a graph view, or is passed on by one.
struct GraphMemory {
  double ViewDuration = 0.0;  // seconds, the length of the view window; 0 until one was chosen
  double PanSize = 0.0;       // seconds; 0: to the next window
  std::int32_t GraphScaleChoice = 0;
  bool GraphWindowMaximized = false;
  std::int32_t StatLo = 0;  // the samples a statistics form is to use
  std::int32_t StatHi = 0;
  bool ClipResetTime = false;
  // Of the multi-axis graph.
  bool MultiAxisMode = true;       // its dialogue was left for it and not for the single-axis graph
  bool GraphCombinations = false;  // channels stand on graphs by numbers that were typed
  bool ShowDeviations = false;     // the second channel of a graph is the standard deviation of the first
  std::int16_t NGraphs = 0;
  PerChannel<std::int16_t> GraphOfChannel{};           // from 1; 0: not shown
  std::int32_t Layout = 0;                             // a GraphLayout
  std::int32_t MultiScaleChoice = 0;                   // autoscale, 1 to 4 standard deviations, no change
  std::vector<std::pair<double, double>> GraphLimits;  // of the ordinates when a view was last left
  bool PanningTold = false;
  double SmallestIntegral = 0.0;  // in size; smaller ones are not reported
};

/// How texts were read.
struct TextMemory {
  using Values = std::map<std::string, std::string>;  // text by the name of the parser's field

  /// Without a person nothing is kept: a run must not depend on what was read before.
  bool Remembers = false;
  /// What a person changed against what was found, by folder and layout of the header.
  std::map<std::string, Values> Layouts;
};

/// What is known of one force plate. Distances count as they are entered; which unit that is, its
/// DistanceUnit tells.
struct ForcePlate {
  std::int16_t PlateType = 0;  // index in the list of types
  std::string PlateName;
  double a = 0.0;    // from the centre to the lines of sensors, short axis (X)
  double b = 0.0;    // the same, long axis (Y)
  double az0 = 0.0;  // depth of the sensors below the top; negative for Kistler plates
  double Width = 0.0;
  double Length = 0.0;
  double Thickness = 0.0;  // of any added surface
  double XYRange = 0.0;    // pC
  double ZRange = 0.0;     // pC
  double XSens = 0.0;      // pC per newton
  double YSens = 0.0;
  double ZSens = 0.0;
  std::array<double, 6> comGains = {1000, 1000, 1000, 1000, 1000, 1000};  // Fx Fy Fz Mx My Mz, AMTI alone
  std::int32_t optFormulas = 0;  // index: as defined here, as published
  std::int32_t optDistance = 0;  // index: as entered, millimetres, centimetres, metres

  friend bool operator==(const ForcePlate&, const ForcePlate&) = default;
};

inline constexpr std::int32_t kMostPlates = 4;

/// The plates as they were defined last; a definition outlives the trial that it was made for.
struct PlateMemory {
  std::array<ForcePlate, kMostPlates> PlateTable;
  std::int32_t FirstChannel = 0;  // before the first plate's first channel
  double PlateOffsetX = 0.0;      // mm, of plate 2
  double PlateOffsetY = 0.0;
  double PlateOffsetZ = 0.0;
  double PlateAngle = 0.0;        // degrees, plate 2 to plate 1
  double ProgressionAngle = 0.0;  // degrees
  std::string Database;           // the file used last

  friend bool operator==(const PlateMemory&, const PlateMemory&) = default;
};

/// How trials were averaged last, and what is to be averaged next.
struct EnsembleMemory {
  std::string FilenameMask = "*.vmb";
  std::int32_t Intervals = 100;
  bool UseMeanTime = false;        // the average counts seconds, not percent
  std::vector<std::string> Files;  // written by a command to be averaged; the next average begins with them
};

/// What the last analysis found.
struct ResultMemory {
  std::string ResultText;
  std::vector<ResultTable> ResultTables;
  std::string Clipboard;  // the last text that a result view sent there
};

/// How numbers are shown.
struct NumberPatterns {
  std::string RatePattern = "0.00";
  std::string TimePattern = "0.000";  // durations too
  std::string ValuePattern = "0.0000";
};

}  // namespace velmora
