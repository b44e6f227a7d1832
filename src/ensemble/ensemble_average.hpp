#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/workbench.hpp"
#include "ensemble/ensemble_sums.hpp"

namespace velmora {

/// A file of the list, with what it was like before it was normalised.
struct AveragedFile {
  std::string path;
  bool averaged = false;
  float firstTime = 0.0F;  // in the units of its abscissa
  float lastTime = 0.0F;
  double duration = 0.0;  // from the first to the last time
  bool timed = true;      // the abscissa counts seconds
  double rate = 0.0;      // Hz
  std::int32_t samples = 0;
  std::string remark;  // why it is not averaged, or what is odd about it
};

/// The average of trials as it grows: its channels, the sums, the times, and the list of files. Asks nobody.
class EnsembleAverage {
 public:
  static constexpr int kMostChannels = 32;  // a trial has room for as many means and deviations
  static constexpr std::int32_t kFewestIntervals = 10;
  static constexpr std::int32_t kMostIntervals = 10'000'000;

  /// Channels of the trial at hand, ascending, 1 to kMostChannels of them: their names are those of the
  /// average, its number of channels is that of the first file.
  void Choose(const Trial& trial, const ChannelList& channels);
  /// An average of no files yet. Throws std::bad_alloc.
  void Begin(const Workbench& workbench, std::int32_t intervals);

  [[nodiscard]] const ChannelList& Channels() const { return channels_; }
  [[nodiscard]] const Label& LabelOf(std::size_t j) const { return labels_.at(j); }
  [[nodiscard]] const Units& UnitsOf(std::size_t j) const { return units_.at(j); }
  [[nodiscard]] int ChannelsOfFirst() const { return channelsOfFirst_; }
  [[nodiscard]] const EnsembleSums& Sums() const { return sums_; }
  [[nodiscard]] std::int32_t EnsembleFiles() const { return EnsembleFiles_; }
  /// The mean duration of the files, in seconds where their abscissas count such.
  [[nodiscard]] double MeanTime() const {
    return static_cast<double>(EnsembleTimeSum_) / static_cast<double>(EnsembleFiles_);
  }
  [[nodiscard]] const std::vector<AveragedFile>& Files() const { return files_; }

  /// A file as it stands in the list before anything is done to it.
  [[nodiscard]] AveragedFile Describe(const Workbench& workbench) const;
  /// Re-samples the trial to the intervals and adds it. Returns why it could not be added, and the average
  /// stays; the trial has been re-sampled all the same. At least two samples.
  [[nodiscard]] std::string Add(Trial& trial, AveragedFile file);
  /// A file that is only listed, with its remark.
  void List(AveragedFile file) { files_.push_back(std::move(file)); }
  /// Takes the file added last out again, and returns it as it stood in the list before; `trial` is still
  /// what Add left of it.
  AveragedFile RemoveLast(const Trial& trial);

  /// The median duration of all averaged files but one, when that one is far from it: more than half as long
  /// again, or less than two thirds. 0 for others.
  [[nodiscard]] double FarFrom(const AveragedFile& file) const;

 private:
  [[nodiscard]] std::string Oddities(const Trial& trial, const AveragedFile& file) const;

  ChannelList channels_;
  std::vector<Label> labels_;
  std::vector<Units> units_;
  int channelsOfFirst_ = 0;
  bool firstTimed_ = true;
  EnsembleSums sums_;
  double mostSquares_ = 0.0;  // at least the largest sum of squares
  SampleMatrix spare_;        // of re-sampling, to be used again
  std::int32_t EnsembleFiles_ = 0;
  float EnsembleTimeSum_ = 0.0F;
  std::vector<AveragedFile> files_;
  std::unordered_multiset<std::string> averagedPaths_;  // of those of them that are averaged
};

}  // namespace velmora
