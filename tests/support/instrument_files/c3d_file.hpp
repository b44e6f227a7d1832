#pragma once

#include <bit>
#include <string>
#include <vector>

#include "formats/bytes/byte_builder.hpp"

namespace velmora::test {

/// A C3D file laid out by hand. Raw words are 1000 c + i for channel c (from 0) and sample i (from 0).
struct C3dFile {
  ByteOrder order = ByteOrder::Little;
  bool floats = false;
  int points = 2;
  int channels = 3;
  int samplesPerFrame = 4;
  int frames = 5;
  int firstFrame = 1;
  float frameRate = 50.0F;
  int parameterBlock = 2;
  int dataBlock = 0;       // 0: right behind the parameters
  std::string parameters;  // of AddGroup and AddReals ..., without the section's head

  [[nodiscard]] ByteBuilder Builder() const {
    return ByteBuilder(order == ByteOrder::Big ? ByteOrder::Big : ByteOrder::Little);
  }
  /// A float as this file writes it: on a VAX the words of four times the number are swapped.
  void AddFloat(ByteBuilder& to, float value) const {
    const auto bits = std::bit_cast<std::uint32_t>(order == ByteOrder::Vax ? value * 4 : value);
    to.Add(order == ByteOrder::Vax ? (bits << 16U | bits >> 16U) : bits);
  }

  void AddGroup(int id, const std::string& name) {
    parameters += Builder()
                      .Add(static_cast<std::int8_t>(name.size()))
                      .Add(static_cast<std::int8_t>(-id))
                      .AddBytes(name)
                      .Add(std::uint16_t{3})
                      .Add(std::uint8_t{0})
                      .Bytes();
  }
  void AddParameter(int group, const std::string& name, int type, const std::vector<int>& dimensions,
                    const std::string& data) {
    ByteBuilder entry = Builder();
    entry.Add(static_cast<std::int8_t>(-static_cast<int>(name.size())))
        .Add(static_cast<std::int8_t>(group))
        .AddBytes(name);
    entry.Add(static_cast<std::uint16_t>(2 + 2 + dimensions.size() + data.size() + 1));
    entry.Add(static_cast<std::int8_t>(type)).Add(static_cast<std::uint8_t>(dimensions.size()));
    for (const int dimension : dimensions) {
      entry.Add(static_cast<std::uint8_t>(dimension));
    }
    parameters += entry.AddBytes(data).Add(std::uint8_t{0}).Bytes();
  }
  void AddReals(int group, const std::string& name, const std::vector<int>& dimensions,
                const std::vector<float>& values) {
    ByteBuilder data = Builder();
    for (const float value : values) {
      AddFloat(data, value);
    }
    AddParameter(group, name, 4, dimensions, data.Bytes());
  }
  void AddWords(int group, const std::string& name, const std::vector<int>& dimensions,
                const std::vector<int>& values) {
    ByteBuilder data = Builder();
    for (const int value : values) {
      data.Add(static_cast<std::int16_t>(value));
    }
    AddParameter(group, name, 2, dimensions, data.Bytes());
  }
  void AddTexts(int group, const std::string& name, int width, const std::vector<std::string>& texts) {
    ByteBuilder data;
    for (const std::string& text : texts) {
      data.AddText(text, static_cast<std::size_t>(width));
    }
    AddParameter(group, name, -1, {width, static_cast<int>(texts.size())}, data.Bytes());
  }

  [[nodiscard]] std::size_t DataAt() const {
    const std::size_t end = static_cast<std::size_t>(parameterBlock - 1) * 512 + 4 + parameters.size() + 2;
    return dataBlock > 0 ? static_cast<std::size_t>(dataBlock - 1) * 512 : (end + 511) / 512 * 512;
  }

