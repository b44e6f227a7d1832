#include "formats/edf/edf_header.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kEdfHead = 256;  // bytes, and as many for each signal
constexpr double kMostInRecord = 1e9;

// A number of a field, whose decimals somebody may have set off by a comma.
double FieldValue(std::string_view bytes) {
  std::string text = FixedFieldText(bytes);
  std::replace(text.begin(), text.end(), ',', '.');
  return Val(text);
}

std::int64_t FieldCount(std::string_view bytes) {
  const double value = FieldValue(bytes);
  return std::abs(value) <= kMostInRecord ? static_cast<std::int64_t>(value) : 0;
}

bool IsBdf(std::string_view version) {
  if (version ==
      "\xFF"
      "BIOSEMI") {
    return true;
  }
  if (FixedFieldText(version) != "0") {
    throw FileError("this is no EDF or BDF file");
  }
  return false;
}

}  // namespace

EdfHeader::EdfHeader(const InputFile& file) {
  const std::string head = ReadBytes(file, 0, kEdfHead);
  ByteReader reader(head);
  isBdf = IsBdf(reader.TakeBytes(8));
  patient = reader.TakeText(80);
  recording = reader.TakeText(80);
  date = reader.TakeText(8);
  time = reader.TakeText(8);
  const std::int64_t headerBytes = FieldCount(reader.TakeBytes(8));
  isInterrupted = reader.TakeText(44).substr(0, 5).ends_with("+D");
  promisedRecords = FieldCount(reader.TakeBytes(8));
  recordSeconds = FieldValue(reader.TakeBytes(8));
  const std::int64_t count = FieldCount(reader.TakeBytes(4));
  if (count < 1) {
    throw FileError("the header counts no signals");
  }
  dataAt = kEdfHead * (count + 1);
  if (headerBytes != dataAt) {
    remarks.push_back("The header says that it has " + FormatCount(headerBytes) +
                      " bytes; with its signals it has " + FormatCount(dataAt) + ".");
  }
  const std::string fields = ReadBytes(file, kEdfHead, kEdfHead * count);
  if (static_cast<std::int64_t>(fields.size()) < kEdfHead * count) {
    throw FileError("the file ends inside its header");
  }
  signals.resize(static_cast<std::size_t>(count));
  TakeSignals(fields);
  TakeRecords(file.Size());
}

// Field by field, each of all signals.
void EdfHeader::TakeSignals(const std::string& bytes) {
  ByteReader reader(bytes);
  const auto forEach = [&](std::size_t width, const auto& take) {
    for (EdfSignal& signal : signals) {
      take(signal, reader.TakeBytes(width));
    }
  };
  forEach(16, [](EdfSignal& s, std::string_view field) { s.label = FixedFieldText(field); });
  forEach(80, [](EdfSignal& s, std::string_view field) { s.transducer = FixedFieldText(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.units = FixedUnitsText(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.physicalMin = FieldValue(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.physicalMax = FieldValue(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.digitalMin = FieldValue(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.digitalMax = FieldValue(field); });
  forEach(80, [](EdfSignal& s, std::string_view field) { s.prefilter = FixedFieldText(field); });
  forEach(8, [](EdfSignal& s, std::string_view field) { s.samplesInRecord = FieldCount(field); });
  for (EdfSignal& signal : signals) {
    signal.isAnnotations = signal.label == "EDF Annotations" || signal.label == "BDF Annotations";
    signal.samplesInRecord = std::max<std::int64_t>(signal.samplesInRecord, 0);
    signal.offset = recordBytes;
    recordBytes += signal.samplesInRecord * SampleBytes();
  }
}

// The bytes decide how many records there are: a recording that was not stopped has -1 or an old count.
void EdfHeader::TakeRecords(std::int64_t fileBytes) {
  if (recordBytes < 1) {
    throw FileError("the records of the file are empty");
  }
  const std::int64_t dataBytes = std::max<std::int64_t>(fileBytes - dataAt, 0);
  records = dataBytes / recordBytes;
  if (dataBytes % recordBytes != 0) {
    remarks.push_back("The file ends inside a record, which is left out.");
  }
  if (promisedRecords != records) {
    remarks.push_back("The header counts " + FormatCount(promisedRecords) + " records; the file holds " +
                      FormatCount(records) + ".");
  }
  if (!std::isfinite(recordSeconds) || recordSeconds <= 0) {
    const bool signalsAlone = std::none_of(signals.begin(), signals.end(),
                                           [](const EdfSignal& signal) { return signal.isAnnotations; });
    if (signalsAlone) {
      remarks.emplace_back("A record lasts 0 s by the header; 1 s was taken.");
    }
    recordSeconds = 1.0;
  }
}

}  // namespace velmora
