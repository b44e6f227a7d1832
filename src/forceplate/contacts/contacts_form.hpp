#pragma once

#include <string>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "forceplate/contacts/measured_contacts.hpp"

namespace velmora {

/// What was found in one channel.
struct ChannelContacts {
  int channel = 1;
  bool turned = false;        // it pointed down
  std::vector<double> force;  // upwards, by sample of the range
  ContactRule rule;
  std::vector<MeasuredContact> contacts;
};

/// Contacts of feet with plates or belts, from vertical forces. The channels stay as they are.
class ContactsForm : public AnalysisForm {
 public:
  ContactsForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] const std::vector<ChannelContacts>& Found() const { return found_; }
  [[nodiscard]] SampleRange Range() const { return range_; }
  /// "20 N on, 10 N off".
  [[nodiscard]] std::string Words() const;

 private:
  // As the field numbers them.
  enum Units : std::int32_t { kNewtons, kPercent };

  bool Compute() override;
  [[nodiscard]] std::int64_t SamplesIn(double seconds) const;
  [[nodiscard]] ChannelContacts Search(int channel) const;
  void KeepEvents();

  SampleRange range_;
  ChannelFlags channels_{};
  double on_ = 20.0;
  double off_ = 10.0;
  std::int32_t units_ = kNewtons;
  double shortest_ = 0.05;     // s
  double shortestGap_ = 0.03;  // s
  bool interpolate_ = true;
  bool events_ = true;
  std::vector<ChannelContacts> found_;
};

/// Asks for the range, then the dialogue, and shows what was found. Refuses a trial that is not over time.
void FindFootContacts(Workbench& workbench);

}  // namespace velmora