  [[nodiscard]] std::string Bytes() const {
    ByteBuilder file = Builder();
    file.Add(static_cast<std::uint8_t>(parameterBlock)).Add(std::uint8_t{0x50});
    file.Add(static_cast<std::uint16_t>(points)).Add(static_cast<std::uint16_t>(channels * samplesPerFrame));
    file.Add(static_cast<std::uint16_t>(firstFrame)).Add(static_cast<std::uint16_t>(firstFrame + frames - 1));
    file.Add(std::uint16_t{0});
    AddFloat(file, floats ? -0.5F : 0.5F);
    file.Add(static_cast<std::uint16_t>(DataAt() / 512 + 1)).Add(static_cast<std::uint16_t>(samplesPerFrame));
    AddFloat(file, frameRate);
    file.FillTo(static_cast<std::size_t>(parameterBlock - 1) * 512);
    file.Add(std::uint8_t{1}).Add(std::uint8_t{0x50}).Add(std::uint8_t{1});
    file.Add(static_cast<std::uint8_t>(order == ByteOrder::Vax ? 85 : order == ByteOrder::Big ? 86 : 84));
    file.AddBytes(parameters).FillTo(DataAt());
    for (int f = 0; f < frames; ++f) {
      for (int p = 0; p < points; ++p) {
        for (int k = 0; k < 4; ++k) {
          AddWord(file,
                  k == 3 && (f + p) % 2 == 1 ? -1 : 100 * p + 10 * k + f);  // every other one was not seen
        }
      }
      for (int s = 0; s < samplesPerFrame; ++s) {
        for (int c = 0; c < channels; ++c) {
          AddWord(file, 1000 * c + f * samplesPerFrame + s);
        }
      }
    }
    return file.Bytes();
  }

 private:
  void AddWord(ByteBuilder& to, int value) const {
    if (floats) {
      AddFloat(to, static_cast<float>(value));
    } else {
      to.Add(static_cast<std::int16_t>(value));
    }
  }
};

/// A file with everything: labels, units, scales, events and a plate.
inline C3dFile FullC3dFile() {
  C3dFile file;
  file.channels = 7;
  return file;
}

/// Its parameters, in the file's own order of bytes.
inline void AddUsualParameters(C3dFile& file) {
  file.AddGroup(1, "POINT");
  file.AddReals(1, "RATE", {}, {50.0F});
  file.AddTexts(1, "UNITS", 4, {"mm"});
  file.AddGroup(2, "ANALOG");
  file.AddWords(2, "USED", {}, {7});
  file.AddReals(2, "GEN_SCALE", {}, {0.5F});
  file.AddReals(2, "SCALE", {7}, {1, -2, 0.25F, 1, 1, 1, 3});
  file.AddWords(2, "OFFSET", {7}, {0, 100, -8, 0, 0, 0, 1});
  file.AddTexts(2, "LABELS", 6, {"Fx", "Fy", "Fz", "Mx", "My", "Mz", "EMG"});
  file.AddTexts(2, "UNITS", 4, {"N", "N", "N", "Nmm", "Nmm", "Nmm", "\xB5V"});
  file.AddReals(2, "RATE", {}, {200.0F});
  file.AddGroup(3, "FORCE_PLATFORM");
  file.AddWords(3, "USED", {}, {1});
  file.AddWords(3, "TYPE", {1}, {2});
  file.AddWords(3, "CHANNEL", {6, 1}, {1, 2, 3, 4, 5, 6});
  file.AddReals(3, "CORNERS", {3, 4, 1}, {400, 600, 0, 0, 600, 0, 0, 0, 0, 400, 0, 0});
  file.AddReals(3, "ORIGIN", {3, 1}, {1, -2, 40});
  file.AddGroup(4, "EVENT");
  file.AddWords(4, "USED", {}, {2});
  file.AddReals(4, "TIMES", {2, 2}, {1, 0.5F, 0, 0.02F});
  file.AddTexts(4, "LABELS", 11, {"Foot Off", "Foot Strike"});
  file.AddTexts(4, "CONTEXTS", 5, {"Left", "Right"});
}

}  // namespace velmora::test
