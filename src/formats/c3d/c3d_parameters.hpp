#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "formats/bytes/byte_reader.hpp"

namespace velmora {

/// One parameter: an array, its first dimension fastest.
struct C3dParameter {
  enum class Type : std::int8_t { Text = -1, Byte = 1, Integer = 2, Real = 4 };

  Type type = Type::Byte;
  std::vector<std::size_t> dimensions;  // none: one value
  std::string_view data;

  [[nodiscard]] std::size_t Values() const;  // the product of the dimensions
};

/// The parameters of a C3D file. What is damaged ends them: what stood before is kept.
class C3dParameters {
 public:
  /// `section` from the section's first byte on; it must outlive this object.
  C3dParameters(std::string_view section, ByteOrder order);

  /// Whether an entry pointed outside the section, so that some may be missing.
  [[nodiscard]] bool Damaged() const { return damaged_; }

  [[nodiscard]] bool Has(std::string_view group, std::string_view name) const {
    return Find(group, name) != nullptr;
  }
  /// nullptr: there is none. A group that has no entry of its own does not keep its parameters from being
  /// found.
  [[nodiscard]] const C3dParameter* Find(std::string_view group, std::string_view name) const;

  /// Empty when there are none. Integers are signed unless said otherwise.
  [[nodiscard]] std::vector<double> Numbers(std::string_view group, std::string_view name,
                                            bool isUnsigned = false) const;
  /// The first of them, or `otherwise`.
  [[nodiscard]] double Number(std::string_view group, std::string_view name, double otherwise) const;
  /// The first of them as an unsigned 16-bit count.
  [[nodiscard]] std::int64_t Count(std::string_view group, std::string_view name,
                                   std::int64_t otherwise) const;
  [[nodiscard]] std::vector<std::string> Texts(std::string_view group, std::string_view name) const;

  /// Lists that go on in NAME2, NAME3, ...: an array holds at most 255.
  [[nodiscard]] std::vector<double> LongNumbers(std::string_view group, const std::string& name,
                                                bool isUnsigned = false) const;
  [[nodiscard]] std::vector<std::string> LongTexts(std::string_view group, const std::string& name) const;

 private:
  bool TakeEntry(ByteReader& reader);
  void TakeParameter(ByteReader& reader, int group, const std::string& name, std::size_t end);

  ByteOrder order_;
  bool damaged_ = false;
  std::map<int, std::string> groups_;                               // by id, upper case
  std::map<std::pair<int, std::string>, C3dParameter> parameters_;  // by id of the group and name
};

}  // namespace velmora
