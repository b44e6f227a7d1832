#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/command_memory.hpp"
#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Channels in percent of their maximums.
class NormalizeForm : public AnalysisForm {
 public:
  explicit NormalizeForm(Workbench& workbench);

  /// What was done.
  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  enum Source : std::int32_t { kStored, kFile, kLargest, kEntered };

  void Fill();
  void TakeFrom(const std::vector<StoredMaximum>& all, const std::string& where);
  [[nodiscard]] bool ReadFile();
  bool Compute() override;
  /// The chosen channels that have a maximum and are to be normalized; the others are told.
  [[nodiscard]] ChannelList Ready();
  /// What makes the percentages of these doubtful: units, labels.
  void TellDoubts(const ChannelList& channels);
  void Normalize(const ChannelList& channels);

  /// Where the maximum of a channel comes from.
  struct Reference {
    std::string from;
    std::string units;  // of the maximum; empty: not known
    bool byLabel = false;
  };

  std::int32_t source_ = kStored;
  std::optional<std::vector<StoredMaximum>> read_;  // of the file that was read last
  std::string readFrom_;
  ChannelNumbers maximums_{};
  ChannelFlags channels_{};
  PerChannel<Reference> references_;
  Results results_;
};

/// Shows the dialogue and what came of it.
void NormalizeEnvelopes(Workbench& workbench);

}  // namespace velmora
