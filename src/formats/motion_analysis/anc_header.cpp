#include "formats/motion_analysis/anc_header.hpp"

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

std::vector<double> NumbersOf(const std::vector<std::string_view>& fields) {
  std::vector<double> numbers;
  for (std::size_t k = 1; k < fields.size(); ++k) {
    numbers.push_back(Val(fields[k]));
  }
  return numbers;
}

}  // namespace

std::vector<std::string_view> FieldsOf(std::string_view line) {
  std::vector<std::string_view> fields;
  for (std::size_t from = 0; from < line.size();) {
    const std::size_t to = std::min(line.find('\t', from), line.size());
    fields.push_back(line.substr(from, to - from));
    from = to + 1;
  }
  return fields;
}

bool AncHeader::Take(std::string_view line) {
  const std::vector<std::string_view> fields = FieldsOf(line);
  if (fields.empty()) {
    return true;
  }
  const std::string first = FixedFieldText(fields.front());
  if (!labels.empty() && IsNumber(first)) {
    return false;
  }
  if (first == "Name") {
    for (std::size_t k = 1; k < fields.size(); ++k) {
      labels.push_back(FixedFieldText(fields[k]));
    }
  } else if (first == "Rate") {
    rates = NumbersOf(fields);
  } else if (first == "Range") {
    ranges = NumbersOf(fields);
  } else {
    for (std::size_t k = 0; k + 1 < fields.size(); k += 2) {
      TakePair(FixedFieldText(fields[k]), fields[k + 1]);
    }
  }
  return true;
}

void AncHeader::TakePair(std::string_view name, std::string_view value) {
  if (name == "Generation#:") {
    generation = Val(value);
  } else if (name == "Board_Type:") {
    board = FixedFieldText(value);
  } else if (name == "Polarity:") {
    polarity = FixedFieldText(value);
  } else if (name == "Trial_Name:") {
    trialName = FixedFieldText(value);
  } else if (name == "Duration(Sec.):") {
    duration = Val(value);
  } else if (name == "#Channels:") {
    channels = Val(value);
  } else if (name == "BitDepth:") {
    bits = Val(value);
  } else if (name == "PreciseRate:") {
    preciseRate = Val(value);
  }
}

}  // namespace velmora
