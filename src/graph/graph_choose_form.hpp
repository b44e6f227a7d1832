#pragma once

#include <cstdint>

#include "graph/graph_channel_form.hpp"

namespace velmora {

/// Which channels the single-axis graph shows, in which colours, at which scale and through how long a
/// window. What was chosen goes to the picker's state, the channels' colours and `workbench.graph`.
class GraphChooseForm : public GraphChannelForm {
 public:
  explicit GraphChooseForm(Workbench& workbench);

 private:
  bool Accept() override;

  std::int32_t scale_;
};

}  // namespace velmora
