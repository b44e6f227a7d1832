#include "edit/experiment_texts.hpp"

#include "core/text/text.hpp"

namespace velmora {

std::string ExperimentTextOf(const NativeRecords& records, const ExperimentText& text) {
  return Trim(FromWindows1252((records.*text.record).substr(text.field.offset, text.field.bytes)));
}

double SubjectMass(const NativeRecords& records) {
  return native::Get<float>(records.FILMINFO, native::kMass);
}

double SubjectHeight(const NativeRecords& records) {
  return native::Get<float>(records.FILMINFO, native::kHeight);
}

}  // namespace velmora
