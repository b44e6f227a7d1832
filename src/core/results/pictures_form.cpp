#include "core/results/pictures_form.hpp"

#include <utility>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"

namespace velmora {
namespace {

Results WithPicture(Results results) {
  results.graph.emplace();
  return results;
}

}  // namespace

PicturesForm::PicturesForm(Workbench& workbench, Results results, std::vector<std::string> names, Draw draw)
    : ResultForm(workbench, WithPicture(std::move(results))), draw_(std::move(draw)) {
  fields_.push_back({.name = "comShown",
                     .caption = "&Picture of",
                     .target = &shown_,
                     .choices = std::move(names),
                     .edited = [this] { ShowChosen(); },
                     .isList = true});
  ShowChosen();
}

void PicturesForm::ShowChosen() {
  const int resets = graph_->resets + 1;
  graph_ = draw_(static_cast<std::size_t>(shown_));
  graph_->resets = resets;
}

std::string ListedChannel(const Trial& trial, int channel) {
  return ChannelNumber(channel) + ": " + LabelOnOneLine(trial, channel);
}

}  // namespace velmora
