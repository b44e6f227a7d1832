#include "core/workbench.hpp"

#include <initializer_list>

namespace velmora {
namespace {

struct TextField {
  std::size_t offset;
  std::size_t length;
};

// Numbers start as 0, text fields as blanks.
std::string EmptyRecord(std::size_t bytes, std::initializer_list<TextField> texts) {
  std::string record(bytes, '\0');
  for (const TextField& text : texts) {
    record.replace(text.offset, text.length, text.length, ' ');
  }
  return record;
}

}  // namespace

NativeRecords::NativeRecords()
    : TrialRecord(EmptyRecord(3502, {{0, 100}, {2202, 650}, {2852, 650}})),
      FILMINFO(EmptyRecord(228, {{0, 114}, {174, 50}})),
      SETUPINFO(EmptyRecord(328, {{0, 16}, {18, 2}, {32, 16}, {56, 96}, {190, 134}})),
      EXPTINFO(EmptyRecord(248, {{0, 244}})) {}

}  // namespace velmora
