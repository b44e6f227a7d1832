#include "run/study/collect_reader.hpp"

#include <nlohmann/json.hpp>

#include "run/recipe/closest_name.hpp"
#include "run/study/study_table.hpp"

namespace velmora {
namespace {

InfoValue Info(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "a column out of the info", {"info"});
  InfoValue value{reader.Text(node["info"], "info")};
  try {
    static_cast<void>(nlohmann::json::json_pointer(value.pointer));
  } catch (const nlohmann::json::exception&) {
    reader.Fail(node["info"],
                "\"" + value.pointer + "\" is no JSON pointer, which is as /Rate or /channels/1/ChanUnits");
  }
  return value;
}

StatisticValue ChannelStatistic(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "a column of a channel", {"channel", "statistic"});
  if (!node["channel"] || !node["statistic"]) {
    reader.Fail(node, "a column of a channel has channel and statistic");
  }
  StatisticValue value{.channel = reader.Channel(node["channel"])};
  const std::string name = reader.Text(node["statistic"], "statistic");
  const std::optional<Statistic> statistic = StatisticNamed(name);
  if (!statistic) {
    reader.Fail(node["statistic"],
                "there is no statistic \"" + name + "\"" + DidYouMean(name, StatisticNames()));
  }
  value.statistic = *statistic;
  return value;
}

TableValue Cell(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "a column out of a table", {"table", "row", "column"});
  if (!node["table"] || !node["row"] || !node["column"]) {
    reader.Fail(node, "a column out of a table has table, row and column");
  }
  return {reader.Text(node["table"], "table"), reader.Text(node["row"], "row"),
          reader.Text(node["column"], "column")};
}

CollectColumn Column(YamlReader& reader, const YAML::Node& name, const YAML::Node& node) {
  CollectColumn column{.name = reader.Text(name, "a column")};
  if (!node.IsMap()) {
    column.value = TextValue{reader.Text(node, "a column")};
  } else if (node["info"]) {
    column.value = Info(reader, node);
  } else if (node["table"]) {
    column.value = Cell(reader, node);
  } else if (node["channel"] || node["statistic"]) {
    column.value = ChannelStatistic(reader, node);
  } else if (reader.CheckKeys(node, "a column", {"info", "channel", "statistic", "table", "row", "column"})) {
    reader.Fail(node, "a column is a text, or has info, or channel and statistic, or table, row and column");
  }
  return column;
}

}  // namespace

CollectStep ReadCollectStep(YamlReader& reader, const YAML::Node& step) {
  reader.CheckKeys(step, "a step that collects", {"collect", "columns", "table"});
  CollectStep collect{.file = reader.Path(step["collect"], "collect")};
  if (!SeparatorOf(collect.file)) {
    reader.Note(step["collect"], "a table of a study is a .csv or .tab file");
  }
  const YAML::Node columns = step["columns"];
  if (static_cast<bool>(columns) == static_cast<bool>(step["table"])) {
    reader.Fail(step, "collect has either columns or table");
  }
  if (!columns) {
    collect.table = reader.Text(step["table"], "table");
    return collect;
  }
  reader.CheckKeys(columns, "columns", {});
  for (const auto& column : columns) {
    try {
      collect.columns.push_back(Column(reader, column.first, column.second));
    } catch (const Unreadable&) {  // noted; the next may be read
    }
  }
  if (columns.size() == 0) {
    reader.Fail(columns, "a table has at least one column");
  }
  return collect;
}

}  // namespace velmora
