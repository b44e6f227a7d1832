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

std::vector<std::string> ChannelNames(const Trial& trial, const std::vector<int>& channels) {
  std::vector<std::string> names;
  names.reserve(channels.size());
  for (const int c : channels) {
    names.push_back(ChannelNumber(c) + ": " + LabelOnOneLine(trial, c));
  }
  return names;
}

}  // namespace velmora
