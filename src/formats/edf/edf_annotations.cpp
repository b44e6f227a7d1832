#include "formats/edf/edf_annotations.hpp"

#include <limits>

#include "core/text/numbers.hpp"
#include "formats/text_source.hpp"

namespace velmora {
namespace {

constexpr char kDuration = '\x15';
constexpr char kEndOfText = '\x14';

// Takes one list off the front. Returns false when there is none.
bool TakeList(std::string_view list, EdfAnnotations& to, bool first) {
  const std::size_t head = list.find(kEndOfText);
  if (head == std::string_view::npos || head == 0 || (list.front() != '+' && list.front() != '-')) {
    return false;
  }
  const std::string_view times = list.substr(0, head);
  const double onset = Val(times.substr(0, times.find(kDuration)));
  if (first) {
    to.recordTime = onset;
  }
  std::string suffix;
  if (const std::size_t at = times.find(kDuration); at != std::string_view::npos && at + 1 < times.size()) {
    suffix = " (" + std::string(times.substr(at + 1)) + " s)";
  }
  list.remove_prefix(head + 1);
  for (std::size_t end = list.find(kEndOfText); end != std::string_view::npos; end = list.find(kEndOfText)) {
    if (end > 0) {
      to.events.push_back({onset, DecodeLine(list.substr(0, end)) + suffix});
    }
    list.remove_prefix(end + 1);
  }
  return true;
}

}  // namespace

EdfAnnotations ReadAnnotations(std::string_view bytes) {
  EdfAnnotations annotations{.recordTime = std::numeric_limits<double>::quiet_NaN()};
  for (bool first = true; !bytes.empty(); first = false) {
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    if (!TakeList(bytes.substr(0, end), annotations, first)) {
      break;
    }
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return annotations;
}

}  // namespace velmora
