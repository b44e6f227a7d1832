#pragma once

#include <string>
#include <vector>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// A TDMS file in the making: segment after segment.
class TdmsBuilder {
 public:
  explicit TdmsBuilder(ByteOrder order = ByteOrder::Little) : order_(order) {}

  /// An object of the next segment. `index`: its raw index as bytes, empty for none.
  TdmsBuilder& Object(const std::string& path, const std::string& index, const std::string& properties = "",
                      std::uint32_t count = 0) {
    objects_ += Text(path) +
                (index.empty() ? ByteBuilder(order_).Add(std::uint32_t{0xFFFFFFFF}).Bytes() : index) +
                ByteBuilder(order_).Add(count).Bytes() + properties;
    ++objectCount_;
    return *this;
  }
  TdmsBuilder& Segment(const std::string& raw, std::uint32_t mask = 2 + 4 + 8) {
    const std::string metadata = ByteBuilder(order_).Add(objectCount_).Bytes() + objects_;
    ByteBuilder segment(order_);
    bytes_ += "TDSm" + ByteBuilder().Add(mask | (order_ == ByteOrder::Big ? 0x40U : 0U)).Bytes();
    const auto behind = static_cast<std::uint64_t>((mask & 2U) != 0 ? metadata.size() : 0);
    segment.Add(std::uint32_t{4713}).Add(behind + raw.size()).Add(behind);
    bytes_ += segment.Bytes() + ((mask & 2U) != 0 ? metadata : "") + raw;
    objects_.clear();
    objectCount_ = 0;
    return *this;
  }
  [[nodiscard]] std::string Index(std::uint32_t type, std::uint64_t count) const {
    return ByteBuilder(order_).Add(std::uint32_t{20}).Add(type).Add(std::uint32_t{1}).Add(count).Bytes();
  }
  [[nodiscard]] std::string Text(const std::string& text) const {
    return ByteBuilder(order_).Add(static_cast<std::uint32_t>(text.size())).AddBytes(text).Bytes();
  }
  [[nodiscard]] std::string Property(const std::string& name, const std::string& text) const {
    return Text(name) + ByteBuilder(order_).Add(std::uint32_t{0x20}).Bytes() + Text(text);
  }
  [[nodiscard]] std::string Property(const std::string& name, double number) const {
    return Text(name) + ByteBuilder(order_).Add(std::uint32_t{10}).Add(number).Bytes();
  }
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  ByteOrder order_;
  std::string objects_;
  std::uint32_t objectCount_ = 0;
  std::string bytes_;
};

/// Two channels of a group, 16-bit counts in volts by a straight line, and one of another length, in two
/// segments.
inline std::string SmallTdms(ByteOrder order = ByteOrder::Little) {
  TdmsBuilder file(order);
  const auto counts = [order](std::initializer_list<std::int16_t> values) {
    ByteBuilder bytes(order);
    for (const std::int16_t value : values) {
      bytes.Add(value);
    }
    return bytes.Bytes();
  };
  const std::string waveform = file.Property("wf_increment", 0.001) + file.Property("unit_string", "V");
  const std::string scale =
      file.Property("NI_Scaling_Status", "unscaled") + file.Property("NI_Number_Of_Scales", 1.0) +
      file.Property("NI_Scale[0]_Scale_Type", "Linear") + file.Property("NI_Scale[0]_Linear_Slope", 0.5) +
      file.Property("NI_Scale[0]_Linear_Y_Intercept", 2.0);
  file.Object("/", "", file.Property("name", "jumps"), 1);
  file.Object("/'It''s'", "");
  file.Object("/'It''s'/'a'", file.Index(2, 2), waveform + scale, 7);
  file.Object("/'It''s'/'b'", file.Index(2, 2), waveform, 2);
  file.Object("/'other'/'c'", file.Index(1, 1));
  // The list stands twice in the raw data.
  file.Segment(counts({1, 2, 10, 20}) + "\x05" + counts({3, 4, 30, 40}) + "\x06");
  file.Segment(counts({5, 6, 50, 60}) + "\x07", 8);
  return file.Bytes();
}

}  // namespace velmora::test
