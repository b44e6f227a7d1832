#pragma once

#include <string_view>
#include <vector>

#include "formats/recording/recording.hpp"

namespace velmora {

/// One annotation list of a record: its time (the first onset, whose text is empty) and what is annotated.
struct EdfAnnotations {
  double recordTime = 0.0;  // s from the start of the recording; NaN when there is none
  std::vector<RecordedEvent> events;
};

/// The time-stamped annotation lists of an annotations signal in one record (Kemp and
/// Olivan 2003): an onset, perhaps 15h and a duration, 14h, texts ended by 14h each, a NUL. What is damaged
/// ends the list.
EdfAnnotations ReadAnnotations(std::string_view bytes);

}  // namespace velmora
