#pragma once

#include <string>
#include <vector>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// A signal of an EDF file as its header writes it. Counts are 10 r + i in record r, sample i, both from 0.
struct EdfSignalText {
  std::string label;
  std::string units = "uV";
  std::string physicalMin = "-100";
  std::string physicalMax = "100";
  std::string digitalMin = "-1000";
  std::string digitalMax = "1000";
  int samples = 4;
  std::vector<std::string> annotations = {};  // a record each: this signal holds annotations
};

/// An EDF or BDF file laid out by hand.
struct EdfFile {
  bool isBdf = false;
  std::string reserved;
  std::string date = "02.03.04";
  std::string headerBytes;  // empty: what it should be
  std::string promised = "3";
  std::string seconds = "0.5";
  int records = 3;
  std::vector<EdfSignalText> signals = {{.label = "EMG"}, {.label = "Knee", .units = "deg"}};

  [[nodiscard]] std::string Bytes() const {
    ByteBuilder file;
    file.AddText(isBdf ? "\xFF"
                         "BIOSEMI"
                       : "0",
                 8)
        .AddText("patient X", 80)
        .AddText("recording Y", 80);
    file.AddText(date, 8).AddText("05.06.07", 8);
    file.AddText(headerBytes.empty() ? std::to_string(256 * (signals.size() + 1)) : headerBytes, 8);
    file.AddText(reserved, 44)
        .AddText(promised, 8)
        .AddText(seconds, 8)
        .AddText(std::to_string(signals.size()), 4);
    const auto field = [&](std::size_t width, const auto& textOf) {
      for (const EdfSignalText& signal : signals) {
        file.AddText(textOf(signal), width);
      }
    };
    field(16, [](const EdfSignalText& s) { return s.label; });
    field(80, [](const EdfSignalText&) { return std::string("transducer"); });
    field(8, [](const EdfSignalText& s) { return s.units; });
    field(8, [](const EdfSignalText& s) { return s.physicalMin; });
    field(8, [](const EdfSignalText& s) { return s.physicalMax; });
    field(8, [](const EdfSignalText& s) { return s.digitalMin; });
    field(8, [](const EdfSignalText& s) { return s.digitalMax; });
    field(80, [](const EdfSignalText&) { return std::string("HP 1Hz"); });
    field(8, [](const EdfSignalText& s) { return std::to_string(s.samples); });
    field(32, [](const EdfSignalText&) { return std::string(); });
    for (int r = 0; r < records; ++r) {
      for (const EdfSignalText& signal : signals) {
        AddRecord(file, signal, r);
      }
    }
    return file.Bytes();
  }

 private:
  void AddRecord(ByteBuilder& file, const EdfSignalText& signal, int record) const {
    const std::size_t width = isBdf ? 3 : 2;
    if (!signal.annotations.empty()) {
      const auto r = static_cast<std::size_t>(record);
      file.AddText(r < signal.annotations.size() ? signal.annotations[r] : "",
                   width * static_cast<std::size_t>(signal.samples), '\0');
      return;
    }
    for (int i = 0; i < signal.samples; ++i) {
      const std::int32_t count = (10 * record + i) * (i % 2 == 0 ? 1 : -1);
      file.AddBytes({reinterpret_cast<const char*>(&count), width});
    }
  }
};

/// Annotations of three records: the first starts 0.25 s behind the whole second.
inline std::vector<std::string> UsualAnnotations() {
  using namespace std::string_literals;
  return {
      "+0.25\x14\x14\0+1.5\x15"
      "0.2\x14step\x14left\x14\0"s,
      "+0.75\x14\x14\0"s, "+2.25\x14\x14\0+0.3\x14go\x14\0"s};
}

}  // namespace velmora::test
