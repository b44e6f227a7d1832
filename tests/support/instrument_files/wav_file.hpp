#pragma once

#include <string>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// A wave file laid out by hand.
struct WavFileBytes {
  ByteOrder order = ByteOrder::Little;
  int tag = 1;
  int channels = 2;
  std::uint32_t rate = 1000;
  int bits = 16;
  int validBits = 0;            // more than 0: in the extensible form
  std::uint32_t dataBytes = 0;  // 0: as many as there are
  bool isLong = false;          // RF64, with a count of 64 bits
  std::string texts;            // of a list INFO
  std::string samples;

  [[nodiscard]] ByteBuilder Builder() const { return ByteBuilder(order); }

  [[nodiscard]] std::string Bytes() const {
    const int wordBytes = (bits + 7) / 8;
    ByteBuilder file = Builder();
    file.AddBytes(isLong                    ? "RF64"
                  : order == ByteOrder::Big ? "RIFX"
                                            : "RIFF")
        .Add(~std::uint32_t{0})
        .AddBytes("WAVE");
    if (isLong) {
      file.AddBytes("ds64")
          .Add(std::uint32_t{28})
          .Add(std::uint64_t{1000})
          .Add(std::uint64_t{samples.size()});
      file.Add(std::uint64_t{samples.size()}).Add(std::uint32_t{0});
    }
    file.AddBytes("fmt ").Add(static_cast<std::uint32_t>(validBits > 0 ? 40 : 16));
    file.Add(static_cast<std::uint16_t>(validBits > 0 ? 0xFFFE : tag))
        .Add(static_cast<std::uint16_t>(channels));
    file.Add(rate).Add(static_cast<std::uint32_t>(rate * static_cast<std::uint32_t>(channels * wordBytes)));
    file.Add(static_cast<std::uint16_t>(channels * wordBytes)).Add(static_cast<std::uint16_t>(bits));
    if (validBits > 0) {
      file.Add(std::uint16_t{22}).Add(static_cast<std::uint16_t>(validBits)).Add(std::uint32_t{3});
      file.Add(static_cast<std::uint32_t>(tag)).Add(std::uint16_t{0}).Add(std::uint16_t{16});
      file.AddBytes({"\x80\0\0\xAA\0\x38\x9B\x71", 8});
    }
    if (!texts.empty()) {
      file.AddBytes("LIST").Add(static_cast<std::uint32_t>(12 + texts.size())).AddBytes("INFOICMT");
      file.Add(static_cast<std::uint32_t>(texts.size())).AddBytes(texts);
    }
    const auto size = static_cast<std::uint32_t>(samples.size());
    file.AddBytes("data").Add(isLong ? ~std::uint32_t{0} : dataBytes > 0 ? dataBytes : size);
    return file.AddBytes(samples).Bytes();
  }
};

/// Frames of two channels of 16 bits.
inline WavFileBytes UsualWavFile() {
  WavFileBytes file;
  ByteBuilder samples;
  for (const int count : {0, 1, -32768, 32767, 100, -100}) {
    samples.Add(static_cast<std::int16_t>(count));
  }
  file.samples = samples.Bytes();
  return file;
}

}  // namespace velmora::test
