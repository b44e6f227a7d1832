#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Which channels the single-axis graph shows, in which colours, at which scale and through how long a
/// window. What was chosen goes to the picker's state, the channels' colours and `workbench.graph`.
class GraphChooseForm : public Form {
 public:
  explicit GraphChooseForm(Workbench& workbench);

  /// Returns whether the form was left with OK.
  bool Ask();

 private:
  void SelectPage(bool on);
  void SelectEight(int first);
  bool Accept();
  void AddSelectionButton(std::string caption, std::function<void()> select);

  Workbench& workbench_;
  ChannelFlags channels_{};
  ChannelNumbers colours_{};
  std::int32_t scale_ = 0;
  double window_ = 0.0;
  double pan_ = 0.0;
  bool maximized_ = false;
  bool accepted_ = false;
};

}  // namespace velmora
