#include "formats/c3d/c3d_parameters.hpp"

#include <cstdlib>

#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::size_t kSectionHead = 4;

std::size_t SizeOf(C3dParameter::Type type) {
  return static_cast<std::size_t>(std::abs(static_cast<int>(type)));
}

bool IsKnown(std::int8_t type) {
  return type == -1 || type == 1 || type == 2 || type == 4;
}

}  // namespace

std::size_t C3dParameter::Values() const {
  std::size_t count = 1;
  for (const std::size_t dimension : dimensions) {
    count *= dimension;  // at most 255 to the power of 7 before the data must prove it
  }
  return count;
}

C3dParameters::C3dParameters(std::string_view section, ByteOrder order) : order_(order) {
  ByteReader reader(section, order);
  try {
    reader.Seek(kSectionHead);
    while (TakeEntry(reader)) {
    }
  } catch (const FileError&) {
    damaged_ = section.size() > kSectionHead;
  }
}

// Returns false behind the last entry. Throws FileError when something lies outside the section.
bool C3dParameters::TakeEntry(ByteReader& reader) {
  if (reader.Rest() == 0) {
    return false;
  }
  const int length = std::abs(int{reader.Take<std::int8_t>()});  // below 0: locked
  if (length == 0) {
    return false;
  }
  const auto id = reader.Take<std::int8_t>();
  const std::string name = ToUpper(reader.TakeText(static_cast<std::size_t>(length)));
  const std::size_t linkAt = reader.Position();
  const std::size_t offset = reader.Take<std::uint16_t>();
  const std::size_t end = offset == 0 ? reader.Size() : linkAt + offset;
  if (end > reader.Size()) {
    damaged_ = true;
  }
  if (id < 0) {
    groups_.emplace(-id, name);
  } else {
    TakeParameter(reader, id, name, std::min(end, reader.Size()));
  }
  if (offset == 0 || end > reader.Size() || end < reader.Position()) {
    damaged_ = damaged_ || (offset != 0 && end < reader.Position());
    return false;
  }
  reader.Seek(end);
  return true;
}

// An array whose size exceeds its own entry is passed over.
void C3dParameters::TakeParameter(ByteReader& reader, int group, const std::string& name, std::size_t end) {
  constexpr std::size_t mostDimensions = 7;
  const auto type = reader.Take<std::int8_t>();
  const std::size_t count = reader.Take<std::uint8_t>();
  if (!IsKnown(type) || count > mostDimensions) {
    damaged_ = true;
    return;
  }
  C3dParameter parameter{.type = static_cast<C3dParameter::Type>(type), .dimensions = {}, .data = {}};
  for (std::size_t k = 0; k < count; ++k) {
    parameter.dimensions.push_back(reader.Take<std::uint8_t>());
  }
  const std::size_t room = end > reader.Position() ? end - reader.Position() : 0;
  const std::size_t bytes = parameter.Values() * SizeOf(parameter.type);
  if (bytes > room) {
    damaged_ = true;
    return;
  }
  parameter.data = reader.TakeBytes(bytes);
  parameters_.emplace(std::pair(group, name), parameter);
}

const C3dParameter* C3dParameters::Find(std::string_view group, std::string_view name) const {
  for (const auto& [key, parameter] : parameters_) {
    if (key.second != name) {
      continue;
    }
    const auto found = groups_.find(key.first);
    if (found == groups_.end() || found->second == group) {
      return &parameter;
    }
  }
  return nullptr;
}

std::vector<double> C3dParameters::Numbers(std::string_view group, std::string_view name,
                                           bool isUnsigned) const {
  const C3dParameter* parameter = Find(group, name);
  if (parameter == nullptr || parameter->type == C3dParameter::Type::Text) {
    return {};
  }
  std::vector<double> numbers(parameter->Values());
  ByteReader reader(parameter->data, order_);
  for (double& number : numbers) {
    switch (parameter->type) {
      case C3dParameter::Type::Integer:
        number = isUnsigned ? reader.Take<std::uint16_t>() : reader.Take<std::int16_t>();
        break;
      case C3dParameter::Type::Real:
        number = reader.Take<float>();
        break;
      default:
        number = reader.Take<std::uint8_t>();
    }
  }
  return numbers;
}

double C3dParameters::Number(std::string_view group, std::string_view name, double otherwise) const {
  const std::vector<double> numbers = Numbers(group, name);
  return numbers.empty() ? otherwise : numbers.front();
}

std::int64_t C3dParameters::Count(std::string_view group, std::string_view name,
                                  std::int64_t otherwise) const {
  constexpr double most = 1e9;
  const std::vector<double> numbers = Numbers(group, name, true);
  const bool fits = !numbers.empty() && numbers.front() >= 0 && numbers.front() <= most;
  return fits ? static_cast<std::int64_t>(numbers.front()) : otherwise;
}

std::vector<std::string> C3dParameters::Texts(std::string_view group, std::string_view name) const {
  const C3dParameter* parameter = Find(group, name);
  if (parameter == nullptr || parameter->type != C3dParameter::Type::Text || parameter->data.empty()) {
    return {};
  }
  const std::size_t width = parameter->dimensions.empty() ? 1 : parameter->dimensions.front();
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < parameter->data.size(); at += width) {
    texts.push_back(FixedUnitsText(parameter->data.substr(at, width)));
  }
  return texts;
}

std::vector<double> C3dParameters::LongNumbers(std::string_view group, const std::string& name,
                                               bool isUnsigned) const {
  std::vector<double> all = Numbers(group, name, isUnsigned);
  for (int k = 2; Has(group, name + std::to_string(k)); ++k) {
    const std::vector<double> more = Numbers(group, name + std::to_string(k), isUnsigned);
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

std::vector<std::string> C3dParameters::LongTexts(std::string_view group, const std::string& name) const {
  std::vector<std::string> all = Texts(group, name);
  for (int k = 2; Has(group, name + std::to_string(k)); ++k) {
    const std::vector<std::string> more = Texts(group, name + std::to_string(k));
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

}  // namespace velmora
