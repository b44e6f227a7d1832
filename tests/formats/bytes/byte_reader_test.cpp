#include "formats/bytes/byte_reader.hpp"

#include <gtest/gtest.h>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {
namespace {

using namespace std::string_literals;

TEST(ByteReader, ReadsNumbersInEveryOrderAndNothingBeyondTheEnd) {
  const std::string bytes = "\x01\x02\x03\x04\x05\x06\x07\x08"s;
  ByteReader little(bytes);
  EXPECT_EQ(little.Take<std::uint16_t>(), 0x0201);
  EXPECT_EQ(little.Take<std::uint32_t>(), 0x06050403U);
  EXPECT_EQ(little.Rest(), 2U);
  EXPECT_THROW(little.Take<std::uint32_t>(), FileError);
  EXPECT_EQ(little.Position(), 6U) << "a read that fails takes nothing";
  EXPECT_THROW(little.Seek(9), FileError);
  EXPECT_THROW((void)little.BytesAt(4, SIZE_MAX), FileError);
  EXPECT_EQ(ByteReader(bytes, ByteOrder::Big).At<std::uint64_t>(0), 0x0102030405060708U);
  EXPECT_EQ(ByteReader("\xC0\x49\x0F\xDB"s, ByteOrder::Big).At<float>(0), -3.14159274F);
  EXPECT_EQ(ByteBuilder(ByteOrder::Big).Add(std::int16_t{-2}).Put(4, 1.0F).Bytes(),
            "\xFF\xFE\0\0\x3F\x80\0\0"s);
}

// Words from the VAX Architecture Handbook: 1.0 is 4080 hex, a sign is bit 15.
TEST(ByteReader, KnowsVaxFloats) {
  const auto value = [](const std::string& bytes) { return ByteReader(bytes, ByteOrder::Vax).At<float>(0); };
  EXPECT_EQ(value("\x80\x40\0\0"s), 1.0F);
  EXPECT_EQ(value("\xC0\xC0\0\0"s), -1.5F);
  EXPECT_EQ(value("\x49\x41\xDB\x0F"s), 3.14159274F);
  EXPECT_EQ(value("\x80\x00\0\0"s), 0x1p-128F);            // the smallest
  EXPECT_EQ(value("\xFF\x7F\xFF\xFF"s), 0x1.FFFFFEp126F);  // the largest
  EXPECT_EQ(value("\0\0\xFF\xFF"s), 0.0F);
  EXPECT_EQ(value("\x01\x80\0\0"s), 0.0F) << "the reserved operand";
}

TEST(ByteReader, DecodesFixedTexts) {
  EXPECT_EQ(FixedFieldText("  Knee angle \0 rest\0"s), "Knee angle");
  EXPECT_EQ(FixedFieldText("\0\0 \t\r\n"s), "");
  EXPECT_EQ(FixedFieldText("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(FixedFieldText("caf\xC3\xA9"), "caf\xC3\xA9");
  for (const char* micro : {"\xB5V", "\xC2\xB5V", "\xCE\xBCV", "\x83\xCAV"}) {
    EXPECT_EQ(FixedUnitsText(micro), "\xC2\xB5V");
  }
}

}  // namespace
}  // namespace velmora::test
