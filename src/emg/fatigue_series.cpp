#include "emg/fatigue_series.hpp"

#include <optional>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "emg/fatigue_slopes.hpp"
#include "emg/fatigue_table.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kMostSpectraShown = 24;

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
      const Epoch epoch = intervals_.At(k, order_.channel);
      const FourFrequencies frequencies = Spectrum(epoch, panel);
      if (workbench_.CancelRequested) {
        break;
      }
      Keep(k, TakeFatigueRow(workbench_.trial, epoch, frequencies,
                             series_.rows.empty() ? nullptr : &series_.rows.front()));
      panel.SetValue(static_cast<double>(k + 1));
      if (panel.GiveTurn() || !GoesOn(k)) {
        break;
      }
    }
    if (series_.rows.empty()) {
      file_.reset();
    }
  }

  FourFrequencies Spectrum(const Epoch& epoch, ProgressPanel& panel) {
    if (order_.settings.method == FatigueMethod::FastFourierTransform) {
      std::int32_t all = epoch.Samples() / 2;
      return SpectrumByFFT(workbench_.trial, epoch, all, workbench_.spectrum, transform_);
    }
    std::int32_t harmonics = order_.settings.harmonics;
    if (harmonics == 0) {
      harmonics = AllHarmonics(intervals_);
    }
    return HarmonicRegressionPlain(workbench_.trial, epoch, harmonics, workbench_.spectrum,
                                   [&](std::int32_t /*done*/) { return !panel.GiveTurn(); });
  }

  void Keep(std::int64_t k, const FatigueRow& row) {
    const SpectrumMemory& spectrum = workbench_.spectrum;
    series_.rows.push_back(row);
    series_.rows.back().exactMedian =
        ExactMedianFrequency(spectrum.PowerAbs, spectrum.HarmFreq.size() > 1 ? spectrum.HarmFreq[1] : 0.0);
    AddFatigueRow(table_, row);
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
  EpochTransform transform_;
  std::optional<SpectraFile> file_;
  FatigueSeries series_;
};

}  // namespace

FatigueSeries RunFatigue(Workbench& workbench, const FatigueOrder& order) {
  return Runner(workbench, order).Run();
}

}  // namespace velmora
