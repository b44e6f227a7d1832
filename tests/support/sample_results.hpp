#pragma once

#include <cmath>
#include <string>

#include "results/result_presses.hpp"

namespace velmora::test {

/// A result view with a graph (a line with a gap, bars, marks) and a table of as many rows as wanted.
class SampleResults : public Form {
 public:
  SampleResults(Workbench& workbench, std::size_t rows) : Form("frmResults", "Sample results") {
    graph_ = FormGraph{.title = "A sine and its bars",
                       .x = {.maximum = 20, .caption = "Time (s)"},
                       .y = {.minimum = -2, .maximum = 2, .caption = "Force (N)"},
                       .marks = {{5, "Median 5 s", 2}, {5.5, "Mean 5.5 s", 3}, {19.8, "99 % 19.8 s", 4}},
                       .bands = {{.from = 8, .to = 12, .text = "rest", .colour = 5}},
                       .points = {{15, 1, "peak", 6}},
                       .readOut = [](double x, double) { return "at " + std::to_string(std::lround(x)); }};
    FormGraph::Plot line{.name = "Sine", .colour = 1};
    FormGraph::Plot bars{.name = "Bars", .colour = 2, .shape = FormGraph::Shape::Bars};
    for (int i = 0; i <= 200; ++i) {
      line.x.push_back(i * 0.1);
      line.y.push_back(i == 100 ? NAN : std::sin(i * 0.1));
    }
    for (int i = 0; i <= 20; ++i) {
      bars.x.push_back(i);
      bars.y.push_back(std::cos(i * 0.3));
    }
    graph_->plots = {line, bars};
    ResultTable table{.name = "frmResults", .title = "Bias=0.5", .columns = {"Name", "Power"}};
    for (std::size_t i = 0; i < rows; ++i) {
      table.rows.push_back({"row " + std::to_string(i), 1.0 / static_cast<double>(i + 3)});
    }
    table.formats = {nullptr, ThroughPattern("0.000")};
    tables_ = {table};
    buttons_ = {{"E&xit", FormButton::Role::Accept, [] { return true; }},
                {.caption = "&Clipboard", .press = [this, &workbench] {
                   SendToClipboard(workbench, TableText(tables_.front()));
                   return false;
                 }}};
    for (auto& more :
         {ProgramButtons(workbench, [this, &workbench] { return SaveTable(workbench, tables_[0]); }),
          PictureButtons(workbench, *this)}) {
      buttons_.insert(buttons_.end(), more.begin(), more.end());
    }
  }
};

}  // namespace velmora::test
