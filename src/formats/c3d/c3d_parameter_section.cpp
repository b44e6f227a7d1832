#include "formats/c3d/c3d_parameter_section.hpp"

#include <algorithm>

#include "formats/bytes/byte_builder.hpp"

namespace velmora {
namespace {

constexpr std::size_t kSectionBlock = 512;
constexpr std::size_t kMostOfAKind = 255;

template <typename T>
std::string BytesOfNumbers(std::span<const T> values) {
  ByteBuilder bytes;
  for (const T value : values) {
    bytes.Add(value);
  }
  return bytes.Bytes();
}

}  // namespace

void C3dParameterSection::StartGroup(std::string_view name) {
  constexpr std::int16_t kToNext = 3;  // this word and the length of the description
  ++group_;
  ByteBuilder entry;
  entry.Add(static_cast<std::int8_t>(name.size())).Add(static_cast<std::int8_t>(-group_)).AddBytes(name);
  entry.Add(kToNext).Add(std::uint8_t{0});
  entries_ += entry.Bytes();
}

void C3dParameterSection::AddParameter(std::string_view name, Type type, const std::vector<int>& dimensions,
                                       std::string_view data) {
  ByteBuilder entry;
  entry.Add(static_cast<std::int8_t>(name.size())).Add(group_).AddBytes(name);
  const std::size_t behind = 2 + 2 + dimensions.size() + data.size() + 1;
  entry.Add(static_cast<std::uint16_t>(behind)).Add(static_cast<std::int8_t>(type));
  entry.Add(static_cast<std::uint8_t>(dimensions.size()));
  for (const int dimension : dimensions) {
    entry.Add(static_cast<std::uint8_t>(dimension));
  }
  entry.AddBytes(data).Add(std::uint8_t{0});
  entries_ += entry.Bytes();
}

void C3dParameterSection::Add(std::string_view name, std::int16_t value) {
  AddParameter(name, Type::Integer, {}, BytesOfNumbers(std::span<const std::int16_t>(&value, 1)));
}

void C3dParameterSection::Add(std::string_view name, float value) {
  AddParameter(name, Type::Real, {}, BytesOfNumbers(std::span<const float>(&value, 1)));
}

void C3dParameterSection::Add(std::string_view name, std::span<const std::int16_t> values,
                              const std::vector<int>& dimensions) {
  AddParameter(name, Type::Integer, dimensions, BytesOfNumbers(values));
}

void C3dParameterSection::Add(std::string_view name, std::span<const float> values,
                              const std::vector<int>& dimensions) {
  AddParameter(name, Type::Real, dimensions, BytesOfNumbers(values));
}

void C3dParameterSection::Add(std::string_view name, std::span<const std::string> texts) {
  std::size_t width = 1;
  for (const std::string& text : texts) {
    width = std::max(width, std::min(text.size(), kMostOfAKind));
  }
  ByteBuilder data;
  const std::size_t count = std::min(texts.size(), kMostOfAKind);
  for (std::size_t k = 0; k < count; ++k) {
    data.AddText(texts[k], width);
  }
  AddParameter(name, Type::Text, {static_cast<int>(width), static_cast<int>(count)}, data.Bytes());
}

std::string C3dParameterSection::Bytes() const {
  constexpr std::uint8_t kKey = 0x50;
  constexpr std::uint8_t kIntelProcessor = 84;
  // Two zeros end the entries.
  const std::size_t blocks = (4 + entries_.size() + 2 + kSectionBlock - 1) / kSectionBlock;
  ByteBuilder section;
  section.Add(std::uint8_t{1}).Add(kKey).Add(static_cast<std::uint8_t>(blocks)).Add(kIntelProcessor);
  section.AddBytes(entries_).FillTo(blocks * kSectionBlock);
  return section.Bytes();
}

}  // namespace velmora
