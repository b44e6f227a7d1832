#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/open_view.hpp"
#include "run/recipe/channel_name.hpp"
#include "run/recipe/run_start.hpp"
#include "run/study/channel_statistic.hpp"

namespace velmora {

/// What a recipe says, as plain data. Nothing in here has been checked against a trial or a command;
/// that happens question by question while the recipe runs.

/// A list of channels, or all there are.
struct ChannelChoice {
  bool all = false;
  std::vector<ChannelName> channels;
};

/// What is typed for one channel, or for each that the name fits.
struct ChannelText {
  ChannelName channel;
  std::string text;
};

struct BoxAnswer {
  std::string button;
};

struct InputAnswer {
  std::string text;
};

struct FileAnswer {
  std::vector<std::string> paths;
  bool savesFile = false;  // recorded: the question was for a file to be written
};

struct PickAnswer {
  std::optional<ChannelChoice> channels;
  std::vector<ChannelText> values;
  std::vector<ChannelText> names;
  std::string press = "OK";
};

struct FieldAnswer {
  std::string name;
  std::variant<std::string, std::vector<ChannelText>, ChannelChoice> value;
  int line = 0;
  bool savesFile = false;  // recorded: the text is the path of a file that the form writes
};

struct FormAnswer {
  bool found = false;  // what the form has found is taken before the fields are filled
  std::vector<FieldAnswer> fields;
  std::string press = "OK";
};

struct Answer {
  int line = 0;
  std::optional<std::string> title;
  bool optional = false;
  std::variant<BoxAnswer, InputAnswer, FileAnswer, PickAnswer, FormAnswer> what;
};

struct CommandStep {
  std::string id;
  std::string file;  // file.load alone has one
  std::vector<Answer> answers;
};

struct InfoStep {
  std::string file;
};

struct CloseGesture {};

struct ImageGesture {
  std::string file;
  int width = 1600;  // pixels
  int height = 900;
  bool white = false;  // on white paper, whatever the background of the view
};

/// Something a person does in the view that is open.
struct ViewStep {
  std::variant<CloseGesture, KeyPress, CursorMove, ThresholdMove, GraphClick, ImageGesture> what;
  std::vector<Answer> answers;
};

/// A text, the same for every row but for its variables.
struct TextValue {
  std::string text;
};

/// What an info file would say at this JSON pointer (RFC 6901).
struct InfoValue {
  std::string pointer;
};

/// Of the samples of one channel between the cursors.
struct StatisticValue {
  ChannelName channel;
  Statistic statistic = Statistic::Mean;
};

/// A cell of a result table, as a recipe names table, row and column.
struct TableValue {
  std::string table;
  std::string row;
  std::string column;
};

struct CollectColumn {
  std::string name;
  std::variant<TextValue, InfoValue, StatisticValue, TableValue> value;
};

/// Adds to a table of the study: a row of these columns, or every row of a result table.
struct CollectStep {
  std::string file;
  std::vector<CollectColumn> columns;
  std::string table;  // empty: the columns
};

struct Step {
  int line = 0;
  std::variant<CommandStep, InfoStep, ViewStep, CollectStep> what;
};

struct Recipe {
  RunStart start;
  std::vector<Step> steps;
};

/// Whether it saves a report, which tells of every other step.
bool SavesReport(const Step& step);

/// The step as messages name it: the command's id, "info", "view" or "collect".
std::string ActionOf(const Step& step);

}  // namespace velmora
