#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The lines of a .anc file above its rows: fields apart by tabs, in the first ones name and value by turns.
struct AncHeader {
  std::string trialName;
  std::string board;
  std::string polarity;
  double generation = 0.0;
  double duration = 0.0;  // s
  double channels = 0.0;
  double bits = 0.0;
  double preciseRate = 0.0;  // Hz
  std::vector<std::string> labels;
  std::vector<double> rates;   // Hz
  std::vector<double> ranges;  // mV

  /// Takes one line. Returns false, and nothing of it, when it is a row of numbers.
  bool Take(std::string_view line);

 private:
  void TakePair(std::string_view name, std::string_view value);
};

/// The fields of a line, between tabs; one behind the last tab counts only when it holds something.
std::vector<std::string_view> FieldsOf(std::string_view line);

}  // namespace velmora
