#include "emg/fatigue_series.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/cores.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "emg/fatigue_slopes.hpp"
#include "emg/fatigue_table.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kMostSpectraShown = 24;

/// An interval that is done but not kept yet.
struct Ahead {
  SpectrumMemory spectrum;
  FatigueRow row;
};

class Runner {
 public:
  Runner(Workbench& workbench, const FatigueOrder& order)
      : workbench_(workbench),
        order_(order),
        intervals_(IntervalsOf(workbench.trial, order.settings)),
        count_(intervals_.Count()),
        shownEvery_((count_ + kMostSpectraShown - 1) / kMostSpectraShown),
        table_(EmptyFatigueTable(workbench, order.channel)) {}

  FatigueSeries Run() {
    OpenFile();
    TakeAll();
    WriteFile([this](SpectraFile& file) { file.Commit(workbench_); });
    return std::move(series_);
  }

 private:
  void TakeAll() {
    ProgressPanel panel(workbench_);
    panel.SetFormat(order_.title);
    panel.SetLimits(0, static_cast<double>(count_));
    panel.ShowTable(table_);
    for (std::int64_t k = 0; k < count_; ++k) {
      panel.SetStatus("Interval " + std::to_string(k + 1) + " of " + std::to_string(count_));
      const FatigueRow row = order_.settings.method == FatigueMethod::FastFourierTransform
                                 ? TakeByFFT(k)
                                 : TakeByRegression(k, panel);
      if (workbench_.CancelRequested) {
        break;
      }
      Keep(k, row);
      panel.SetValue(static_cast<double>(k + 1));
      if (panel.GiveTurn() || !GoesOn(k)) {
        break;
      }
    }
    if (series_.rows.empty()) {
      file_.reset();
    }
  }

  // Leaves its spectrum in the workbench, as both ways do.
  FatigueRow TakeByRegression(std::int64_t k, ProgressPanel& panel) {
    const Epoch epoch = intervals_.At(k, order_.channel);
    std::int32_t harmonics = order_.settings.harmonics;
    if (harmonics == 0) {
      harmonics = AllHarmonics(intervals_);
    }
    const FourFrequencies frequencies =
        HarmonicRegressionPlain(workbench_.trial, epoch, harmonics, workbench_.spectrum,
                                [&](std::int32_t /*done*/) { return !panel.GiveTurn(); });
    return RowOf(epoch, frequencies, workbench_.spectrum);
  }

  FatigueRow TakeByFFT(std::int64_t k) {
    if (k == aheadFrom_ + static_cast<std::int64_t>(ahead_.size())) {
      TakeAhead(k);
    }
    Ahead& taken = ahead_[static_cast<std::size_t>(k - aheadFrom_)];
    std::swap(workbench_.spectrum, taken.spectrum);
    return taken.row;
  }

  // The next intervals, on all cores; after a pause who knows whether there is a next.
  void TakeAhead(std::int64_t from) {
    constexpr std::int64_t kMostAhead = 128;
    constexpr std::size_t kFewest = 16;  // of a core
    aheadFrom_ = from;
    ahead_.resize(static_cast<std::size_t>(order_.pause ? 1 : std::min(kMostAhead, count_ - from)),
                  {workbench_.spectrum, {}});
    const std::size_t parts = std::clamp(ahead_.size() / kFewest, std::size_t{1}, transforms_.size());
    OnCores(parts, [&](std::size_t part) {
      const Share share = ShareOf(ahead_.size(), part, parts);
      for (std::size_t i = share.first; i < share.end; ++i) {
        const Epoch epoch = intervals_.At(from + static_cast<std::int64_t>(i), order_.channel);
        std::int32_t all = epoch.Samples() / 2;
        SpectrumMemory& spectrum = ahead_[i].spectrum;
        ahead_[i].row =
            RowOf(epoch, SpectrumByFFT(workbench_.trial, epoch, all, spectrum, transforms_[part]), spectrum);
      }
    });
  }

  [[nodiscard]] FatigueRow RowOf(const Epoch& epoch, const FourFrequencies& frequencies,
                                 const SpectrumMemory& spectrum) const {
    FatigueRow row = TakeFatigueRow(workbench_.trial, epoch, frequencies);
    row.exactMedian =
        ExactMedianFrequency(spectrum.PowerAbs, spectrum.HarmFreq.size() > 1 ? spectrum.HarmFreq[1] : 0.0);
    return row;
  }

  void Keep(std::int64_t k, const FatigueRow& row) {
    const SpectrumMemory& spectrum = workbench_.spectrum;
    series_.rows.push_back(row);
    SetPercentages(series_.rows.back(), series_.rows.front().median, series_.rows.front().mean);
    AddFatigueRow(table_, series_.rows.back());
    series_.harmonics = spectrum.NHarm;
    series_.lastPower = spectrum.PowerAbs;
    if (k % shownEvery_ == 0) {
      series_.frequencies = spectrum.HarmFreq;
      series_.spectra.push_back({row.from, spectrum.PowerAbs});
    }
    WriteFile([&](SpectraFile& file) { file.Append(workbench_, row.from); });
  }

  bool GoesOn(std::int64_t k) {
    return !order_.pause || k + 1 == count_ ||
           workbench_.questions.AskBox({.title = order_.title,
                                        .text = "Press OK for next interval or Cancel to exit.",
                                        .icon = Icon::Information,
                                        .buttons = {Button::OK, Button::Cancel}}) == Button::OK;
  }

  void OpenFile() {
    if (order_.saved != SavedPower::None) {
      Guarded([this] { file_.emplace(workbench_.OutputFileName, order_.saved); });
    }
  }

  template <typename Write>
  void WriteFile(const Write& write) {
    if (file_) {
      Guarded([&] { write(*file_); });
    }
  }

  template <typename Work>
  void Guarded(const Work& work) {
    try {
      work();
    } catch (const FileError& error) {
      file_.reset();
      ShowSaveFailure(workbench_, error.what());
    }
  }

  Workbench& workbench_;
  const FatigueOrder& order_;
  FatigueIntervals intervals_;
  std::int64_t count_;
  std::int64_t shownEvery_;
  ResultTable table_;  // grows while it is looked at
  std::int64_t aheadFrom_ = 0;
  std::vector<Ahead> ahead_;
  std::vector<EpochTransform> transforms_{PartsForCores()};
  std::optional<SpectraFile> file_;
  FatigueSeries series_;
};

}  // namespace

FatigueSeries RunFatigue(Workbench& workbench, const FatigueOrder& order) {
  return Runner(workbench, order).Run();
}

}  // namespace velmora
