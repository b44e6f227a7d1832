#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// A dialogue that asks for the parameters of an analysis and computes when told to. It stays open while it
/// is refused.
class AnalysisForm : public Form {
 public:
  /// Whether something was computed.
  bool Ask();

 protected:
  AnalysisForm(Workbench& workbench, std::string name, std::string title);

  /// From `lowest` to `highest`; an open end is not reached itself.
  struct Limits {
    double lowest;
    double highest;
    bool openBelow = false;
    bool openAbove = false;
  };

  // What each returns is there until the next is added.
  FormField& AddFlag(const char* name, const char* caption, bool& value);
  FormField& AddChoice(const char* name, const char* caption, std::int32_t& value,
                       std::vector<std::string> choices);
  FormField& AddText(const char* name, const char* caption, std::string& value);
  FormField& AddNumber(const char* name, const char* caption, double& value, Limits limits);
  FormField& AddCount(const char* name, const char* caption, std::int32_t& value, Limits limits);
  /// Several channels; a trial of one channel has it chosen.
  FormField& AddChannels(const char* name, const char* caption, ChannelFlags& channels);
  /// One channel, "00: label"; index 0 is "(none)", whether it may be missing or not, so that an index is
  /// the channel.
  FormField& AddChannel(const char* name, const char* caption, std::int32_t& channel);
  /// "&Compute" and "&Cancel".
  void AddButtons(const char* computeCaption = "&Compute");

  /// Refuses by a box and returns false when the dialogue is to stay.
  virtual bool Compute() = 0;
  /// The bounds of a number are others now.
  void SetLimits(std::string_view field, Limits limits);
  /// Refuses the first number outside its limits; fields that do not show are not asked.
  bool WithinLimits();
  /// The same words without a box; empty when all are within.
  [[nodiscard]] std::string WhyOutside() const;

  Workbench& workbench_;

 private:
  struct Limited {
    std::size_t field;
    Limits limits;
  };
  [[nodiscard]] const Limited* FirstOutside() const;
  std::vector<Limited> limited_;
  bool computed_ = false;
};

/// The first channel whose label begins with one of the words, the first word first and without regard to
/// case; 0 when there is none.
std::int32_t ChannelByLabel(const Trial& trial, std::initializer_list<std::string_view> words);

}  // namespace velmora
