#include "import/recording_questions.hpp"

#include <algorithm>
#include <numeric>
#include <optional>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/layout/column_list.hpp"

namespace velmora {
namespace {

class ChooseChannelsForm : public Form {
 public:
  ChooseChannelsForm(Workbench& workbench, const Recording& recording)
      : Form("frmChooseChannels", "Choose Channels"),
        workbench_(workbench),
        most_(static_cast<int>(recording.channels.size())) {
    fields_ = {{.name = "ChannelsToRead",
                .caption = "Channels to &read, at most " + std::to_string(kMaxChannels),
                .target = &list_,
                .prompt = "Enter the numbers of the channels to be read, as in 1-32, 40."}};
    buttons_ = {{"&Read", FormButton::Role::Accept, [this] { return Accept(); }},
                {"&Cancel", FormButton::Role::Cancel, [] { return true; }}};
    ResultTable table{.name = Name(),
                      .title = "The file holds " + CountOf(most_, "channel"),
                      .columns = {"Channel", "Label", "Units", "Rate (Hz)"}};
    for (std::size_t c = 0; c < recording.channels.size(); ++c) {
      const RecordedChannel& channel = recording.channels[c];
      table.rows.push_back({static_cast<double>(c + 1), channel.label, channel.units, channel.rate});
    }
    tables_.push_back(std::move(table));
  }

  [[nodiscard]] const std::vector<int>& Chosen() const { return chosen_; }

 private:
  bool Accept() {
    std::optional<std::vector<int>> columns = ReadColumnList(list_, most_);
    if (!columns || columns->empty()) {
      Refuse("Enter numbers from 1 to " + std::to_string(most_) + ", as in 1-32, 40.");
      return false;
    }
    if (columns->size() > kMaxChannels) {
      Refuse(CountOf(static_cast<std::int64_t>(columns->size()), "channel") +
             " were named.  A trial holds at most " + std::to_string(kMaxChannels) + ".");
      return false;
    }
    for (int& column : *columns) {
      --column;
    }
    chosen_ = std::move(*columns);
    return true;
  }

  void Refuse(const std::string& text) {
    ShowRefusal(workbench_, {.title = Title(), .text = text, .icon = Icon::Exclamation});
  }

  Workbench& workbench_;
  int most_;
  std::string list_ = "1-" + std::to_string(kMaxChannels);
  std::vector<int> chosen_;
};

const RecordedChannel& ChannelOf(const Recording& recording, int channel) {
  return recording.channels[static_cast<std::size_t>(channel)];
}

double FastestOf(const Recording& recording, const std::vector<int>& channels) {
  double fastest = 0.0;
  for (const int c : channels) {
    fastest = std::max(fastest, ChannelOf(recording, c).rate);
  }
  return fastest;
}

}  // namespace

std::vector<int> ChooseChannels(Workbench& workbench, const Recording& recording) {
  if (recording.channels.size() <= kMaxChannels) {
    std::vector<int> all(recording.channels.size());
    std::iota(all.begin(), all.end(), 0);
    return all;
  }
  ChooseChannelsForm form(workbench, recording);
  form.Show(workbench);
  return form.Chosen();
}

bool SettleRates(Workbench& workbench, const Recording& recording, std::vector<int>& channels) {
  const double fastest = FastestOf(recording, channels);
  const auto isSlow = [&](int c) { return ChannelOf(recording, c).rate < fastest; };
  const auto slow = std::count_if(channels.begin(), channels.end(), isSlow);
  if (slow == 0) {
    return true;
  }
  const Button answer = workbench.questions.AskBox(
      {.title = "Sampling Rates Differ",
       .text = std::to_string(slow) + " of " + std::to_string(channels.size()) +
               " channels were sampled at less than " + PlainNumber(fastest) +
               " Hz.\nPress Yes to interpolate them to that rate, No to leave them out or Cancel.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::No) {
    AddNotice(workbench,
              CountOf(slow, "channel") + " of less than " + PlainNumber(fastest) + " Hz left out.");
    channels.erase(std::remove_if(channels.begin(), channels.end(), isSlow), channels.end());
  }
  return answer != Button::Cancel;
}

double RateOf(Workbench& workbench, const Recording& recording, const std::vector<int>& channels) {
  const double fastest = FastestOf(recording, channels);
  if (fastest > 0) {
    return fastest;
  }
  return std::max(0.0, Val(workbench.questions.AskInput(
                           {.title = "Enter Sampling Rate",
                            .prompt = "Enter sampling rate per channel in samples per second or hertz (Hz).",
                            .defaultText = FormatNumber(workbench.trial.PreviousRate, "0"),
                            .isNumber = true})));
}

}  // namespace velmora
