#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/questions/result_table.hpp"
#include "core/workbench.hpp"
#include "graph/picture.hpp"

namespace velmora {

/// Which parts a report has, beside the trial's file.
struct ReportParts {
  bool tables = true;
  bool graph = true;
  bool steps = true;
  bool channels = true;
  bool experiment = true;
};

/// A name and what is told of it, as texts.
using Fact = std::pair<std::string, std::string>;

/// What a report tells; a part that is not wanted, or of which there is nothing, is empty.
struct Report {
  std::string title;
  std::vector<Fact> trial;
  std::vector<std::string> notices;
  std::vector<Fact> experiment;
  std::vector<ResultTable> channels;
  std::vector<ResultTable> tables;
  std::optional<PictureOrder> picture;  // of the graph that is open
  std::string pictureTitle;
  StepsDone steps;
  std::int64_t time = 0;  // seconds since 1970
  std::string made;       // by which program, and when
};

/// When the report is made: SOURCE_DATE_EPOCH where that is set, so that it can be made again byte for byte
/// (reproducible-builds.org), else now.
std::int64_t ReportTime();

/// Gathers it. Reads the trial's file for its digest, for which it shows a panel when that takes long; what
/// cannot be read is told in its place. Nothing after Cancel. The picture is of the view that is open and
/// ends with it.
std::optional<Report> MakeReport(Workbench& workbench, const std::string& title, const ReportParts& parts);

}  // namespace velmora
