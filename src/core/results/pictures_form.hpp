#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/results/result_form.hpp"

namespace velmora {

/// A view of results with a picture of one of several things, mostly channels, that is chosen in a list.
class PicturesForm : public ResultForm {
 public:
  using Draw = std::function<FormGraph(std::size_t which)>;

  /// `names` is what can be chosen, one thing at least; `draw` makes the picture of each, counted from 0.
  PicturesForm(Workbench& workbench, Results results, std::vector<std::string> names, Draw draw);

 private:
  void ShowChosen();

  Draw draw_;
  std::int32_t shown_ = 0;
};

/// A channel by number and label, as the list of pictures names it.
std::string ListedChannel(const Trial& trial, int channel);

/// The names of the channels in which something was found; `Found` has a `channel`.
template <typename Found>
std::vector<std::string> ChannelNames(const Trial& trial, const std::vector<Found>& all) {
  std::vector<std::string> names;
  names.reserve(all.size());
  for (const Found& found : all) {
    names.push_back(ListedChannel(trial, found.channel));
  }
  return names;
}

}  // namespace velmora
