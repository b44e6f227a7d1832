#include "formats/delimited_text/dialogue/read_notes.hpp"

#include <cmath>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

std::string Whole(double count) {
  return FormatNumber(count, "0");
}
std::string Whole(std::int64_t count) {
  return Whole(static_cast<double>(count));
}

std::string Where(const ScanFault& fault) {
  return "the first in line " + Whole(fault.line) + ", column " + std::to_string(fault.column);
}

// Columns without a single value, and how many empty fields the other columns have.
std::string NoteEmpty(const ScanFaults& faults, std::int64_t rows, int columns) {
  std::string note;
  std::int64_t scattered = 0;
  for (int k = 0; k < columns; ++k) {
    const std::int64_t empty = faults.emptyIn[static_cast<std::size_t>(k)];
    if (empty == rows) {
      note += "Column " + std::to_string(k + 1) + " holds no data and was read as 0.\n";
    } else {
      scattered += empty;
    }
  }
  if (scattered > 0) {
    note += Whole(scattered) + " empty fields were read as 0, " + Where(faults.emptyFields) + ".\n";
  }
  return note;
}

}  // namespace

std::string NotesOnRead(const ScanFaults& faults, std::int64_t rows, const ParseSettings& settings,
                        const TextHeader& header) {
  std::string notes;
  if (faults.notNumbers.count > 0) {
    notes += Whole(faults.notNumbers.count) + " fields are no numbers and were read as 0, " +
             Where(faults.notNumbers) + ": check the records to skip and the channels to be read.\n";
  }
  if (faults.shortLines.count > 0) {
    notes += Whole(faults.shortLines.count) + " lines have fewer columns than were read, the first is line " +
             Whole(faults.shortLines.line) + "; the missing values were read as 0.\n";
  }
  if (faults.longLines.count > 0) {
    notes += Whole(faults.longLines.count) + " lines have more columns than were read, the first is line " +
             Whole(faults.longLines.line) + ": check the channels to be read.\n";
  }
  notes += NoteEmpty(faults, rows, settings.columns);
  if (header.announcedRecords > static_cast<double>(rows) && settings.ParseMaxRecords == 0) {
    notes += "The file announces " + Whole(header.announcedRecords) + " samples per channel and holds " +
             Whole(rows) + ".\n";
  }
  if (!notes.empty()) {
    notes.pop_back();
  }
  return notes;
}

std::string NoteOnRate(const TextHeader& header, double rate, bool hasTime) {
  const auto is = [rate](double other) { return std::abs(other - rate) <= 1e-3 * other; };
  const bool timesAgree = hasTime && header.rate > 0 && is(header.rate);
  if (header.statedRate <= 0 || is(header.statedRate) || timesAgree) {
    return {};
  }
  const std::string stated = "The header states " + PlainNumber(header.statedRate) + " Hz, the ";
  return hasTime ? stated + "time column gives " + PlainNumber(rate) + " Hz: it may be a counter and no time."
                 : stated + "trial has " + PlainNumber(rate) + " Hz.";
}

bool IsMostlyText(const ScanFaults& faults, std::int64_t rows, const ParseSettings& settings) {
  return faults.notNumbers.count > rows * settings.columns / 2;
}

}  // namespace velmora
