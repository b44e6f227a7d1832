#pragma once

#include <array>
#include <string>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// A BioWare 2 file laid out by hand: counts of channel c (from 0) in frame i are 10 c + i.
struct BioWare2FileBytes {
  int plates = 2;
  int auxiliaries = 1;
  int frames = 5;
  float rate = 100.0F;
  float seconds = 0.05F;
  bool padded = true;

  [[nodiscard]] std::string Bytes() const {
    const int channels = 8 * plates + auxiliaries;
    ByteBuilder file;
    file.AddText("BioWare 2 data file", 80).AddText("10:20:30", 14).AddText("1.2.94", 14).AddText("Name", 31);
    file.AddText("17", 31).AddText("3 hops on the left", 51).AddText("barefoot", 51);
    file.Add(rate)
        .Add(seconds)
        .Add(static_cast<std::int16_t>(channels))
        .Add(static_cast<std::int16_t>(plates));
    for (const float value : {40.0F, 40.0F, 60.0F, 60.0F, 12.0F, 12.0F, 20.0F, 20.0F, -5.0F, -5.0F}) {
      file.Add(value);  // widths, lengths, a, b, az0 of both plates, cm
    }
    for (const float value : {-7.8F, -7.9F, -7.8F, -7.9F, -3.8F, -3.9F}) {
      file.Add(value);  // sensitivities X, Y, Z
    }
    file.Add(std::uint8_t{0}).AddText("", padded ? 1 : 0);
    for (const float value : {5000.0F, 5000.0F, 10000.0F, 10000.0F}) {
      file.Add(value);
    }
    for (int k = 0; k < 8; ++k) {
      file.Add(static_cast<std::uint8_t>(k == 2 && auxiliaries > 0 ? 1 : 0));
    }
    for (int k = 0; k < 8; ++k) {
      file.Add(static_cast<float>(k));
    }
    for (int k = 0; k < 8; ++k) {
      file.AddText("Aux " + std::to_string(k), 10).AddText("title", 40);
    }
    for (int i = 0; i < frames; ++i) {
      for (int c = 0; c < channels; ++c) {
        file.Add(static_cast<std::int16_t>(10 * c + i));
      }
    }
    return file.Bytes();
  }
};

/// An AMTI .bsf file laid out by hand; raw numbers are 10 c + i.
struct BsfFileBytes {
  int version = 105;
  int plates = 1;
  int frames = 4;
  float sensitivity = 2.0F;

  [[nodiscard]] std::string Bytes() const {
    ByteBuilder file;
    file.Put(0, std::int32_t{version})
        .Put(4, std::int32_t{968})
        .Put(8, std::int32_t{plates})
        .Put(12, std::int32_t{0});
    file.PutText(16, "Subject S").PutText(116, "1/2/2015").Put(164, 4 / 500.0).Put(212, std::int32_t{500});
    for (int p = 0; p < plates; ++p) {
      const std::size_t at = 972 + 948 * static_cast<std::size_t>(p);
      file.Put(at, std::int32_t{948}).PutText(at + 12, "OPT400600").Put(at + 32, std::int32_t{6});
      file.Put(at + 52, 24.0F).Put(at + 56, 16.0F);
      for (std::size_t c = 0; c < 6; ++c) {
        file.Put(at + 72 + 4 * c, sensitivity).Put(at + 404 + 4 * c, 4000.0F);
        file.Put(at + 532 + 4 * c, 10.0F).Put(at + 660 + 4 * c, 204.8F);
      }
    }
    file.FillTo(972 + 948 * static_cast<std::size_t>(plates));
    for (int i = 0; i < frames; ++i) {
      for (int c = 0; c < 6 * plates; ++c) {
        if (version == 100) {
          file.Add(static_cast<std::int16_t>(10 * c + i));
        } else {
          file.Add(static_cast<double>(10 * c + i));
        }
      }
    }
    return file.Bytes();
  }
};

/// A later BioWare file of as many plates as are wanted; values of channel c are 10 c + i.
inline std::string BioWareArchiveBytes(int plates, int frames, int framesOfPlates) {
  ByteBuilder file;
  const auto shape = [&file](int count) {
    file.Add(std::int32_t{8}).Add(std::int32_t{count}).Add(std::int32_t{1}).Add(std::int32_t{16}).Add(100.0);
  };
  file.Add(std::int32_t{2})
      .AddText("", 12, '\0')
      .Add(std::int32_t{1})
      .Add(std::int32_t{3})
      .AddText("", 4 + 12 + 26, '\0');
  shape(frames);
  file.AddText("", 4 + 4 + 4 + 4 + 8, '\0').Add(static_cast<std::uint16_t>(plates));
  for (int p = 0; p < plates; ++p) {
    if (p == 0) {
      file.Add(std::uint16_t{0xFFFF}).Add(std::uint16_t{1}).Add(std::uint16_t{11}).AddBytes("CPlateEight");
    } else {
      file.Add(std::uint16_t{0x8001});
    }
    file.AddText("", 12, '\0');
    shape(framesOfPlates);
    file.AddText("", 28, '\0');
    for (const std::string text : {"Kistler", "9286", "1"}) {
      file.Add(static_cast<std::uint8_t>(text.size())).AddBytes(text);
    }
    file.AddText("", 20, '\0')
        .Add(400.0)
        .Add(600.0)
        .Add(175.0)
        .Add(275.0)
        .AddText("", 24, '\0')
        .Add(-22.0)
        .Add(-22.0);
    file.AddText("", 3 + 8 + 256 + 104, '\0');
    for (int c = 0; c < 8; ++c) {
      for (int i = 0; i < frames; ++i) {
        file.Add(static_cast<float>(10 * (c + 8 * p) + i));
      }
    }
  }
  return file.Bytes();
}

/// A Delsys .emg file: two channels, counts 10 c + i, and bytes behind the data.
inline std::string DelsysEmgBytes(int version, int samples = 4, double gain = 1000.0,
                                  std::uint32_t dataAtOffset = 0) {
  ByteBuilder file;
  file.AddBytes("DEMG")
      .Add(static_cast<std::uint16_t>(version))
      .AddText("", 4, '\0')
      .AddText("4.1.0", 11)
      .AddText("", 11);
  file.AddText("Delsys Inc.", 255, '\0').AddText("", 8, '\0').Add(std::int32_t{2}).Add(std::int32_t{samples});
  file.Add(std::int32_t{samples}).Add(2000.0).Add(2000.0);
  const std::size_t dataStart = file.Size();
  file.Add(std::uint32_t{0})
      .AddText("", 16, '\0')
      .Add(std::uint32_t{1})
      .Add(std::uint32_t{5})
      .AddBytes("a.avi");
  for (const std::string label : {"EMG 1", "EMG 2"}) {
    file.Add(std::uint32_t{1}).Add(std::uint32_t{2}).AddBytes("mV").Add(std::uint32_t{5}).AddBytes(label);
    file.Add(gain).Add(1.0).Add(0.5).Add(3.0).Add(20.0).Add(450.0);
    if (version == 4) {
      file.Add(label == "EMG 1" ? 2000.0 : 148.0).Add(0.0F);
    }
  }
  file.Put(dataStart, static_cast<std::uint32_t>(file.Size()) + dataAtOffset);
  for (int i = 0; i < 4; ++i) {
    file.Add(static_cast<std::int16_t>(i)).Add(static_cast<std::int16_t>(-10 - i));
  }
  return file.AddText("", 43, 'x').Bytes();
}

}  // namespace velmora::test
