#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The parameters of a C3D file in the making, Intel byte order: groups, and the parameters behind each.
/// Names are ASCII in capitals.
class C3dParameterSection {
 public:
  /// What is added from now on belongs to this group.
  void StartGroup(std::string_view name);

  void Add(std::string_view name, std::int16_t value);
  void Add(std::string_view name, float value);
  /// Arrays with their dimensions, the first one fastest; each at most 255.
  void Add(std::string_view name, std::span<const std::int16_t> values, const std::vector<int>& dimensions);
  void Add(std::string_view name, std::span<const float> values, const std::vector<int>& dimensions);
  /// Texts of one width, that of the longest: at most 255 bytes of each, at most 255 texts.
  void Add(std::string_view name, std::span<const std::string> texts);

  /// The section as it stands in the file: its own header, whole blocks of 512 bytes.
  [[nodiscard]] std::string Bytes() const;

 private:
  enum class Type : std::int8_t { Text = -1, Integer = 2, Real = 4 };
  void AddParameter(std::string_view name, Type type, const std::vector<int>& dimensions,
                    std::string_view data);

  std::int8_t group_ = 0;
  std::string entries_;
};

}  // namespace velmora
