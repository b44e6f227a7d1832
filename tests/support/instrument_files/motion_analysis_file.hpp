#pragma once

#include <bit>
#include <string>
#include <vector>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// The same small trial as a .anb and as a .anc file: 3 channels of 12 bits, +-5 V, 2.5 V and 1 V, four
/// frames of counts 100 c + i.
struct MotionAnalysisFile {
  std::string generation = "2";
  std::string polarity = "Bipolar";
  std::string ranges = "Range\t5000\t2500\t1000\t\r\n";
  double rate = 200.0;
  int frames = 4;

  [[nodiscard]] std::string Text() const {
    std::string text = "File_Type:\tAnalog R/C ASCII\tGeneration#:\t" + generation + "\r\n";
    text += "Board_Type:\tNI USB\tPolarity:\t" + polarity + "\r\n";
    text += "Trial_Name:\t7 jumps\tTrial#:\t1\tDuration(Sec.):\t0.014999\t#Channels:\t3\r\n";
    text += "BitDepth:\t12\tPreciseRate:\t" + std::to_string(rate) + "\r\n\r\n\r\n\r\n\r\n";
    text += "Name\tL Soleus\t\tFz\t\r\nRate\t200\t200\t100\t\r\n" + ranges;
    for (int i = 0; i < frames; ++i) {
      text += std::to_string(i / rate) + "\t" + std::to_string(i) + "\t" + std::to_string(-100 - i) + "\t" +
              std::to_string(200 + i) + "\t\r\n";
    }
    return text;
  }

  [[nodiscard]] std::string Binary() const {
    ByteBuilder file;
    file.Add(std::uint32_t{0});
    Entry(file, 0x8000, Long(99));
    Entry(file, 0x0108, ByteBuilder().AddText("NI PCI", 64, '\0').Bytes());
    Entry(file, 0x0999, "what nobody knows   ");
    Entry(file, 0x0109, Long(65536 + 12));
    Entry(file, 0x010A, Long(std::bit_cast<std::uint32_t>(static_cast<float>(rate))));
    Entry(file, 0x0102, Long(3));
    Entry(file, 0x0104, Words({200, 200, 100, 0}));
    Entry(file, 0x0106, Words({5000, 2500, 1000, 0}));
    for (const char* label : {"L Soleus", "", "Fz"}) {
      Entry(file, 0x0107, ByteBuilder().AddText(label, 12, '\0').Bytes());
    }
    file.Add(std::uint32_t{0});
    Entry(file, 0x8100, Long(static_cast<std::uint32_t>((3 * frames + 1) / 2 + 3)));
    for (int i = 0; i < frames; ++i) {
      file.Add(static_cast<std::int16_t>(i))
          .Add(static_cast<std::int16_t>(-100 - i))
          .Add(static_cast<std::int16_t>(200 + i));
    }
    return file.Bytes();
  }

 private:
  static void Entry(ByteBuilder& file, std::uint16_t key, const std::string& body) {
    file.Add(key).Add(static_cast<std::uint16_t>(body.size() / 4)).AddBytes(body);
  }
  // The high half first.
  static std::string Long(std::uint32_t value) {
    return ByteBuilder()
        .Add(static_cast<std::uint16_t>(value >> 16U))
        .Add(static_cast<std::uint16_t>(value))
        .Bytes();
  }
  static std::string Words(const std::vector<int>& words) {
    ByteBuilder bytes;
    for (const int word : words) {
      bytes.Add(static_cast<std::uint16_t>(word));
    }
    return bytes.Bytes();
  }
};

}  // namespace velmora::test
