#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/text/fixed_text.hpp"
#include "core/trial/sample_matrix.hpp"

namespace velmora {

inline constexpr int kMaxChannels = 64;
inline constexpr int kMaxHeaderLines = 75;
inline constexpr int kPageChannels = 16;
inline constexpr int kColours = 15;

/// FileTypeCode of a trial whose file could not be read.
inline constexpr std::int16_t kUnknownFileType = 238;

/// An array that takes its index in whatever integer type the caller counts in.
template <typename T, std::size_t size>
struct FixedRow : std::array<T, size> {
  constexpr T& operator[](std::integral auto index) {
    return std::array<T, size>::operator[](static_cast<std::size_t>(index));
  }
  constexpr const T& operator[](std::integral auto index) const {
    return std::array<T, size>::operator[](static_cast<std::size_t>(index));
  }
};

/// Index 0 describes the time column, 1..NChan the channels.
template <typename T>
using PerChannel = FixedRow<T, kMaxChannels + 1>;
using ChannelFlags = PerChannel<bool>;

/// Loads of a force plate, Fx Fy Fz (N) Mx My Mz (N.m) about a point straight below the middle of its
/// surface, by its six channels: load i is the sum of [6 i + j] times channel j.
using PlateMatrix = std::array<double, 36>;

/// A plate in the words of a C3D file, so that it can be written into another one.
struct C3dPlateRecord {
  std::int16_t type = 0;
  std::string units;                // of the lengths
  std::array<float, 12> corners{};  // of its surface, in the laboratory
  std::array<float, 3> origin{};
  std::vector<float> matrix;  // 36, column by column; empty: none
};

/// A force plate that the trial's file describes, in the order of the plate table.
struct FilePlate {
  std::int32_t base = 0;  // the channel before its first
  std::int32_t channels = 0;
  std::optional<PlateMatrix> loads;
  std::optional<C3dPlateRecord> record;
};

/// The one current trial: its samples, and what is known of it. Samples and channels count from 1;
/// channel 0 is the abscissa, time in seconds (a percentage in an ensemble).
struct Trial {
  std::int16_t NChan = 0;  // 0..64
  std::int32_t NData = 0;  // samples per channel; 0: nothing is loaded
  double Rate = 0.0;       // Hz
  double Duration = 0.0;   // seconds
  double PreviousRate = 0.0;
  double OriginalDuration = 0.0;
  std::int32_t FirstSample = 0;
  std::int32_t LastSample = 0;
  std::string TrialTitle;
  std::string TrialName;
  std::string FileName;
  std::string FileExt;
  std::int16_t FileTypeCode = 0;
  std::string FormatName;  // as people call it; empty: the reader table's name for FileTypeCode
  FixedRow<std::string, kMaxHeaderLines + 1> HeaderLines;  // index 0 is not used
  std::int32_t HeaderLineCount = 0;
  std::int16_t TrialIndex = -1;
  /// Remarks that need no answer ("The file ends after 3,120 of 6,001 samples."), until the next load.
  std::vector<std::string> Notices;

  PerChannel<Label> ChanLabel;
  PerChannel<Units> ChanUnits;
  PerChannel<double> ChanRate{};
  PerChannel<double> ChanGain{};
  PerChannel<double> ChanOffset{};
  PerChannel<std::int16_t> ChanNumber{};
  PerChannel<std::int16_t> ChanAutozero{};
  PerChannel<std::int16_t> ChanColour{};
  PerChannel<std::int16_t> ChanGraphSlot{};
  PerChannel<Label> SavedLabels;
  PerChannel<Units> SavedUnits;

  bool FileChanged = false;
  std::int32_t CursorLo = 0;
  std::int32_t CursorHi = 0;
  bool ForcesReduced = false;
  std::int16_t NPlates = 0;
  bool PlatesCombined = false;        // plate 1 holds the forces of both
  std::vector<FilePlate> FilePlates;  // empty: the file describes none
  bool PairedGraphs = false;

  SampleMatrix matrix;

  /// Sample i (1..NData) of channel c (0..NChan). Throws std::out_of_range, which ends a command.
  float& Data(std::int64_t i, int c) { return matrix.At(i, c); }
  [[nodiscard]] float Data(std::int64_t i, int c) const { return matrix.At(i, c); }

  /// All samples of one channel, for hot loops. Throws std::out_of_range.
  ChannelView Channel(int c) { return matrix.Channel(c); }

  /// Discards the samples and takes a new shape; sets NChan and NData. Throws std::bad_alloc, with
  /// NData 0, when there is not enough memory.
  void AllocateData(int nChan, std::int64_t nData, SampleMatrix::Fill fill = SampleMatrix::Fill::Zero);

  /// No trial: NData 0, and every access to a sample fails from now on.
  void DiscardData();

  /// Changes the number of samples and keeps what both lengths share; new samples are 0.
  void ResizeData(std::int64_t nData);

  /// Keeps channels 1..nChan alone, with their samples.
  void CutChannels(int nChan);

  /// What a reader gives a channel of which its file says nothing.
  void SetChannelDefaults(int channel);

  /// `count` channels of zeros behind the last, with a reader's defaults.
  /// Throws std::length_error when that makes more than 64.
  void AddChannels(int count);

  /// Removes each channel 1..NChan whose flag is set, and everything kept per channel with it;
  /// the channels behind move down. The time column stays.
  void EraseChannels(const ChannelFlags& erase);

  /// Channel k becomes what channel order[k-1] was, with its samples and everything that the trial keeps of
  /// it; channels that are not listed go, none is listed twice. The time column stays.
  void ArrangeChannels(std::span<const int> order);

  /// Row 0 becomes (i-1)/Rate; zeros when Rate is not positive.
  void RebuildTimeColumn();
};

/// The default colour of a channel: 1..15, again from 1 at the sixteenth.
std::int16_t DefaultColour(int channel);

}  // namespace velmora
