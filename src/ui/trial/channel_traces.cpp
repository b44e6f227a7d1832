#include "ui/trial/channel_traces.hpp"

#include <cmath>

namespace velmora::ui {

void ChannelTraces::Take(const Trial& trial) {
  Clear();
  if (trial.NData < 1) {
    return;
  }
  envelope_.Build(trial.matrix);
  TakeMeans(trial.matrix);
  matrix_ = &trial.matrix;
  channels_ = trial.matrix.Channels();
  samples_ = trial.matrix.Samples();
}

void ChannelTraces::Clear() {
  matrix_ = nullptr;
  envelope_.Clear();
}

void ChannelTraces::TakeMeans(const SampleMatrix& matrix) {
  const auto rows = static_cast<std::size_t>(matrix.Channels()) + 1;
  std::vector<double> sums(rows, 0.0);
  std::vector<std::int64_t> counts(rows, 0);
  for (std::int64_t i = 1; i <= matrix.Samples(); ++i) {
    const float* frame = matrix.Frame(i);
    for (std::size_t c = 0; c < rows; ++c) {
      const bool number = !std::isnan(frame[c]);
      sums[c] += number ? static_cast<double>(frame[c]) : 0.0;
      counts[c] += number ? 1 : 0;
    }
  }
  means_.assign(rows, std::nan(""));
  for (std::size_t c = 0; c < rows; ++c) {
    if (counts[c] > 0) {
      means_[c] = sums[c] / static_cast<double>(counts[c]);
    }
  }
}

bool ChannelTraces::Has(int channel) const {
  return matrix_ != nullptr && matrix_->Channels() == channels_ && matrix_->Samples() == samples_ &&
         channel >= 0 && channel <= channels_;
}

std::vector<Extremes> ChannelTraces::Columns(int channel, int columns) const {
  return Has(channel) && columns > 0 ? envelope_.Columns(channel, 1, samples_, columns)
                                     : std::vector<Extremes>();
}

Extremes ChannelTraces::Whole(int channel) const {
  return Has(channel) ? envelope_.Whole(channel) : Extremes();
}

}  // namespace velmora::ui
