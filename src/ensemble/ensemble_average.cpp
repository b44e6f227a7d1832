#include "ensemble/ensemble_average.hpp"

#include <algorithm>
#include <utility>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/resample.hpp"

namespace velmora {
namespace {

constexpr double kFar = 1.5;

float TimeOf(const AveragedFile& file) {
  return file.lastTime - file.firstTime;
}

double MedianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) {
    return *middle;
  }
  return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

}  // namespace

void EnsembleAverage::Choose(const Trial& trial, const ChannelList& channels) {
  channels_ = channels;
  channelsOfFirst_ = trial.NChan;
  labels_.clear();
  units_.clear();
  for (const int c : channels) {
    labels_.push_back(trial.ChanLabel[c]);
    units_.push_back(trial.ChanUnits[c]);
  }
}

void EnsembleAverage::Begin(const Workbench& workbench, std::int32_t intervals) {
  sums_.Begin(channels_, intervals);
  mostSquares_ = 0.0;
  channelsOfFirst_ = workbench.trial.NChan;
  firstTimed_ = IsTimeBased(workbench);
  EnsembleFiles_ = 0;
  EnsembleTimeSum_ = 0.0F;
  files_.clear();
  averagedPaths_.clear();
}

AveragedFile EnsembleAverage::Describe(const Workbench& workbench) const {
  const Trial& trial = workbench.trial;
  AveragedFile file{
      .path = trial.FileName, .timed = IsTimeBased(workbench), .rate = trial.Rate, .samples = trial.NData};
  if (trial.NData > 0) {
    file.firstTime = trial.Data(1, 0);
    file.lastTime = trial.Data(trial.NData, 0);
    file.duration = static_cast<double>(file.lastTime) - static_cast<double>(file.firstTime);
  }
  return file;
}

// What is no reason to leave the file out, but to look at it.
std::string EnsembleAverage::Oddities(const Trial& trial, const AveragedFile& file) const {
  std::string odd;
  const auto tell = [&odd](const std::string& what) { odd += (odd.empty() ? "" : "; ") + what; };
  if (averagedPaths_.contains(file.path)) {
    tell("added more than once");
  }
  if (file.timed != firstTimed_) {
    tell(file.timed ? "its time base is seconds, that of the first file is not"
                    : "its time base is not seconds, that of the first file is");
  }
  if (!(file.duration > 0)) {
    tell("no duration");
  }
  for (std::size_t j = 0; j < channels_.size(); ++j) {
    const int c = channels_[j];
    if (Trim(trial.ChanUnits[c].Text()) != Trim(units_[j].Text())) {
      tell("channel " + ChannelNumber(c) + " is in " + Trim(trial.ChanUnits[c].Text()) + ", not " +
           Trim(units_[j].Text()));
    }
  }
  return odd;
}

std::string EnsembleAverage::Add(Trial& trial, AveragedFile file) {
  const double largest =
      static_cast<double>(ResampleAll(trial, sums_.Intervals(), MachineSimdLevel(), &spare_));
  // No sum of squares is above the sum of the largest ones: far from the end of the range nobody need look.
  mostSquares_ += largest * largest;
  constexpr double kSurelyFits = 1e38;
  if (!(mostSquares_ < kSurelyFits) && !sums_.Fits(trial)) {
    return "it has samples that are missing or too large to be squared";
  }
  sums_.Add(trial);
  EnsembleTimeSum_ += TimeOf(file);
  ++EnsembleFiles_;
  file.averaged = true;
  file.remark = Oddities(trial, file);
  averagedPaths_.insert(file.path);
  files_.push_back(std::move(file));
  return {};
}

AveragedFile EnsembleAverage::RemoveLast(const Trial& trial) {
  sums_.Remove(trial);
  --EnsembleFiles_;
  const auto last =
      std::find_if(files_.rbegin(), files_.rend(), [](const AveragedFile& file) { return file.averaged; });
  EnsembleTimeSum_ -= TimeOf(*last);
  averagedPaths_.erase(averagedPaths_.find(last->path));
  AveragedFile removed = std::move(*last);
  files_.erase(std::next(last).base());
  removed.averaged = false;
  removed.remark.clear();
  return removed;
}

double EnsembleAverage::FarFrom(const AveragedFile& file) const {
  std::vector<double> others;
  for (const AveragedFile& other : files_) {
    if (other.averaged && &other != &file) {
      others.push_back(other.duration);
    }
  }
  if (others.empty() || !file.averaged) {
    return 0.0;
  }
  const double median = MedianOf(others);
  return file.duration > median * kFar || file.duration < median / kFar ? median : 0.0;
}

}  // namespace velmora
